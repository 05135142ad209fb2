// Tokens, and the statements that change rows.
#include "host/sql/names.h"
#include "host/sql/parse/parser.h"

namespace QuorHost::Sql {

using Syntax::Statement;

Parser::Parser(const StatementText& text, Dialect dialect, Arena& arena)
    : text_(text),
      dialect_(dialect),
      rules_(rulesOf(dialect)),
      arena_(arena),
      tokens_(tokenize(text, dialect)) {}

Parser::Level::Level(Parser& parser) : parser_(parser) {
  if (++parser_.level_ > kDeepest) parser_.tooDeep(parser_.token().word);
}

Syntax::Parsed Parser::parse() {
  const Statement statement = parseStatement();
  const bool ended = accept(Lexeme::Semicolon);
  if (!at(Lexeme::End)) {
    if (ended) text_.refuse("The text holds several statements; send one at a time", token().word);
    unexpected("the end of the statement");
  }
  return {statement, markers_};
}

Statement Parser::parseStatement() {
  switch (token().lexeme) {
    case Lexeme::Select:
    case Lexeme::LeftParenthesis:
      return parseQuery();
    case Lexeme::Insert:
      return parseInsert();
    case Lexeme::Update:
      return parseUpdate();
    case Lexeme::Delete:
      return parseDelete();
    case Lexeme::Create:
      return parseCreate();
    default:
      unexpected("SELECT, INSERT, UPDATE or DELETE");
  }
}

Syntax::Insert Parser::parseInsert() {
  next();
  expect(Lexeme::Into, "INTO");
  Syntax::Insert insert{.table = parseTableName("the name of a table")};
  if (at(Lexeme::LeftParenthesis) && !atQuery()) insert.columns = parseNameList("a column");
  if (at(Lexeme::Select) || at(Lexeme::LeftParenthesis)) {
    insert.query = parseQuery();
    return insert;
  }
  expect(Lexeme::Values, "VALUES or SELECT");
  expect(Lexeme::LeftParenthesis, "'('");
  insert.values = arena_.list(parseExpressionList());
  expect(Lexeme::RightParenthesis, "')'");
  if (at(Lexeme::Comma)) text_.refuse("INSERT takes one row of values", token().word);
  return insert;
}

Syntax::Update Parser::parseUpdate() {
  next();
  Syntax::Update update{.table = parseTableName("the name of a table")};
  expect(Lexeme::Set, "SET");
  std::vector<Syntax::Assignment> assignments;
  do {
    Syntax::Name column = parseName("a column");
    if (accept(Lexeme::Dot)) {
      if (!sameName(column.text, update.table.text)) {
        text_.refuse("Only columns of the table that is updated can be set", column.word);
      }
      column = parseName("a column");
    }
    expect(Lexeme::Equal, "'='");
    assignments.push_back({column, parseExpression()});
  } while (accept(Lexeme::Comma));
  update.assignments = arena_.list(assignments);
  if (at(Lexeme::From)) text_.refuse("UPDATE takes one table and no FROM", token().word);
  if (accept(Lexeme::Where)) update.where = parseExpression();
  return update;
}

Syntax::Delete Parser::parseDelete() {
  next();
  expect(Lexeme::From, "FROM");
  Syntax::Delete erase{.table = parseTableName("the name of a table")};
  if (accept(Lexeme::Where)) erase.where = parseExpression();
  return erase;
}

Syntax::Name Parser::parseTableName(const char* expected) {
  if (ownersStand_ && atName("dbo") && token(1).lexeme == Lexeme::Dot) position_ += 2;
  const Syntax::Name name = parseName(expected);
  if (at(Lexeme::Dot)) {
    text_.refuse("Tables and views have plain names, without an owner or a database before them",
                 token().word);
  }
  return name;
}

Syntax::Name Parser::parseName(const char* expected) {
  const Token& name = expect(Lexeme::Name, expected);
  return {nameText(name), name.word};
}

std::span<Syntax::Name> Parser::parseNameList(const char* expected) {
  expect(Lexeme::LeftParenthesis, "'('");
  std::vector<Syntax::Name> names;
  do {
    names.push_back(parseName(expected));
  } while (accept(Lexeme::Comma));
  expect(Lexeme::RightParenthesis, "')'");
  return arena_.list(names);
}

const Token& Parser::token(std::size_t ahead) const {
  const std::size_t index = position_ + ahead;
  return index < tokens_.size() ? tokens_[index] : tokens_.back();
}

bool Parser::atName(std::string_view name, std::size_t ahead) const {
  const Token& candidate = token(ahead);
  return candidate.lexeme == Lexeme::Name && !candidate.quoted && sameName(candidate.word, name);
}

const Token& Parser::next() {
  const Token& current = token();
  if (position_ + 1 < tokens_.size()) ++position_;
  return current;
}

bool Parser::accept(Lexeme lexeme) {
  if (!at(lexeme)) return false;
  next();
  return true;
}

bool Parser::acceptName(std::string_view name) {
  if (!atName(name)) return false;
  next();
  return true;
}

const Token& Parser::expect(Lexeme lexeme, const char* expected) {
  if (!at(lexeme)) unexpected(expected);
  return next();
}

void Parser::expectName(std::string_view name) {
  if (!acceptName(name)) unexpected(std::string(name));
}

void Parser::unexpected(const std::string& expected) const {
  text_.refuse("Syntax error: " + expected + " is expected", token().word);
}

void Parser::tooDeep(std::string_view word) const {
  text_.refuse("The statement is nested deeper than " + std::to_string(kDeepest) + " levels", word);
}

std::string_view Parser::nameText(const Token& name) {
  if (!name.quoted) return name.word;
  return undoubled(name.word.substr(1, name.word.size() - 2), name.word.back());
}

std::string_view Parser::literalText(const Token& literal) {
  return undoubled(literal.word.substr(1, literal.word.size() - 2), literal.word.back());
}

std::string_view Parser::undoubled(std::string_view body, char quote) {
  if (body.find(quote) == std::string_view::npos) return body;
  std::string plain;
  for (std::size_t i = 0; i < body.size(); ++i) {
    plain += body[i];
    if (body[i] == quote) ++i;
  }
  return arena_.text(plain);
}

std::string_view Parser::slice(const Token& first, const Token& last) const {
  const char* const begin = first.word.data();
  return {begin, static_cast<std::size_t>(last.word.data() + last.word.size() - begin)};
}

}  // namespace QuorHost::Sql
