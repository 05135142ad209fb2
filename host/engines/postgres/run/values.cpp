#include "host/engines/postgres/run/values.h"

#include <charconv>

#include "host/engines/rows/passed_value.h"
#include "host/sql/number_text.h"
#include "platform/error.h"
#include "platform/values/currency.h"

namespace QuorHost::Postgres {
namespace {

using QuorDataLib::Value;
using Rows::Cell;
using Sql::Type;

// The server's numbers of its types.
constexpr Oid kBoolean = 16;
constexpr Oid kBigint = 20;
constexpr Oid kFloat8 = 701;
constexpr Oid kBpchar = 1042;
constexpr Oid kTimestamp = 1114;
constexpr Oid kNumeric = 1700;

std::string doubleText(double number) {
  Rows::requireFinite(number);
  std::string text(32, '\0');
  const auto written = std::to_chars(text.data(), text.data() + text.size(), number);
  text.resize(static_cast<std::size_t>(written.ptr - text.data()));
  return text;
}

Oid numberOf(Type type) {
  switch (type) {
    case Type::Boolean:
      return kBoolean;
    case Type::Integer:
    case Type::Long:
      return kBigint;
    case Type::Double:
      return kFloat8;
    case Type::Currency:
      return kNumeric;
    case Type::Date:
      return kTimestamp;
    default:
      return kBpchar;
  }
}

std::string textOf(const Value& value) {
  std::string text = value.toText();
  Rows::requireStorable(text);
  return text;
}

Cell wholeOf(std::string_view text) {
  if (const auto number = Sql::readNumber<std::int64_t>(text)) {
    return {.kind = Cell::Kind::Integer, .integer = *number};
  }
  return {.kind = Cell::Kind::Real, .real = Sql::readNumber<double>(text).value_or(0)};
}

/// A date without its time of day when that is midnight, as dates are written everywhere.
std::string_view dateOf(std::string_view text) {
  constexpr std::string_view kMidnight = " 00:00:00";
  if (text.ends_with(kMidnight)) text.remove_suffix(kMidnight.size());
  return text;
}

/// A value of a statement that leaves the type open.
Type typeOf(Oid type) {
  switch (type) {
    case kBoolean:
      return Type::Boolean;
    case kFloat8:
      return Type::Double;
    case kTimestamp:
      return Type::Date;
    case kNumeric:
      return Type::Currency;
    case kBigint:
    case 21:
    case 23:
      return Type::Long;
    default:
      return Type::Text;
  }
}

}  // namespace

Argument argumentOf(const Value& value, Type type) {
  const bool none = value.isNull() || value.isEmpty();
  if (type == Type::Unknown) type = none ? Type::Text : Rows::typeAsPassed(value.type());
  if (none) return {.text = std::nullopt, .type = numberOf(type)};
  const auto typed = [&](std::string text) {
    return Argument{.text = std::move(text), .type = numberOf(type)};
  };
  switch (type) {
    case Type::Boolean:
      return typed(value.toBoolean() ? "t" : "f");
    case Type::Integer:
      return typed(std::to_string(value.toInteger()));
    case Type::Long:
      return typed(std::to_string(value.toLong()));
    case Type::Double:
      return typed(doubleText(value.toDouble()));
    case Type::Currency:
      return typed(value.toCurrency().toText(4));
    case Type::Date:
      return typed(value.toDate().toText());
    default:
      return typed(textOf(value));
  }
}

std::vector<Argument> argumentsOf(const Write::TranslatedStatement& statement,
                                  const std::vector<Value>& values) {
  const std::vector<Type>& markers = statement.translation().markers;
  std::vector<Argument> arguments;
  arguments.reserve(markers.size());
  Rows::giveMarkers(markers.size(), statement.numbers, values,
                    [&](std::size_t marker, const Value& value) {
                      arguments.push_back(argumentOf(value, markers[marker]));
                    });
  return arguments;
}

Cell cellOf(const Result& result, int row, int column, Type type) {
  if (PQgetisnull(result.get(), row, column) != 0) return {};
  const std::string_view text = textAt(result, row, column);
  if (type == Type::Unknown) {
    // What is computed of such a value is no money: its numbers come as they are.
    const Type own = typeOf(PQftype(result.get(), column));
    type = own == Type::Currency ? Type::Double : own;
  }
  switch (type) {
    case Type::Boolean:
      return {.kind = Cell::Kind::Integer, .integer = text == "t" ? 1 : 0};
    case Type::Integer:
    case Type::Long:
      return wholeOf(text);
    case Type::Double:
      return {.kind = Cell::Kind::Real, .real = Sql::readNumber<double>(text).value_or(0)};
    case Type::Currency:
      return Rows::moneyOf(text);
    case Type::Date:
      return {.kind = Cell::Kind::Text, .text = dateOf(text)};
    default:
      return {.kind = Cell::Kind::Text, .text = text};
  }
}

}  // namespace QuorHost::Postgres
