// PostgreSQL's SQL by which kept totals are made, kept true and compared with their rows.
#pragma once

#include <string>

#include "host/sql/catalogue.h"
#include "host/sql/tree.h"

namespace QuorHost::Postgres {

/// The statements that make the table of the totals, fill it, and keep it true from then on, by
/// triggers that look at all rows of a statement at once.
[[nodiscard]] std::string createsKeptTotals(const Sql::Tree::CreateView& view);

/// A query of the keys of those totals that are not what the rows add up to.
[[nodiscard]] std::string keptTotalsDifferences(const Sql::Relation& view,
                                                const Sql::Relation& table);

}  // namespace QuorHost::Postgres
