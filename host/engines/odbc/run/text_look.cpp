#include "host/engines/odbc/run/text_look.h"

#include <algorithm>
#include <array>

#include "host/sql/names.h"

namespace QuorHost::Odbc {
namespace {

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// The length of the comment that `text` begins with; 0 where it begins with none.
std::size_t commentLength(std::string_view text) {
  const auto through = [&](std::string_view end, std::size_t from) {
    const std::size_t found = text.find(end, from);
    return found == std::string_view::npos ? text.size() : found + end.size();
  };
  if (text.starts_with("--")) return through("\n", 2);
  if (text.starts_with("/*")) return through("*/", 2);
  return 0;
}

/// The length of the quoted piece that `text` begins with; 0 where it begins with none. A quote
/// that is doubled ends one piece and begins the next.
std::size_t quotedLength(std::string_view text) {
  constexpr std::string_view kOpening = "'\"`[";
  if (kOpening.find(text.front()) == std::string_view::npos) return 0;
  const char closing = text.front() == '[' ? ']' : text.front();
  return std::min(text.find(closing, 1), text.size() - 1) + 1;
}

TextKind kindOf(std::string_view word) {
  constexpr std::array<std::string_view, 4> kQueries{"SELECT", "WITH", "VALUES", "TRANSFORM"};
  constexpr std::array<std::string_view, 3> kChanges{"INSERT", "UPDATE", "DELETE"};
  const auto isWord = [&](std::string_view other) { return Sql::sameName(word, other); };
  if (std::ranges::any_of(kQueries, isWord)) return TextKind::Query;
  return std::ranges::any_of(kChanges, isWord) ? TextKind::Change : TextKind::Other;
}

}  // namespace

TextLook lookAt(std::string_view statement) noexcept {
  TextLook look;
  bool begun = false;
  bool ended = false;
  for (std::string_view rest = statement; !rest.empty();) {
    if (const std::size_t comment = commentLength(rest); comment > 0) {
      rest.remove_prefix(comment);
      continue;
    }
    const char c = rest.front();
    if (!isBlank(c) && c != ';') look.several = look.several || ended;
    if (!begun && isLetter(c)) {
      const auto* const end = std::ranges::find_if_not(rest, isLetter);
      look.kind = kindOf({rest.begin(), end});
    }
    begun = begun || (!isBlank(c) && c != '(');
    ended = ended || c == ';';
    if (c == '?') ++look.markers;
    rest.remove_prefix(std::max<std::size_t>(quotedLength(rest), 1));
  }
  return look;
}

}  // namespace QuorHost::Odbc
