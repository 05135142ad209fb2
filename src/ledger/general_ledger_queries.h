// General ledger queries.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Account and project histories and balances. It has the common frame only.
class CGeneralLedgerQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CGeneralLedgerQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
