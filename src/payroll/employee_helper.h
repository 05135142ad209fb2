// Payroll values.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Payroll values (taxable earnings, vacation and sick leave). It has the common frame only.
class CEmployeeHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CEmployeeHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
