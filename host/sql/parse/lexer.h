// The tokens of a statement.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/sql/dialect.h"
#include "host/sql/statement_text.h"

namespace QuorHost::Sql {

struct Token {
  Lexeme lexeme = Lexeme::End;
  /// A name in brackets or double quotes.
  bool quoted = false;
  /// Of a left parenthesis: index of the right one that closes it.
  std::uint32_t partner = 0;
  /// The token's slice of the statement, quotes included; empty at the end.
  std::string_view word;
};

/// The tokens of `text`, the last one being `End`. Comments and blanks are skipped. Raises a
/// refused statement for text that is not UTF-8, quotes and comments that do not end, parentheses
/// that do not match, and characters and words that the dialect does not have.
[[nodiscard]] std::vector<Token> tokenize(const StatementText& text, Dialect dialect);

}  // namespace QuorHost::Sql
