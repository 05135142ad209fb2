#include "host/engines/rows/cell.h"

#include <limits>
#include <optional>
#include <string>

#include "host/sql/number_text.h"
#include "platform/error.h"

namespace QuorHost::Rows {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using QuorDataLib::Value;
using Sql::Type;

[[noreturn]] void raiseTooLarge(const Sql::ResultColumn& column) {
  raise(ErrorNumber::Overflow, "Overflow: the value of column " + column.name +
                                   " is too large for its type, " +
                                   std::string(Sql::typeName(column.type)));
}

[[noreturn]] void raiseOtherKind(const Sql::ResultColumn& column) {
  raise(ErrorNumber::TypeMismatch, "Type mismatch: column " + column.name + " holds no " +
                                       std::string(Sql::typeName(column.type)));
}

/// The integer of a column whose type is stored as one.
template <class T>
T integerOf(const Cell& cell, const Sql::ResultColumn& column) {
  if (cell.kind == Cell::Kind::Text) raiseOtherKind(column);
  if (cell.kind == Cell::Kind::Real || cell.integer < std::numeric_limits<T>::min() ||
      cell.integer > std::numeric_limits<T>::max()) {
    raiseTooLarge(column);
  }
  return static_cast<T>(cell.integer);
}

double realOf(const Cell& cell, const Sql::ResultColumn& column) {
  if (cell.kind == Cell::Kind::Text) raiseOtherKind(column);
  return cell.kind == Cell::Kind::Real ? cell.real : static_cast<double>(cell.integer);
}

Date dateOf(const Cell& cell, const Sql::ResultColumn& column) {
  if (cell.kind != Cell::Kind::Text) raiseOtherKind(column);
  const std::optional<Date> date = Date::parse(cell.text);
  if (!date) raiseOtherKind(column);
  return *date;
}

/// The value of a column whose statement leaves the type open.
Value valueAsStored(const Cell& cell) {
  switch (cell.kind) {
    case Cell::Kind::Integer:
      if (cell.integer < std::numeric_limits<std::int32_t>::min() ||
          cell.integer > std::numeric_limits<std::int32_t>::max()) {
        return static_cast<double>(cell.integer);
      }
      return static_cast<std::int32_t>(cell.integer);
    case Cell::Kind::Real:
      return cell.real;
    case Cell::Kind::Text:
      return cell.text;
    case Cell::Kind::Null:
      break;
  }
  return Value::null();
}

}  // namespace

Value valueOf(const Cell& cell, const Sql::ResultColumn& column) {
  if (cell.kind == Cell::Kind::Null) return Value::null();
  switch (column.type) {
    case Type::Boolean:
      return integerOf<std::int64_t>(cell, column) != 0;
    case Type::Integer:
      return integerOf<std::int16_t>(cell, column);
    case Type::Long:
      return integerOf<std::int32_t>(cell, column);
    case Type::Double:
      return realOf(cell, column);
    case Type::Currency:
      return Currency::fromUnits(integerOf<std::int64_t>(cell, column));
    case Type::Date:
      return dateOf(cell, column);
    case Type::Text:
      if (cell.kind != Cell::Kind::Text) raiseOtherKind(column);
      return cell.text;
    case Type::Unknown:
      break;
  }
  return valueAsStored(cell);
}

Cell moneyOf(std::string_view text) {
  constexpr int kPlaces = 4;
  Cell cell{.kind = Cell::Kind::Integer};
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
  std::string digits(text.substr(0, point));
  digits += decimals.substr(0, kPlaces);
  for (std::size_t i = decimals.size(); i < kPlaces; ++i) digits += '0';
  if (const auto units = Sql::readNumber<std::int64_t>(digits)) {
    cell.integer = *units;
  } else {
    cell.kind = Cell::Kind::Real;
    cell.real = Sql::readNumber<double>(text).value_or(0);
  }
  return cell;
}

void raiseNaming(std::string_view what, const Error& error) {
  throw Error(error.number(), error.source(), std::string(what) + ": " + error.description());
}

}  // namespace QuorHost::Rows
