// Inventory values.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Stock values, costs and item look-ups. It has the common frame only.
class CInventoryHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CInventoryHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
