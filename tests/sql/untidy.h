// Rows that keep no rule: nulls, orphans, payments of nothing, amounts that cancel out.
#pragma once

#include "sql/database.h"

namespace QuorHost::Sql::Testing {

/// Puts random rows into every table. The same seed gives the same rows.
void fillUntidily(Database& database, unsigned seed);

}  // namespace QuorHost::Sql::Testing
