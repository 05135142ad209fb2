// Inventory queries.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Item quantities and histories. It has the common frame only.
class CInventoryQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CInventoryQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
