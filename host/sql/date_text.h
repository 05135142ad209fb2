// Dates as statements and stored texts write them.
#pragma once

#include <optional>
#include <string_view>

#include "platform/values/date.h"

namespace QuorHost::Sql {

/// The date of `YYYY-MM-DD`, `YYYYMMDD` or `m/d/yyyy`, with or without a time of day behind a blank
/// (`HH:MM` or `HH:MM:SS`, and AM or PM with `m/d/yyyy`); blanks around it are allowed.
/// `std::nullopt` when the text is something else or names no day.
[[nodiscard]] std::optional<QuorDataLib::Date> parseDate(std::string_view text);

}  // namespace QuorHost::Sql
