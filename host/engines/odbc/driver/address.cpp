#include "host/engines/odbc/driver/address.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Odbc {
namespace {

using Sql::Dialect;

constexpr std::string_view kPrefix = "odbc:";
constexpr std::string_view kDialectKey = "dialect";
constexpr std::size_t kLongest = std::numeric_limits<std::int16_t>::max();

[[noreturn]] void refuse(std::string_view why) {
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                     "The connection is not of the form odbc:DSN=NAME;dialect=server or "
                     "odbc:Driver={NAME};...;dialect=desktop: " +
                         std::string(why));
}

/// `key=value` of a connection string, up to its semicolon.
struct Pair {
  std::string_view key;    // in lower or upper case; empty where there is no "="
  std::string_view value;  // in its braces, if it has any
  std::string_view text;   // the whole, with the semicolon behind it
  bool ends = true;        // a brace that is opened is closed
};

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
  text.remove_prefix(first);
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// Where the value that begins at `from` ends; nothing when its brace does not.
std::optional<std::size_t> endOfValue(std::string_view text, std::size_t from) {
  const std::size_t first = text.find_first_not_of(" \t\r\n", from);
  if (first == std::string_view::npos || text[first] != '{') {
    return std::min(text.find(';', from), text.size());
  }
  std::size_t close = first + 1;
  for (;; close += 2) {
    close = text.find('}', close);
    if (close == std::string_view::npos) return std::nullopt;
    if (close + 1 == text.size() || text[close + 1] != '}') break;
  }
  return std::min(text.find(';', close), text.size());
}

/// Takes the first pair off `text`.
Pair takePair(std::string_view& text) {
  Pair pair;
  const std::size_t stop = std::min(text.find_first_of("=;"), text.size());
  std::size_t end = stop;
  if (stop < text.size() && text[stop] == '=') {
    const std::optional<std::size_t> found = endOfValue(text, stop + 1);
    pair.ends = found.has_value();
    end = found.value_or(text.size());
    pair.key = trimmed(text.substr(0, stop));
    pair.value = trimmed(text.substr(stop + 1, end - stop - 1));
  }
  pair.text = text.substr(0, std::min(end + 1, text.size()));
  text.remove_prefix(pair.text.size());
  return pair;
}

template <class Visit>
void forEachPair(std::string_view text, const Visit& visit) {
  text.remove_prefix(std::min(kPrefix.size(), text.size()));
  while (!text.empty()) visit(takePair(text));
}

bool isSecret(const Pair& pair) {
  constexpr std::array<std::string_view, 4> kSecret{"pwd", "password", "secret", "token"};
  const std::string key = Sql::lowerName(pair.key);
  return std::ranges::any_of(
      kSecret, [&](std::string_view word) { return key.find(word) != std::string::npos; });
}

/// A value without its braces.
std::string plainValue(std::string_view value) {
  if (!value.starts_with('{')) return std::string(value);
  value.remove_prefix(1);
  if (value.ends_with('}')) value.remove_suffix(1);
  std::string plain;
  for (std::size_t i = 0; i < value.size(); ++i) {
    plain += value[i];
    if (value.substr(i).starts_with("}}")) ++i;
  }
  return plain;
}

Dialect dialectNamed(const Pair& pair) {
  const std::string name = plainValue(pair.value);
  if (Sql::sameName(name, "server")) return Dialect::Server;
  if (Sql::sameName(name, "desktop")) return Dialect::Desktop;
  refuse("the dialect is server or desktop, not '" + name + "'");
}

}  // namespace

bool isOdbcAddress(std::string_view company) noexcept { return company.starts_with(kPrefix); }

std::string shownAddress(std::string_view text) {
  std::string shown(kPrefix);
  forEachPair(text, [&](const Pair& pair) {
    // What has no key may be the rest of a password with a semicolon in it.
    if (!pair.key.empty() && !isSecret(pair)) shown += pair.text;
  });
  return shown;
}

Address readAddress(std::string_view text) {
  if (text.size() > kLongest) refuse("it is too long");
  Address address{.shown = shownAddress(text)};
  std::optional<Dialect> dialect;
  bool names = false;
  forEachPair(text, [&](const Pair& pair) {
    if (!pair.ends) refuse("a brace that opens a value has to be closed; one in it is doubled");
    if (Sql::sameName(pair.key, kDialectKey)) {
      if (dialect) refuse("it names the dialect twice");
      dialect = dialectNamed(pair);
      return;
    }
    address.connection += pair.text;
    names = names || !pair.key.empty();
    if (!isSecret(pair) || pair.value.empty()) return;
    address.secrets.emplace_back(pair.value);
    address.secrets.push_back(plainValue(pair.value));
  });
  if (!dialect) refuse("say by dialect=server or dialect=desktop which SQL is read there");
  if (!names) refuse("it names neither a data source nor a driver");
  std::ranges::sort(address.secrets, std::ranges::greater(),
                    [](const std::string& secret) { return secret.size(); });
  address.dialect = *dialect;
  return address;
}

std::string withoutSecrets(std::string message, const Address& address) {
  constexpr std::string_view kShown = "***";
  for (const std::string& secret : address.secrets) {
    if (secret.empty()) continue;
    for (std::size_t at = message.find(secret); at != std::string::npos;
         at = message.find(secret, at + kShown.size())) {
      message.replace(at, secret.size(), kShown);
    }
  }
  return message;
}

}  // namespace QuorHost::Odbc
