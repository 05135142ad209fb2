// How values are stored, in both directions.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/engines/rows/cell.h"
#include "host/engines/sqlite/statement.h"
#include "host/engines/write/translation_cache.h"
#include "host/sql/types.h"
#include "platform/values/value.h"

namespace QuorHost::Sqlite {

/// The text of a value of the engine; it holds as long as the value does.
[[nodiscard]] std::string_view textOf(sqlite3_value* value);

/// A value of the engine; its text holds as long as the value does.
[[nodiscard]] inline Rows::Cell cellOf(sqlite3_value* value) {
  using Kind = Rows::Cell::Kind;
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return {.kind = Kind::Integer, .integer = sqlite3_value_int64(value)};
    case SQLITE_FLOAT:
      return {.kind = Kind::Real, .real = sqlite3_value_double(value)};
    default:
      return {.kind = Kind::Text, .text = textOf(value)};
  }
}

/// The value in `column` of the row that `statement` stands on; its text holds until the statement
/// moves.
[[nodiscard]] inline Rows::Cell cellOf(const Statement& statement, int column) {
  // Asking the value spares the checks that asking the statement repeats; connections that are used
  // on one thread may do so.
  return cellOf(sqlite3_column_value(statement.get(), column));
}

/// Who keeps a text that is bound.
enum class Lifetime : std::uint8_t {
  /// The engine makes a copy.
  Copied,
  /// The caller keeps it until the statement has run.
  Borrowed,
};

/// Binds `value`, converted to `type`, to the marker at `index` (from 1); Null and Empty are bound
/// as null, and a value for `Unknown` as it is. Raises the conversion's error.
void bindValue(const Statement& statement, int index, const QuorDataLib::Value& value,
               Sql::Type type, Lifetime lifetime);

/// Binds the values of the markers of `source` in their order to what was prepared from it; they
/// must stay until the statement has run. Raises a refused statement with both counts when there
/// are more or fewer values than markers; an error of a conversion names the marker.
void bindMarkers(const Statement& statement, const Write::TranslatedStatement& source,
                 const std::vector<QuorDataLib::Value>& values);

}  // namespace QuorHost::Sqlite
