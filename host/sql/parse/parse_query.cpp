// SELECT, its unions, and what its rows come from.
#include <algorithm>
#include <array>
#include <optional>

#include "host/sql/names.h"
#include "host/sql/number_text.h"
#include "host/sql/parse/parser.h"

namespace QuorHost::Sql {
namespace {

using Syntax::From;
using Syntax::Item;
using Syntax::JoinKind;
using Syntax::Query;
using Syntax::Select;

// Words of SQL that would be taken for an alias where they stand.
constexpr std::array<std::string_view, 14> kForeignWords{
    "cross",   "except", "fetch",  "for",  "full",  "intersect", "limit",
    "natural", "offset", "option", "over", "pivot", "using",     "with"};

bool isForeign(std::string_view word) {
  return std::ranges::any_of(kForeignWords,
                             [&](std::string_view foreign) { return sameName(foreign, word); });
}

}  // namespace

Query* Parser::parseQuery() {
  const Level level(*this);
  Query query{.word = token().word};
  const int outerDepth = deepest_;
  deepest_ = 0;

  std::vector<Syntax::Branch> branches{parseBranch()};
  while (accept(Lexeme::Union)) {
    const bool all = accept(Lexeme::All);
    branches.push_back(parseBranch());
    branches.back().all = all;
  }
  if (at(Lexeme::Order)) query.orderBy = parseOrderBy();
  query.branches = arena_.list(branches);

  query.depth = static_cast<std::uint16_t>(deepest_ + 1);
  deepest_ = outerDepth;
  countDepth(query.depth, query.word);
  // Parentheses around a whole select mean nothing.
  if (branches.size() == 1 && branches.front().query != nullptr && query.orderBy.empty()) {
    return branches.front().query;
  }
  return arena_.make(query);
}

Syntax::Branch Parser::parseBranch() {
  if (!accept(Lexeme::LeftParenthesis)) return {.select = parseSelect()};
  Query* const query = parseQuery();
  expect(Lexeme::RightParenthesis, "')'");
  return {.query = query};
}

Select* Parser::parseSelect() {
  Select select{.word = expect(Lexeme::Select, "SELECT").word};
  select.distinct = accept(Lexeme::Distinct);
  if (!select.distinct) accept(Lexeme::All);
  parseTop(select);

  std::vector<Item> items;
  do {
    items.push_back(parseItem());
  } while (accept(Lexeme::Comma));
  select.items = arena_.list(items);

  if (at(Lexeme::Into)) text_.refuse("SELECT cannot make a table", token().word);
  if (accept(Lexeme::From)) select.from = parseFrom();
  if (accept(Lexeme::Where)) select.where = parseExpression();
  if (accept(Lexeme::Group)) {
    expect(Lexeme::By, "BY");
    select.groupBy = arena_.list(parseExpressionList());
  }
  if (accept(Lexeme::Having)) select.having = parseExpression();
  return arena_.make(select);
}

void Parser::parseTop(Select& select) {
  const Lexeme after = token(1).lexeme;
  if (!atName("top") || (after != Lexeme::Number && after != Lexeme::LeftParenthesis)) return;
  next();
  const bool inParentheses = accept(Lexeme::LeftParenthesis);
  select.top = readCount("the number of rows");
  if (inParentheses) expect(Lexeme::RightParenthesis, "')'");
  if (atName("percent") || (atName("with") && atName("ties", 1))) {
    text_.refuse("TOP takes a number of rows and nothing else", token().word);
  }
}

std::int32_t Parser::readCount(const char* expected) {
  const Token& number = expect(Lexeme::Number, expected);
  const std::optional<std::int32_t> count = readNumber<std::int32_t>(number.word);
  if (!count) {
    text_.refuse(std::string("A whole number of 32 bits is expected for ") + expected, number.word);
  }
  return *count;
}

Item Parser::parseItem() {
  const Token& first = token();
  if (accept(Lexeme::Star)) return {.word = first.word};
  if (first.lexeme == Lexeme::Name && token(1).lexeme == Lexeme::Dot &&
      token(2).lexeme == Lexeme::Star) {
    next();
    next();
    return {.qualifier = nameText(first), .word = slice(first, next())};
  }
  if (rules_.aliasesNeedNoAs && first.lexeme == Lexeme::Name && token(1).lexeme == Lexeme::Equal) {
    next();
    next();
    return {.value = parseExpression(), .alias = nameText(first), .word = first.word};
  }
  Syntax::Expression* const value = parseExpression();
  return {.value = value, .alias = parseAlias(!rules_.aliasesNeedNoAs), .word = first.word};
}

std::string_view Parser::parseAlias(bool needsAs) {
  if (accept(Lexeme::As)) return nameText(expect(Lexeme::Name, "an alias"));
  if (!at(Lexeme::Name)) return {};
  if (!token().quoted && isForeign(token().word)) {
    text_.refuse(quoted(token().word) + " is SQL outside of what is read here", token().word);
  }
  if (needsAs) text_.refuse("In the desktop dialect an alias needs AS before it", token().word);
  return nameText(next());
}

From* Parser::parseFrom() {
  From* from = parseJoins();
  while (at(Lexeme::Comma)) {
    const std::string_view word = next().word;
    From* const right = parseJoins();
    from = arena_.make(From{.word = word, .left = from, .right = right});
  }
  return from;
}

From* Parser::parseJoins() {
  From* from = parseSource();
  std::size_t joins = 0;
  while (true) {
    const Token& word = token();
    JoinKind kind = JoinKind::Inner;
    if (!parseJoinWords(kind)) return from;
    if (++joins > 1 && rules_.joinsNeedParentheses) {
      text_.refuse("In the desktop dialect the join before this one must stand in parentheses",
                   word.word);
    }
    if (joins >= kMostTables) text_.refuse("FROM joins more than 64 tables", word.word);
    From* const right = parseSource();
    expect(Lexeme::On, "ON");
    Syntax::Expression* const condition = parseExpression();
    from = arena_.make(From{
        .word = word.word, .join = kind, .left = from, .right = right, .condition = condition});
  }
}

bool Parser::parseJoinWords(JoinKind& kind) {
  if (accept(Lexeme::Join)) return true;
  if (at(Lexeme::Inner)) {
    next();
  } else if (at(Lexeme::Left) || at(Lexeme::Right)) {
    kind = next().lexeme == Lexeme::Left ? JoinKind::Left : JoinKind::Right;
    accept(Lexeme::Outer);
  } else {
    return false;
  }
  expect(Lexeme::Join, "JOIN");
  return true;
}

From* Parser::parseSource() {
  const Level level(*this);
  const Token& first = token();
  if (atQuery()) {
    next();
    Query* const query = parseQuery();
    expect(Lexeme::RightParenthesis, "')'");
    const std::string_view alias = parseAlias(false);
    if (alias.empty()) text_.refuse("A select in FROM needs a name (AS ...)", token().word);
    return arena_.make(From{.word = first.word, .alias = alias, .query = query});
  }
  if (accept(Lexeme::LeftParenthesis)) {
    From* const joins = parseJoins();
    expect(Lexeme::RightParenthesis, "')'");
    return joins;
  }
  const Syntax::Name table = parseTableName("a table, a view or a select in parentheses");
  if (at(Lexeme::LeftParenthesis)) {
    text_.refuse("Functions cannot stand in FROM, and tables take no hints", table.word);
  }
  return arena_.make(From{.word = table.word, .table = table.text, .alias = parseAlias(false)});
}

std::span<Syntax::OrderItem> Parser::parseOrderBy() {
  next();
  expect(Lexeme::By, "BY");
  std::vector<Syntax::OrderItem> items;
  do {
    Syntax::OrderItem item{.value = parseExpression()};
    item.descending = accept(Lexeme::Desc);
    if (!item.descending) accept(Lexeme::Asc);
    items.push_back(item);
  } while (accept(Lexeme::Comma));
  return arena_.list(items);
}

// `((SELECT ...` may be a select in two pairs of parentheses, but also a join or an expression that
// begins with one. What follows the inner pairs tells.
bool Parser::atQuery() const {
  std::size_t inner = position_;
  while (tokens_[inner].lexeme == Lexeme::LeftParenthesis) ++inner;
  if (inner == position_ || tokens_[inner].lexeme != Lexeme::Select) return false;
  for (--inner; inner > position_; --inner) {
    if (!continuesQuery(tokens_[inner].partner + 1)) return false;
  }
  return true;
}

bool Parser::continuesQuery(std::size_t index) const {
  const Lexeme after = tokens_[index].lexeme;
  return after == Lexeme::RightParenthesis || after == Lexeme::Union || after == Lexeme::Order;
}

}  // namespace QuorHost::Sql
