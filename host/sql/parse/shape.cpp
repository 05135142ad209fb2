#include "host/sql/parse/shape.h"

#include "host/sql/number_text.h"
#include "host/sql/parse/lexer.h"

namespace QuorHost::Sql {

Shape shapeOf(std::string_view text, Dialect dialect) {
  const StatementText statement(text);
  const std::vector<Token> tokens = tokenize(statement, dialect);
  Shape shape;
  std::size_t markers = 0;
  std::size_t copied = 0;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const Token& token = tokens[i];
    if (token.lexeme == Lexeme::Marker) ++markers;
    if (token.lexeme != Lexeme::Number || i == 0) continue;
    if (tokens[i - 1].lexeme != Lexeme::Equal) continue;
    const auto number = readNumber<std::int32_t>(token.word);
    if (!number) continue;
    const auto place = static_cast<std::size_t>(token.word.data() - text.data());
    shape.text.append(text.substr(copied, place - copied)).push_back('?');
    copied = place + token.word.size();
    shape.numbers.push_back({markers++, *number});
  }
  if (!shape.numbers.empty()) shape.text.append(text.substr(copied));
  return shape;
}

}  // namespace QuorHost::Sql
