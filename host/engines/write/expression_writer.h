// The walk over expressions, which an engine's form fills in.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "host/engines/write/engine_form.h"
#include "host/engines/write/expression_form.h"
#include "host/engines/write/sql_text.h"
#include "host/sql/tree.h"

namespace QuorHost::Write {

/// What of a condition its place asks for: whether it is true (WHERE, ON, WHEN), whether it is
/// false (the same under NOT), or which of true, false and NULL it is.
enum class Asked : std::uint8_t { Truth, Falsehood, Value };

class ExpressionWriter {
 public:
  using Terms = std::span<const Sql::Tree::Expression* const>;

  ExpressionWriter(SqlText& sql, const EngineForm& form) : sql_(sql), form_(form) {}

  [[nodiscard]] SqlText& sql() const noexcept { return sql_; }

  /// The level of the outermost operator that `expression` is written with.
  [[nodiscard]] static Level levelOf(const Sql::Tree::Expression& expression,
                                     const EngineForm& form) noexcept;

  /// Adds `expression`, in parentheses where it binds less tightly than `level`.
  void write(const Sql::Tree::Expression& expression, Level level = Level::Lowest);

  /// The same with the order of texts, where it needs to be said.
  void writeCollated(const Sql::Tree::Expression& expression, Level level = Level::Lowest);

  // What forms put their texts together from.

  /// Two operands of `level` with an operator between them.
  void writeInfix(const Sql::Tree::Expression& left, std::string_view op,
                  const Sql::Tree::Expression& right, Level level);
  /// `(item, item, ...)`, with `more` as further items.
  void writeList(Terms items, std::string_view more = {});
  /// The name of a function and the list of its arguments.
  void writeFunction(std::string_view name, Terms args, std::string_view more = {});
  void writeFunction(std::string_view name, const Sql::Tree::Expression& arg,
                     std::string_view more = {});
  /// The same as the first argument of another function.
  void writeWithin(std::string_view before, std::string_view name, Terms args,
                   std::string_view more, std::string_view after);
  /// An aggregate under the engine's name for it, with all it is of.
  void writeAggregate(std::string_view name, const Sql::Tree::Expression& aggregate);
  void writeCast(const Sql::Tree::Expression& value, std::string_view type);
  /// The expression without parentheses.
  void writeBare(const Sql::Tree::Expression& expression);

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
  void writeCase(const Expression& choice);
  void writeWhen(const Expression& condition, const Expression& value);
  void writeSubSelect(const Sql::Tree::Query& query, bool asValue = false);

  SqlText& sql_;
  const EngineForm& form_;
};

}  // namespace QuorHost::Write
