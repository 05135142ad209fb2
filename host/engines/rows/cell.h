// What a row holds in one column.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/sql/front_end.h"
#include "platform/error.h"
#include "platform/values/value.h"

namespace QuorHost::Rows {

/// A stored value as an engine hands it out. The text belongs to whoever made the cell.
struct Cell {
  enum class Kind : std::uint8_t { Null, Integer, Real, Text };
  Kind kind = Kind::Null;
  std::int64_t integer = 0;
  double real = 0;
  std::string_view text;
};

/// The cell as a value of the column's type, or Null. Raises 6 where a number does not fit the
/// type: a sum of money that left the range of integers has become a floating number; and 13 where
/// what is stored is of another kind.
[[nodiscard]] QuorDataLib::Value valueOf(const Cell& cell, const Sql::ResultColumn& column);

/// The decimal number that `text` is ("-12.5", ".05"), as money in ten-thousandths; what leaves
/// their range becomes a floating number, as every overflow.
[[nodiscard]] Cell moneyOf(std::string_view text);

/// Raises `error` again with `what` before its description, so that it says which value it means.
[[noreturn]] void raiseNaming(std::string_view what, const QuorDataLib::Error& error);

}  // namespace QuorHost::Rows
