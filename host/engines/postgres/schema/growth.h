// Tables that get further columns.
#pragma once

#include <string_view>

#include "host/engines/postgres/server/link.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Postgres {

/// Adds the columns that the `CREATE TABLE` in `statement` has beyond those of `table`, and makes
/// it the table's definition, in the open transaction. Raises a refused statement for a table that
/// differs in anything else.
void growTable(Link& link, const Sql::Catalogue& catalogue, std::string_view table,
               std::string_view statement);

}  // namespace QuorHost::Postgres
