// General ledger values.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Balances, earnings, budgets and the chart of accounts. It has the common frame only.
class CGeneralLedgerHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CGeneralLedgerHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
