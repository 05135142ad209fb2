#include "host/engines/rows/cell.h"

#include <cmath>
#include <limits>
#include <new>
#include <optional>
#include <string>

#include "host/engines/sqlite/engine_error.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using QuorDataLib::Value;
using QuorDataLib::ValueType;
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

/// Raises what a binding reports: a text too long for the engine, exhausted memory.
void check(sqlite3_stmt* statement, int code) {
  if (code != SQLITE_OK) {
    raiseEngineError(sqlite3_db_handle(statement), code, sqlite3_sql(statement));
  }
}

void bindText(sqlite3_stmt* statement, int index, std::string_view text, Lifetime lifetime) {
  const sqlite3_destructor_type destructor =
      lifetime == Lifetime::Copied ? SQLITE_TRANSIENT : SQLITE_STATIC;  // NOLINT: C casts within
  check(statement,
        sqlite3_bind_text64(statement, index, text.data(), text.size(), destructor, SQLITE_UTF8));
}

void bindDouble(sqlite3_stmt* statement, int index, double number) {
  // The engine would store "not a number" as null and infinity as itself; neither is an amount.
  if (!std::isfinite(number)) raise(ErrorNumber::Overflow, "Overflow: the number is not finite");
  check(statement, sqlite3_bind_double(statement, index, number));
}

void bindInteger(sqlite3_stmt* statement, int index, std::int64_t number) {
  check(statement, sqlite3_bind_int64(statement, index, number));
}

/// The type in which a value goes to a marker that leaves it open.
Type typeAsPassed(ValueType type) {
  switch (type) {
    case ValueType::Boolean:
      return Type::Boolean;
    case ValueType::Integer:
      return Type::Integer;
    case ValueType::Long:
      return Type::Long;
    case ValueType::Double:
      return Type::Double;
    case ValueType::Currency:
      return Type::Currency;
    case ValueType::Date:
      return Type::Date;
    default:
      return Type::Text;
  }
}

}  // namespace

Cell cellOf(const Statement& statement, int column) {
  // Asking the value spares the checks that asking the statement repeats; connections that are used
  // on one thread may do so.
  sqlite3_value* const value = sqlite3_column_value(statement.get(), column);
  Cell cell;
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      break;
    case SQLITE_INTEGER:
      cell.kind = Cell::Kind::Integer;
      cell.integer = sqlite3_value_int64(value);
      break;
    case SQLITE_FLOAT:
      cell.kind = Cell::Kind::Real;
      cell.real = sqlite3_value_double(value);
      break;
    default:
      cell.kind = Cell::Kind::Text;
      const unsigned char* const text = sqlite3_value_text(value);
      if (text == nullptr) throw std::bad_alloc();
      cell.text = {reinterpret_cast<const char*>(text),
                   static_cast<std::size_t>(sqlite3_value_bytes(value))};
      break;
  }
  return cell;
}

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

void bindValue(const Statement& statement, int index, const Value& value, Type type,
               Lifetime lifetime) {
  sqlite3_stmt* const row = statement.get();
  if (value.isNull() || value.isEmpty()) {
    check(row, sqlite3_bind_null(row, index));
    return;
  }
  switch (type == Type::Unknown ? typeAsPassed(value.type()) : type) {
    case Type::Boolean:
      bindInteger(row, index, value.toBoolean() ? 1 : 0);
      break;
    case Type::Integer:
      bindInteger(row, index, value.toInteger());
      break;
    case Type::Long:
      bindInteger(row, index, value.toLong());
      break;
    case Type::Double:
      bindDouble(row, index, value.toDouble());
      break;
    case Type::Currency:
      bindInteger(row, index, value.toCurrency().units());
      break;
    case Type::Date:
      bindText(row, index, value.toDate().toText(), Lifetime::Copied);
      break;
    default:
      if (value.type() == ValueType::Text) {
        bindText(row, index, value.text(), lifetime);
      } else {
        bindText(row, index, value.toText(), Lifetime::Copied);
      }
      break;
  }
}

void raiseNaming(std::string_view what, const Error& error) {
  throw Error(error.number(), error.source(), std::string(what) + ": " + error.description());
}

void bindMarkers(const Statement& statement, const std::vector<Type>& markers,
                 const std::vector<Value>& values) {
  if (values.size() != markers.size()) {
    refuseStatement("The statement has " + std::to_string(markers.size()) + " markers (?), but " +
                    std::to_string(values.size()) + " values were given");
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    try {
      bindValue(statement, static_cast<int>(i) + 1, values[i], markers[i], Lifetime::Copied);
    } catch (const Error& error) {
      raiseNaming("Value of marker " + std::to_string(i + 1), error);
    }
  }
}

}  // namespace QuorHost::Sqlite
