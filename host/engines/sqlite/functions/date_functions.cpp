// Dates, which are stored as ISO text.
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "host/engines/sqlite/functions/function_call.h"
#include "host/sql/date_text.h"
#include "platform/values/date.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::Date;

constexpr std::int64_t kSecondsPerDay = 86'400;
constexpr std::int64_t kSecondsPerHour = 3'600;
constexpr std::int64_t kSecondsPerMinute = 60;
constexpr std::int64_t kDaysPerWeek = 7;
constexpr std::int64_t kMonthsPerYear = 12;
constexpr std::int64_t kMonthsPerQuarter = 3;

std::int64_t floorDivide(std::int64_t dividend, std::int64_t divisor) {
  return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

Date dateArgument(const Call& call, std::size_t i) {
  const std::optional<Date> date = Sql::parseDate(call.text(i));
  if (!date) throw CallError("'" + std::string(call.text(i)) + "' is not a date");
  return *date;
}

void returnDate(const Call& call, Date date) { call.returnText(date.toText()); }

Date addSeconds(Date date, std::int64_t seconds) {
  std::int64_t time = 0;
  if (__builtin_add_overflow(date.seconds() - date.dateOnly().seconds(), seconds, &time))
    overflow();
  const std::int64_t days = floorDivide(time, kSecondsPerDay);
  const int rest = static_cast<int>(time - days * kSecondsPerDay);
  const Date::Civil day = date.dateOnly().addDays(days).civil();
  return Date::of(day.year, day.month, day.day, rest / 3600, rest / 60 % 60, rest % 60);
}

std::int64_t dayNumber(Date date) { return floorDivide(date.seconds(), kSecondsPerDay); }

std::int64_t monthNumber(Date date) {
  const Date::Civil civil = date.civil();
  return civil.year * kMonthsPerYear + civil.month - 1;
}

/// Weeks begin on Sunday; day 0, 1899-12-30, was a Saturday.
std::int64_t weekNumber(Date date) { return floorDivide(dayNumber(date) - 1, kDaysPerWeek); }

struct Unit {
  std::string_view name;
  Date (*add)(Date date, std::int64_t count);
  /// Whole units between two dates, counted by the boundaries between them.
  std::int64_t (*between)(Date from, Date to);
};

Date addDays(Date date, std::int64_t count) { return date.addDays(count); }

template <std::int64_t Months>
Date addMonths(Date date, std::int64_t count) {
  return date.addMonths(count * Months);
}

template <std::int64_t Months>
std::int64_t monthsBetween(Date from, Date to) {
  return floorDivide(monthNumber(to), Months) - floorDivide(monthNumber(from), Months);
}

template <std::int64_t Seconds>
Date addTime(Date date, std::int64_t count) {
  return addSeconds(date, count * Seconds);
}

template <std::int64_t Seconds>
std::int64_t timeBetween(Date from, Date to) {
  return floorDivide(to.seconds(), Seconds) - floorDivide(from.seconds(), Seconds);
}

constexpr std::array kUnits{
    Unit{"year", addMonths<kMonthsPerYear>, monthsBetween<kMonthsPerYear>},
    Unit{"quarter", addMonths<kMonthsPerQuarter>, monthsBetween<kMonthsPerQuarter>},
    Unit{"month", addMonths<1>, monthsBetween<1>},
    Unit{"day", addDays, timeBetween<kSecondsPerDay>},
    // A weekday apart is a full week apart, whatever day it begins on.
    Unit{"weekday", addDays,
         [](Date from, Date to) { return (dayNumber(to) - dayNumber(from)) / kDaysPerWeek; }},
    Unit{"week", [](Date date, std::int64_t count) { return date.addDays(count * kDaysPerWeek); },
         [](Date from, Date to) { return weekNumber(to) - weekNumber(from); }},
    Unit{"hour", addTime<kSecondsPerHour>, timeBetween<kSecondsPerHour>},
    Unit{"minute", addTime<kSecondsPerMinute>, timeBetween<kSecondsPerMinute>},
    Unit{"second", addTime<1>, timeBetween<1>},
};

const Unit& unitArgument(const Call& call, std::size_t i) {
  for (const Unit& unit : kUnits) {
    if (unit.name == call.text(i)) return unit;
  }
  throw CallError("'" + std::string(call.text(i)) + "' is not a unit of dates");
}

/// (count, date, unit)
void addToDate(const Call& call) {
  returnDate(call, unitArgument(call, 2).add(dateArgument(call, 1), call.whole(0)));
}

/// (from, to, unit)
void difference(const Call& call) {
  const std::int64_t units =
      unitArgument(call, 2).between(dateArgument(call, 0), dateArgument(call, 1));
  if (units > std::numeric_limits<std::int32_t>::max() ||
      units < std::numeric_limits<std::int32_t>::min()) {
    overflow();
  }
  call.returnWhole(units);
}

/// (year, month, day), each of which may lie outside its range. Two digits are a year from 1930 to
/// 2029.
void dateOf(const Call& call) {
  constexpr std::int64_t kCentury = 100;
  constexpr std::int64_t kFirstOfLastCentury = 30;
  std::int64_t year = call.whole(0);
  if (year >= 0 && year < kCentury) year += year < kFirstOfLastCentury ? 2000 : 1900;
  returnDate(call, Date::build(static_cast<int>(year), static_cast<int>(call.whole(1)),
                               static_cast<int>(call.whole(2))));
}

/// (date, days and fraction of a day)
void addFraction(const Call& call) {
  constexpr double kMostDays = 1e7;
  const double days = call.number(1);
  if (!(std::abs(days) <= kMostDays)) overflow();
  const double seconds = std::round(days * static_cast<double>(kSecondsPerDay));
  returnDate(call, addSeconds(dateArgument(call, 0), static_cast<std::int64_t>(seconds)));
}

void daysBetween(const Call& call) {
  const std::int64_t seconds = dateArgument(call, 0).seconds() - dateArgument(call, 1).seconds();
  call.returnNumber(static_cast<double>(seconds) / static_cast<double>(kSecondsPerDay));
}

void serial(const Call& call) { call.returnNumber(dateArgument(call, 0).serial()); }

/// A text in any of the forms that a date is written in, in the stored form.
void dateText(const Call& call) { returnDate(call, dateArgument(call, 0)); }

constexpr std::array kFunctions{
    FunctionEntry{"quor_date_add", 3, addToDate},
    FunctionEntry{"quor_date_diff", 3, difference},
    FunctionEntry{"quor_date_of", 3, dateOf},
    FunctionEntry{"quor_add_days", 2, addFraction},
    FunctionEntry{"quor_days_between", 2, daysBetween},
    FunctionEntry{"quor_serial", 1, serial},
    FunctionEntry{"quor_date_text", 1, dateText},
};

}  // namespace

std::span<const FunctionEntry> dateFunctions() noexcept { return kFunctions; }

}  // namespace QuorHost::Sqlite
