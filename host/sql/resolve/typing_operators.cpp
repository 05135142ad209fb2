// Arithmetic and comparison.
#include <array>
#include <utility>

#include "host/sql/resolve/typing.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Kind = Expression::Kind;

/// A sub-select of a whole number.
bool isWholeQuery(const Expression& value) {
  return value.kind == Kind::Query && (value.type == Type::Long || value.type == Type::Integer);
}

bool isOrdering(Operator op) { return op != Operator::Equal && op != Operator::NotEqual; }

}  // namespace

Expression* Typing::binary(Operator op, Type type, Expression* left, Expression* right,
                           std::string_view word) {
  return make({.kind = Kind::Arithmetic, .type = type, .op = op, .word = word}, {left, right});
}

Expression* Typing::arithmetic(Operator op, Expression* left, Expression* right,
                               std::string_view word) {
  if (op == Operator::Concatenate) {
    return binary(op, Type::Text, ampersandOperand(left), ampersandOperand(right), word);
  }
  const bool text = left->type == Type::Text || right->type == Type::Text;
  const bool date = left->type == Type::Date || right->type == Type::Date;
  if (op == Operator::Add && text) return concatenate(left, right, word);
  if (text) refuseTypes("arithmetic", left->type, right->type, word);
  if (date) return dateArithmetic(op, left, right, word);

  left = asNumber(left, "Arithmetic");
  right = asNumber(right, "Arithmetic");
  const bool nothingKnown = left->type == Type::Unknown && right->type == Type::Unknown;
  adapt(left, nothingKnown ? Type::Double : widerNumber(right->type, Type::Long));
  adapt(right, widerNumber(left->type, Type::Long));
  switch (op) {
    case Operator::Divide:
      return divide(left, right, word);
    case Operator::DivideWhole:
      return binary(op, Type::Long, convert(left, Type::Long), convert(right, Type::Long), word);
    case Operator::Modulo:
      return modulo(left, right, word);
    default:
      break;
  }
  const Type type = widerNumber(widerNumber(left->type, right->type), Type::Long);
  // Money times a whole number needs no rounding, so the number stays as it is.
  const bool scales = op == Operator::Multiply && type == Type::Currency;
  if (!scales) {
    left = convert(left, type);
    right = convert(right, type);
  }
  return binary(op, type, left, right, word);
}

/// `+` between texts.
Expression* Typing::concatenate(Expression* left, Expression* right, std::string_view word) {
  adapt(left, Type::Text);
  adapt(right, Type::Text);
  if (left->type != right->type) refuseTypes("'+'", left->type, right->type, word);
  return binary(Operator::Concatenate, Type::Text, left, right, word);
}

/// An operand of `&`: its text, or no text for NULL.
Expression* Typing::ampersandOperand(Expression* value) {
  const bool neverNull = (value->kind == Kind::Arithmetic && value->op == Operator::Concatenate &&
                          value->word == "&") ||
                         (value->kind == Kind::Literal && !value->isNull);
  Expression* const text = asText(value);
  if (neverNull) return text;
  return make(
      {.kind = Kind::Call, .type = Type::Text, .function = Function::Coalesce, .word = value->word},
      {text, literalText("", value->word)});
}

/// A date and a number of days, or two dates.
Expression* Typing::dateArithmetic(Operator op, Expression* left, Expression* right,
                                   std::string_view word) {
  const bool plus = op == Operator::Add;
  if (op == Operator::Subtract && left->type == right->type) {
    return make(
        {.kind = Kind::Call, .type = Type::Double, .function = Function::DaysBetween, .word = word},
        {left, right});
  }
  if (plus && right->type == Type::Date) std::swap(left, right);
  const bool daysFollow = left->type == Type::Date && right->type != Type::Date;
  if (!daysFollow || (!plus && op != Operator::Subtract)) {
    refuseTypes("arithmetic", left->type, right->type, word);
  }
  Expression* days = convert(asNumber(right, "Arithmetic"), Type::Double);
  if (!plus) days = negate(days, word);
  return make({.kind = Kind::Call, .type = Type::Date, .function = Function::AddDays, .word = word},
              {left, days});
}

