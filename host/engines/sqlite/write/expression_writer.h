// SQLite's SQL for expressions.
#pragma once

#include <span>
#include <string_view>

#include "host/engines/sqlite/write/expression_form.h"
#include "host/engines/sqlite/write/sql_text.h"
#include "host/sql/tree.h"

namespace QuorHost::Sqlite {

class ExpressionWriter {
 public:
  explicit ExpressionWriter(SqlText& sql) : sql_(sql) {}

  /// Adds `expression`, in parentheses where it binds less tightly than `level`.
  void write(const Sql::Tree::Expression& expression, Level level = Level::Lowest);

  /// The same with the order of texts, where it needs to be said.
  void writeCollated(const Sql::Tree::Expression& expression, Level level = Level::Lowest);

 private:
  using Expression = Sql::Tree::Expression;

  void writeBare(const Expression& expression);
  void writeLiteral(const Expression& literal);
  void writeArithmetic(const Expression& operation);
  void writeCompare(const Expression& comparison);
  void writeChain(std::span<Expression* const> conditions, Sql::Operator op);
  void writeBetween(const Expression& between);
  void writeIn(const Expression& in);
  void writeLike(const Expression& like);
  void writeCase(const Expression& choice);
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
