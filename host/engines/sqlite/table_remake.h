// Tables that get further columns.
#pragma once

#include <string_view>

#include "host/engines/sqlite/database.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Sqlite {

/// Makes `table` anew as the `CREATE TABLE` in `statement` has it, all or nothing: with its rows,
/// in the columns that the old and the new one share, and with its indexes. Raises a refused
/// statement for one that makes something else.
void remakeTable(Database& database, const Sql::Catalogue& catalogue, std::string_view table,
                 std::string_view statement);

}  // namespace QuorHost::Sqlite