Expression* Typing::divide(Expression* left, Expression* right, std::string_view word) {
  const Type wide = widerNumber(left->type, right->type);
  if (wide == Type::Double) {
    return binary(Operator::Divide, wide, convert(left, wide), convert(right, wide), word);
  }
  if (wide == Type::Currency) {
    // The ten-thousandths cancel out. Dividing them instead of two doubles keeps 0.3 / 0.1 at 3.
    const Type type = rules_.wholeNumbersDivideWhole ? Type::Currency : Type::Double;
    return binary(Operator::Divide, type, convert(left, wide), convert(right, wide), word);
  }
  if (rules_.wholeNumbersDivideWhole) {
    return binary(Operator::DivideWhole, Type::Long, left, right, word);
  }
  return binary(Operator::Divide, Type::Double, convert(left, Type::Double),
                convert(right, Type::Double), word);
}

Expression* Typing::modulo(Expression* left, Expression* right, std::string_view word) {
  Type type = widerNumber(widerNumber(left->type, right->type), Type::Long);
  if (rules_.dialect == Dialect::Desktop) type = Type::Long;
  if (type == Type::Double) refuseTypes("'%'", left->type, right->type, word);
  return binary(Operator::Modulo, type, convert(left, type), convert(right, type), word);
}

Expression* Typing::negate(Expression* operand, std::string_view word) {
  operand = asNumber(operand, "A minus sign");
  const bool isNumberLiteral = operand->kind == Kind::Literal && !operand->isNull;
  if (isNumberLiteral) {
    Expression negated = *operand;
    negated.integer = -negated.integer;
    negated.number = -negated.number;
    return make(negated);
  }
  return make({.kind = Kind::Negate, .type = operand->type, .word = word}, {operand});
}

Expression* Typing::compare(Operator op, Expression* left, Expression* right,
                            std::string_view word) {
  left = matchedLiteral(right, left);
  right = matchedLiteral(left, right);
  std::array operands{left, right};
  if (isOrdering(op) && left->type == Type::Boolean && right->type == Type::Boolean) {
    operands = {asNumber(left, ""), asNumber(right, "")};
  }
  if (isWholeQuery(*right) && left->type == Type::Text) {
    matchWithWholeQuery(operands[0], operands[1]);
  } else if (isWholeQuery(*left) && right->type == Type::Text) {
    matchWithWholeQuery(operands[1], operands[0]);
  }
  matchForComparison(operands, word);
  return make(
      {.kind = Kind::Compare, .type = Type::Boolean, .op = op, .isCondition = true, .word = word},
      operands);
}

/// A text beside a sub-select of a whole number: the account whose number is the greatest of those
/// that are numbers. Not every text there is one, and that is no error. The desktop dialect
/// compares texts, the server dialect numbers.
void Typing::matchWithWholeQuery(Expression*& text, Expression*& query) {
  const std::string_view word = text->word;
  if (!rules_.textsConvertInComparisons) {
    query = asText(query);
    return;
  }
  Expression* const isNumeric =
      make({.kind = Kind::Call, .type = Type::Long, .function = Function::IsNumeric, .word = word},
           {text});
  text = make(
      {.kind = Kind::Case, .type = Type::Double, .word = word},
      {compare(Operator::NotEqual, isNumeric, whole(0, word), word), convert(text, Type::Double)});
}

/// `number` as true or false when it is the literal of one of these and meets a boolean, so that
/// `Flag = 0` compares what is stored and can use an index; otherwise `number` as it is.
Expression* Typing::matchedLiteral(Expression* boolean, Expression* number) {
  const bool isLiteral = number->kind == Kind::Literal && number->type == Type::Long;
  if (boolean->type != Type::Boolean || !isLiteral || number->isNull) return number;
  if (number->integer != 0 && number->integer != rules_.trueNumber) return number;
  return truth(number->integer != 0, number->word);
}

}  // namespace QuorHost::Sql
