// Values on their way to an engine.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/rows/cell.h"
#include "host/sql/parse/shape.h"
#include "host/sql/types.h"
#include "platform/error.h"
#include "platform/values/value.h"

namespace QuorHost::Rows {

/// The type in which a value goes to a marker that leaves it open.
[[nodiscard]] Sql::Type typeAsPassed(QuorDataLib::ValueType type) noexcept;

/// Raises 5 for a text that no company can hold: one with a zero character, or with a byte that is
/// no character of UTF-8.
void requireStorable(std::string_view text);

/// Raises 6 for infinity and for what is not a number.
void requireFinite(double number);

/// Raises a refused statement with both counts when there are more or fewer values than markers.
void requireOneEach(std::size_t markers, std::size_t values);

/// Calls `give` with each of the `markers` (from 0) of a statement, in their order, and its value:
/// the number that the statement's text has in its place, or the next of `values`. Raises a refused
/// statement when there are more or fewer values than that takes; an error that `give` raises for
/// a value names which one it is.
template <class Give>
void giveMarkers(std::size_t markers, std::span<const Sql::PastedNumber> numbers,
                 const std::vector<QuorDataLib::Value>& values, const Give& give) {
  requireOneEach(markers - numbers.size(), values.size());
  std::size_t given = 0;
  auto pasted = numbers.begin();
  for (std::size_t marker = 0; marker < markers; ++marker) {
    if (pasted != numbers.end() && pasted->marker == marker) {
      give(marker, (pasted++)->number);
      continue;
    }
    try {
      give(marker, values[given++]);
    } catch (const QuorDataLib::Error& error) {
      raiseNaming("Value of marker " + std::to_string(given), error);
    }
  }
}

}  // namespace QuorHost::Rows
