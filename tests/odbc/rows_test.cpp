// Rows and values through a driver.
#include <gmock/gmock.h>

#include "odbc/scripted.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::HasSubstr;

TEST_F(Scripted, ColumnsHaveTheTypesThatTheDriverSays) {
  answerColumn(SQL_BIT, 0, "1");
  answerColumn(SQL_TINYINT, 0, "255");
  answerColumn(SQL_SMALLINT, 0, "-32768");
  answerColumn(SQL_INTEGER, 0, "-2147483648");
  answerColumn(SQL_BIGINT, 0, "2147483647");
  answerColumn(SQL_DECIMAL, 4, "-922337203685477.5808");
  answerColumn(SQL_NUMERIC, 2, "-.05");
  answerColumn(SQL_DECIMAL, 6, "0.000001");
  answerColumn(SQL_REAL, 0, "0.5");
  answerColumn(SQL_TYPE_DATE, 0, "0100-01-01");
  answerColumn(SQL_TYPE_TIMESTAMP, 0, "9999-12-31 23:59:59");
  answerColumn(SQL_CHAR, 0, "é");
  answerColumn(SQL_GUID, 0, "6F9619FF");
  connect();
  const auto rows = open(connection, "SELECT * FROM T");
  const std::vector<Value> expected{true,
                                    std::int16_t{255},
                                    std::int16_t{-32768},
                                    std::int32_t{-2147483647 - 1},
                                    std::int32_t{2147483647},
                                    Currency::fromUnits(std::numeric_limits<std::int64_t>::min()),
                                    Currency::fromUnits(-500),
                                    0.000001,
                                    0.5,
                                    Date::of(100, 1, 1),
                                    Date::of(9999, 12, 31, 23, 59, 59),
                                    "é",
                                    "6F9619FF"};
  ASSERT_EQ(rows->FieldCount(), static_cast<std::int32_t>(expected.size()));
  for (std::int32_t i = 0; i < rows->FieldCount(); ++i) {
    EXPECT_EQ(rows->Field(i), expected[static_cast<std::size_t>(i)]) << i;
    EXPECT_EQ(rows->FieldType(i), expected[static_cast<std::size_t>(i)].type()) << i;
  }
}

TEST_F(Scripted, WhatATypeCannotHoldIsAnErrorOfThatValue) {
  answerColumn(SQL_BIGINT, 0, "2147483648");
  answerColumn(SQL_DECIMAL, 2, "922337203685477.59");
  answerColumn(SQL_DOUBLE, 0, "inf");
  answerColumn(SQL_TYPE_DATE, 0, "0099-12-31");
  answerColumn(SQL_INTEGER, 0, "7");
  connect();
  const auto rows = open(connection, "SELECT * FROM T");
  EXPECT_THAT(raised(ErrorNumber::Overflow, [&] { (void)rows->Field(0); }), HasSubstr("C0"));
  EXPECT_THAT(raised(ErrorNumber::Overflow, [&] { (void)rows->Field(1); }), HasSubstr("C1"));
  EXPECT_THAT(raised(ErrorNumber::Overflow, [&] { (void)rows->Field(2); }), HasSubstr("C2"));
  EXPECT_THAT(raised(ErrorNumber::TypeMismatch, [&] { (void)rows->Field(3); }), HasSubstr("C3"));
  EXPECT_EQ(rows->Field(4), Value(std::int32_t{7}));
}

TEST_F(Scripted, ValuesGoOutAsTheyAre) {
  connect();
  const std::string longText(5000, 'x');
  execute(connection, "UPDATE T SET a = ?, b = '?', c = ? -- ?", {true, std::int16_t{-1}});
  const std::vector<Value> values{
      Value(), Value::null(),           false,   std::int32_t{},
      1e300,   Currency::fromUnits(-1), Date(),  Date::of(2024, 2, 29, 1, 2, 3),
      "",      "🙂O'Neil\r\n",          longText};
  execute(connection, "INSERT INTO T VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", values);
  const std::vector<Bound>& first = driver.received[0].values;
  ASSERT_EQ(first.size(), 2U);
  EXPECT_EQ(valueOf(first[0]), Value(true));
  EXPECT_EQ(valueOf(first[1]), Value(std::int16_t{-1}));
  EXPECT_EQ(driver.received[0].text, "UPDATE T SET a = ?, b = '?', c = ? -- ?");
  const std::vector<Bound>& second = driver.received[1].values;
  ASSERT_EQ(second.size(), values.size());
  for (std::size_t i = 1; i < values.size(); ++i) EXPECT_EQ(valueOf(second[i]), values[i]) << i;
  EXPECT_EQ(second[0].text, std::nullopt);
  EXPECT_EQ(second[5].type, SQL_DECIMAL);
  EXPECT_EQ(second[5].size, 19U);
  EXPECT_EQ(second[5].decimals, 4);
  EXPECT_EQ(second[10].type, SQL_WLONGVARCHAR);
  EXPECT_EQ(second[10].size, 5000U);

  raised(ErrorNumber::Overflow, [&] {
    execute(connection, "UPDATE T SET a = ?", {std::numeric_limits<double>::infinity()});
  });
  raised(ErrorNumber::InvalidArgument,
         [&] { execute(connection, "UPDATE T SET a = ?", {std::string("a\0b", 3)}); });
  EXPECT_EQ(driver.received.size(), 2U);
}

