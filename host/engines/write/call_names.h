// How the functions of the resolved tree are called in an engine's SQL.
#pragma once

#include <string_view>

#include "host/sql/function_table.h"

namespace QuorHost::Write {

/// Name of the engine's own function, or of one that it is given.
[[nodiscard]] std::string_view callName(Sql::Function function) noexcept;

/// The unit as the last argument of the functions of dates.
[[nodiscard]] std::string_view unitLiteral(Sql::DateUnit unit) noexcept;

/// Start and length of a part of a date's text.
[[nodiscard]] std::string_view datePart(Sql::Function function) noexcept;

/// The last argument of the rounding functions.
[[nodiscard]] std::string_view roundingMode(Sql::Function function) noexcept;

}  // namespace QuorHost::Write
