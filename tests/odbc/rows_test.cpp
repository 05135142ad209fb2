// Rows, values and transactions through a driver.
#include <gmock/gmock.h>

#include "host/engines/odbc/driver/api.h"
#include "host/small_company.h"
#include "odbc/driven.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

/// A driver that answers what a test says.
class Scripted : public testing::Test {
 protected:
  Scripted() {
    driver = {};
    driver.isolations = SQL_TXN_REPEATABLE_READ;
    driver.answer = [this](const Received& received) {
      return received.text == "SELECT 1" ? Answer{} : answer;
    };
  }
  void TearDown() override {
    connection = {};
    store.reset();
    EXPECT_EQ(driver.handles, 0);
  }

  void connect(Access access = Access::Write) {
    store = openCompanyFile(driven(Sql::Dialect::Server), access);
    connection = store->connect(Sql::Dialect::Server);
    driver.events.clear();
  }

  /// A column of a type, with one value in it.
  void answerColumn(std::int16_t type, std::int16_t decimals, const std::string& value) {
    answer.columns.push_back({.name = "C" + std::to_string(answer.columns.size()),
                              .type = type,
                              .size = 20,
                              .decimals = decimals});
    if (answer.rows.empty()) answer.rows.emplace_back();
    answer.rows.front().emplace_back(value);
  }

  void answerNumbers(int count) {
    answer.columns = {{.name = "N", .type = SQL_INTEGER, .size = 10},
                      {.name = "T", .type = SQL_WVARCHAR, .size = 10}};
    for (int i = 1; i <= count; ++i) {
      answer.rows.push_back({std::to_string(i), "row " + std::to_string(i)});
    }
  }

  Recording& driver = recording();
  Answer answer;
  std::shared_ptr<Store> store;
  Ref<Connection> connection;
};

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

TEST_F(Scripted, ErrorsHaveTheNumbersOfAFile) {
  connect();
  connection->SetCommandTimeout(3);
  struct Case {
    const char* state;
    std::int32_t number;
    const char* says;
  };
  for (const Case& each :
       std::initializer_list<Case>{{"23000", kStatementRefused, "breaks a rule"},
                                   {"23505", kStatementRefused, "breaks a rule"},
                                   {"42S02", kStatementRefused, "no table"},
                                   {"40001", kStatementRefused, "another program"},
                                   {"HYT00", kStatementRefused, "timeout of 3 seconds"},
                                   {"57014", kStatementRefused, "timeout of 3 seconds"},
                                   {"53100", kStatementRefused, "disk"},
                                   {"22003", 6, "no table"},
                                   {"HY001", 7, "memory"},
                                   {"08S01", kConnectionLost, "look before"}}) {
    answer = {.state = each.state, .message = "no table"};
    EXPECT_THAT(raised(each.number, [&] { execute(connection, "DELETE FROM T"); }),
                HasSubstr(each.says))
        << each.state;
  }
  EXPECT_THAT(driver.events, IsSupersetOf({"timeout 3"}));
  driver.received.clear();
  EXPECT_THAT(raised(kConnectionLost, [&] { open(connection, "SELECT 2"); }),
              HasSubstr("open again"));
  EXPECT_EQ(driver.received.size(), 2U) << "a query connects anew, once";
}

TEST_F(Scripted, ATransactionIsKeptWhenItIsCommittedAndNothingGoesOnInAFailedOne) {
  connect();
  {
    const auto transaction = store->begin();
    raised(ErrorNumber::InvalidArgument, [&] { (void)store->begin(); });
    execute(connection, "DELETE FROM T");
    transaction->commit();
    raised(ErrorNumber::InvalidArgument, [&] { transaction->commit(); });
  }
  {
    const auto dropped = store->begin();
  }
  EXPECT_EQ(driver.events.front().substr(0, 7), "connect");
  driver.events.erase(driver.events.begin());
  EXPECT_THAT(driver.events, ElementsAre("autocommit off", "commit", "autocommit on",
                                         "autocommit off", "rollback", "autocommit on"));
  driver.events.clear();
  answerNumbers(1000);
  Ref<Recordset> rows;
  {
    const auto transaction = store->begin();
    rows = open(connection, "SELECT N, T FROM Numbers");
    driver.failIn = "SQLExecDirectW";
    raised(kStatementRefused, [&] { execute(connection, "DELETE FROM T"); });
    driver.failIn.clear();
    driver.received.clear();
    const auto ended = [&](const auto& action) {
      EXPECT_THAT(raised(kStatementRefused, action), HasSubstr("drop it and begin anew"));
    };
    ended([&] { execute(connection, "DELETE FROM T"); });
    ended([&] { open(connection, "SELECT 2"); });
    EXPECT_THAT(raised(kStatementRefused, [&] { transaction->commit(); }), HasSubstr("undone"));
    EXPECT_TRUE(driver.received.empty());
  }
  EXPECT_THAT(driver.events, ElementsAre("autocommit off", "rollback", "autocommit on"));
  execute(connection, "DELETE FROM T");
}

