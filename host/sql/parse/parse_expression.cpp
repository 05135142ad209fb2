// Expressions and conditions.
#include <algorithm>
#include <optional>

#include "host/sql/function_table.h"
#include "host/sql/names.h"
#include "host/sql/parse/parser.h"

namespace QuorHost::Sql {
namespace {

using Syntax::Expression;
using Kind = Expression::Kind;

std::optional<Operator> comparisonOf(Lexeme lexeme) {
  switch (lexeme) {
    case Lexeme::Equal:
      return Operator::Equal;
    case Lexeme::NotEqual:
      return Operator::NotEqual;
    case Lexeme::Less:
      return Operator::Less;
    case Lexeme::LessEqual:
      return Operator::LessEqual;
    case Lexeme::Greater:
      return Operator::Greater;
    case Lexeme::GreaterEqual:
      return Operator::GreaterEqual;
    default:
      return std::nullopt;
  }
}

}  // namespace

Expression* Parser::make(Expression expression, std::span<Expression* const> args) {
  int depth = expression.query != nullptr ? expression.query->depth : 0;
  for (const Expression* arg : args) {
    if (arg != nullptr) depth = std::max<int>(depth, arg->depth);
  }
  countDepth(depth + 1, expression.word);
  expression.depth = static_cast<std::uint16_t>(depth + 1);
  expression.args = arena_.list(args);
  return arena_.make(expression);
}

void Parser::countDepth(int depth, std::string_view word) {
  if (depth > kDeepest) tooDeep(word);
  deepest_ = std::max(deepest_, depth);
}

Expression* Parser::parseExpression() {
  const Level level(*this);
  return parseChain(Operator::Or);
}

// a OR b OR c, or a AND b AND c: one node, however many there are.
Expression* Parser::parseChain(Operator op) {
  const Lexeme lexeme = op == Operator::Or ? Lexeme::Or : Lexeme::And;
  const auto operand = [&] {
    return op == Operator::Or ? parseChain(Operator::And) : parseCondition();
  };
  Expression* const first = operand();
  if (!at(lexeme)) return first;
  const std::string_view word = token().word;
  std::vector<Expression*> operands{first};
  while (accept(lexeme)) operands.push_back(operand());
  return make({.kind = Kind::Logic, .op = op, .word = word}, operands);
}

Expression* Parser::parseCondition() {
  if (at(Lexeme::Not)) {
    const Level level(*this);
    const std::string_view word = next().word;
    return make({.kind = Kind::Not, .word = word}, {parseCondition()});
  }
  Expression* left = parseArithmetic(0);
  while (Expression* const predicate = parsePredicate(left)) left = predicate;
  return left;
}

/// The predicate that begins with `left`, or null when there is none.
Expression* Parser::parsePredicate(Expression* left) {
  const Token& word = token();
  if (const std::optional<Operator> op = comparisonOf(word.lexeme)) {
    next();
    return make({.kind = Kind::Compare, .op = *op, .word = word.word}, {left, parseArithmetic(0)});
  }
  if (accept(Lexeme::Is)) {
    const bool negated = accept(Lexeme::Not);
    expect(Lexeme::Null, "NULL");
    return make({.kind = Kind::IsNull, .negated = negated, .word = word.word}, {left});
  }
  const bool negated = accept(Lexeme::Not);
  const Token& verb = token();
  if (accept(Lexeme::In)) return parseIn(left, negated);
  if (accept(Lexeme::Between)) {
    Expression* const low = parseArithmetic(0);
    expect(Lexeme::And, "AND");
    return make({.kind = Kind::Between, .negated = negated, .word = verb.word},
                {left, low, parseArithmetic(0)});
  }
  if (accept(Lexeme::Like)) {
    Expression* const pattern = parseArithmetic(0);
    if (atName("escape")) text_.refuse("LIKE takes no ESCAPE", token().word);
    return make({.kind = Kind::Like, .negated = negated, .word = verb.word}, {left, pattern});
  }
  if (negated) unexpected("IN, BETWEEN or LIKE");
  return nullptr;
}

Expression* Parser::parseIn(Expression* left, bool negated) {
  if (!at(Lexeme::LeftParenthesis)) unexpected("'('");
  const std::string_view word = token().word;
  if (atQuery()) {
    Expression* const in = parseSubSelect(Kind::InQuery, word);
    in->negated = negated;
    in->args = arena_.list(std::vector{left});
    countDepth(left->depth + 1, word);
    in->depth = std::max<std::uint16_t>(in->depth, left->depth + 1);
    return in;
  }
  next();
  std::vector<Expression*> args{left};
  do {
    args.push_back(parseExpression());
  } while (accept(Lexeme::Comma));
  expect(Lexeme::RightParenthesis, "')'");
  return make({.kind = Kind::InList, .negated = negated, .word = word}, args);
}

Expression* Parser::parseArithmetic(int precedence) {
  Expression* left = parseUnary();
  while (true) {
    const Token& word = token();
    const ArithmeticOperator* const op = findArithmeticOperator(word.lexeme, dialect_);
    if (op == nullptr || op->precedence < precedence) return left;
    next();
    Expression* const right = parseArithmetic(op->precedence + 1);
    left = make({.kind = Kind::Arithmetic, .op = op->op, .word = word.word}, {left, right});
  }
}

Expression* Parser::parseUnary() {
  if (!at(Lexeme::Minus) && !at(Lexeme::Plus)) return parsePrimary();
  const Level level(*this);
  const Token& sign = next();
  Expression* const operand = parseUnary();
  if (sign.lexeme == Lexeme::Plus) return operand;
  return make({.kind = Kind::Negate, .word = sign.word}, {operand});
}

Expression* Parser::parsePrimary() {
  const Token& first = token();
  switch (first.lexeme) {
    case Lexeme::Number:
      next();
      return make({.kind = Kind::Number, .word = first.word}, {});
    case Lexeme::Text:
      next();
      return make({.kind = Kind::Text, .word = first.word, .text = literalText(first)}, {});
    case Lexeme::Date:
      next();
      return make({.kind = Kind::Date, .word = first.word, .text = literalText(first)}, {});
    case Lexeme::Marker:
      next();
      if (markers_ == kMostMarkers) {
        text_.refuse("A statement has at most " + std::to_string(kMostMarkers) + " markers",
                     first.word);
      }
      return make({.kind = Kind::Marker, .marker = markers_++, .word = first.word}, {});
    case Lexeme::Null:
      next();
      return make({.kind = Kind::Null, .word = first.word}, {});
    case Lexeme::True:
    case Lexeme::False:
      next();
      return make(
          {.kind = Kind::Boolean, .truth = first.lexeme == Lexeme::True, .word = first.word}, {});
    case Lexeme::Exists:
      next();
      if (!atQuery()) unexpected("a select in parentheses");
      return parseSubSelect(Kind::Exists, first.word);
    case Lexeme::Case:
      return parseCase();
    case Lexeme::Left:
    case Lexeme::Right:
      return parseCall();
    case Lexeme::Name:
      return parseNamed();
    case Lexeme::LeftParenthesis: {
      if (atQuery()) return parseSubSelect(Kind::Query, first.word);
      next();
      Expression* const inner = parseExpression();
      expect(Lexeme::RightParenthesis, "')'");
      return inner;
    }
    default:
      unexpected("an expression");
  }
}

Expression* Parser::parseNamed() {
  const Token& first = token();
  if (!first.quoted && token(1).lexeme == Lexeme::LeftParenthesis) {
    const bool isCast = atName("cast");
    const bool isConvert = atName("convert");
    if ((isCast || isConvert) && dialect_ == Dialect::Desktop) {
      text_.refuse(otherDialectMessage(first.word, dialect_), first.word);
    }
    return isCast ? parseCast() : isConvert ? parseConvert() : parseCall();
  }
  next();
  if (!accept(Lexeme::Dot)) {
    return make({.kind = Kind::Name, .word = first.word, .text = nameText(first)}, {});
  }
  const Token& column = expect(Lexeme::Name, "a column");
  if (at(Lexeme::Dot)) {
    text_.refuse("A column is named by its table and its name only", slice(first, token()));
  }
  return make({.kind = Kind::Name,
               .word = slice(first, column),
               .qualifier = nameText(first),
               .text = nameText(column)},
              {});
}

Expression* Parser::parseCall() {
  const Token& name = next();
  if (!at(Lexeme::LeftParenthesis)) unexpected("'(' after the name of a function");
  const FunctionRule* const rule = findFunction(name.word, dialect_);
  if (rule == nullptr) {
    text_.refuse("Unknown function " + quoted(name.word), name.word);
  }
  if (!knows(rule->membership, dialect_)) {
    text_.refuse(otherDialectMessage(name.word, dialect_), name.word);
  }
  if (rule->function == Function::Refused) {
    text_.refuse(quoted(name.word) + " " + std::string(rule->reason), name.word);
  }
  next();
  Expression call{.kind = Kind::Call, .word = name.word, .function = rule};
  if (rule->function == Function::Count && accept(Lexeme::Star)) {
    expect(Lexeme::RightParenthesis, "')'");
    call.kind = Kind::CountRows;
    return make(call, {});
  }
  if (rule->isAggregate()) {
    call.distinct = accept(Lexeme::Distinct);
    if (!call.distinct) accept(Lexeme::All);
  }
  std::vector<Expression*> args;
  if (!at(Lexeme::RightParenthesis)) args = parseExpressionList();
  expect(Lexeme::RightParenthesis, "')'");
  if (args.size() < rule->minimum || args.size() > rule->maximum) {
    const std::string least = std::to_string(rule->minimum);
    const std::string most = std::to_string(rule->maximum);
    text_.refuse("Wrong number of arguments: " + quoted(name.word) + " takes " +
                     (least == most ? least : least + " to " + most) + ", not " +
                     std::to_string(args.size()),
                 name.word);
  }
  if (atName("over") && token(1).lexeme == Lexeme::LeftParenthesis) {
    text_.refuse("'OVER' is SQL outside of what is read here", token().word);
  }
  return make(call, args);
}

Expression* Parser::parseCase() {
  const std::string_view word = next().word;
  std::vector<Expression*> args{nullptr, nullptr};
  if (!at(Lexeme::When)) args[0] = parseExpression();
  do {
    expect(Lexeme::When, "WHEN");
    args.push_back(parseExpression());
    expect(Lexeme::Then, "THEN");
    args.push_back(parseExpression());
  } while (at(Lexeme::When));
  if (accept(Lexeme::Else)) args[1] = parseExpression();
  expect(Lexeme::EndCase, "WHEN, ELSE or END");
  return make({.kind = Kind::Case, .word = word}, args);
}

Expression* Parser::parseCast() {
  Expression cast{.kind = Kind::Cast, .word = next().word};
  next();
  Expression* const operand = parseExpression();
  expect(Lexeme::As, "AS");
  cast.type = parseType();
  expect(Lexeme::RightParenthesis, "')'");
  return make(cast, {operand});
}

Expression* Parser::parseConvert() {
  Expression cast{.kind = Kind::Cast, .word = next().word};
  next();
  cast.type = parseType();
  expect(Lexeme::Comma, "','");
  Expression* const operand = parseExpression();
  if (at(Lexeme::Comma)) text_.refuse("CONVERT takes no style", token().word);
  expect(Lexeme::RightParenthesis, "')'");
  return make(cast, {operand});
}

/// A select in parentheses, at which the parser stands.
Expression* Parser::parseSubSelect(Kind kind, std::string_view word) {
  next();
  Syntax::Query* const query = parseQuery();
  expect(Lexeme::RightParenthesis, "')'");
  return make({.kind = kind, .word = word, .query = query}, {});
}

std::vector<Expression*> Parser::parseExpressionList() {
  std::vector<Expression*> list;
  do {
    list.push_back(parseExpression());
  } while (accept(Lexeme::Comma));
  return list;
}

}  // namespace QuorHost::Sql
