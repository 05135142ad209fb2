// Country setup.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Creation of countries. It has the common frame only. The root does not hand it out: a host
/// creates it directly.
class CCountryHelper : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CCountryHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
