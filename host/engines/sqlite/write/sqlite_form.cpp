#include "host/engines/sqlite/write/sqlite_form.h"

#include <cmath>
#include <string>

#include "host/engines/write/call_names.h"
#include "host/engines/write/expression_writer.h"

namespace QuorHost::Sqlite {
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
using Write::SqlText;
using Kind = Expression::Kind;

// Entries on the parser's stack within the items of a list.
constexpr int kInItem = 5;

constexpr Write::TextRules kText{.mostEntries = 90, .reserved = "sqlite_"};
// To the engine a limit, if only this one, is a wall: it moves nothing through it.
constexpr Write::Words kWords{.yes = "1", .no = "0", .wall = " LIMIT -1"};

bool isMoneyProduct(const Expression& operation) noexcept {
  return operation.op == Operator::Multiply && operation.args[0]->type == Type::Currency &&
         operation.args[1]->type == Type::Currency;
}

/// The function of an arithmetic operator that the engine's own one does not do exactly, or
/// nothing.
std::string_view arithmeticFunction(const Expression& operation) noexcept {
  switch (operation.op) {
    case Operator::Multiply:
      return isMoneyProduct(operation) ? "quor_multiply" : std::string_view();
    case Operator::Divide:
      return operation.type == Type::Currency ? "quor_ratio" : "quor_divide";
    case Operator::DivideWhole:
      return "quor_quotient";
    case Operator::Modulo:
      return "quor_modulo";
    default:
      return {};
  }
}

Level arithmeticLevel(const Expression& operation) noexcept {
  if (!arithmeticFunction(operation).empty()) return Level::Operand;
  switch (operation.op) {
    case Operator::Concatenate:
      return Level::Concatenation;
    case Operator::Multiply:
      return Level::Product;
    default:
      return Level::Sum;
  }
}

/// Factor or divisor of a conversion between whole numbers, ten-thousandths and doubles, or
/// nothing.
std::string_view scaling(Type from, Type to) noexcept {
  if (to == Type::Currency && (from == Type::Integer || from == Type::Long)) return " * 10000";
  if (to == Type::Double && from == Type::Currency) return " / 10000.0";
  return {};
}

/// Whether a conversion leaves what is stored as it is.
bool isStoredAlike(Type from, Type to) noexcept {
  const auto whole = [](Type type) {
    return type == Type::Boolean || type == Type::Integer || type == Type::Long;
  };
  return (whole(from) && to == Type::Long) || (from == Type::Date && to == Type::Text);
}

/// quor_round(number, decimals, mode), or quor_round_units(units, places of the units, decimals,
/// mode).
void writeRounding(ExpressionWriter& writer, const Expression& call) {
  const Expression& value = *call.args[0];
  const SqlText::Held held(writer.sql(), kInItem);
  writer.sql().add(call.type == Type::Double ? "quor_round(" : "quor_round_units(");
  writer.write(value);
  if (call.type != Type::Double) writer.sql().add(call.type == Type::Currency ? ", 4" : ", 0");
  writer.sql().add(", ");
  if (call.args.size() > 1) {
    writer.write(*call.args[1]);
  } else {
    writer.sql().add("0");
  }
  writer.sql().add(", ").add(Write::roundingMode(call.function)).add(")");
}

/// quor_long(number or text, rounding) or quor_integer(...), of whole numbers, doubles and texts.
void writeWholeNumber(ExpressionWriter& writer, const Expression& conversion) {
  const Expression& value = *conversion.args[0];
  const bool cut = conversion.rounding == Sql::Rounding::TowardsZero;
  writer.sql().add(conversion.type == Type::Long ? "quor_long(" : "quor_integer(");
  const SqlText::Held held(writer.sql(), kInItem);
  if (value.type == Type::Date) {
    writer.writeFunction("quor_serial", value);
  } else if (value.type == Type::Currency && cut) {
    writer.write(value, Level::Product);
    writer.sql().add(" / 10000");
  } else if (value.type == Type::Currency) {
    writer.writeFunction("quor_round_units", value, "4, 0, 0");
    writer.sql().add(" / 10000");
  } else {
    writer.write(value);
  }
  writer.sql().add(cut ? ", 1)" : ", 0)");
}

class SqliteForm final : public Write::EngineForm {
 public:
  [[nodiscard]] const Write::TextRules& textRules() const noexcept override { return kText; }
  [[nodiscard]] const Write::Words& words() const noexcept override { return kWords; }
  [[nodiscard]] std::string_view joinWord(const From& join) const noexcept override;
  [[nodiscard]] Level levelOf(const Expression& expression) const noexcept override;

  void writeColumn(ExpressionWriter& writer, const Expression& column) const override {
    writer.sql().column(*column.source, column.column);
  }
  void writeLiteral(ExpressionWriter& writer, const Expression& literal) const override;
  void writeMarker(ExpressionWriter& writer, const Expression& marker) const override {
    writer.sql().add("?").add(std::to_string(marker.marker + 1));
  }
  void writeNegate(ExpressionWriter& writer, const Expression& sign) const override {
    writer.sql().add("-");
    // "--" would begin a comment.
    writer.write(*sign.args[0], Level::Operand);
  }
  void writeArithmetic(ExpressionWriter& writer, const Expression& operation) const override;
  void writeLike(ExpressionWriter& writer, const Expression& like) const override {
    writer.writeFunction("quor_like", like.args, like.wildcards == Dialect::Desktop ? "1" : "0");
  }
  void writeCall(ExpressionWriter& writer, const Expression& call) const override;
  void writeAggregate(ExpressionWriter& writer, const Expression& aggregate) const override;
  void writeConvert(ExpressionWriter& writer, const Expression& conversion) const override;

