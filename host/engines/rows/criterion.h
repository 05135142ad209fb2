// What `Recordset::Find` looks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "host/engines/rows/cell.h"
#include "host/sql/types.h"

namespace QuorHost::Rows {

/// `Column = value`, taken apart.
struct Criterion {
  enum class Kind : std::uint8_t { Number, Text, Date };
  std::string column;
  Kind kind = Kind::Number;
  /// The value without its quotes; doubled quotes of a text are single again.
  std::string value;
};

/// Reads a criterion: a column name, bare or in brackets, "=", and a number, a text in single
/// quotes or an ISO date between number signs. Raises 5 for anything else.
[[nodiscard]] Criterion parseCriterion(const std::string& text);

/// By what rows are found in a column: texts by the text, everything else by a number that is equal
/// for equal values of the column's type.
using FindKey = std::variant<std::int64_t, std::string>;

/// The key of the value that `criterion` names in a column of `type`, or nothing when no value of
/// the type can equal it (1.5 in a column of whole numbers). Raises 5 when the kinds do not go
/// together.
[[nodiscard]] std::optional<FindKey> keyOf(const Criterion& criterion, Sql::Type type);

/// The key of a stored value in a column of any type but `Text`, or nothing when it equals no value
/// that can be looked for (null).
[[nodiscard]] std::optional<std::int64_t> numericKeyOf(const Cell& cell, Sql::Type type);

}  // namespace QuorHost::Rows
