// A connection to a company on a server.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/engines/postgres/store.h"
#include "host/engines/rows/connection.h"
#include "host/sql/types.h"

namespace QuorHost::Postgres {

/// Reads statements in one dialect.
class ServerConnection final : public Rows::Connection {
 public:
  ServerConnection(std::shared_ptr<ServerStore> store, Sql::Dialect dialect);

 private:
  QuorDataLib::Ref<QuorDataLib::Recordset> open(const std::string& sql, const Values& values,
                                                bool forUpdate) override;
  std::int32_t change(const std::string& sql, const Values& values) override;

  std::shared_ptr<ServerStore> store_;
  Sql::Dialect dialect_;
};

}  // namespace QuorHost::Postgres
