// The automation date.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace QuorDataLib {

/// A point in civil time to the second, from 0100-01-01 00:00:00 to 9999-12-31 23:59:59.
///
/// Its automation form (`serial`) counts days since 1899-12-30, with the time of day as fraction;
/// zero means that no date is given. There is no time zone: accounting dates are what is printed on
/// the document.
class Date {
 public:
  /// Year, month (1 to 12), day of month, and time of day of a date.
  struct Civil {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool operator==(const Civil&) const = default;
  };

  /// No date (zero).
  constexpr Date() = default;

  /// The date of calendar numbers as they stand. Raises 5 when they name no day or time.
  static Date of(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

  /// The date built from calendar numbers that may lie outside their range: month 13 is January of
  /// the next year, day 0 the last day of the month before. Raises 6 outside the range of dates.
  static Date build(int year, int month, int day);

  /// The date of an automation serial number, rounded to the second. Before 1899-12-30 the
  /// fraction counts forward within the day, as automation has it. Raises 6 outside the range.
  static Date fromSerial(double serial);

  /// The date of `YYYY-MM-DD`, optionally followed by a blank or `T` and `HH:MM:SS`; an empty text
  /// is no date. `std::nullopt` when the text is something else or names no day.
  static std::optional<Date> parse(std::string_view text);

  /// Days since 1899-12-30 with the time of day as fraction.
  [[nodiscard]] double serial() const noexcept;

  /// `serial` rounded to whole days, halves to the even day: the number that the tests for "no
  /// date" look at, so that a time of day alone (up to noon) counts as no date.
  [[nodiscard]] std::int32_t roundedDay() const noexcept;

  /// True for exactly zero.
  [[nodiscard]] constexpr bool empty() const noexcept { return seconds_ == 0; }

  [[nodiscard]] Civil civil() const noexcept;
  [[nodiscard]] bool hasTime() const noexcept;

  /// The same day at midnight.
  [[nodiscard]] Date dateOnly() const noexcept;

  /// Calendar addition; the time of day is kept, and where the target month is shorter its last day
  /// is taken. Raise 6 outside the range.
  [[nodiscard]] Date addDays(std::int64_t days) const;
  [[nodiscard]] Date addMonths(std::int64_t months) const;

  /// ISO text: `YYYY-MM-DD`, followed by `separator` and `HH:MM:SS` when there is a time of day.
  [[nodiscard]] std::string toText(char separator = ' ') const;

  /// Seconds since 1899-12-30 00:00:00.
  [[nodiscard]] constexpr std::int64_t seconds() const noexcept { return seconds_; }

  constexpr auto operator<=>(const Date&) const = default;

 private:
  constexpr explicit Date(std::int64_t seconds) : seconds_(seconds) {}
  static Date checked(std::int64_t seconds);

  std::int64_t seconds_ = 0;
};

/// Days of a month (1 to 12) of a year in the Gregorian calendar.
[[nodiscard]] int daysInMonth(int year, int month) noexcept;

/// The bounds that stand for "no lower" and "no upper" date in the range queries.
[[nodiscard]] Date earliestBound();  // 1900-01-01
[[nodiscard]] Date latestBound();    // 9999-12-31

}  // namespace QuorDataLib
