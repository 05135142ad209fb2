// PostgreSQL's SQL for resolved statements.
#pragma once

#include <string>

#include "host/sql/writer.h"

namespace QuorHost::Postgres {

/// Writes statements for PostgreSQL 15 or newer. They need the functions of `functions/` and the
/// collation "quor" in the schema in which they run. What a `CREATE` statement is written as may be
/// several statements. A writer holds nothing and may be shared.
class SqlWriter final : public Sql::Writer {
 public:
  [[nodiscard]] std::string write(const Sql::Tree::Statement& statement) const override;
  [[nodiscard]] bool mayRaise(const Sql::Tree::Query& query) const override;
};

}  // namespace QuorHost::Postgres
