// Dates: their forms, their arithmetic, and their order.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using QuorDataLib::Date;
using QuorDataLib::Value;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kDays = R"(
  CREATE TABLE Day1 (Id INT PRIMARY KEY, At DATETIME);
  INSERT INTO Day1 VALUES (1, '2024-01-31');
  INSERT INTO Day1 VALUES (2, '2024-01-31 08:30');
  INSERT INTO Day1 VALUES (3, '20240301');
  INSERT INTO Day1 VALUES (4, '2024-02-29 00:00:00');
  INSERT INTO Day1 VALUES (5, NULL);
)";

TEST(Dates, HaveOneStoredFormThatSorts) {
  Database database(kDays);
  for (const Dialect dialect : kBoth) {
    EXPECT_THAT(database.rows("SELECT At FROM Day1 WHERE NOT At IS NULL ORDER BY At DESC", dialect),
                ElementsAre("2024-03-01", "2024-02-29", "2024-01-31 08:30:00", "2024-01-31"));
    EXPECT_THAT(database.rows("SELECT Id FROM Day1 WHERE At BETWEEN ? AND ?", dialect,
                              {Value(Date::of(2024, 1, 31)), Value(Date::of(2024, 2, 29))}),
                ElementsAre("1", "2", "4"));
  }
  EXPECT_THAT(
      database.rows("SELECT Id FROM Day1 WHERE At = '20240229' OR At > '2024-02-29T10:00:00'",
                    kServer),
      ElementsAre("3", "4"));
  EXPECT_THAT(database.rows("SELECT Id FROM Day1 WHERE At IN (#1/31/2024 8:30 AM#, #2024-03-01#)",
                            kDesktop),
              ElementsAre("2", "3"));
  EXPECT_THAT(database.rows("SELECT Id FROM Day1 WHERE At = '2024-0' + '2-29'", kServer),
              ElementsAre("4"));
}

TEST(Dates, AddByTheCalendar) {
  Database database(kDays);
  const auto server = [&](const std::string& expression) {
    return database.rows("SELECT " + expression + " FROM Day1 WHERE Id = 2", kServer).at(0);
  };
  EXPECT_EQ(server("DATEADD(month, 1, At)"), "2024-02-29 08:30:00");
  EXPECT_EQ(server("DATEADD(yy, -1, DATEADD(qq, 1, At))"), "2023-04-30 08:30:00");
  EXPECT_EQ(server("DATEADD(hour, 16, At)"), "2024-02-01 00:30:00");
  EXPECT_EQ(server("DATEADD(minute, -510, At)"), "2024-01-31");
  EXPECT_EQ(server("DATEADD(week, 2, At)"), "2024-02-14 08:30:00");
  EXPECT_EQ(server("At + 1.5"), "2024-02-01 20:30:00");
  EXPECT_EQ(server("At - 31"), "2023-12-31 08:30:00");
  EXPECT_EQ(server("At - CAST('2024-01-30' AS datetime)"), "1.3541666666666667");
  EXPECT_EQ(server("YEAR(At) + MONTH(At) * 100 + DAY(At)"), "2155");
  EXPECT_EQ(database.value("DateAdd('m', 1, #12/31/2023#)", kDesktop), "2024-01-31");
  EXPECT_EQ(database.value("DateAdd('ww', -1, #1/1/2024#)", kDesktop), "2023-12-25");
  EXPECT_EQ(database.value("DateSerial(2024, 14, 0)", kDesktop), "2025-01-31");
  EXPECT_EQ(database.value("DateSerial(29, 1, 1) & DateSerial(30, 1, 1)", kDesktop),
            "2029-01-011930-01-01");
  EXPECT_EQ(database.value("CDbl(#1900-01-01 12:00#) + CLng(#1899-12-31#)", kDesktop), "3.5");
  EXPECT_THAT(database.refusal("SELECT DATEADD(year, 8000, '2024-01-31')", kServer),
              HasSubstr("integer overflow"));
}

// The boundaries between two dates count, not the time between them.
TEST(Dates, DifferByBoundaries) {
  Database database;
  const auto server = [&](const char* unit, const char* from, const char* to) {
    return database.value("DATEDIFF(" + std::string(unit) + ", '" + from + "', '" + to + "')",
                          kServer);
  };
  EXPECT_EQ(server("year", "2023-12-31", "2024-01-01"), "1");
  EXPECT_EQ(server("quarter", "2024-01-01", "2024-03-31"), "0");
  EXPECT_EQ(server("month", "2024-03-31", "2023-12-01"), "-3");
  EXPECT_EQ(server("day", "2024-01-31 23:59", "2024-02-01 00:01"), "1");
  // 2024-01-06 was a Saturday.
  EXPECT_EQ(server("week", "2024-01-06", "2024-01-07"), "1");
  EXPECT_EQ(server("week", "2024-01-07", "2024-01-13"), "0");
  EXPECT_EQ(server("week", "1899-12-30", "1899-12-24"), "0");
  EXPECT_EQ(server("hour", "1899-01-01 10:59", "1899-01-01 11:01"), "1");
  EXPECT_EQ(server("second", "2024-01-01", "2024-01-01 00:00:59"), "59");
  EXPECT_EQ(database.value("DateDiff('w', #2024-01-06#, #2024-01-19#)", kDesktop), "1");
  EXPECT_EQ(database.value("DateDiff('ww', #2024-01-06#, #2024-01-19#)", kDesktop), "2");
}

TEST(Dates, TodayAndNowHaveTheStoredForm) {
  Database database;
  EXPECT_EQ(database.value("DATEDIFF(day, GETDATE(), DATEADD(day, 1, GETDATE()))", kServer), "1");
  EXPECT_EQ(database.value("IIf(Now() >= Date() And Date() - Now() > -1, 1, 0)", kDesktop), "1");
}

TEST(Dates, RefuseWhatIsNone) {
  Database database(kDays);
  EXPECT_THAT(database.refusal("SELECT #2023-02-29#", kDesktop),
              HasSubstr("'2023-02-29' is no date; write it as 2024-01-31 (line 1, column 8"));
  EXPECT_THAT(database.refusal("SELECT Id FROM Day1 WHERE At = 'soon'", kServer),
              HasSubstr("'soon' is no date"));
  EXPECT_THAT(database.refusal("SELECT Id FROM Day1 WHERE At = LEFT('soon', 4)", kServer),
              HasSubstr("'soon' is not a date"));
  EXPECT_THAT(database.refusal("SELECT Id FROM Day1 WHERE At = '2024-01-31'", kDesktop),
              HasSubstr("Values of type text and of type date do not go together in a comparison"));
  EXPECT_THAT(database.refusal("SELECT DATEADD(fortnight, 1, At) FROM Day1", kServer),
              HasSubstr("A unit of dates is expected"));
  EXPECT_THAT(database.refusal("SELECT At + At FROM Day1", kServer),
              HasSubstr("date and of type date do not go together in arithmetic"));
  EXPECT_THAT(database.refusal("SELECT CAST(At AS int) FROM Day1", kServer),
              HasSubstr("no conversion from date to long"));
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
