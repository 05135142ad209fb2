// The days of the sample: three fiscal years, April to March, ending with the session date.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/values/date.h"

namespace QuorHost::Sample {

inline constexpr int kFiscalYears = 3;
inline constexpr int kFirstYear = 2022;
inline constexpr int kFirstMonth = 4;
/// 2022-04-01 to 2025-03-31. A day of the sample is a number from 0 to `kDays` - 1.
inline constexpr int kDays = 1096;

/// The date of a day of the sample. Due dates may lie past its last day.
QuorDataLib::Date dateOf(int day);

/// 0 for Monday to 6 for Sunday.
int weekday(int day);

/// Whether a month ends with that day.
bool endsMonth(int day);

/// Whether it is a working day of the last weeks of the sample. Something is ordered on each, so
/// that even the smallest sample ends with orders on their way and goods that are not invoiced yet.
bool inLastWeeks(int day);

/// Spreads a number of events over the days as business is: little on Saturdays, none on Sundays,
/// more before the holidays, growing from year to year.
class Quota {
 public:
  explicit Quota(std::int64_t events) : events_(events) {}

  /// How many of the events have happened when `day` is over.
  [[nodiscard]] std::int64_t until(int day) const;

 private:
  std::int64_t events_;
};

}  // namespace QuorHost::Sample
