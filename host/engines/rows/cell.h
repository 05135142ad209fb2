// How values are stored, in both directions.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/engines/sqlite/statement.h"
#include "host/sql/front_end.h"
#include "platform/error.h"
#include "platform/value.h"

namespace QuorHost::Sqlite {

/// A stored value as the engine hands it out. The text belongs to whoever made the cell.
struct Cell {
  enum class Kind : std::uint8_t { Null, Integer, Real, Text };
  Kind kind = Kind::Null;
  std::int64_t integer = 0;
  double real = 0;
  std::string_view text;
};

/// The value in `column` of the row that `statement` stands on; its text holds until the statement
/// moves.
[[nodiscard]] Cell cellOf(const Statement& statement, int column);

/// The cell as a value of the column's type, or Null. Raises 6 where a number does not fit the
/// type: a sum of money that left the range of integers has become a floating number; and 13 where
/// what is stored is of another kind.
[[nodiscard]] QuorDataLib::Value valueOf(const Cell& cell, const Sql::ResultColumn& column);

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

/// Raises `error` again with `what` before its description, so that it says which value it means.
[[noreturn]] void raiseNaming(std::string_view what, const QuorDataLib::Error& error);

/// Binds the values of a statement's markers in their order. Raises a refused statement with both
/// counts when there are more or fewer values than markers; an error of a conversion names the
/// marker.
void bindMarkers(const Statement& statement, const std::vector<Sql::Type>& markers,
                 const std::vector<QuorDataLib::Value>& values);

}  // namespace QuorHost::Sqlite
