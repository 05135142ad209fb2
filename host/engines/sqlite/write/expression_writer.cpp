#include "host/engines/sqlite/write/expression_writer.h"

#include <algorithm>

#include "host/engines/sqlite/write/query_writer.h"

namespace QuorHost::Sqlite {
namespace {

using Sql::Dialect;
using Sql::Operator;
using Sql::Type;
using Sql::Tree::Expression;
using Kind = Expression::Kind;

// Entries on the parser's stack within each construct.
constexpr int kInBetween = 4;
constexpr int kInThen = 6;
constexpr int kInSubSelect = 4;

}  // namespace

void ExpressionWriter::write(const Expression& expression, Level level) {
  if (levelOf(expression) >= level) return writeBare(expression);
  const SqlText::Held held(sql_, kInParentheses);
  sql_.add("(");
  writeBare(expression);
  sql_.add(")");
}

void ExpressionWriter::writeCollated(const Expression& expression, Level level) {
  if (!needsCollation(expression)) return write(expression, level);
  write(expression, Level::Collation);
  sql_.add(" COLLATE QUOR");
}

void ExpressionWriter::writeBare(const Expression& expression) {
  switch (expression.kind) {
    case Kind::Column:
      sql_.column(*expression.source, expression.column);
      return;
    case Kind::Literal:
      return writeLiteral(expression);
    case Kind::Marker:
      sql_.add("?").add(std::to_string(expression.marker + 1));
      return;
    case Kind::Negate: {
      const SqlText::Held held(sql_, kInSign);
      sql_.add("-");
      // "--" would begin a comment.
      return write(*expression.args[0], Level::Operand);
    }
    case Kind::Arithmetic:
      return writeArithmetic(expression);
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
      return writeLike(expression);
    case Kind::Case:
      return writeCase(expression);
    case Kind::Call:
      return writeCall(expression);
    case Kind::Aggregate:
      return writeAggregate(expression);
    case Kind::Convert:
      return writeConvert(expression);
    case Kind::Query:
      return writeSubSelect(*expression.query);
  }
}

void ExpressionWriter::writeLiteral(const Expression& literal) {
  if (literal.isNull) {
    sql_.add("NULL");
  } else if (literal.type == Type::Text || literal.type == Type::Date) {
    sql_.literal(literal.text);
  } else if (literal.type == Type::Double) {
    sql_.number(literal.number);
  } else {
    sql_.add(std::to_string(literal.integer));
  }
}

void ExpressionWriter::writeInfix(const Expression& left, std::string_view op,
                                  const Expression& right, Level level) {
  write(left, level);
  sql_.add(op);
  const SqlText::Held held(sql_, kInRightOperand);
  write(right, next(level));
}

void ExpressionWriter::writeArithmetic(const Expression& operation) {
  const std::string_view function = arithmeticFunction(operation);
  if (!function.empty()) return writeFunction(function, operation.args);
  writeInfix(*operation.args[0], symbol(operation.op), *operation.args[1], levelOf(operation));
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

void ExpressionWriter::writeLike(const Expression& like) {
  if (like.negated) sql_.add("NOT ");
  writeFunction("quor_like", like.args, like.wildcards == Dialect::Desktop ? "1" : "0");
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

void ExpressionWriter::writeSubSelect(const Sql::Tree::Query& query) {
  const SqlText::Held held(sql_, kInSubSelect);
  sql_.add("(");
  QueryWriter(sql_).write(query, false);
  sql_.add(")");
}

}  // namespace QuorHost::Sqlite
