// Kept totals beside rows that come, change and go in every way.
#include <gmock/gmock.h>
#include <sqlite3.h>

#include <random>

#include "host/another_process.h"
#include "host/raw_sql.h"
#include "host/small_company.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::HasSubstr;
using testing::IsEmpty;

class KeptBeside : public SmallCompany {
 protected:
  KeptBeside() {
    store->define(
        "CREATE TABLE Line (LineNo INT NOT NULL IDENTITY(1,1) PRIMARY KEY, Acct INT NOT NULL, "
        "Day DATETIME NOT NULL, Proj INT REFERENCES Currency (InCurrencyId), "
        "Amnt MONEY NOT NULL DEFAULT 0, Qty INT NOT NULL DEFAULT 1, Descr VARCHAR(8))");
    store->define("CREATE UNIQUE INDEX LineByQty ON Line (Acct, Qty)");
    store->define(
        "CREATE VIEW LineTotals WITH SCHEMABINDING AS SELECT Acct, Day, Proj, SUM(Amnt) AS Amnt, "
        "SUM(Qty) AS Qty, COUNT(*) AS N FROM dbo.Line GROUP BY Acct, Day, Proj");
    execute(connection, "INSERT INTO Currency (InCurrencyId, Code) VALUES (1, 'CAD')");
  }

  void expectTrue() const {
    EXPECT_THAT(store->integrityFindings(), IsEmpty());
    // The second sum can only be had from the lines.
    EXPECT_EQ(only(connection, "SELECT SUM(Amnt) AS S FROM Line"),
              only(connection, "SELECT SUM(Amnt * 1) AS S FROM Line"));
  }

