// A connection to a company's database.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/engines/sqlite/store.h"
#include "host/sql/types.h"
#include "platform/data_library.h"

namespace QuorHost::Sqlite {

/// Reads statements in one dialect. Modes 0, 2, 4 and 6 open a recordset for reading, mode 1 one
/// for update; `option` and `flag` mean nothing here.
class Connection final : public QuorDataLib::Connection {
 public:
  Connection(std::shared_ptr<SqliteStore> store, Sql::Dialect dialect);

  QuorDataLib::Ref<QuorDataLib::Recordset> OpenRecordset(const std::string& sql, std::int32_t mode,
                                                         std::int32_t option,
                                                         const QuorDataLib::Parameters& parameters,
                                                         std::int32_t flag) override;
  void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
               const QuorDataLib::Parameters& parameters) override;
  std::int32_t CommandTimeout() override;
  /// Raises 5 for less than nothing.
  void SetCommandTimeout(std::int32_t seconds) override;

 private:
  std::shared_ptr<SqliteStore> store_;
  Sql::Dialect dialect_;
  std::int32_t timeout_ = 0;
};

}  // namespace QuorHost::Sqlite
