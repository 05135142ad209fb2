// How values are stored, in both directions.
#pragma once

#include <cstdint>
#include <vector>

#include "host/engines/rows/cell.h"
#include "host/engines/sqlite/statement.h"
#include "host/sql/types.h"
#include "platform/values/value.h"

namespace QuorHost::Sqlite {

/// A value of the engine; its text holds as long as the value does.
[[nodiscard]] Rows::Cell cellOf(sqlite3_value* value);

/// The value in `column` of the row that `statement` stands on; its text holds until the statement
/// moves.
[[nodiscard]] Rows::Cell cellOf(const Statement& statement, int column);

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

/// Binds the values of a statement's markers in their order; they must stay until the statement has
/// run. Raises a refused statement with both counts when there are more or fewer values than
/// markers; an error of a conversion names the marker.
void bindMarkers(const Statement& statement, const std::vector<Sql::Type>& markers,
                 const std::vector<QuorDataLib::Value>& values);

}  // namespace QuorHost::Sqlite
