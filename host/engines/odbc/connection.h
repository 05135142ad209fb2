// A connection that passes statements through.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/engines/odbc/store.h"
#include "host/engines/rows/connection.h"

namespace QuorHost::Odbc {

/// Sends texts and markers as they stand.
class OdbcConnection final : public Rows::Connection {
 public:
  explicit OdbcConnection(std::shared_ptr<OdbcStore> store);

 private:
  QuorDataLib::Ref<QuorDataLib::Recordset> open(const std::string& sql, const Values& values,
                                                bool forUpdate) override;
  std::int32_t change(const std::string& sql, const Values& values) override;

  std::shared_ptr<OdbcStore> store_;
};

}  // namespace QuorHost::Odbc
