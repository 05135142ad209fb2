// When documents fall due and when recurring transactions run again: the rules that the component
// answers by and that a host keeps its books by.
#pragma once

#include <algorithm>
#include <cstdint>

#include "platform/values/date.h"

namespace QuorDataLib {

/// Kinds of payment terms (`Term.TermMode`).
namespace TermMode {
/// On a day of the document's month or of the next one.
inline constexpr std::int32_t kDayOfMonth = 1;
/// On a date that the term's details give.
inline constexpr std::int32_t kFixedDate = 2;
/// A first payment some days after the document's day.
inline constexpr std::int32_t kFirstPayment = 3;
/// Net within some days.
inline constexpr std::int32_t kNetDays = 4;
}  // namespace TermMode

/// The due date under a term that is due on day `due` of a month, without a time of day.
///
/// Where a month is shorter, its last day is meant. It is the document's own month, even when that
/// day has passed, unless the term moves on: with `dueNextMonth` above 0 it is the next month where
/// no more than that many days are left from the document's day to the due day, so that nobody has
/// to pay at once.
///
/// @param lengthOf  the days of a month of a year; month 13 is January of the next year
template <class LengthOf>
[[nodiscard]] Date dueOnDayOfMonth(Date document, std::int32_t due, std::int32_t dueNextMonth,
                                   LengthOf&& lengthOf) {
  const Date::Civil day = document.civil();
  const auto dayIn = [&](int month) {
    return std::min<std::int32_t>(lengthOf(day.year, month), due);
  };
  const std::int32_t dueDay = dayIn(day.month);
  const bool moves = dueNextMonth > 0 && std::int64_t{dueDay} - day.day <= dueNextMonth;
  if (!moves) return Date::build(day.year, day.month, dueDay);
  return Date::build(day.year, day.month + 1, dayIn(day.month + 1));
}

/// How often a recurring transaction runs (`TrxRec.Frqncy`).
namespace Frequency {
inline constexpr std::int32_t kNone = 0;
inline constexpr std::int32_t kDaily = 1;
inline constexpr std::int32_t kWeekly = 2;
inline constexpr std::int32_t kMonthly = 3;
inline constexpr std::int32_t kTwoWeeks = 4;
inline constexpr std::int32_t kYearly = 5;
inline constexpr std::int32_t kQuarterly = 6;
inline constexpr std::int32_t kHalfYearly = 7;
}  // namespace Frequency

/// The date one period after `from`; no date for `kNone` and for what is no frequency. Months keep
/// the day of the month, or take the last day of a shorter one. Raises 6 outside the range of
/// dates.
[[nodiscard]] Date nextRun(Date from, std::int32_t frequency);

}  // namespace QuorDataLib
