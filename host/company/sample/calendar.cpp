#include "host/company/sample/calendar.h"

#include <array>

namespace QuorHost::Sample {

namespace {

/// How busy each month is, January first.
constexpr std::array<int, 12> kSeason = {78, 84, 102, 100, 106, 104, 88, 92, 108, 112, 118, 108};

/// How busy all days up to each one are.
std::vector<std::int64_t> busyUntil() {
  std::vector<std::int64_t> sums(kDays);
  std::int64_t sum = 0;
  for (int day = 0; day < kDays; ++day) {
    const int weekdayWeight = weekday(day) == 6 ? 0 : weekday(day) == 5 ? 2 : 10;
    const auto month = static_cast<std::size_t>(dateOf(day).civil().month - 1);
    sum += static_cast<std::int64_t>(weekdayWeight) * kSeason.at(month) * (kDays * 4 + day);
    sums[static_cast<std::size_t>(day)] = sum;
  }
  return sums;
}

}  // namespace

QuorDataLib::Date dateOf(int day) {
  static const std::vector<QuorDataLib::Date> dates = [] {
    // Terms of payment run up to a few months past the last day.
    std::vector<QuorDataLib::Date> all(kDays + 180);
    QuorDataLib::Date date = QuorDataLib::Date::of(kFirstYear, kFirstMonth, 1);
    for (QuorDataLib::Date& each : all) {
      each = date;
      date = date.addDays(1);
    }
    return all;
  }();
  return dates.at(static_cast<std::size_t>(day));
}

int weekday(int day) {
  constexpr int kFriday = 4;  // 2022-04-01
  return (day + kFriday) % 7;
}

bool endsMonth(int day) { return dateOf(day + 1).civil().day == 1; }

bool inLastWeeks(int day) { return day >= kDays - 21 && weekday(day) < 5; }

std::int64_t Quota::until(int day) const {
  static const std::vector<std::int64_t> busy = busyUntil();
  return events_ * busy[static_cast<std::size_t>(day)] / busy.back();
}

}  // namespace QuorHost::Sample
