// The schema language, and the names of types.
#include <algorithm>
#include <array>

#include "host/sql/names.h"
#include "host/sql/parse/parser.h"

namespace QuorHost::Sql {
namespace {

using Syntax::Constraint;
using Syntax::Expression;
using Syntax::TypeName;

/// What may follow a type's name.
enum class Detail : std::uint8_t { None, Length, Decimals, Bits };

struct KnownType {
  std::string_view name;
  Type type;
  Detail detail = Detail::None;
};

constexpr std::array kTypes{
    KnownType{"int", Type::Long},
    KnownType{"integer", Type::Long},
    KnownType{"smallint", Type::Integer},
    KnownType{"tinyint", Type::Integer},
    KnownType{"bit", Type::Boolean},
    KnownType{"money", Type::Currency},
    KnownType{"decimal", Type::Currency, Detail::Decimals},
    KnownType{"numeric", Type::Currency, Detail::Decimals},
    KnownType{"float", Type::Double, Detail::Bits},
    KnownType{"real", Type::Double},
    KnownType{"datetime", Type::Date},
    KnownType{"date", Type::Date},
    KnownType{"varchar", Type::Text, Detail::Length},
    KnownType{"nvarchar", Type::Text, Detail::Length},
    KnownType{"char", Type::Text, Detail::Length},
    KnownType{"nchar", Type::Text, Detail::Length},
    KnownType{"text", Type::Text},
    KnownType{"ntext", Type::Text},
};

constexpr std::uint8_t kMostDecimals = 4;

}  // namespace

Syntax::Statement Parser::parseCreate() {
  next();
  if (acceptName("table")) return parseCreateTable();
  if (acceptName("view")) {
    Syntax::CreateView view{.name = parseTableName("the name of the view")};
    if (acceptName("with")) {
      expectName("schemabinding");
      view.kept = true;
      ownersStand_ = true;
    }
    expect(Lexeme::As, "AS");
    view.query = parseQuery();
    ownersStand_ = false;
    return view;
  }
  const bool unique = acceptName("unique");
  if (!atName("index")) unexpected(unique ? "INDEX" : "TABLE, VIEW or INDEX");
  next();
  return parseCreateIndex(unique);
}

Syntax::CreateTable Parser::parseCreateTable() {
  Syntax::CreateTable table{.name = parseTableName("the name of the table")};
  std::vector<Syntax::ColumnDefinition> columns;
  std::vector<Constraint> constraints;
  expect(Lexeme::LeftParenthesis, "'('");
  do {
    if (!parseTableConstraint(constraints)) columns.push_back(parseColumn(constraints));
  } while (accept(Lexeme::Comma));
  expect(Lexeme::RightParenthesis, "',' or ')'");
  if (columns.empty()) text_.refuse("A table needs a column", table.name.word);
  table.columns = arena_.list(columns);
  table.constraints = arena_.list(constraints);
  return table;
}

Syntax::ColumnDefinition Parser::parseColumn(std::vector<Constraint>& constraints) {
  Syntax::ColumnDefinition column{.name = parseName("a column")};
  column.type = parseType();
  if (column.type.type == Type::Text && column.type.size < 0) {
    text_.refuse("The length of the column is missing", column.type.word);
  }
  while (parseColumnRule(column, constraints)) continue;
  return column;
}

bool Parser::parseColumnRule(Syntax::ColumnDefinition& column,
                             std::vector<Constraint>& constraints) {
  const std::string_view word = token().word;
  const auto constrain = [&](Constraint::Kind kind) {
    constraints.push_back(
        {.kind = kind, .word = word, .columns = arena_.list(std::vector{column.name})});
  };
  if (accept(Lexeme::Not)) {
    expect(Lexeme::Null, "NULL");
    column.nullable = false;
  } else if (accept(Lexeme::Null)) {
    column.nullable = true;
  } else if (acceptName("primary")) {
    expectName("key");
    constrain(Constraint::Kind::PrimaryKey);
  } else if (acceptName("unique")) {
    constrain(Constraint::Kind::Unique);
  } else if (acceptName("identity")) {
    column.identity = true;
    if (accept(Lexeme::LeftParenthesis)) {
      const bool plain = readCount("the first number") == 1;
      expect(Lexeme::Comma, "','");
      if (readCount("the step") != 1 || !plain) {
        text_.refuse("Only IDENTITY(1,1) is kept", word);
      }
      expect(Lexeme::RightParenthesis, "')'");
    }
  } else if (acceptName("default")) {
    column.defaultValue = parseDefault();
  } else if (acceptName("references")) {
    constrain(Constraint::Kind::ForeignKey);
    parseReferences(constraints.back());
  } else {
    return false;
  }
  return true;
}

bool Parser::parseTableConstraint(std::vector<Constraint>& constraints) {
  const bool named = atName("constraint") && token(1).lexeme == Lexeme::Name;
  // A column may be called Primary or Unique; a constraint shows by what follows.
  const std::size_t at = named ? 2 : 0;
  const bool primary = atName("primary", at) && atName("key", at + 1);
  const bool foreign = atName("foreign", at) && atName("key", at + 1);
  const bool unique = atName("unique", at) && token(at + 1).lexeme == Lexeme::LeftParenthesis;
  if (!primary && !foreign && !unique) {
    if (named) text_.refuse("Only PRIMARY KEY, UNIQUE and FOREIGN KEY are kept", token(at).word);
    return false;
  }
  Constraint constraint{.kind = primary   ? Constraint::Kind::PrimaryKey
                                : foreign ? Constraint::Kind::ForeignKey
                                          : Constraint::Kind::Unique,
                        .word = token(at).word};
  position_ += at + (unique ? 1 : 2);
  constraint.columns = parseNameList("a column");
  if (foreign) {
    expectName("references");
    parseReferences(constraint);
  }
  constraints.push_back(constraint);
  return true;
}

void Parser::parseReferences(Constraint& constraint) {
  constraint.table = parseTableName("the name of a table");
  constraint.target = parseNameList("a column");
  if (at(Lexeme::On)) text_.refuse("Foreign keys take no further action", token().word);
}

Expression* Parser::parseDefault() {
  const Level level(*this);
  if (accept(Lexeme::LeftParenthesis)) {
    Expression* const inner = parseDefault();
    expect(Lexeme::RightParenthesis, "')'");
    return inner;
  }
  Expression* const value = parseUnary();
  const Expression* plain = value;
  if (plain->kind == Expression::Kind::Negate) plain = plain->args.front();
  const bool literal = plain->kind == Expression::Kind::Number ||
                       plain->kind == Expression::Kind::Text ||
                       plain->kind == Expression::Kind::Null;
  if (!literal) text_.refuse("A default must be a number, a text or NULL", plain->word);
  return value;
}

Syntax::CreateIndex Parser::parseCreateIndex(bool unique) {
  Syntax::CreateIndex index{.name = parseTableName("the name of the index")};
  index.unique = unique;
  expect(Lexeme::On, "ON");
  index.table = parseTableName("the name of a table");
  expect(Lexeme::LeftParenthesis, "'('");
  std::vector<Syntax::IndexColumn> columns;
  do {
    Syntax::IndexColumn column{.name = parseName("a column")};
    column.descending = accept(Lexeme::Desc);
    if (!column.descending) accept(Lexeme::Asc);
    columns.push_back(column);
  } while (accept(Lexeme::Comma));
  expect(Lexeme::RightParenthesis, "',' or ')'");
  index.columns = arena_.list(columns);
  if (acceptName("include")) index.included = parseNameList("a column");
  return index;
}

TypeName Parser::parseType() {
  const Token& name = expect(Lexeme::Name, "the name of a type");
  const auto* const known = std::ranges::find_if(
      kTypes, [&](const KnownType& candidate) { return sameName(candidate.name, name.word); });
  if (known == kTypes.end()) text_.refuse("Unknown type " + quoted(name.word), name.word);
  TypeName type{.word = name.word, .type = known->type};
  switch (known->detail) {
    case Detail::None:
      break;
    case Detail::Length:
      parseLength(type);
      break;
    case Detail::Decimals:
      parseDecimals(type);
      break;
    case Detail::Bits:
      if (accept(Lexeme::LeftParenthesis)) {
        readCount("the number of bits");
        expect(Lexeme::RightParenthesis, "')'");
      }
      break;
  }
  return type;
}

/// `(n)` or `(MAX)`; -1 stands for a length that is not given.
void Parser::parseLength(TypeName& type) {
  type.size = -1;
  if (!accept(Lexeme::LeftParenthesis)) return;
  if (acceptName("max")) {
    type.size = 0;
  } else {
    const std::string_view word = token().word;
    type.size = readCount("the length");
    if (type.size == 0) text_.refuse("A text of no characters cannot be stored", word);
  }
  expect(Lexeme::RightParenthesis, "')'");
}

/// `(digits)` or `(digits, decimals)`.
void Parser::parseDecimals(TypeName& type) {
  type.decimals = 0;
  if (!accept(Lexeme::LeftParenthesis)) return;
  readCount("the number of digits");
  if (accept(Lexeme::Comma)) {
    const std::string_view word = token().word;
    const std::int32_t decimals = readCount("the number of decimals");
    if (decimals > kMostDecimals) {
      text_.refuse("Exact numbers have at most four decimals", word);
    }
    type.decimals = static_cast<std::uint8_t>(decimals);
  }
  expect(Lexeme::RightParenthesis, "')'");
}

}  // namespace QuorHost::Sql
