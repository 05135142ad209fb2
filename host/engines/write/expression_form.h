// How tightly operators bind, and what they are called, in every engine's SQL.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/sql/tree.h"

namespace QuorHost::Write {

/// How tightly the engine's operators bind.
enum class Level : std::uint8_t {
  // clang-format off
  Lowest, Or, And, Not, Equality, Order, Sum, Product, Concatenation, Collation, Sign, Operand
  // clang-format on
};

[[nodiscard]] constexpr Level next(Level level) noexcept {
  return static_cast<Level>(static_cast<int>(level) + 1);
}

// Entries on the stack of the engine's parser within constructs that several parts write.
inline constexpr int kInParentheses = 1;
inline constexpr int kInSign = 1;
inline constexpr int kInRightOperand = 2;
inline constexpr int kInWhen = 4;
inline constexpr int kInElse = 4;

/// An operator between two operands, with its blanks.
[[nodiscard]] std::string_view symbol(Sql::Operator op) noexcept;

}  // namespace QuorHost::Write
