#include "cli/words/statement_word.h"

#include <algorithm>

#include "cli/words/names.h"

namespace QuorCli {
namespace {

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// `text` from behind the first `end`, or nothing.
std::string_view behind(std::string_view text, std::string_view end) {
  const std::size_t found = text.find(end);
  return found == std::string_view::npos ? std::string_view() : text.substr(found + end.size());
}

}  // namespace

std::string firstWord(std::string_view statement) {
  constexpr std::string_view kSkipped = " \t\r\n\v\f(";
  while (!statement.empty()) {
    if (kSkipped.find(statement.front()) != std::string_view::npos) {
      statement.remove_prefix(1);
    } else if (statement.starts_with("--")) {
      statement = behind(statement, "\n");
    } else if (statement.starts_with("/*")) {
      statement = behind(statement.substr(2), "*/");
    } else {
      break;
    }
  }
  return {statement.begin(), std::ranges::find_if_not(statement, isLetter)};
}

bool mentions(std::string_view statement, std::string_view name) {
  for (std::size_t at = 0; at + name.size() <= statement.size(); ++at) {
    if (sameName(statement.substr(at, name.size()), name)) return true;
  }
  return false;
}

bool changesRows(std::string_view word) noexcept {
  return sameName(word, "INSERT") || sameName(word, "UPDATE") || sameName(word, "DELETE");
}

}  // namespace QuorCli
