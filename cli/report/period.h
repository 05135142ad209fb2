// The days that a report is about.
#pragma once

#include <CLI/App.hpp>
#include <optional>
#include <string>

#include "platform/values/date.h"

namespace QuorCli {

/// A day as an option gives it. Raises `UsageError`, naming the option, for anything but a date
/// without a time of day.
[[nodiscard]] QuorDataLib::Date parseDay(const std::string& option, const std::string& text);

/// The last second of a day: what a member's upper date has to be, so that documents with a time of
/// day belong to their day. A lower date is the day itself.
[[nodiscard]] QuorDataLib::Date endOfDay(QuorDataLib::Date day);

/// Days from one to the other; negative when `to` comes first.
[[nodiscard]] std::int64_t daysBetween(QuorDataLib::Date from, QuorDataLib::Date to);

/// Adds `--as-of`; the report's day is the session date without it.
void addAsOf(CLI::App& command, std::optional<std::string>& asOf);

/// Raises `UsageError` for a `--from` or `--to` that is no day, and for a `--to` before `--from`.
void checkDays(const std::optional<std::string>& from, const std::optional<std::string>& to);

/// The day that `asOf` gives, or else the session date.
[[nodiscard]] QuorDataLib::Date dayOf(const std::optional<std::string>& asOf,
                                      QuorDataLib::Date sessionDate);

}  // namespace QuorCli
