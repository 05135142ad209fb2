#include "platform/values/date.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <random>

#include "platform/raised.h"

namespace QuorDataLib {
namespace {

using QuorTest::raisedBy;

constexpr std::chrono::sys_days kDayZero{std::chrono::year(1899) / 12 / 30};
constexpr int kFirstDay = -657'434;
constexpr int kLastDay = 2'958'465;

/// The same day as the standard library's calendar sees it.
Date standardDate(std::chrono::sys_days day, int secondOfDay = 0) {
  const std::chrono::year_month_day at(day);
  return Date::of(int{at.year()}, static_cast<int>(unsigned{at.month()}),
                  static_cast<int>(unsigned{at.day()}), secondOfDay / 3600, secondOfDay / 60 % 60,
                  secondOfDay % 60);
}

class RandomDates {
 public:
  Date next() {
    return standardDate(kDayZero + std::chrono::days(day_(random_)), second_(random_));
  }
  int number(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

 private:
  std::mt19937 random_{20'240'229};
  std::uniform_int_distribution<int> day_{kFirstDay, kLastDay};
  std::uniform_int_distribution<int> second_{0, 86'399};
};

TEST(Date, EveryDayAgreesWithTheStandardCalendar) {
  for (int day = kFirstDay; day <= kLastDay; ++day) {
    const std::chrono::year_month_day expected(kDayZero + std::chrono::days(day));
    const Date date = Date::fromSerial(day);
    const Date::Civil civil = date.civil();
    ASSERT_TRUE(civil.year == int{expected.year()} &&
                civil.month == static_cast<int>(unsigned{expected.month()}) &&
                civil.day == static_cast<int>(unsigned{expected.day()}))
        << day;
    ASSERT_EQ(Date::build(civil.year, civil.month, civil.day), date) << day;
  }
}

TEST(Date, EveryFormLeadsBackToTheDate) {
  RandomDates dates;
  for (int i = 0; i < 20'000; ++i) {
    const Date date = dates.next();
    SCOPED_TRACE(date.toText());
    const Date::Civil at = date.civil();
    ASSERT_EQ(Date::of(at.year, at.month, at.day, at.hour, at.minute, at.second), date);
    ASSERT_EQ(Date::parse(date.toText()), date);
    ASSERT_EQ(Date::parse(date.toText('T')), date);
    ASSERT_EQ(Date::fromSerial(date.serial()), date);
    ASSERT_EQ(date.roundedDay(), std::nearbyint(date.serial()));
    ASSERT_EQ(date.dateOnly(), Date::of(at.year, at.month, at.day));
    ASSERT_EQ(date.hasTime(), date != date.dateOnly());
  }
}

TEST(Date, SerialsCountTheTimeForwardOnBothSidesOfZero) {
  EXPECT_EQ(Date::fromSerial(-1.25), Date::of(1899, 12, 29, 6));
  EXPECT_EQ(Date::fromSerial(-0.25), Date::of(1899, 12, 30, 6));
  EXPECT_EQ(Date::fromSerial(1.25), Date::of(1899, 12, 31, 6));
  EXPECT_EQ(Date::of(1899, 12, 29, 6).serial(), -1.25);
  EXPECT_LT(Date::fromSerial(-1.25), Date::fromSerial(-1.75));
  EXPECT_EQ(Date::fromSerial(1.9999999), Date::of(1900, 1, 1)) << "rounds into the next day";
}

TEST(Date, TheRangeEndsWhereItSays) {
  EXPECT_EQ(Date::fromSerial(-657'434.99998).toText(), "0100-01-01 23:59:58");
  EXPECT_EQ(Date::fromSerial(2'958'465.99999).toText(), "9999-12-31 23:59:59");
  for (const double serial : {-657'435.0, 2'958'466.0, 2'958'465.999999, 1e300,
                              std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_EQ(raisedBy([&] { return Date::fromSerial(serial); }), 6) << serial;
  }
  const Date last = latestBound();
  constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
  for (const std::int64_t step : {std::int64_t{1}, kMost}) {
    EXPECT_EQ(raisedBy([&] { return last.addDays(step); }), 6);
    EXPECT_EQ(raisedBy([&] { return last.addMonths(step); }), 6);
    EXPECT_EQ(raisedBy([&] { return Date::of(100, 1, 1).addDays(-step); }), 6);
    EXPECT_EQ(raisedBy([&] { return Date::of(100, 1, 1).addMonths(-step); }), 6);
  }
  EXPECT_EQ(raisedBy([] { return Date::build(10'000, 1, 1); }), 6);
  EXPECT_EQ(raisedBy([] { return Date::build(100, 1, 0); }), 6);
  constexpr int kMostInt = std::numeric_limits<int>::max();
  EXPECT_EQ(raisedBy([] { return Date::build(kMostInt, kMostInt, kMostInt); }), 6);
  EXPECT_EQ(raisedBy([] { return Date::build(-kMostInt, -kMostInt, -kMostInt); }), 6);
}

TEST(Date, BuildCarriesMonthsAndDays) {
  EXPECT_EQ(Date::build(2023, 13, 1), Date::of(2024, 1, 1));
  EXPECT_EQ(Date::build(2024, 3, 0), Date::of(2024, 2, 29));
  EXPECT_EQ(Date::build(2023, 2, 29), Date::of(2023, 3, 1));
  EXPECT_EQ(Date::build(0, 12 * 2000, 31), Date::of(1999, 12, 31));
  RandomDates dates;
  for (int i = 0; i < 5'000; ++i) {
    const int year = dates.number(1000, 9000);
    const int month = dates.number(-500, 500);
    const int day = dates.number(-5'000, 5'000);
    const std::chrono::year_month first =
        std::chrono::year(year) / 1 + std::chrono::months(month - 1);
    ASSERT_EQ(Date::build(year, month, day),
              standardDate(std::chrono::sys_days(first / 1) + std::chrono::days(day - 1)))
        << year << ' ' << month << ' ' << day;
  }
}

TEST(Date, MonthsKeepTheDayOrTakeTheLast) {
  EXPECT_EQ(Date::of(2024, 1, 31, 8, 30, 1).addMonths(1), Date::of(2024, 2, 29, 8, 30, 1));
  RandomDates dates;
  for (int i = 0; i < 5'000; ++i) {
    const Date date = Date::build(dates.number(500, 9500), 1, dates.number(1, 366));
    const int months = dates.number(-4'000, 4'000);
    const Date::Civil at = date.civil();
    const std::chrono::year_month target =
        std::chrono::year(at.year) / at.month + std::chrono::months(months);
    std::chrono::year_month_day expected = target / at.day;
    if (!expected.ok()) expected = target / std::chrono::last;
    ASSERT_EQ(date.addMonths(months), standardDate(expected)) << date.toText() << ' ' << months;
    ASSERT_EQ(date.addMonths(months).addDays(1).addDays(-1), date.addMonths(months));
  }
}

TEST(Date, WhatNamesNoDayIsRefused) {
  EXPECT_EQ(raisedBy([] { return Date::of(2023, 2, 29); }), 5);
  EXPECT_EQ(raisedBy([] { return Date::of(1900, 2, 29); }), 5);
  EXPECT_EQ(raisedBy([] { return Date::of(2023, 13, 1); }), 5);
  EXPECT_EQ(raisedBy([] { return Date::of(99, 1, 1); }), 5);
  EXPECT_EQ(raisedBy([] { return Date::of(2023, 1, 1, 24); }), 5);
  for (const char* text : {"2023-02-29",          "1900-02-29",
                           "2023-00-10",          "2023-13-01",
                           "2023-01-00",          "2023-04-31",
                           "0099-12-31",          "2023-1-1",
                           "2023/01/01",          "20230101",
                           "2023-01-01 ",         " 2023-01-01",
                           "2023-01-01 10:00",    "2023-01-01t10:00:00",
                           "2023-01-01 24:00:00", "2023-01-01 10:60:00",
                           "2023-01-01 10:00:60", "2023-01-01 10-00:00",
                           "2023-01-01 10:00-00", "2023-01-01 -1:00:00",
                           "-023-01-01",          "2023-01-01 10:00:00Z",
                           "2O23-01-01",          " "}) {
    EXPECT_EQ(Date::parse(text), std::nullopt) << text;
  }
  EXPECT_EQ(Date::parse(""), Date());
  EXPECT_EQ(Date::parse("2000-02-29"), Date::of(2000, 2, 29));
}

TEST(Date, ATimeOfDayAloneCountsAsNoDateUpToNoon) {
  EXPECT_TRUE(Date().empty());
  EXPECT_FALSE(Date::fromSerial(0.5).empty());
  EXPECT_EQ(Date::fromSerial(0.5).roundedDay(), 0);
  EXPECT_EQ(Date::of(1899, 12, 30, 12, 0, 1).roundedDay(), 1);
  EXPECT_EQ(Date::fromSerial(1.5).roundedDay(), 2);
  EXPECT_EQ(Date::fromSerial(2.5).roundedDay(), 2);
}

}  // namespace
}  // namespace QuorDataLib
