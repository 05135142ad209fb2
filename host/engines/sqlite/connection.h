// A connection to a company's database.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/engines/rows/connection.h"
#include "host/engines/sqlite/store.h"
#include "host/sql/types.h"

namespace QuorHost::Sqlite {

/// Reads statements in one dialect.
class Connection final : public Rows::Connection {
 public:
  Connection(std::shared_ptr<SqliteStore> store, Sql::Dialect dialect);

 private:
  QuorDataLib::Ref<QuorDataLib::Recordset> open(const std::string& sql, const Values& values,
                                                bool forUpdate) override;
  std::int32_t change(const std::string& sql, const Values& values) override;

  std::shared_ptr<SqliteStore> store_;
  Sql::Dialect dialect_;
};

}  // namespace QuorHost::Sqlite
