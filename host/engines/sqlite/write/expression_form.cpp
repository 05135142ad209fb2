#include "host/engines/sqlite/write/expression_form.h"

#include <cmath>

namespace QuorHost::Sqlite {
namespace {

using Sql::Operator;
using Sql::Type;
using Sql::Tree::Expression;
using Kind = Expression::Kind;

bool isMoneyProduct(const Expression& operation) {
  return operation.op == Operator::Multiply && operation.args[0]->type == Type::Currency &&
         operation.args[1]->type == Type::Currency;
}

Level arithmeticLevel(const Expression& operation) {
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

}  // namespace

std::string_view symbol(Operator op) noexcept {
  switch (op) {
    case Operator::Multiply:
      return " * ";
    case Operator::Add:
      return " + ";
    case Operator::Subtract:
      return " - ";
    case Operator::Concatenate:
      return " || ";
    case Operator::Equal:
      return " = ";
    case Operator::NotEqual:
      return " <> ";
    case Operator::Less:
      return " < ";
    case Operator::LessEqual:
      return " <= ";
    case Operator::Greater:
      return " > ";
    default:
      return " >= ";
  }
}

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

std::string_view scaling(Type from, Type to) noexcept {
  if (to == Type::Currency && (from == Type::Integer || from == Type::Long)) return " * 10000";
  if (to == Type::Double && from == Type::Currency) return " / 10000.0";
  return {};
}

bool isStoredAlike(Type from, Type to) noexcept {
  const auto whole = [](Type type) {
    return type == Type::Boolean || type == Type::Integer || type == Type::Long;
  };
  return (whole(from) && to == Type::Long) || (from == Type::Date && to == Type::Text);
}

Level levelOf(const Expression& expression) noexcept {
  switch (expression.kind) {
    case Kind::Literal: {
      const bool minus =
          !expression.isNull && (expression.integer < 0 || std::signbit(expression.number));
      return minus ? Level::Sign : Level::Operand;
    }
    case Kind::Negate:
      return Level::Sign;
    case Kind::Arithmetic:
      return arithmeticLevel(expression);
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
    case Kind::Convert: {
      const Type from = expression.args[0]->type;
      if (isStoredAlike(from, expression.type)) return levelOf(*expression.args[0]);
      if (expression.type == Type::Boolean) return Level::Equality;
      return scaling(from, expression.type).empty() ? Level::Operand : Level::Product;
    }
    default:
      return Level::Operand;
  }
}

bool needsCollation(const Expression& value) noexcept {
  return value.type == Type::Text && value.kind != Kind::Column;
}

}  // namespace QuorHost::Sqlite