TEST_F(Scripted, ASnapshotIsARepeatableReadWhereTheDriverHasOne) {
  connect(Access::Read);
  answerNumbers(1000);
  Ref<Recordset> rows;
  {
    const auto moment = store->hold();
    raised(ErrorNumber::InvalidArgument, [&] { (void)store->hold(); });
    rows = open(connection, "SELECT N, T FROM Numbers");
    (void)open(connection, "SELECT N, T FROM Numbers");
  }
  EXPECT_THAT(driver.events, ElementsAre("isolation 4", "autocommit off", "rollback",
                                         "autocommit on", "isolation 2"));
  EXPECT_TRUE(rows->Find("N = 1000")) << "its rows were taken into memory";
  {
    const auto moment = store->hold();
    driver.failIn = "SQLExecDirectW";
    raised(kStatementRefused, [&] { open(connection, "SELECT 2"); });
    driver.failIn.clear();
    raised(kStatementRefused, [&] { open(connection, "SELECT 2"); });
  }
  (void)open(connection, "SELECT 2");
  driver.isolations = SQL_TXN_READ_COMMITTED;
  EXPECT_THAT(raised(ErrorNumber::InvalidArgument, [&] { (void)store->hold(); }),
              HasSubstr("one moment"));
}

/// A driver in front of a small company.
class Updating : public SmallCompany {
 protected:
  Updating() {
    driver = {};
    driver.answer = [this](const Received& received) {
      return answerOf(*store, Sql::Dialect::Server, received);
    };
    served = openCompanyFile(driven(Sql::Dialect::Server), Access::Write);
    connection = served->connect(Sql::Dialect::Server);
  }

  Recording& driver = recording();
  std::shared_ptr<Store> served;
};

TEST_F(Updating, RowsOfATableAreAddedAndChanged) {
  const auto rows = open(connection, "SELECT * FROM Account ORDER BY InAcctId", {}, 1);
  rows->AddNew();
  rows->SetField("AcctNo", "1000");
  rows->SetField("Opened", Date::of(2024, 1, 2));
  rows->Update();
  EXPECT_EQ(rows->Field("InAcctId"), Value(std::int32_t{1}));
  EXPECT_EQ(rows->Field("Active"), Value(true)) << "what the database gave it";
  rows->MoveFirst();
  rows->SetField("Balance", Currency::fromUnits(15'000));
  rows->Update();
  EXPECT_EQ(rows->Field("Balance"), Value(Currency::fromUnits(15'000)));
  EXPECT_EQ(only(connection, "SELECT Balance FROM Account").toText(), "1.5");

  driver.events.clear();
  rows->AddNew();
  rows->SetField("Descr", "no number");
  raised(kStatementRefused, [&] { rows->Update(); });
  EXPECT_THAT(driver.events, ElementsAre("autocommit off", "rollback", "autocommit on"));

  const auto entries = open(connection, "SELECT EntryNo, Amnt FROM Entry", {}, 1);
  entries->AddNew();
  entries->SetField("EntryNo", std::int32_t{5});
  entries->Update();
  EXPECT_TRUE(entries->Field("Amnt").isNull());
  entries->SetField("EntryNo", std::int32_t{6});
  entries->Update();
  EXPECT_EQ(rest(open(connection, "SELECT EntryNo FROM Entry")), "6");
  execute(connection, "DELETE FROM Entry");
  entries->SetField("Amnt", Currency());
  EXPECT_THAT(raised(kStatementRefused, [&] { entries->Update(); }), HasSubstr("removed"));
}

TEST_F(Updating, OtherResultsAreReadOnly) {
  execute(connection, "INSERT INTO Entry (EntryNo) VALUES (1)");
  for (const char* const text :
       {"SELECT EntryNo, Amnt AS Other FROM Entry", "SELECT COUNT(*) AS N FROM Entry",
        "SELECT DISTINCT EntryNo FROM Entry", "SELECT EntryNo FROM Entry UNION SELECT 1",
        "SELECT a.EntryNo FROM Entry a, Entry b", "SELECT EntryNo FROM Entry GROUP BY EntryNo"}) {
    raised(ErrorNumber::InvalidArgument, [&] { open(connection, text, {}, 1)->AddNew(); });
  }
  const auto withoutKey = open(connection, "SELECT Amnt FROM Entry", {}, 1);
  EXPECT_THAT(
      raised(ErrorNumber::InvalidArgument, [&] { withoutKey->SetField("Amnt", Currency()); }),
      HasSubstr("EntryNo"));
}

}  // namespace
}  // namespace QuorHost::Testing
