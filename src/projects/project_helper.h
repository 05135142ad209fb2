// Project values.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Sales, purchases and hours of projects. It has the common frame only.
class CProjectHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CProjectHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
