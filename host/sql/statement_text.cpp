#include "host/sql/statement_text.h"

namespace QuorHost::Sql {

Position StatementText::position(std::string_view word) const noexcept {
  const std::string_view before =
      text_.substr(0, static_cast<std::size_t>(word.data() - text_.data()));
  Position place;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const char c = before[i];
    const bool feedFollows = i + 1 < text_.size() && text_[i + 1] == '\n';
    const bool breaksLine = c == '\n' || (c == '\r' && !feedFollows);
    if (breaksLine) {
      ++place.line;
      place.column = 1;
    } else if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) {
      ++place.column;
    }
  }
  return place;
}

void StatementText::refuse(const std::string& what, std::string_view word) const {
  Sql::refuse(what, position(word), word);
}

std::string quoted(std::string_view name) { return "'" + std::string(name) + "'"; }

}  // namespace QuorHost::Sql
