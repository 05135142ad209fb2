#include "host/engines/sqlite/run/binding.h"

#include <new>
#include <string>

#include "host/engines/rows/passed_value.h"
#include "host/engines/sqlite/engine_error.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::Value;
using QuorDataLib::ValueType;
using Sql::Type;

/// Raises what a binding reports: a text too long for the engine, exhausted memory.
void check(sqlite3_stmt* statement, int code) {
  if (code != SQLITE_OK) {
    raiseEngineError(sqlite3_db_handle(statement), code, sqlite3_sql(statement));
  }
}

void bindText(sqlite3_stmt* statement, int index, std::string_view text, Lifetime lifetime) {
  Rows::requireStorable(text);
  const sqlite3_destructor_type destructor =
      lifetime == Lifetime::Copied ? SQLITE_TRANSIENT : SQLITE_STATIC;  // NOLINT: C casts within
  check(statement,
        sqlite3_bind_text64(statement, index, text.data(), text.size(), destructor, SQLITE_UTF8));
}

void bindDouble(sqlite3_stmt* statement, int index, double number) {
  // The engine would store "not a number" as null and infinity as itself; neither is an amount.
  Rows::requireFinite(number);
  check(statement, sqlite3_bind_double(statement, index, number));
}

void bindInteger(sqlite3_stmt* statement, int index, std::int64_t number) {
  check(statement, sqlite3_bind_int64(statement, index, number));
}

}  // namespace

std::string_view textOf(sqlite3_value* value) {
  const unsigned char* const text = sqlite3_value_text(value);
  if (text == nullptr) throw std::bad_alloc();
  return {reinterpret_cast<const char*>(text),
          static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void bindValue(const Statement& statement, int index, const Value& value, Type type,
               Lifetime lifetime) {
  sqlite3_stmt* const row = statement.get();
  if (value.isNull() || value.isEmpty()) {
    check(row, sqlite3_bind_null(row, index));
    return;
  }
  switch (type == Type::Unknown ? Rows::typeAsPassed(value.type()) : type) {
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

void bindMarkers(const Statement& statement, const Write::TranslatedStatement& source,
                 const std::vector<Value>& values) {
  const std::vector<Type>& markers = source.translation().markers;
  // Markers of what the statement does not read are not in it.
  const int last = sqlite3_bind_parameter_count(statement.get());
  Rows::giveMarkers(markers.size(), source.numbers, values,
                    [&](std::size_t marker, const Value& value) {
                      const int index = static_cast<int>(marker) + 1;
                      if (index > last) return;
                      bindValue(statement, index, value, markers[marker], Lifetime::Borrowed);
                    });
}

}  // namespace QuorHost::Sqlite
