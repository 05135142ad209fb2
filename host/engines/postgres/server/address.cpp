#include "host/engines/postgres/server/address.h"

#include <libpq-fe.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <memory>

#include "host/sql/number_text.h"
#include "platform/error.h"

namespace QuorHost::Postgres {
namespace {

using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;

constexpr std::string_view kSchemaKey = "schema";
constexpr std::string_view kDefaultSchema = "public";

struct FreeOptions {
  void operator()(PQconninfoOption* options) const noexcept { PQconninfoFree(options); }
};

[[noreturn]] void refuse(std::string_view why) {
  raise(ErrorNumber::InvalidArgument,
        "The connection is not of the form postgresql://user@host/database?schema=NAME: " +
            std::string(why));
}

/// A piece of a connection's text in which `%20` stands for a blank.
std::string decoded(std::string_view text) {
  constexpr int kHexadecimal = 16;
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      result += text[i];
      continue;
    }
    const std::string_view digits = text.substr(i + 1, 2);
    int code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, kHexadecimal);
    if (digits.size() != 2 || end != digits.data() + 2 || error != std::errc() || code == 0) {
      refuse("a percent sign needs two hexadecimal digits behind it");
    }
    result += static_cast<char>(code);
    i += 2;
  }
  return result;
}

/// Calls `visit` for the name and the value of each `name=value` behind the question mark.
template <class Visit>
void forEachParameter(std::string_view text, const Visit& visit) {
  const std::size_t mark = text.find('?');
  if (mark == std::string_view::npos) return;
  for (std::string_view rest = text.substr(mark + 1); !rest.empty();) {
    const std::string_view piece = rest.substr(0, rest.find('&'));
    rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    const std::size_t equal = std::min(piece.find('='), piece.size());
    visit(piece.substr(0, equal), piece.substr(std::min(equal + 1, piece.size())), piece);
  }
}

/// The text with those parameters that `keep` wants.
template <class Keep>
std::string withParameters(std::string_view text, const Keep& keep) {
  std::string result(text.substr(0, text.find('?')));
  char separator = '?';
  forEachParameter(text, [&](std::string_view name, std::string_view, std::string_view piece) {
    if (!keep(name)) return;
    result += separator;
    result += piece;
    separator = '&';
  });
  return result;
}

bool isOtherMachine(std::string_view host) {
  constexpr std::array<std::string_view, 4> kThisOne{"", "localhost", "127.0.0.1", "::1"};
  return !host.starts_with('/') && !host.starts_with('@') &&
         std::ranges::find(kThisOne, host) == kThisOne.end();
}

/// Whether one of `hosts`, separated by commas, is.
bool nameOtherMachine(std::string_view hosts) {
  for (;;) {
    const std::size_t comma = hosts.find(',');
    if (isOtherMachine(hosts.substr(0, comma))) return true;
    if (comma == std::string_view::npos) return false;
    hosts.remove_prefix(comma + 1);
  }
}

std::string environment(const char* name) {
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): read only
  return value == nullptr ? "" : value;
}

}  // namespace

bool isServerAddress(std::string_view company) noexcept {
  return company.starts_with("postgresql://") || company.starts_with("postgres://");
}

std::string shownAddress(std::string_view text) {
  std::string shown =
      withParameters(text, [](std::string_view name) { return name != "password"; });
  const std::size_t begin = shown.find("://") + 3;
  const std::size_t end = std::min(shown.find_first_of("/?", begin), shown.size());
  const std::size_t at = shown.rfind('@', end);
  const std::size_t colon = shown.find(':', begin);
  if (at != std::string::npos && at >= begin && colon < at) shown.erase(colon, at - colon);
  return shown;
}

Address readAddress(std::string_view text) {
  Address address{.schema = std::string(kDefaultSchema), .shown = shownAddress(text)};
  forEachParameter(text, [&](std::string_view name, std::string_view value, std::string_view) {
    if (name == kSchemaKey) address.schema = decoded(value);
  });
  if (address.schema.empty()) refuse("the schema has no name");
  const std::string forLibrary =
      withParameters(text, [](std::string_view name) { return name != kSchemaKey; });
  char* message = nullptr;
  const std::unique_ptr<PQconninfoOption, FreeOptions> options(
      PQconninfoParse(forLibrary.c_str(), &message));
  if (!options) {
    // The library's message may quote the text with its password.
    PQfreemem(message);
    refuse(
        "see that names and values behind the question mark are what the server's client "
        "knows, and that special characters are written as %XX");
  }
  std::string hosts;
  // A server that no longer answers ends a call within a minute or two.
  std::map<std::string_view, std::string_view> unlessSaid{{"keepalives_idle", "30"},
                                                          {"keepalives_interval", "10"},
                                                          {"keepalives_count", "6"},
                                                          {"tcp_user_timeout", "90000"}};
  if (environment("PGCONNECT_TIMEOUT").empty()) unlessSaid.emplace("connect_timeout", "60");
  bool saysMode = !environment("PGSSLMODE").empty();
  for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
    if (option->val == nullptr) continue;
    const std::string_view name = option->keyword;
    if (name == "host" || name == "hostaddr") hosts.append(option->val).append(",");
    if (name == "sslmode") saysMode = true;
    unlessSaid.erase(name);
    address.names.emplace_back(name);
    address.values.emplace_back(option->val);
  }
  if (hosts.empty()) hosts = environment("PGHOST") + "," + environment("PGHOSTADDR");
  if (!saysMode && nameOtherMachine(hosts)) {
    address.names.emplace_back("sslmode");
    address.values.emplace_back("verify-full");
  }
  for (const auto& [name, value] : unlessSaid) {
    address.names.emplace_back(name);
    address.values.emplace_back(value);
  }
  return address;
}

}  // namespace QuorHost::Postgres
