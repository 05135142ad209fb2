// Payment terms.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Due dates from payment terms. It has the common frame only.
class CTermHelper : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CTermHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
