// The functions that translated statements call and SQLite does not have.
#pragma once

#include <sqlite3.h>

namespace QuorHost::Sqlite {

/// Message of a division by zero; the statement ends with an SQL error.
inline constexpr const char* kDivisionByZero = "division by zero";

/// Message of a result that does not fit its type: SQLite's own, so that a SUM that overflows and a
/// product that does are one error.
inline constexpr const char* kIntegerOverflow = "integer overflow";

/// Registers the functions (their names begin with `quor_`) on a connection. A call that fails ends
/// its statement with one of the messages above, or with a sentence that names the value
/// ("'A100' is not a number"). Raises 7 when memory is exhausted.
void registerFunctions(sqlite3* database);

}  // namespace QuorHost::Sqlite
