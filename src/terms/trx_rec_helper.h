// Recurring transactions.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// The schedule of recurring transactions. It has the common frame only.
class CTrxRecHelper : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CTrxRecHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