  int below(int count) { return std::uniform_int_distribution<>(0, count - 1)(random_); }
  std::vector<Value> line(bool good = true) {
    return {1 + below(3), Date::of(2024, 1, 1 + below(4)),
            good ? (below(2) == 0 ? Value(1) : Value::null()) : Value(7),
            Currency::fromUnits(below(90'000) - 45'000), ++next_};
  }
  void insert(bool good = true) {
    execute(connection, "INSERT INTO Line (Acct, Day, Proj, Amnt, Qty) VALUES (?, ?, ?, ?, ?)",
            line(good));
  }

  /// One change, in one of the ways there are. Some are refused in their middle.
  void change() {
    const std::string some = " WHERE LineNo % 5 = " + std::to_string(below(5));
    switch (below(9)) {
      case 0:
        return insert(false);
      case 1:
        execute(connection, "UPDATE Line SET Amnt = Amnt * 2, Descr = 'x'" + some);
        return;
      case 2:
        execute(connection, "UPDATE Line SET Proj = 1, Day = '2024-01-02'" + some);
        return;
      case 3:
        execute(connection, "UPDATE Line SET Proj = CASE WHEN LineNo > 9 THEN 7 END" + some);
        return;
      case 4:
        execute(connection, "DELETE FROM Line" + some + " AND Acct = 2");
        return;
      case 5:
        execute(
            connection,
            "INSERT INTO Line (Acct, Day, Amnt, Qty) SELECT Acct + 1, Day, Amnt, Qty FROM Line" +
                some);
        return;
      case 6: {
        const Ref<Recordset> rows =
            open(connection, "SELECT * FROM Line ORDER BY LineNo DESC", {}, 1);
        if (rows->AtEnd() || below(2) == 0) rows->AddNew();
        rows->SetField("Acct", 1 + below(3));
        rows->SetField("Day", Date::of(2024, 1, 9));
        rows->SetField("Amnt", Currency::fromInteger(5));
        rows->SetField("Qty", ++next_);
        return rows->Update();
      }
      default:
        for (int i = 0; i < 5; ++i) insert();
    }
  }
  void tryChange() {
    try {
      change();
    } catch (const Error&) {
      ++refused_;
    }
  }

  std::mt19937 random_{20'241'122};
  std::int32_t next_ = 0;
  int refused_ = 0;
};

TEST_F(KeptBeside, WhateverHappensToTheLines) {
  for (int round = 0; round < 60; ++round) {
    if (round % 3 == 0) {
      tryChange();
    } else {
      const auto transaction = store->begin();
      const auto writer = store->writer("Line", {"Acct", "Day", "Proj", "Amnt", "Qty"});
      for (int i = 0; i < 4; ++i) {
        tryChange();
        raised(kStatementRefused, [&] { writer->add(line(false)); });
        writer->add(line());
        if (below(2) == 0) expectTrue();
      }
      if (below(3) > 0) transaction->commit();
    }
    expectTrue();
  }
  EXPECT_GT(refused_, 5);
  EXPECT_GT(only(connection, "SELECT COUNT(*) AS N FROM Line").toLong(), 50);
  execute(connection, "DELETE FROM Line");
  EXPECT_EQ(only(connection, "SELECT COUNT(*) AS N FROM LineTotals").toLong(), 0);
  EXPECT_THAT(openCompanyFile(path(), Access::Read)->integrityFindings(), IsEmpty());
}

// Rows that fill an empty table are added up at the end, or when somebody asks.
TEST_F(KeptBeside, AnEmptyTableThatIsFilled) {
  for (const bool committed : {false, true}) {
    for (const bool asked : {false, true}) {
      execute(connection, "DELETE FROM Line");
      auto transaction = store->begin();
      const auto writer = store->writer("Line", {"Acct", "Day", "Proj", "Amnt", "Qty"});
      for (int i = 0; i < 20; ++i) {
        writer->add(line());
        raised(kStatementRefused, [&] { writer->add(line(false)); });
        if (asked && i % 7 == 0) expectTrue();
      }
      tryChange();
      if (committed) transaction->commit();
      transaction.reset();
      EXPECT_EQ(only(connection, "SELECT COUNT(*) AS N FROM Line").toLong() > 0, committed);
      expectTrue();
      insert();
      expectTrue();
      EXPECT_THAT(openCompanyFile(path(), Access::Read)->integrityFindings(), IsEmpty());
    }
  }
}

TEST_F(KeptBeside, MoreGroupsThanMemoryHolds) {
  constexpr int kLines = 70'000;
  insert();
  const auto transaction = store->begin();
  const auto writer = store->writer("Line", {"Acct", "Day", "Qty"});
  for (int i = 11; i <= 10 + kLines; ++i)
    writer->add(std::vector<Value>{i, Date::of(2024, 1, 1), 1});
  transaction->commit();
  EXPECT_EQ(only(connection, "SELECT COUNT(*) AS N FROM LineTotals").toLong(), kLines + 1);
  expectTrue();
}

TEST_F(KeptBeside, SeveralProcessesAtATime) {
  insert();
  connection = desktop = {};
  store.reset();
  constexpr int kEach = 40;
  pid_t children[3];
  for (pid_t& child : children) {
    child = inAnotherProcess([&] {
      const auto own = openCompanyFile(path(), Access::Write);
      for (int i = 0; i < kEach; ++i) {
        const auto transaction = own->begin();
        execute(own->connect(Sql::Dialect::Server),
                "INSERT INTO Line (Acct, Day, Amnt, Qty) SELECT 5, '2024-01-01', 3, MAX(Qty) + 1 "
                "FROM Line");
        transaction->commit();
      }
      return true;
    });
  }
  for (const pid_t child : children) EXPECT_EQ(statusOf(child), 0);
  store = openCompanyFile(path(), Access::Write);
  connection = store->connect(Sql::Dialect::Server);
  EXPECT_EQ(only(connection, "SELECT SUM(Amnt) AS S FROM Line WHERE Acct = 5"),
            Value(Currency::fromInteger(std::int64_t{9} * kEach)));
  expectTrue();
}

TEST_F(KeptBeside, ASumThatIsTooLargeRefusesTheLine) {
  const auto add = [&](const std::string& amount) {
    execute(connection, "INSERT INTO Line (Acct, Day, Amnt, Qty) VALUES (1, '2024-01-01', " +
                            amount + ", " + std::to_string(++next_) + ")");
  };
  add("922337203685477");
  EXPECT_THAT(raised(ErrorNumber::Overflow, [&] { add("922337203685477"); }),
              HasSubstr("LineTotals"));
  {
    const auto transaction = store->begin();
    add("-922337203685477");
    add("922337203685477");
    transaction->commit();
  }
  EXPECT_EQ(only(connection, "SELECT COUNT(*) AS N FROM Line").toLong(), 3);
  expectTrue();
}

TEST_F(KeptBeside, AnotherProgramCannotLeaveThemBehind) {
  insert();
  connection = desktop = {};
  store.reset();
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(path().c_str(), &other), SQLITE_OK);
  for (const char* const sql : {"INSERT INTO Line (Acct, Day) VALUES (1, '2024-01-01')",
                                "DELETE FROM Line", "UPDATE Line SET Amnt = 3"}) {
    EXPECT_NE(sqlite3_exec(other, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_THAT(sqlite3_errmsg(other), HasSubstr("function: quor_"));
  }
  sqlite3_close(other);
  // What takes the trouble to get past that is found.
  const std::string tampered = folder.file("tampered.quor");
  for (const char* const drop : {"insert", "update", "delete"}) {
    std::filesystem::copy_file(path(), tampered, std::filesystem::copy_options::overwrite_existing);
    runRaw(tampered, "DROP TRIGGER \"LineTotals:" + std::string(drop) + "\"");
    EXPECT_THAT(raised(75, [&] { (void)openCompanyFile(tampered, Access::Read); }),
                HasSubstr("lacks the trigger LineTotals:" + std::string(drop)));
    runRaw(tampered, "CREATE TRIGGER \"LineTotals:" + std::string(drop) +
                         "\" AFTER DELETE ON Line BEGIN SELECT 1; END");
    EXPECT_THAT(raised(75, [&] { (void)openCompanyFile(tampered, Access::Read); }),
                HasSubstr("holds the trigger LineTotals:" + std::string(drop)));
  }
  runRaw(path(),
         "UPDATE Line SET Amnt = 3, Day = '2024-01-01', Acct = 9; "
         "UPDATE LineTotals SET Acct = 9");
  EXPECT_THAT(openCompanyFile(path(), Access::Read)->integrityFindings(),
              testing::Each(HasSubstr("LineTotals for Acct 9, Day 2024-01-0")));
}

}  // namespace
}  // namespace QuorHost::Testing