TEST_F(Scripted, WhatIsNoSingleStatementOfItsKindStaysHere) {
  connect();
  for (const char* const text : {"DELETE FROM T", "SELECT 1; DELETE FROM T", "", "EXEC p",
                                 "SELECT ? FROM T", "/* SELECT */ DROP TABLE T"}) {
    raised(kStatementRefused, [&] { open(connection, text); });
  }
  for (const char* const text :
       {"SELECT 1", "DROP TABLE T", "DELETE FROM T WHERE a = ?", "DELETE FROM T; DELETE FROM U",
        "UPDATE T SET a = '?;' WHERE ?=?"}) {
    raised(kStatementRefused, [&] { execute(connection, text); });
  }
  EXPECT_TRUE(driver.received.empty());
  answer.changed = 3;
  EXPECT_EQ(execute(connection, "-- why\r\nDELETE FROM [a;b] WHERE c = '?;''' ; "), 3);
  connection = {};
  connect(Access::Read);
  EXPECT_THAT(raised(kStatementRefused, [&] { execute(connection, "DELETE FROM T"); }),
              HasSubstr("reading only"));
}

TEST_F(Scripted, ManyRowsComeInBatchesAndCanBeSearched) {
  answerNumbers(1000);
  connect();
  const auto rows = open(connection, "SELECT N, T FROM Numbers");
  const auto other = open(connection, "SELECT N, T FROM Numbers");
  std::int32_t expected = 0;
  for (; !rows->AtEnd(); rows->MoveNext()) ASSERT_EQ(rows->Field("N"), Value(++expected));
  EXPECT_EQ(expected, 1000);
  rows->MoveFirst();
  EXPECT_EQ(driver.received.size(), 3U);
  EXPECT_TRUE(rows->Find("T = 'ROW 777'"));
  EXPECT_EQ(rows->Field("N"), Value(777));
}

TEST_F(Scripted, LongResultsHaveAConnectionEachUpToFour) {
  driver.fetching = std::chrono::milliseconds(1);
  answer.columns = {{.name = "T", .type = SQL_WLONGVARCHAR}};
  for (int i = 1; i <= 300; ++i) answer.rows.push_back({std::to_string(i)});
  connect();
  std::vector<Ref<Recordset>> all;
  all.reserve(5);
  for (int i = 0; i < 5; ++i) all.push_back(open(connection, "SELECT T FROM Texts"));
  EXPECT_EQ(driver.handles, 1 + 4 * 2);
  answer = {.changed = 1};
  EXPECT_EQ(execute(connection, "DELETE FROM Texts"), 1);
  for (const auto& each : all) {
    for (int i = 1; i < 300; ++i) each->MoveNext();
    EXPECT_EQ(each->Field("T"), Value("300"));
    each->MoveNext();
    EXPECT_TRUE(each->AtEnd());
  }
}

TEST_F(Scripted, NoTextIsCut) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += i % 7 == 0 ? "🙂" : "x";
  connect();
  const auto ask = [&](std::uint64_t size, std::uint32_t abilities) {
    driver.getDataExtensions = abilities;
    answer.columns = {{.name = "N", .type = SQL_INTEGER, .size = 10},
                      {.name = "T", .type = SQL_VARCHAR, .size = size}};
    answer.rows = {{"1", "short"}, {"2", text}, {"3", std::nullopt}, {"4", ""}};
    const auto rows = open(connection, "SELECT N, T FROM Texts");
    EXPECT_EQ(rows->Field("T"), Value("short"));
    rows->MoveNext();
    EXPECT_EQ(rows->Field("T"), Value(text));
    rows->MoveNext();
    EXPECT_TRUE(rows->Field("T").isNull());
    rows->MoveNext();
    EXPECT_EQ(rows->Field("T"), Value(""));
    EXPECT_EQ(rows->Field("N"), Value(std::int32_t{4}));
  };
  ask(0, 0);
  ask(2'000'000'000, 0);
  ask(20, SQL_GD_BLOCK | SQL_GD_BOUND);
  EXPECT_THAT(raised(kStatementRefused, [&] { ask(20, SQL_GD_BLOCK); }), HasSubstr("Column T"));
}

}  // namespace
}  // namespace QuorHost::Testing