  /// Text columns have the order from their declaration, and the columns of views and derived
  /// tables from what they select; every other text would be compared byte by byte.
  [[nodiscard]] bool needsCollation(const Expression& value) const noexcept override {
    return value.type == Type::Text && value.kind != Kind::Column;
  }
  [[nodiscard]] std::string_view collation() const noexcept override { return " COLLATE QUOR"; }
};

std::string_view SqliteForm::joinWord(const From& join) const noexcept {
  switch (join.join) {
    case JoinKind::Inner:
      // To the engine the second is an inner join, too, but one whose order it keeps.
      return join.ordered ? " CROSS JOIN " : " JOIN ";
    case JoinKind::Left:
      return " LEFT JOIN ";
    case JoinKind::Cross:
      break;
  }
  return ", ";
}

Level SqliteForm::levelOf(const Expression& expression) const noexcept {
  switch (expression.kind) {
    case Kind::Literal: {
      const bool minus =
          !expression.isNull && (expression.integer < 0 || std::signbit(expression.number));
      return minus ? Level::Sign : Level::Operand;
    }
    case Kind::Arithmetic:
      return arithmeticLevel(expression);
    default:
      break;
  }
  const Expression& value = *expression.args[0];
  if (isStoredAlike(value.type, expression.type)) {
    return ExpressionWriter::levelOf(value, *this);
  }
  if (expression.type == Type::Boolean) return Level::Equality;
  return scaling(value.type, expression.type).empty() ? Level::Operand : Level::Product;
}

void SqliteForm::writeLiteral(ExpressionWriter& writer, const Expression& literal) const {
  SqlText& sql = writer.sql();
  if (literal.isNull) {
    sql.add("NULL");
  } else if (literal.type == Type::Text || literal.type == Type::Date) {
    sql.literal(literal.text);
  } else if (literal.type == Type::Double) {
    sql.number(literal.number);
  } else {
    sql.add(std::to_string(literal.integer));
  }
}

void SqliteForm::writeArithmetic(ExpressionWriter& writer, const Expression& operation) const {
  const std::string_view function = arithmeticFunction(operation);
  if (!function.empty()) return writer.writeFunction(function, operation.args);
  writer.writeInfix(*operation.args[0], Write::symbol(operation.op), *operation.args[1],
                    levelOf(operation));
}

void SqliteForm::writeCall(ExpressionWriter& writer, const Expression& call) const {
  switch (call.function) {
    case Function::RoundHalfAway:
    case Function::RoundHalfEven:
    case Function::Floor:
    case Function::Ceiling:
    case Function::Truncate:
      return writeRounding(writer, call);
    case Function::AddToDate:
    case Function::DateDifference:
      return writer.writeFunction(Write::callName(call.function), call.args,
                                  Write::unitLiteral(call.unit));
    case Function::Today:
      writer.sql().add("date('now', 'localtime')");
      return;
    case Function::Now:
      // Midnight has no time of day in the stored form.
      writer.sql().add("quor_date_text(datetime('now', 'localtime'))");
      return;
    case Function::IsNumeric:
      return writer.writeWithin("coalesce(", Write::callName(call.function), call.args, {}, ", 0)");
    case Function::LengthTrimmed:
      return writer.writeWithin("length(", "rtrim", call.args, {}, ")");
    case Function::Year:
    case Function::Month:
    case Function::Day:
      return writer.writeWithin("CAST(", "substr", call.args, Write::datePart(call.function),
                                " AS INTEGER)");
    default:
      return writer.writeFunction(Write::callName(call.function), call.args);
  }
}

void SqliteForm::writeAggregate(ExpressionWriter& writer, const Expression& aggregate) const {
  const SqlText::Held held(writer.sql(), kInItem);
  const auto write = [&](std::string_view name) { writer.writeAggregate(name, aggregate); };
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
  writer.sql().add(cut ? "(" : "quor_mean(");
  write("sum");
  writer.sql().add(cut ? " / " : ", ");
  write("count");
  writer.sql().add(")");
}

void SqliteForm::writeConvert(ExpressionWriter& writer, const Expression& conversion) const {
  const Expression& value = *conversion.args[0];
  const Type from = value.type;
  const Type to = conversion.type;
  if (isStoredAlike(from, to)) return writer.writeBare(value);
  if (const std::string_view factor = scaling(from, to); !factor.empty()) {
    writer.write(value, Level::Product);
    writer.sql().add(factor);
    return;
  }
  switch (to) {
    case Type::Boolean:
      writer.write(value, Level::Sum);
      writer.sql().add(" <> 0");
      return;
    case Type::Integer:
    case Type::Long:
      return writeWholeNumber(writer, conversion);
    case Type::Double:
      if (from == Type::Text) return writer.writeFunction("quor_number", value);
      if (from == Type::Date) return writer.writeFunction("quor_serial", value);
      return writer.writeCast(value, "REAL");
    case Type::Currency:
      if (from != Type::Date) return writer.writeFunction("quor_money", value);
      return writer.writeWithin("quor_money(", "quor_serial", conversion.args, {}, ")");
    case Type::Date:
      return writer.writeFunction("quor_date_text", value);
    case Type::Text:
      if (from == Type::Currency) return writer.writeFunction("quor_money_text", value);
      if (from == Type::Double) return writer.writeFunction("quor_number_text", value);
      return writer.writeCast(value, "TEXT");
    case Type::Unknown:
      return writer.write(value);
  }
}

}  // namespace

const Write::EngineForm& sqliteForm() noexcept {
  static const SqliteForm form;
  return form;
}

const Write::TextRules& sqliteText() noexcept { return kText; }

}  // namespace QuorHost::Sqlite
