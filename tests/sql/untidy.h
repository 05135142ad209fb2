// Rows that keep no rule: nulls, orphans, payments of nothing, amounts that cancel out.
#pragma once

#include <functional>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {

/// Hands out random rows for every table. The same seed gives the same rows.
void untidyRows(const Catalogue& catalogue, unsigned seed,
                const std::function<void(const Relation& table, const Values& row)>& add);

/// Puts them into a database.
void fillUntidily(Database& database, unsigned seed);

}  // namespace QuorHost::Sql::Testing
