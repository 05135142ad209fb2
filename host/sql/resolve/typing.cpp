// Literals and conversions.
#include "host/sql/resolve/typing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "host/sql/date_text.h"
#include "host/sql/number_text.h"
#include "platform/error.h"
#include "platform/values/currency.h"

namespace QuorHost::Sql {
namespace {

using QuorDataLib::Currency;
using Tree::Expression;
using Kind = Expression::Kind;

constexpr std::int64_t kUnits = Currency::kUnitsPerOne;

bool fits(std::int64_t value, Type type) {
  return type == Type::Integer ? value >= std::numeric_limits<std::int16_t>::min() &&
                                     value <= std::numeric_limits<std::int16_t>::max()
                               : value >= std::numeric_limits<std::int32_t>::min() &&
                                     value <= std::numeric_limits<std::int32_t>::max();
}

std::optional<std::int64_t> scaled(std::int64_t whole) {
  std::int64_t units = 0;
  if (__builtin_mul_overflow(whole, kUnits, &units)) return std::nullopt;
  return units;
}

/// A number without exponent and with at most four decimals, if it fits.
std::optional<Currency> exactNumber(std::string_view word) {
  constexpr std::size_t kExactDecimals = 4;
  const std::size_t point = word.find('.');
  const bool exact = word.find_first_of("eE") == std::string_view::npos &&
                     (point == std::string_view::npos || word.size() - point - 1 <= kExactDecimals);
  try {
    return exact ? Currency::parse(word) : std::nullopt;
  } catch (const QuorDataLib::Error&) {
    return std::nullopt;
  }
}

std::int64_t wholePart(std::int64_t units, Rounding rounding) {
  std::int64_t whole = units / kUnits;
  const std::int64_t rest = std::abs(units % kUnits);
  const bool up = rest * 2 > kUnits || (rest * 2 == kUnits && whole % 2 != 0);
  if (rounding == Rounding::HalfToEven && up) whole += units < 0 ? -1 : 1;
  return whole;
}

}  // namespace

Expression* Typing::make(Expression node, std::span<Expression* const> args) {
  if (++nodes_ > kFurtherNodes + text_.all().size()) {
    text_.refuse("The statement grows too large when its aliases are put in", node.word);
  }
  if (!args.empty()) node.args = arena_.list(args);
  return arena_.make(node);
}

Expression* Typing::null(std::string_view word) {
  return make({.kind = Kind::Literal, .isNull = true, .word = word});
}

Expression* Typing::truth(bool value, std::string_view word) {
  return make(
      {.kind = Kind::Literal, .type = Type::Boolean, .integer = value ? 1 : 0, .word = word});
}

Expression* Typing::whole(std::int64_t value, std::string_view word) {
  return make({.kind = Kind::Literal, .type = Type::Long, .integer = value, .word = word});
}

Expression* Typing::literalText(std::string_view text, std::string_view word) {
  return make({.kind = Kind::Literal, .type = Type::Text, .text = text, .word = word});
}

Expression* Typing::number(std::string_view word) {
  const std::optional<std::int32_t> whole32 = readNumber<std::int32_t>(word);
  if (whole32) return whole(*whole32, word);
  if (const std::optional<Currency> amount = exactNumber(word)) {
    return make(
        {.kind = Kind::Literal, .type = Type::Currency, .integer = amount->units(), .word = word});
  }
  const std::optional<double> value = readNumber<double>(word);
  if (!value || !std::isfinite(*value)) text_.refuse("The number is too large", word);
  return make({.kind = Kind::Literal, .type = Type::Double, .number = *value, .word = word});
}

Expression* Typing::date(std::string_view text, std::string_view word) {
  const std::optional<QuorDataLib::Date> date = parseDate(text);
  if (!date) {
    text_.refuse(quoted(text) + " is no date; write it as 2024-01-31", word);
  }
  return make({.kind = Kind::Literal,
               .type = Type::Date,
               .text = arena_.text(date->toText()),
               .word = word});
}

void Typing::adapt(Expression* value, Type to) {
  if (value->type != Type::Unknown || to == Type::Unknown) return;
  switch (value->kind) {
    case Kind::Marker:
      markers_[value->marker] = to;
      break;
    case Kind::Literal:
      break;
    case Kind::Case:
      for (std::size_t i = 0; i < value->args.size(); ++i) {
        if (i % 2 == 1 || i + 1 == value->args.size()) adapt(value->args[i], to);
      }
      break;
    case Kind::Call:
      for (Expression* arg : value->args) adapt(arg, to);
      break;
    default:
      return;
  }
  value->type = to;
}

Expression* Typing::convert(Expression* value, Type to) {
  return convert(value, to, rules_.rounding);
}

Expression* Typing::convert(Expression* value, Type to, Rounding rounding) {
  adapt(value, to);
  const Type from = value->type;
  if (from == to || from == Type::Unknown || to == Type::Unknown) return value;
  if (from == Type::Integer && to == Type::Long) return value;
  if (from == Type::Boolean) return convert(booleanNumber(value), to, rounding);
  if (value->kind == Kind::Literal && !value->isNull) {
    if (Expression* const literal = convertLiteral(value, to, rounding)) return literal;
  }
  const bool fromDate = from == Type::Date && to != Type::Text &&
                        (to == Type::Boolean || rules_.dialect == Dialect::Server);
  const bool toDate = to == Type::Date && from != Type::Text;
  const bool textToTruth = from == Type::Text && to == Type::Boolean;
  if (fromDate || toDate || textToTruth) {
    text_.refuse("There is no conversion from " + std::string(typeName(from)) + " to " +
                     std::string(typeName(to)),
                 value->word);
  }
  return make({.kind = Kind::Convert, .type = to, .rounding = rounding, .word = value->word},
              {value});
}

/// The converted literal, or null when the conversion is left to the engine.
Expression* Typing::convertLiteral(Expression* literal, Type to, Rounding rounding) {
  if (literal->type == Type::Text && to == Type::Date) return date(literal->text, literal->word);
  if (!isNumber(literal->type) || !isNumber(to)) return nullptr;
  if (to == Type::Double) {
    const double value = literal->type == Type::Currency
                             ? Currency::fromUnits(literal->integer).toDouble()
                             : static_cast<double>(literal->integer);
    return make({.kind = Kind::Literal, .type = to, .number = value, .word = literal->word});
  }
  const std::optional<std::int64_t> units = literalUnits(*literal, to, rounding);
  if (!units) {
    text_.refuse("The number does not fit into a value of type " + std::string(typeName(to)),
                 literal->word);
  }
  return make({.kind = Kind::Literal, .type = to, .integer = *units, .word = literal->word});
}

/// What a number is stored as in one of the types that are stored as integers.
std::optional<std::int64_t> Typing::literalUnits(const Expression& literal, Type to,
                                                 Rounding rounding) const {
  if (to == Type::Boolean) return literal.integer != 0 || literal.number != 0 ? 1 : 0;
  if (to == Type::Currency) {
    if (literal.type != Type::Double) return scaled(literal.integer);
    try {
      return Currency::fromDouble(literal.number).units();
    } catch (const QuorDataLib::Error&) {
      return std::nullopt;
    }
  }
  std::int64_t value = literal.integer;
  if (literal.type == Type::Currency) {
    value = wholePart(literal.integer, rounding);
  } else if (literal.type == Type::Double) {
    const double rounded = rounding == Rounding::HalfToEven ? std::nearbyint(literal.number)
                                                            : std::trunc(literal.number);
    if (std::abs(rounded) > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
    value = static_cast<std::int64_t>(rounded);
  }
  if (!fits(value, to)) return std::nullopt;
  return value;
}

/// A boolean as a number: true is -1 or 1.
Expression* Typing::booleanNumber(Expression* value) {
  if (value->kind == Kind::Literal) {
    Expression* const number = whole(value->integer * rules_.trueNumber, value->word);
    number->isNull = value->isNull;
    return number;
  }
  const Kind kind = rules_.trueNumber < 0 ? Kind::Negate : Kind::Convert;
  return make({.kind = kind, .type = Type::Long, .word = value->word}, {value});
}

Expression* Typing::asNumber(Expression* value, std::string_view what) {
  if (value->type == Type::Boolean) return booleanNumber(value);
  if (value->type != Type::Unknown && !isNumber(value->type)) {
    text_.refuse(std::string(what) + " takes a number, not a value of type " +
                     std::string(typeName(value->type)),
                 value->word);
  }
  return value;
}

std::optional<Type> Typing::wider(Type a, Type b) noexcept {
  if (a == b || b == Type::Unknown) return a;
  if (a == Type::Unknown) return b;
  if (!isNumber(a) || !isNumber(b)) return std::nullopt;
  return widerNumber(a, b);
}

Type Typing::widerNumber(Type a, Type b) noexcept {
  // A double is the widest number although it stands before currency.
  if (a == Type::Double || b == Type::Double) return Type::Double;
  return std::max(a, b);
}

Type Typing::matchBranches(std::span<Expression*> values, std::string_view what,
                           std::string_view word) {
  Type type = Type::Unknown;
  for (const Expression* value : values) {
    const std::optional<Type> common = wider(type, value->type);
    if (!common) refuseTypes(what, type, value->type, word);
    type = *common;
  }
  for (Expression*& value : values) value = convert(value, type);
  return type;
}

Type Typing::comparisonType(std::span<const Type> types, std::string_view word) const {
  Type common = Type::Unknown;
  bool texts = false;
  for (const Type type : types) {
    if (type == Type::Text) {
      texts = true;
      continue;
    }
    const std::optional<Type> both = wider(common, type);
    if (!both) refuseTypes("a comparison", common, type, word);
    common = *both;
  }
  if (!texts) return common;
  if (common == Type::Unknown) return Type::Text;
  if (!rules_.textsConvertInComparisons) refuseTypes("a comparison", Type::Text, common, word);
  return common == Type::Boolean ? Type::Long : common;
}

Expression* Typing::forComparison(Expression* value, Type type) {
  // Whole numbers of both sizes compare as they are, and a marker is not held to 16 bits by the
  // column that it meets.
  if (type == Type::Integer) type = Type::Long;
  adapt(value, type);
  return convert(value, type);
}

void Typing::matchForComparison(std::span<Expression*> values, std::string_view word) {
  std::vector<Type> types;
  types.reserve(values.size());
  for (const Expression* value : values) types.push_back(value->type);
  const Type type = comparisonType(types, word);
  for (Expression*& value : values) value = forComparison(value, type);
}

void Typing::refuseTypes(std::string_view what, Type a, Type b, std::string_view word) const {
  text_.refuse("Values of type " + std::string(typeName(a)) + " and of type " +
                   std::string(typeName(b)) + " do not go together in " + std::string(what),
               word);
}

}  // namespace QuorHost::Sql
