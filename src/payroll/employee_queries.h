// Payroll queries.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Payroll queries (earnings slips, records of employment). It has the common frame only; its
/// queries are not part of the component yet.
class CEmployeeQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CEmployeeQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
