// Sales-tax setup.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Sales-tax codes and groups of a new company. It has the common frame only.
class CTaxHelper : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CTaxHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
