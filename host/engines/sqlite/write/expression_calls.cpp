// Calls, aggregates and conversions.
#include "host/engines/sqlite/write/call_names.h"
#include "host/engines/sqlite/write/expression_writer.h"

namespace QuorHost::Sqlite {
namespace {

using Sql::Function;
using Sql::Type;
using Sql::Tree::Expression;

// Entries on the parser's stack within the items of a list.
constexpr int kInFirstItem = 3;
constexpr int kInItem = 5;

}  // namespace

void ExpressionWriter::writeList(std::span<const Expression* const> items, std::string_view more) {
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

void ExpressionWriter::writeFunction(std::string_view name, std::span<const Expression* const> args,
                                     std::string_view more) {
  sql_.add(name);
  writeList(args, more);
}

void ExpressionWriter::writeWithin(std::string_view before, std::string_view name,
                                   std::span<const Expression* const> args, std::string_view more,
                                   std::string_view after) {
  const SqlText::Held held(sql_, kInFirstItem);
  sql_.add(before);
  writeFunction(name, args, more);
  sql_.add(after);
}

void ExpressionWriter::writeCall(const Expression& call) {
  switch (call.function) {
    case Function::RoundHalfAway:
    case Function::RoundHalfEven:
    case Function::Floor:
    case Function::Ceiling:
    case Function::Truncate:
      return writeRounding(call);
    case Function::AddToDate:
    case Function::DateDifference:
      return writeFunction(callName(call.function), call.args, unitLiteral(call.unit));
    case Function::Today:
      sql_.add("date('now', 'localtime')");
      return;
    case Function::Now:
      // Midnight has no time of day in the stored form.
      sql_.add("quor_date_text(datetime('now', 'localtime'))");
      return;
    case Function::IsNumeric:
      return writeWithin("coalesce(", callName(call.function), call.args, {}, ", 0)");
    case Function::LengthTrimmed:
      return writeWithin("length(", "rtrim", call.args, {}, ")");
    case Function::Year:
    case Function::Month:
    case Function::Day:
      return writeWithin("CAST(", "substr", call.args, datePart(call.function), " AS INTEGER)");
    default:
      return writeFunction(callName(call.function), call.args);
  }
}

/// quor_round(number, decimals, mode), or quor_round_units(units, places of the units, decimals,
/// mode).
void ExpressionWriter::writeRounding(const Expression& call) {
  const Expression& value = *call.args[0];
  const SqlText::Held held(sql_, kInItem);
  sql_.add(call.type == Type::Double ? "quor_round(" : "quor_round_units(");
  write(value);
  if (call.type != Type::Double) sql_.add(call.type == Type::Currency ? ", 4" : ", 0");
  sql_.add(", ");
  if (call.args.size() > 1) {
    write(*call.args[1]);
  } else {
    sql_.add("0");
  }
  sql_.add(", ").add(roundingMode(call.function)).add(")");
}

void ExpressionWriter::writeAggregate(const Expression& aggregate) {
  const SqlText::Held held(sql_, kInItem);
  const auto write = [&](std::string_view name) {
    sql_.add(name).add(aggregate.distinct ? "(DISTINCT " : "(");
    if (aggregate.args.empty()) {
      sql_.add("*");
    } else {
      writeCollated(*aggregate.args[0]);
    }
    sql_.add(")");
  };
  switch (aggregate.function) {
    case Function::Count:
      return write("count");
    case Function::Sum:
      return write("sum");
    case Function::Minimum:
      return write("min");
    case Function::Maximum:
      return write("max");
    default:
      break;
  }
  // The average of integers stays among integers.
  if (aggregate.type == Type::Double) return write("avg");
  const bool cut = aggregate.rounding == Sql::Rounding::TowardsZero;
  sql_.add(cut ? "(" : "quor_mean(");
  write("sum");
  sql_.add(cut ? " / " : ", ");
  write("count");
  sql_.add(")");
}

void ExpressionWriter::writeConvert(const Expression& conversion) {
  const Expression& value = *conversion.args[0];
  const Type from = value.type;
  const Type to = conversion.type;
  if (isStoredAlike(from, to)) return writeBare(value);
  if (const std::string_view factor = scaling(from, to); !factor.empty()) {
    write(value, Level::Product);
    sql_.add(factor);
    return;
  }
  switch (to) {
    case Type::Boolean:
      write(value, Level::Sum);
      sql_.add(" <> 0");
      return;
    case Type::Integer:
    case Type::Long:
      return writeWholeNumber(conversion);
    case Type::Double:
      if (from == Type::Text) return writeFunction("quor_number", value);
      if (from == Type::Date) return writeFunction("quor_serial", value);
      return writeCast(value, "REAL");
    case Type::Currency:
      if (from != Type::Date) return writeFunction("quor_money", value);
      return writeWithin("quor_money(", "quor_serial", conversion.args, {}, ")");
    case Type::Date:
      return writeFunction("quor_date_text", value);
    case Type::Text:
      if (from == Type::Currency) return writeFunction("quor_money_text", value);
      if (from == Type::Double) return writeFunction("quor_number_text", value);
      return writeCast(value, "TEXT");
    case Type::Unknown:
      return write(value);
  }
}

void ExpressionWriter::writeCast(const Expression& value, std::string_view type) {
  const SqlText::Held held(sql_, kInItem);
  sql_.add("CAST(");
  write(value);
  sql_.add(" AS ").add(type).add(")");
}

/// quor_long(number or text, rounding) or quor_integer(...), of whole numbers, doubles and texts.
void ExpressionWriter::writeWholeNumber(const Expression& conversion) {
  const Expression& value = *conversion.args[0];
  const bool cut = conversion.rounding == Sql::Rounding::TowardsZero;
  sql_.add(conversion.type == Type::Long ? "quor_long(" : "quor_integer(");
  const SqlText::Held held(sql_, kInItem);
  if (value.type == Type::Date) {
    writeFunction("quor_serial", value);
  } else if (value.type == Type::Currency && cut) {
    write(value, Level::Product);
    sql_.add(" / 10000");
  } else if (value.type == Type::Currency) {
    writeFunction("quor_round_units", value, "4, 0, 0");
    sql_.add(" / 10000");
  } else {
    write(value);
  }
  sql_.add(cut ? ", 1)" : ", 0)");
}

void ExpressionWriter::writeFunction(std::string_view name, const Expression& arg,
                                     std::string_view more) {
  const Expression* const only = &arg;
  writeFunction(name, std::span(&only, 1), more);
}

}  // namespace QuorHost::Sqlite
