// SQLite's SQL for resolved statements.
#pragma once

#include <string>

#include "host/sql/writer.h"

namespace QuorHost::Sqlite {

/// Writes statements for SQLite 3.39 or newer. They need the functions of functions.h and the
/// collation of collation.h on the connection that runs them. A writer holds nothing and may be
/// shared.
class SqlWriter final : public Sql::Writer {
 public:
  [[nodiscard]] std::string write(const Sql::Tree::Statement& statement) const override;
  [[nodiscard]] bool mayRaise(const Sql::Tree::Query& query) const override;
};

}  // namespace QuorHost::Sqlite
