// What people read when the storage engine reports an error.
#pragma once

#include <sqlite3.h>

#include <string_view>

#include "host/engines/rows/refusal.h"

namespace QuorHost::Sqlite {

using Rows::inStatement;
using Rows::refuseStatement;

/// Raises what `database` has just reported under `code`: 6 for an integer overflow, 7 for
/// exhausted memory, and a refused statement for everything else, naming the constraint with its
/// table and columns, or the file with what to do about it. `statement` is the statement as its
/// author wrote it, of which the message quotes the beginning; it may be empty.
[[noreturn]] void raiseEngineError(sqlite3* database, int code, std::string_view statement);

}  // namespace QuorHost::Sqlite
