#include "host/engines/postgres/write/postgres_form.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "host/engines/write/call_names.h"
#include "host/engines/write/expression_writer.h"
#include "platform/values/currency.h"

namespace QuorHost::Postgres {
namespace {

using Sql::Dialect;
using Sql::Function;
using Sql::Operator;
using Sql::Type;
using Sql::Tree::Expression;
using Sql::Tree::From;
using Sql::Tree::JoinKind;
using Write::ExpressionWriter;
using Write::Level;
using Kind = Expression::Kind;

// The server's parser has a stack of two megabytes, which no statement fills that the front end
// lets through; its longest name is one byte shorter than its type for names.
constexpr Write::TextRules kText{
    .mostEntries = 100'000, .longestName = 63, .foldsNames = true, .reserved = "quor_"};
// A bare number among keys would be the place of a column.
constexpr Write::Words kWords{.yes = "TRUE",
                              .no = "FALSE",
                              .wall = " OFFSET 0",
                              .unnamed = " AS \":all\"",
                              .constantKey = "(SELECT 1)",
                              .valuesNeedLimit = true,
                              .ordersNullsItsWay = true,
                              .readsKeysOnly = true};

/// What makes a text one that is compared as texts are.
constexpr std::string_view kOrder = "::bpchar COLLATE \"quor\"";

bool isWhole(Type type) { return type == Type::Integer || type == Type::Long; }

/// Whether a whole number is written as a bigint, so that computing with it cannot leave 32 bits.
bool isBig(const Expression& value) {
  switch (value.kind) {
    case Kind::Arithmetic:
    case Kind::Call:
      return value.function != Function::Coalesce;
    case Kind::Marker:
      return true;
    case Kind::Aggregate:
      return value.function == Function::Count || value.function == Function::Sum;
    default:
      return false;
  }
}

/// A number as an operand of arithmetic.
void writeOperand(ExpressionWriter& writer, const Expression& value, Level level) {
  if (!isWhole(value.type) || isBig(value)) return writer.write(value, level);
  writer.write(value, Level::Operand);
  writer.sql().add("::bigint");
}

/// A value of money in ten-thousandths, as a double.
void writeUnits(ExpressionWriter& writer, const Expression& amount) {
  writer.sql().add("(");
  writer.write(amount, Level::Product);
  writer.sql().add(" * 10000)::float8");
}

/// `value` in parentheses, converted to `type`.
void writeAs(ExpressionWriter& writer, const Expression& value, std::string_view type) {
  writer.write(value, Level::Operand);
  writer.sql().add("::").add(type);
}

/// A function of an argument and perhaps more, whose result is a text where there was none.
void writeText(ExpressionWriter& writer, std::string_view function, const Expression& value) {
  writer.sql().add("(");
  writer.writeFunction(function, value);
  writer.sql().add(kOrder).add(")");
}

void writeRounding(ExpressionWriter& writer, const Expression& call) {
  const Expression& value = *call.args[0];
  writer.sql().add(call.type == Type::Double     ? "quor_round("
                   : call.type == Type::Currency ? "quor_round_money("
                                                 : "quor_round_whole(");
  writer.write(value);
  writer.sql().add(", ");
  if (call.args.size() > 1) {
    writer.write(*call.args[1]);
  } else {
    writer.sql().add("0");
  }
  writer.sql().add(", ").add(Write::roundingMode(call.function)).add(")");
}

void writeWholeNumber(ExpressionWriter& writer, const Expression& conversion) {
  const Expression& value = *conversion.args[0];
  if (value.type == Type::Boolean) return writeAs(writer, value, "integer");
  if (value.type == Type::Integer) return writer.writeBare(value);
  writer.sql().add(conversion.type == Type::Long ? "quor_long(" : "quor_integer(");
  if (value.type == Type::Date) {
    writer.writeFunction("quor_serial", value);
  } else if (value.type == Type::Long) {
    writeAs(writer, value, "numeric");
  } else {
    writer.write(value);
  }
  writer.sql().add(conversion.rounding == Sql::Rounding::TowardsZero ? ", 1)" : ", 0)");
}

class PostgresForm final : public Write::EngineForm {
 public:
  [[nodiscard]] const Write::TextRules& textRules() const noexcept override { return kText; }
  [[nodiscard]] const Write::Words& words() const noexcept override { return kWords; }

  [[nodiscard]] std::string_view joinWord(const From& join) const noexcept override {
    if (join.condition == nullptr) return " CROSS JOIN ";
    return join.join == JoinKind::Left ? " LEFT JOIN " : " JOIN ";
  }

  [[nodiscard]] Level levelOf(const Expression& expression) const noexcept override;

  void writeColumn(ExpressionWriter& writer, const Expression& column) const override {
    writer.sql().column(*column.source, column.column);
    const Sql::Relation* const relation = column.source->relation;
    const bool stored = relation != nullptr && relation->kind == Sql::Relation::Kind::Table;
    // The same bytes: indexes serve it as the column itself.
    if (stored && column.type == Type::Text) writer.sql().add("::bpchar");
  }
  void writeLiteral(ExpressionWriter& writer, const Expression& literal) const override;
  void writeMarker(ExpressionWriter& writer, const Expression& marker) const override {
    writer.sql().add(marker.type == Type::Text ? "($" : "$");
    writer.sql().add(std::to_string(marker.marker + 1));
    if (marker.type == Type::Text) {
      writer.sql().add(kOrder).add(")");
    } else if (marker.type != Type::Unknown) {
      writer.sql().add("::").add(serverType(marker.type));
    }
  }
  void writeNegate(ExpressionWriter& writer, const Expression& sign) const override {
    const Expression& value = *sign.args[0];
    writer.sql().add("-");
    if (value.type == Type::Boolean) return writeAs(writer, value, "integer");
    writeOperand(writer, value, Level::Operand);
  }
  void writeArithmetic(ExpressionWriter& writer, const Expression& operation) const override;
  void writeLike(ExpressionWriter& writer, const Expression& like) const override {
    writer.writeFunction("quor_like", like.args, like.wildcards == Dialect::Desktop ? "1" : "0");
  }
  void writeCall(ExpressionWriter& writer, const Expression& call) const override;
  void writeAggregate(ExpressionWriter& writer, const Expression& aggregate) const override;
  void writeConvert(ExpressionWriter& writer, const Expression& conversion) const override;

  // Every text is written with its order.
  [[nodiscard]] bool needsCollation(const Expression& /*value*/) const noexcept override {
    return false;
  }
  [[nodiscard]] std::string_view collation() const noexcept override { return {}; }
};

Level PostgresForm::levelOf(const Expression& expression) const noexcept {
  switch (expression.kind) {
    case Kind::Literal: {
      const bool number = isWhole(expression.type) || expression.type == Type::Currency;
      return number && !expression.isNull && expression.integer < 0 ? Level::Sign : Level::Operand;
    }
    case Kind::Arithmetic:
      switch (expression.op) {
        case Operator::Concatenate:
          return Level::Operand;
        case Operator::Add:
          return expression.type == Type::Text ? Level::Operand : Level::Sum;
        case Operator::Subtract:
          return Level::Sum;
        case Operator::Multiply: {
          const bool money = expression.args[0]->type == Type::Currency &&
                             expression.args[1]->type == Type::Currency;
          return money ? Level::Operand : Level::Product;
        }
        case Operator::Divide:
          return expression.type == Type::Currency ? Level::Operand : Level::Product;
        default:
          return Level::Product;
      }
    case Kind::Convert: {
      const Expression& value = *expression.args[0];
      const bool same = value.type == Type::Integer && expression.type == Type::Long;
      return same ? ExpressionWriter::levelOf(value, *this) : Level::Operand;
    }
    default:
      return Level::Operand;
  }
}

void PostgresForm::writeLiteral(ExpressionWriter& writer, const Expression& literal) const {
  Write::SqlText& sql = writer.sql();
  if (literal.isNull) {
    if (literal.type == Type::Unknown) {
      sql.add("NULL");
    } else if (literal.type == Type::Text) {
      sql.add("(NULL").add(kOrder).add(")");
    } else {
      sql.add("NULL::").add(serverType(literal.type));
    }
    return;
  }
  switch (literal.type) {
    case Type::Text:
      sql.add("(").literal(literal.text).add(kOrder).add(")");
      return;
    case Type::Date:
      sql.literal(literal.text).add("::timestamp");
      return;
    case Type::Double:
      sql.add("'").number(literal.number).add("'::float8");
      return;
    case Type::Boolean:
      sql.add(literal.integer != 0 ? kWords.yes : kWords.no);
      return;
    case Type::Currency:
      sql.add(QuorDataLib::Currency::fromUnits(literal.integer).toText(4));
      return;
    default:
      sql.add(std::to_string(literal.integer));
  }
}

void PostgresForm::writeArithmetic(ExpressionWriter& writer, const Expression& operation) const {
  const Expression& left = *operation.args[0];
  const Expression& right = *operation.args[1];
  const bool money = left.type == Type::Currency && right.type == Type::Currency;
  const auto infix = [&](std::string_view op, Level level) {
    writeOperand(writer, left, level);
    writer.sql().add(op);
    writeOperand(writer, right, Write::next(level));
  };
  switch (operation.op) {
    case Operator::Concatenate:
      return writer.writeFunction("quor_join", operation.args);
    case Operator::Add:
      if (operation.type == Type::Text) return writer.writeFunction("quor_join", operation.args);
      return infix(" + ", Level::Sum);
    case Operator::Subtract:
      return infix(" - ", Level::Sum);
    case Operator::Multiply:
      if (money) return writer.writeFunction("quor_multiply", operation.args);
      return infix(" * ", Level::Product);
    case Operator::Modulo:
      return infix(" % ", Level::Product);
    case Operator::DivideWhole:
      return infix(" / ", Level::Product);
    default:
      break;
  }
  if (operation.type == Type::Currency) return writer.writeFunction("quor_ratio", operation.args);
  if (!money) return infix(" / ", Level::Product);
  // The ten-thousandths cancel out; two doubles of the amounts themselves would not.
  writeUnits(writer, left);
  writer.sql().add(" / ");
  writeUnits(writer, right);
}

void PostgresForm::writeCall(ExpressionWriter& writer, const Expression& call) const {
  const auto part = [&](std::string_view name) {
    writer.sql().add("extract(").add(name).add(" FROM ");
    writer.write(*call.args[0]);
    writer.sql().add(")::bigint");
  };
  switch (call.function) {
    case Function::RoundHalfAway:
    case Function::RoundHalfEven:
    case Function::Floor:
    case Function::Ceiling:
    case Function::Truncate:
      return writeRounding(writer, call);
    case Function::Absolute:
      writer.sql().add("abs(");
      writeOperand(writer, *call.args[0], Level::Lowest);
      writer.sql().add(")");
      return;
    case Function::AddToDate:
    case Function::DateDifference:
      return writer.writeFunction(Write::callName(call.function), call.args,
                                  Write::unitLiteral(call.unit));
    case Function::Today:
      writer.sql().add("date_trunc('day', statement_timestamp()::timestamp)");
      return;
    case Function::Now:
      writer.sql().add("date_trunc('second', statement_timestamp()::timestamp)");
      return;
    case Function::IsNumeric: {
      const bool truth = call.type == Type::Boolean;
      return writer.writeWithin(truth ? "(coalesce(" : "coalesce(", Write::callName(call.function),
                                call.args, {}, truth ? ", 0) <> 0)" : ", 0)");
    }
    case Function::Length:
      return writer.writeFunction("quor_length", call.args);
    case Function::LengthTrimmed:
      // Of a bpchar, blanks at the end do not count.
      writer.writeFunction("char_length", call.args);
      writer.sql().add("::bigint");
      return;
    case Function::Trim:
      return writer.writeFunction("quor_trim", call.args);
    case Function::TrimLeft:
      return writer.writeFunction("quor_trim_left", call.args);
    case Function::TrimRight:
      return writer.writeFunction("quor_trim_right", call.args);
    case Function::Year:
      return part("year");
    case Function::Month:
      return part("month");
    case Function::Day:
      return part("day");
    default:
      return writer.writeFunction(Write::callName(call.function), call.args);
  }
}

void PostgresForm::writeAggregate(ExpressionWriter& writer, const Expression& aggregate) const {
  const auto write = [&](std::string_view name) { writer.writeAggregate(name, aggregate); };
  switch (aggregate.function) {
    case Function::Count:
      return write("count");
    case Function::Sum:
      write("sum");
      if (isWhole(aggregate.type)) writer.sql().add("::bigint");
      return;
    case Function::Minimum:
      return write("min");
    case Function::Maximum:
      return write("max");
    default:
      break;
  }
  if (aggregate.type == Type::Double) return write("avg");
  if (isWhole(aggregate.type)) {
    writer.sql().add("(");
    write("sum");
    writer.sql().add("::bigint / ");
    write("count");
    writer.sql().add(")");
    return;
  }
  const bool cut = aggregate.rounding == Sql::Rounding::TowardsZero;
  writer.sql().add(cut ? "quor_mean_cut(" : "quor_mean(");
  write("sum");
  writer.sql().add(", ");
  write("count");
  writer.sql().add(")");
}

void PostgresForm::writeConvert(ExpressionWriter& writer, const Expression& conversion) const {
  const Expression& value = *conversion.args[0];
  const Type from = value.type;
  switch (conversion.type) {
    case Type::Boolean:
      writer.sql().add("(");
      writer.write(value, Level::Sum);
      writer.sql().add(" <> 0)");
      return;
    case Type::Integer:
    case Type::Long:
      return writeWholeNumber(writer, conversion);
    case Type::Double:
      if (from == Type::Text) return writer.writeFunction("quor_number", value);
      if (from == Type::Date) return writer.writeFunction("quor_serial", value);
      return writeAs(writer, value, "float8");
    case Type::Currency:
      if (isWhole(from)) return writeAs(writer, value, "numeric");
      if (from != Type::Date) return writer.writeFunction("quor_money", value);
      return writer.writeWithin("quor_money(", "quor_serial", conversion.args, {}, ")");
    case Type::Date:
      return writer.writeFunction("quor_date", value);
    case Type::Text:
      if (from == Type::Currency) return writeText(writer, "quor_money_text", value);
      if (from == Type::Double) return writeText(writer, "quor_number_text", value);
      if (from == Type::Date) return writeText(writer, "quor_date_text", value);
      writer.sql().add("(");
      writeAs(writer, value, "text");
      writer.sql().add(kOrder).add(")");
      return;
    case Type::Unknown:
      return writer.write(value, Level::Operand);
  }
}

}  // namespace

const Write::EngineForm& postgresForm() noexcept {
  static const PostgresForm form;
  return form;
}

const Write::TextRules& postgresText() noexcept { return kText; }

std::string_view serverType(Type type) noexcept {
  switch (type) {
    case Type::Boolean:
      return "boolean";
    case Type::Integer:
    case Type::Long:
      return "bigint";
    case Type::Double:
      return "float8";
    case Type::Currency:
      return "numeric";
    case Type::Date:
      return "timestamp";
    default:
      return "bpchar";
  }
}

}  // namespace QuorHost::Postgres
