// Project queries.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Hours put on projects. It has the common frame only. The root does not hand it out: a host
/// creates it directly.
class CProjectQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CProjectQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }
};

}  // namespace QuorAccQueries
