// SQLite's SQL for expressions.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "host/engines/sqlite/write/expression_form.h"
#include "host/engines/sqlite/write/sql_text.h"
#include "host/sql/tree.h"

namespace QuorHost::Sqlite {

/// What of a condition its place asks for: whether it is true (WHERE, ON, WHEN), whether it is
/// false (the same under NOT), or which of true, false and NULL it is.
enum class Asked : std::uint8_t { Truth, Falsehood, Value };

class ExpressionWriter {
 public:
  using Terms = std::span<const Sql::Tree::Expression* const>;

  explicit ExpressionWriter(SqlText& sql) : sql_(sql) {}

  /// Adds `expression`, in parentheses where it binds less tightly than `level`.
  void write(const Sql::Tree::Expression& expression, Level level = Level::Lowest);

  /// The same with the order of texts, where it needs to be said.
  void writeCollated(const Sql::Tree::Expression& expression, Level level = Level::Lowest);

  // Conditions. The engine tries the terms of AND and OR in an order of its own. What could end the
  // statement is therefore written such that the terms before it in the text are tried first.

  /// A condition in a place that asks for `asked` alone.
  void writeCondition(const Sql::Tree::Expression& condition, Asked asked,
                      Level level = Level::Lowest);

  /// The condition of WHERE or ON that `terms`, at least one, make up together. They are tried
  /// where all of `guards` are true, which hold for every row that the condition decides on. Terms
  /// that cannot raise stay as they are, so that indexes serve them.
  void writeFilter(Terms guards, Terms terms);

  /// The conjunction of `terms`, at least one, each tried only where all before it are true.
  void writeInTurn(Terms terms);

 private:
  using Expression = Sql::Tree::Expression;

  void writeBare(const Expression& expression);
  void writeLiteral(const Expression& literal);
  void writeArithmetic(const Expression& operation);
  void writeCompare(const Expression& comparison);
  void writeNot(const Expression& negation, Asked asked);
  void writeLogic(const Expression& logic, Asked asked);
  void writeChain(Terms conditions, Sql::Operator op, Asked asked);
  void writeInTurn(Terms conditions, Sql::Operator op, Asked asked);
  void writeValueInTurn(const Expression& logic);
  void writeTest(const Expression& condition, Sql::Operator op, Asked asked);
  void writeLookUps(Terms terms);
  void writeBehind(Terms guards, const Expression& condition);
  void writeBetween(const Expression& between);
  void writeIn(const Expression& in);
  void writeLike(const Expression& like);
  void writeCase(const Expression& choice);
  void writeWhen(const Expression& condition, const Expression& value);
  void writeCall(const Expression& call);
  void writeRounding(const Expression& call);
  void writeAggregate(const Expression& aggregate);
  void writeConvert(const Expression& conversion);
  /// `(item, item, ...)`, with `more` as further items.
  void writeList(std::span<const Expression* const> items, std::string_view more = {});
  void writeCast(const Expression& value, std::string_view type);
  void writeWholeNumber(const Expression& conversion);
  void writeSubSelect(const Sql::Tree::Query& query);
  void writeInfix(const Expression& left, std::string_view op, const Expression& right,
                  Level level);
  /// The name of a function and the list of its arguments.
  void writeFunction(std::string_view name, std::span<const Expression* const> args,
                     std::string_view more = {});
  void writeFunction(std::string_view name, const Expression& arg, std::string_view more = {});

  /// The same as the first argument of another function.
  void writeWithin(std::string_view before, std::string_view name,
                   std::span<const Expression* const> args, std::string_view more,
                   std::string_view after);

  SqlText& sql_;
};

}  // namespace QuorHost::Sqlite
