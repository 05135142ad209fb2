#include "host/engines/write/expression_writer.h"

#include <algorithm>

#include "host/engines/write/query_writer.h"

namespace QuorHost::Write {
namespace {

using Sql::Operator;
using Sql::Tree::Expression;
using Kind = Expression::Kind;

// Entries on the parser's stack within each construct.
constexpr int kInBetween = 4;
constexpr int kInThen = 6;
constexpr int kInSubSelect = 4;
constexpr int kInFirstItem = 3;
constexpr int kInItem = 5;

}  // namespace

Level ExpressionWriter::levelOf(const Expression& expression, const EngineForm& form) noexcept {
  switch (expression.kind) {
    case Kind::Literal:
    case Kind::Arithmetic:
    case Kind::Convert:
      return form.levelOf(expression);
    case Kind::Negate:
      return Level::Sign;
    case Kind::Compare: {
      const bool equality = expression.op == Operator::Equal || expression.op == Operator::NotEqual;
      return equality ? Level::Equality : Level::Order;
    }
    case Kind::Logic:
      return expression.op == Operator::And ? Level::And : Level::Or;
    case Kind::Not:
      return Level::Not;
    case Kind::IsNull:
    case Kind::Between:
    case Kind::InList:
    case Kind::InQuery:
      return Level::Equality;
    case Kind::Like:
      return expression.negated ? Level::Not : Level::Operand;
    default:
      return Level::Operand;
  }
}

void ExpressionWriter::write(const Expression& expression, Level level) {
  if (levelOf(expression, form_) >= level) return writeBare(expression);
  const SqlText::Held held(sql_, kInParentheses);
  sql_.add("(");
  writeBare(expression);
  sql_.add(")");
}

void ExpressionWriter::writeCollated(const Expression& expression, Level level) {
  if (!form_.needsCollation(expression)) return write(expression, level);
  write(expression, Level::Collation);
  sql_.add(form_.collation());
}

void ExpressionWriter::writeBare(const Expression& expression) {
  switch (expression.kind) {
    case Kind::Column:
      return form_.writeColumn(*this, expression);
    case Kind::Literal:
      return form_.writeLiteral(*this, expression);
    case Kind::Marker:
      return form_.writeMarker(*this, expression);
    case Kind::Negate: {
      const SqlText::Held held(sql_, kInSign);
      return form_.writeNegate(*this, expression);
    }
    case Kind::Arithmetic:
      return form_.writeArithmetic(*this, expression);
    case Kind::Compare:
      return writeCompare(expression);
    case Kind::Logic:
      return writeLogic(expression, Asked::Value);
    case Kind::Not:
      return writeNot(expression, Asked::Value);
    case Kind::IsNull:
      write(*expression.args[0], Level::Sum);
      sql_.add(expression.negated ? " IS NOT NULL" : " IS NULL");
      return;
    case Kind::Between:
      return writeBetween(expression);
    case Kind::InList:
    case Kind::InQuery:
      return writeIn(expression);
    case Kind::Exists:
      sql_.add("EXISTS ");
      return writeSubSelect(*expression.query);
    case Kind::Like:
      if (expression.negated) sql_.add("NOT ");
      return form_.writeLike(*this, expression);
    case Kind::Case:
      return writeCase(expression);
    case Kind::Call:
      return form_.writeCall(*this, expression);
    case Kind::Aggregate:
      return form_.writeAggregate(*this, expression);
    case Kind::Convert:
      return form_.writeConvert(*this, expression);
    case Kind::Query:
      return writeSubSelect(*expression.query, form_.words().valuesNeedLimit);
  }
}

void ExpressionWriter::writeInfix(const Expression& left, std::string_view op,
                                  const Expression& right, Level level) {
  write(left, level);
  sql_.add(op);
  const SqlText::Held held(sql_, kInRightOperand);
  write(right, next(level));
}

void ExpressionWriter::writeCompare(const Expression& comparison) {
  // The left side decides, even a converted number over the declaration of a text column.
  writeCollated(*comparison.args[0], Level::Sum);
  sql_.add(symbol(comparison.op));
  const SqlText::Held held(sql_, kInRightOperand);
  write(*comparison.args[1], Level::Sum);
}

void ExpressionWriter::writeBetween(const Expression& between) {
  writeCollated(*between.args[0], Level::Sum);
  sql_.add(between.negated ? " NOT BETWEEN " : " BETWEEN ");
  const SqlText::Held held(sql_, kInBetween);
  write(*between.args[1], Level::Sum);
  sql_.add(" AND ");
  write(*between.args[2], Level::Sum);
}

void ExpressionWriter::writeIn(const Expression& in) {
  writeCollated(*in.args[0], Level::Sum);
  sql_.add(in.negated ? " NOT IN " : " IN ");
  if (in.kind == Kind::InQuery) {
    const SqlText::Held held(sql_, kInRightOperand);
    return writeSubSelect(*in.query);
  }
  writeList(in.args.subspan(1));
}

void ExpressionWriter::writeCase(const Expression& choice) {
  sql_.add("CASE");
  for (const Expression* rest = &choice; rest != nullptr;) {
    const std::size_t pairs = rest->args.size() / 2;
    for (std::size_t i = 0; i < pairs; ++i) {
      writeWhen(*rest->args[2 * i], *rest->args[2 * i + 1]);
    }
    if (rest->args.size() % 2 == 0) break;
    const Expression& otherwise = *rest->args.back();
    // A choice in the ELSE of another one goes on where that ends: chains of choices stay flat.
    rest = otherwise.kind == Kind::Case ? &otherwise : nullptr;
    if (rest != nullptr) continue;
    const SqlText::Held held(sql_, kInElse);
    sql_.add(" ELSE ");
    write(otherwise);
  }
  sql_.add(" END");
}

void ExpressionWriter::writeWhen(const Expression& condition, const Expression& value) {
  sql_.add(" WHEN ");
  {
    const SqlText::Held held(sql_, kInWhen);
    writeCondition(condition, Asked::Truth);
  }
  sql_.add(" THEN ");
  const SqlText::Held held(sql_, kInThen);
  write(value);
}

void ExpressionWriter::writeList(Terms items, std::string_view more) {
  std::string_view separator = "(";
  for (const Expression* const item : items) {
    const SqlText::Held held(sql_, item == items.front() ? kInFirstItem : kInItem);
    sql_.add(separator);
    write(*item);
    separator = ", ";
  }
  if (!more.empty()) sql_.add(separator).add(more);
  sql_.add(items.empty() && more.empty() ? "()" : ")");
}

void ExpressionWriter::writeFunction(std::string_view name, Terms args, std::string_view more) {
  sql_.add(name);
  writeList(args, more);
}

void ExpressionWriter::writeFunction(std::string_view name, const Expression& arg,
                                     std::string_view more) {
  const Expression* const only = &arg;
  writeFunction(name, std::span(&only, 1), more);
}

void ExpressionWriter::writeWithin(std::string_view before, std::string_view name, Terms args,
                                   std::string_view more, std::string_view after) {
  const SqlText::Held held(sql_, kInFirstItem);
  sql_.add(before);
  writeFunction(name, args, more);
  sql_.add(after);
}

void ExpressionWriter::writeAggregate(std::string_view name, const Expression& aggregate) {
  sql_.add(name).add(aggregate.distinct ? "(DISTINCT " : "(");
  if (aggregate.args.empty()) {
    sql_.add("*");
  } else {
    writeCollated(*aggregate.args[0]);
  }
  sql_.add(")");
}

void ExpressionWriter::writeCast(const Expression& value, std::string_view type) {
  const SqlText::Held held(sql_, kInItem);
  sql_.add("CAST(");
  write(value);
  sql_.add(" AS ").add(type).add(")");
}

void ExpressionWriter::writeSubSelect(const Sql::Tree::Query& query, bool asValue) {
  const SqlText::Held held(sql_, kInSubSelect);
  sql_.add("(");
  QueryWriter(sql_, form_).write(query, false, asValue);
  sql_.add(")");
}

}  // namespace QuorHost::Write
