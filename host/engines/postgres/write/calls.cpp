#include "host/engines/postgres/write/calls.h"

#include "host/engines/write/call_names.h"

namespace QuorHost::Postgres {
namespace {

using Sql::Function;
using Sql::Type;
using Sql::Tree::Expression;
using Write::ExpressionWriter;
using Write::Level;
using Kind = Expression::Kind;

/// Whether a whole number is a bigint as it is written.
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

/// A function whose result is a text where there was none.
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

}  // namespace

void writeOperand(ExpressionWriter& writer, const Expression& value, Level level) {
  if (!isWhole(value.type) || isBig(value)) return writer.write(value, level);
  writer.write(value, Level::Operand);
  writer.sql().add("::bigint");
}

void writeAs(ExpressionWriter& writer, const Expression& value, std::string_view type) {
  writer.write(value, Level::Operand);
  writer.sql().add("::").add(type);
}

void writeCall(ExpressionWriter& writer, const Expression& call) {
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

void writeAggregate(ExpressionWriter& writer, const Expression& aggregate) {
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

void writeConversion(ExpressionWriter& writer, const Expression& conversion) {
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

}  // namespace QuorHost::Postgres
