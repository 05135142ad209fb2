#include "host/engines/postgres/write/postgres_form.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "host/engines/postgres/write/calls.h"
#include "host/engines/write/expression_writer.h"
#include "platform/values/currency.h"

namespace QuorHost::Postgres {
namespace {

using Sql::Dialect;
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

/// A value of money in ten-thousandths, as a double.
void writeUnits(ExpressionWriter& writer, const Expression& amount) {
  writer.sql().add("(");
  writer.write(amount, Level::Product);
  writer.sql().add(" * 10000)::float8");
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
  void writeCall(ExpressionWriter& writer, const Expression& call) const override {
    Postgres::writeCall(writer, call);
  }
  void writeAggregate(ExpressionWriter& writer, const Expression& aggregate) const override {
    Postgres::writeAggregate(writer, aggregate);
  }
  void writeConvert(ExpressionWriter& writer, const Expression& conversion) const override {
    Postgres::writeConversion(writer, conversion);
  }

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
