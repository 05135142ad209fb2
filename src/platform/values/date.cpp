#include "platform/values/date.h"

#include <cmath>

#include "platform/error.h"

namespace QuorDataLib {
namespace {

constexpr std::int64_t kSecondsPerDay = 86'400;

// Day numbers count from 1899-12-30.
constexpr std::int64_t kFirstDay = -657'434;  // 0100-01-01
constexpr std::int64_t kLastDay = 2'958'465;  // 9999-12-31
constexpr std::int64_t kFirstSecond = kFirstDay * kSecondsPerDay;
constexpr std::int64_t kLastSecond = (kLastDay + 1) * kSecondsPerDay - 1;

// The calendar repeats after an era of 400 years. The conversions count years from March, so that
// the leap day is the last day of its year, and days from 0000-03-01.
constexpr std::int64_t kDaysPerEra = 146'097;
constexpr std::int64_t kDayOfMarchZero = 693'899;  // from 0000-03-01 to 1899-12-30

// More days or months than the range of dates has: what reaches further is outside in any case,
// and what does not cannot overflow an intermediate result.
constexpr std::int64_t kBeyondRange = 10'000'000;

constexpr std::int64_t floorDiv(std::int64_t number, std::int64_t divisor) {
  return number / divisor - (number % divisor < 0 ? 1 : 0);
}

struct YearMonth {
  std::int64_t year;
  int month;  // 1 to 12
};

/// The month `months` after January of year 0.
YearMonth yearMonth(std::int64_t months) {
  const std::int64_t year = floorDiv(months, 12);
  return {year, static_cast<int>(months - year * 12) + 1};
}

/// Day number of the first day of a month.
std::int64_t firstOfMonth(YearMonth at) {
  const bool beforeMarch = at.month < 3;
  const std::int64_t year = at.year - (beforeMarch ? 1 : 0);
  const std::int64_t month = at.month + (beforeMarch ? 9 : -3);
  const std::int64_t era = floorDiv(year, 400);
  const std::int64_t yearOfEra = year - era * 400;
  const std::int64_t dayOfYear = (153 * month + 2) / 5;
  return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear -
         kDayOfMarchZero;
}

std::int64_t dayNumber(int year, int month, int day) {
  return firstOfMonth({year, month}) + day - 1;
}

/// The calendar day of a day number inside the range of dates.
Date::Civil calendarDay(std::int64_t number) {
  const auto day = static_cast<std::uint32_t>(number + kDayOfMarchZero);
  const std::uint32_t era = day / kDaysPerEra;
  const std::uint32_t dayOfEra = day % kDaysPerEra;
  const std::uint32_t yearOfEra =
      (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const std::uint32_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::uint32_t month = (5 * dayOfYear + 2) / 153;  // from March
  const bool beforeMarch = month >= 10;
  Date::Civil civil;
  civil.year = static_cast<int>(era * 400 + yearOfEra + (beforeMarch ? 1 : 0));
  civil.month = static_cast<int>(beforeMarch ? month - 9 : month + 3);
  civil.day = static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1);
  return civil;
}

bool isCivil(const Date::Civil& at) {
  return at.year >= 100 && at.year <= 9999 && at.month >= 1 && at.month <= 12 && at.day >= 1 &&
         at.day <= daysInMonth(at.year, at.month) && at.hour >= 0 && at.hour <= 23 &&
         at.minute >= 0 && at.minute <= 59 && at.second >= 0 && at.second <= 59;
}

std::int64_t secondsOf(const Date::Civil& at) {
  const int timeOfDay = (at.hour * 60 + at.minute) * 60 + at.second;
  return dayNumber(at.year, at.month, at.day) * kSecondsPerDay + timeOfDay;
}

[[noreturn]] void raiseOutsideRange() {
  raise(ErrorNumber::Overflow, "The date is outside 0100-01-01 to 9999-12-31");
}

/// The number of `count` decimal digits at `text`, or a negative number when one is no digit.
int digits(const char* text, int count) {
  int number = 0;
  for (int i = 0; i < count; ++i) {
    if (text[i] < '0' || text[i] > '9') return -1;
    number = number * 10 + (text[i] - '0');
  }
  return number;
}

void writeDigits(char* text, int count, int number) {
  for (int i = count - 1; i >= 0; --i, number /= 10) {
    text[i] = static_cast<char>('0' + number % 10);
  }
}

}  // namespace

Date Date::checked(std::int64_t seconds) {
  if (seconds < kFirstSecond || seconds > kLastSecond) raiseOutsideRange();
  return Date(seconds);
}

Date Date::of(int year, int month, int day, int hour, int minute, int second) {
  const Civil at{year, month, day, hour, minute, second};
  if (!isCivil(at)) {
    const auto joined = [](int a, int b, int c, const char* separator) {
      return std::to_string(a) + separator + std::to_string(b) + separator + std::to_string(c);
    };
    raise(ErrorNumber::InvalidArgument, joined(year, month, day, "-") + " " +
                                            joined(hour, minute, second, ":") +
                                            " is no date and time of day");
  }
  return Date(secondsOf(at));
}

Date Date::build(int year, int month, int day) {
  const std::int64_t months = std::int64_t{year} * 12 + month - 1;
  return checked((firstOfMonth(yearMonth(months)) + day - 1) * kSecondsPerDay);
}

Date Date::fromSerial(double serial) {
  const double day = std::trunc(serial);
  if (std::isnan(day) || day < kFirstDay || day > kLastDay) raiseOutsideRange();
  const double timeOfDay = std::abs(serial - day);
  return checked(static_cast<std::int64_t>(day) * kSecondsPerDay +
                 std::llround(timeOfDay * kSecondsPerDay));
}

std::optional<Date> Date::parse(std::string_view text) {
  constexpr std::size_t kDayLength = 10;
  constexpr std::size_t kFullLength = 19;
  if (text.empty()) return Date();
  if (text.size() != kDayLength && text.size() != kFullLength) return std::nullopt;
  const char* const at = text.data();
  if (at[4] != '-' || at[7] != '-') return std::nullopt;
  Civil civil{digits(at, 4), digits(at + 5, 2), digits(at + 8, 2)};
  if (text.size() == kFullLength) {
    if ((at[10] != ' ' && at[10] != 'T') || at[13] != ':' || at[16] != ':') return std::nullopt;
    civil.hour = digits(at + 11, 2);
    civil.minute = digits(at + 14, 2);
    civil.second = digits(at + 17, 2);
  }
  if (!isCivil(civil)) return std::nullopt;
  return Date(secondsOf(civil));
}

double Date::serial() const noexcept {
  const std::int64_t day = floorDiv(seconds_, kSecondsPerDay);
  const double timeOfDay =
      static_cast<double>(seconds_ - day * kSecondsPerDay) / static_cast<double>(kSecondsPerDay);
  return static_cast<double>(day) + (day < 0 ? -timeOfDay : timeOfDay);
}

std::int32_t Date::roundedDay() const noexcept {
  return static_cast<std::int32_t>(std::nearbyint(serial()));
}

Date::Civil Date::civil() const noexcept {
  const std::int64_t day = floorDiv(seconds_, kSecondsPerDay);
  const int timeOfDay = static_cast<int>(seconds_ - day * kSecondsPerDay);
  Civil civil = calendarDay(day);
  civil.hour = timeOfDay / 3'600;
  civil.minute = timeOfDay / 60 % 60;
  civil.second = timeOfDay % 60;
  return civil;
}

bool Date::hasTime() const noexcept { return seconds_ % kSecondsPerDay != 0; }

Date Date::dateOnly() const noexcept {
  return Date(floorDiv(seconds_, kSecondsPerDay) * kSecondsPerDay);
}

Date Date::addDays(std::int64_t days) const {
  if (days < -kBeyondRange || days > kBeyondRange) raiseOutsideRange();
  return checked(seconds_ + days * kSecondsPerDay);
}

Date Date::addMonths(std::int64_t months) const {
  if (months < -kBeyondRange || months > kBeyondRange) raiseOutsideRange();
  Civil at = civil();
  const YearMonth target = yearMonth(std::int64_t{at.year} * 12 + at.month - 1 + months);
  at.year = static_cast<int>(target.year);
  at.month = target.month;
  const int length = daysInMonth(at.year, at.month);
  if (at.day > length) at.day = length;
  return checked(secondsOf(at));
}

std::string Date::toText(char separator) const {
  char text[] = "YYYY-MM-DD HH:MM:SS";
  const Civil at = civil();
  writeDigits(text, 4, at.year);
  writeDigits(text + 5, 2, at.month);
  writeDigits(text + 8, 2, at.day);
  if (!hasTime()) return {text, 10};
  text[10] = separator;
  writeDigits(text + 11, 2, at.hour);
  writeDigits(text + 14, 2, at.minute);
  writeDigits(text + 17, 2, at.second);
  return {text, 19};
}

int daysInMonth(int year, int month) noexcept {
  if (month == 2) return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 29 : 28;
  // Long are the odd months up to July and the even ones from August.
  return 30 + ((month ^ (month >> 3)) & 1);
}

Date earliestBound() { return Date::of(1900, 1, 1); }

Date latestBound() { return Date::of(9999, 12, 31); }

}  // namespace QuorDataLib
