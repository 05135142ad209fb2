// Statements that change rows.
#pragma once

#include <functional>
#include <string_view>

#include "host/engines/sqlite/database.h"
#include "host/engines/sqlite/statement.h"

namespace QuorHost::Sqlite {

/// Runs a bound statement that changes rows to its end; `onRow` is called on each row that it gives
/// back. `text` is the statement as its author wrote it, `limit` the time that it may take. Raises
/// the engine's error, and for a key that is there already or a reference to a row that is not,
/// says which value of which column it was. Returns the number of rows changed.
std::int32_t runChange(Database& database, Statement& change, std::string_view text,
                       TimeLimit limit = {}, const std::function<void()>& onRow = {});

}  // namespace QuorHost::Sqlite
