// The connection of a run without a company.
#pragma once

#include <cstdint>
#include <string>

#include "platform/data_library.h"

namespace QuorHost {

/// Answers every query with an empty recordset without columns, and every change with no rows
/// changed. Nothing is read, so that no statement is refused. A recordset takes new rows, which
/// go nowhere: one that was added can be read back, a field that was never set as Empty.
class DryRunConnection final : public QuorDataLib::Connection {
 public:
  QuorDataLib::Ref<QuorDataLib::Recordset> OpenRecordset(const std::string& sql, std::int32_t mode,
                                                         std::int32_t option,
                                                         const QuorDataLib::Parameters& parameters,
                                                         std::int32_t flag) override;
  void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
               const QuorDataLib::Parameters& parameters) override;
  std::int32_t CommandTimeout() override { return timeout_; }
  void SetCommandTimeout(std::int32_t seconds) override { timeout_ = seconds; }

 private:
  std::int32_t timeout_ = 0;
};

}  // namespace QuorHost
