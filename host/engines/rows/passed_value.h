// Values on their way to an engine.
#pragma once

#include <string_view>
#include <vector>

#include "host/sql/types.h"
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
void requireOneEach(const std::vector<Sql::Type>& markers,
                    const std::vector<QuorDataLib::Value>& values);

}  // namespace QuorHost::Rows
