// The forms that expressions take in SQLite's SQL.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/sql/tree.h"

namespace QuorHost::Sqlite {

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

/// The level of the outermost operator that `expression` is written with.
[[nodiscard]] Level levelOf(const Sql::Tree::Expression& expression) noexcept;

/// An operator between two operands, with its blanks.
[[nodiscard]] std::string_view symbol(Sql::Operator op) noexcept;

/// The function of an arithmetic operator that the engine's own one does not do exactly, or
/// nothing.
[[nodiscard]] std::string_view arithmeticFunction(const Sql::Tree::Expression& operation) noexcept;

/// Factor or divisor of a conversion between whole numbers, ten-thousandths and doubles, or
/// nothing.
[[nodiscard]] std::string_view scaling(Sql::Type from, Sql::Type to) noexcept;

/// Whether a conversion leaves what is stored as it is.
[[nodiscard]] bool isStoredAlike(Sql::Type from, Sql::Type to) noexcept;

/// Whether the engine would compare `value` byte by byte unless it is told the order of texts. Text
/// columns have that order from their declaration, and the columns of views and derived tables from
/// what they select; every other text has not.
[[nodiscard]] bool needsCollation(const Sql::Tree::Expression& value) noexcept;

}  // namespace QuorHost::Sqlite
