// PostgreSQL's SQL for resolved statements.
#pragma once

#include <string>

#include "host/sql/catalogue.h"
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

/// Writes a `CREATE TABLE` as the statement that adds to a table what it has not; everything else
/// as `SqlWriter` does.
class GrowthWriter final : public Sql::Writer {
 public:
  /// `before` is the table, which must stay as long as the writer does.
  explicit GrowthWriter(const Sql::Relation& before) : before_(&before) {}
  [[nodiscard]] std::string write(const Sql::Tree::Statement& statement) const override;
  [[nodiscard]] bool mayRaise(const Sql::Tree::Query& query) const override;

 private:
  const Sql::Relation* before_;
};

}  // namespace QuorHost::Postgres
