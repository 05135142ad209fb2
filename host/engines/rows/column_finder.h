// Finds the columns of a result by their names.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "host/sql/front_end.h"
#include "host/sql/names.h"

namespace QuorHost::Rows {

/// Whoever reads rows asks for the same names in the same order for each of them, so that the
/// column that came after this one the last time is looked at first.
class ColumnFinder {
 public:
  /// Index of the first column of that name, or how many columns there are.
  [[nodiscard]] std::size_t find(const std::vector<Sql::ResultColumn>& columns,
                                 std::string_view name) noexcept {
    std::uint8_t& next = next_[last_];
    std::size_t found = next;
    if (found >= columns.size() || columns[found].name != name) {
      found = 0;
      while (found < columns.size() && !Sql::sameName(columns[found].name, name)) ++found;
    }
    if (found < kRemembered) {
      next = static_cast<std::uint8_t>(found);
      last_ = static_cast<std::uint8_t>(found);
    }
    return found;
  }

 private:
  /// Of wider results the first columns are remembered.
  static constexpr std::size_t kRemembered = 32;
  static constexpr std::uint8_t kUnknown = 0xFF;

  /// By column the one that was asked for after it. Each was found by its name, and so is the first
  /// of that name.
  std::array<std::uint8_t, kRemembered> next_ = [] {
    std::array<std::uint8_t, kRemembered> unknown{};
    unknown.fill(kUnknown);
    return unknown;
  }();
  std::uint8_t last_ = 0;
};

}  // namespace QuorHost::Rows
