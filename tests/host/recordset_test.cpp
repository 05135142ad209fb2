// Recordsets: streaming, going back, finding, closing.
#include <gmock/gmock.h>

#include <optional>

#include "host/raw_sql.h"
#include "host/small_company.h"

namespace QuorHost::Testing {
namespace {

using testing::HasSubstr;

class Recordsets : public SmallCompany {
 protected:
  Recordsets() { addEntries(*store, 10); }

  const std::string all = "SELECT EntryNo, Amnt FROM Entry ORDER BY EntryNo";
};

TEST_F(Recordsets, TheFirstRowIsThereBeforeTheLastIsComputed) {
  // A million million rows: only a recordset that streams comes back from this.
  const std::string endless =
      "SELECT a.EntryNo FROM Entry a, Entry b, Entry c, Entry d, Entry e, Entry f, Entry g, Entry "
      "h,"
      " Entry i, Entry j, Entry k, Entry l";
  const Ref<Recordset> rows = open(connection, endless);
  ASSERT_FALSE(rows->AtEnd());
  rows->MoveNext();
  EXPECT_FALSE(rows->Field(0).isNull());
}

TEST_F(Recordsets, ColumnsAreKnownWithoutRows) {
  const Ref<Recordset> rows =
      open(connection,
           "SELECT AcctNo, Balance, Opened AS Since, NULL AS Nothing, 1.5 * Rate AS R"
           " FROM Account");
  EXPECT_TRUE(rows->AtEnd());
  ASSERT_EQ(rows->FieldCount(), 5);
  EXPECT_EQ(rows->FieldName(2), "Since");
  EXPECT_EQ(rows->FieldType(0), QuorDataLib::ValueType::Text);
  EXPECT_EQ(rows->FieldType(1), QuorDataLib::ValueType::Currency);
  EXPECT_EQ(rows->FieldType(2), QuorDataLib::ValueType::Date);
  EXPECT_EQ(rows->FieldType(3), QuorDataLib::ValueType::Empty);
  EXPECT_EQ(rows->FieldType(4), QuorDataLib::ValueType::Double);
  raised(ErrorNumber::UnknownItem, [&] { (void)rows->FieldName(5); });
  raised(ErrorNumber::UnknownItem, [&] { (void)rows->FieldType(-1); });
  raised(ErrorNumber::NoCurrentRow, [&] { (void)rows->Field("balance"); });
  raised(ErrorNumber::NoCurrentRow, [&] { rows->MoveNext(); });
  rows->MoveFirst();
  EXPECT_TRUE(rows->AtEnd());
}

TEST_F(Recordsets, FieldsByName) {
  const Ref<Recordset> rows =
      open(connection, "SELECT EntryNo, Amnt, EntryNo AS amnt FROM Entry WHERE EntryNo = 3");
  EXPECT_EQ(rows->Field("ENTRYNO"), Value(std::int32_t{3}));
  EXPECT_EQ(rows->Field("AMNT"), Value(Currency::fromInteger(3))) << "the first of that name";
  EXPECT_THAT(raised(ErrorNumber::UnknownItem, [&] { (void)rows->Field("Amount"); }),
              HasSubstr("Amount"));
}

TEST_F(Recordsets, GoingBackAndForth) {
  const Ref<Recordset> rows = open(connection, all);
  EXPECT_EQ(rest(rows), "1 2 3 4 5 6 7 8 9 10");
  rows->MoveFirst();
  rows->MoveNext();
  rows->MoveNext();
  rows->MoveFirst();
  EXPECT_EQ(rest(rows), "1 2 3 4 5 6 7 8 9 10") << "first from kept rows, then from the statement";
  rows->MoveFirst();
  EXPECT_EQ(rest(rows), "1 2 3 4 5 6 7 8 9 10");
  EXPECT_TRUE(rows->AtEnd());
}

TEST_F(Recordsets, FindStandsOnTheFirstRowThatMeetsTheCriterion) {
  const Ref<Recordset> rows = open(connection, all);
  EXPECT_TRUE(rows->Find("EntryNo = 7"));
  EXPECT_EQ(rest(rows), "7 8 9 10") << "the rows after it follow";
  EXPECT_TRUE(rows->Find("[entryno]=2"));
  EXPECT_EQ(rows->Field(0), Value(std::int32_t{2}));
  EXPECT_FALSE(rows->Find("EntryNo = 11"));
  EXPECT_TRUE(rows->AtEnd());
  EXPECT_FALSE(rows->Find("EntryNo = 1.5")) << "no whole number is";
  EXPECT_TRUE(rows->Find("Amnt=4.00"));
  EXPECT_EQ(rows->Field(0), Value(std::int32_t{4}));
  EXPECT_FALSE(rows->Find("Amnt=4.00001"));
  EXPECT_FALSE(rows->Find("Amnt = 1e300"));
  rows->MoveFirst();
  EXPECT_EQ(rows->Field(0), Value(std::int32_t{1}));

  EXPECT_FALSE(
      open(connection, "SELECT EntryNo FROM Entry WHERE EntryNo < 0")->Find("EntryNo = 1"));
  // Looking from the middle of a scan must not lose the rows before it.
  const Ref<Recordset> scanned = open(connection, all);
  for (int i = 0; i < 5; ++i) scanned->MoveNext();
  EXPECT_TRUE(scanned->Find("EntryNo = 1"));
}

TEST_F(Recordsets, FindComparesEveryTypeAsTheDatabaseDoes) {
  execute(connection,
          "INSERT INTO Account (AcctNo, Descr, Rate, Opened, Active, Kind)"
          " VALUES ('A-1', 'O''Brien', 0.25, ?, ?, 7)",
          {Date::of(2024, 2, 29), true});
  execute(connection, "INSERT INTO Account (AcctNo, Descr, Opened, Active) VALUES (?, ?, ?, ?)",
          {"a-2", "Éclair", Date::of(2024, 3, 1, 12, 30, 0), false});
  execute(connection, "INSERT INTO Account (AcctNo) VALUES ('A-3')");
  const Ref<Recordset> rows = open(connection, "SELECT * FROM Account ORDER BY InAcctId");
  const auto found = [&](const std::string& criterion) {
    return rows->Find(criterion) ? rows->Field("AcctNo").text() : std::string();
  };
  EXPECT_EQ(found("AcctNo = 'A-2'"), "a-2");
  EXPECT_EQ(found("Descr='o''brien'"), "A-1");
  EXPECT_EQ(found("Descr = 'éclair'"), "a-2");
  EXPECT_EQ(found("Descr = ''"), "") << "null is no empty text";
  EXPECT_EQ(found("Rate = 0.25"), "A-1");
  EXPECT_EQ(found("Rate = 0"), "") << "null is no zero";
  EXPECT_EQ(found("Kind = 7"), "A-1");
  EXPECT_EQ(found("Active = 0"), "a-2");
  EXPECT_EQ(found("Active = -1"), "A-1");
  EXPECT_EQ(found("Opened = #2024-02-29#"), "A-1");
  EXPECT_EQ(found("Opened = #2024-03-01 12:30:00#"), "a-2");
  EXPECT_EQ(found("Opened = #2024-03-01#"), "");

  for (const char* wrong :
       {"", "AcctNo", "AcctNo = ", "AcctNo 'A'", "AcctNo = 'A", "AcctNo = A'", "AcctNo = 'A'B'",
        "AcctNo = 12", "Kind = '7'", "Kind = seven", "Kind = nan", "Kind = 7 OR 1 = 1",
        "Opened = #soon#", "Opened = #", "Opened = '2024-02-29'", "Acct No = 'A'", "= 1"}) {
    raised(ErrorNumber::InvalidArgument, [&] { rows->Find(wrong); });
  }
  raised(ErrorNumber::UnknownItem, [&] { rows->Find("Nowhere = 1"); });
}

TEST_F(Recordsets, TenThousandLookUpsInTenThousandRows) {
  execute(connection, "DELETE FROM Entry");
  constexpr int kRows = 10'000;
  addEntries(*store, kRows);
  // Compared row by row this would take a hundred million steps.
  const Ref<Recordset> rows =
      open(connection, "SELECT EntryNo, 'No ' + CAST(EntryNo AS VARCHAR(10)) AS Label FROM Entry");
  std::int64_t sum = 0;
  for (int i = kRows; i > 0; --i) {
    ASSERT_TRUE(rows->Find("EntryNo = " + std::to_string(i)));
    sum += rows->Field(0).toLong();
    ASSERT_TRUE(rows->Find("Label = 'NO " + std::to_string(i) + "'"));
    ASSERT_EQ(rows->Field(0).toLong(), i);
  }
  EXPECT_EQ(sum, std::int64_t{kRows} * (kRows + 1) / 2);
}

TEST_F(Recordsets, AChangeLeavesTheRowsOfAnOpenRecordsetAlone) {
  const Ref<Recordset> rows = open(connection, all);
  rows->MoveNext();
  execute(connection, "UPDATE Entry SET Amnt = 0");
  execute(connection, "DELETE FROM Entry WHERE EntryNo > 5");
  EXPECT_EQ(rows->Field(1), Value(Currency::fromInteger(2)));
  rows->MoveNext();
  EXPECT_EQ(rows->Field(1), Value(Currency::fromInteger(3)));
  EXPECT_EQ(rest(rows), "3 4 5 6 7 8 9 10");
  rows->MoveFirst();
  EXPECT_EQ(rest(rows), "1 2 3 4 5") << "going back reads the database again";
}

TEST_F(Recordsets, ARowThatFailsIsMetWhereItStandsEveryTime) {
  const std::string fails = "SELECT EntryNo, 100 / (EntryNo - 4) AS Q FROM Entry ORDER BY EntryNo";
  for (const bool changed : {false, true}) {
    const Ref<Recordset> rows = open(connection, fails);
    if (changed) execute(connection, "UPDATE Entry SET Amnt = 0 WHERE EntryNo = 10");
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(rows->Field(0).toLong(), 1);
      rows->MoveNext();
      rows->MoveNext();
      EXPECT_EQ(rows->Field(1).toLong(), -100);
      raised(QuorDataLib::kStatementRefused, [&] { rows->MoveNext(); });
      raised(QuorDataLib::kStatementRefused, [&] { rows->Find("EntryNo = 2"); });
      raised(QuorDataLib::kStatementRefused, [&] { rows->Find("EntryNo = 2"); });
      rows->MoveFirst();
    }
  }
}

TEST_F(Recordsets, RolledBackTransactionsDoNotDisturbReading) {
  const Ref<Recordset> before = open(connection, all);
  std::optional<Ref<Recordset>> inside;
  {
    const auto transaction = store->begin();
    execute(connection, "DELETE FROM Entry WHERE EntryNo <> 4");
    inside = open(connection, all);
  }
  EXPECT_EQ(rest(before), "1 2 3 4 5 6 7 8 9 10");
  EXPECT_EQ(rest(*inside), "4");
}

/// What keeps the log beside the company from being put back into it, and emptied.
class Log {
 public:
  explicit Log(std::string company) : company_(std::move(company)) {}
  [[nodiscard]] bool canBeEmptied() const {
    runRaw(company_, "PRAGMA busy_timeout=0; PRAGMA wal_checkpoint(TRUNCATE)");
    return std::filesystem::file_size(company_ + "-wal") == 0;
  }

 private:
  std::string company_;
};

TEST_F(Recordsets, LeftLyingOpenTheyKeepNobodyInThePast) {
  const Log log(path());
  const auto reader = openCompanyFile(path(), Access::Read);
  const Ref<Connection> reading = reader->connect(Sql::Dialect::Server);
  const auto sum = [](const Ref<Connection>& asked) {
    return only(asked, "SELECT SUM(EntryNo) AS S FROM Entry").toLong();
  };
  std::vector<Ref<Recordset>> cached;
  std::int32_t next = 11;
  // One row, some, and so many (a million) that nobody wants them all in memory.
  for (const char* query :
       {"SELECT a.EntryNo FROM Entry a WHERE a.EntryNo = 1", "SELECT a.EntryNo FROM Entry a, Entry",
        "SELECT a.EntryNo FROM Entry a, Entry b, Entry c, Entry d, Entry e, Entry f"}) {
    for (const Ref<Connection>& resting : {reading, connection}) {
      const Ref<Recordset> rows = open(resting, query);
      cached.push_back(rows);
      static_cast<void>(rows->Field(0));
      const std::int32_t before = sum(connection);
      execute(connection, "INSERT INTO Entry (EntryNo) VALUES (?)", {next});
      for (const Ref<Connection>& asked : {reading, connection}) {
        EXPECT_EQ(sum(asked), before + next) << query;
        const Ref<Recordset> changed = open(asked, "SELECT EntryNo FROM Entry", {}, 1);
        EXPECT_EQ(changed->Find("EntryNo = " + std::to_string(next)), true) << query;
      }
      ++next;
      EXPECT_TRUE(cached.size() > 4 || log.canBeEmptied()) << query;
    }
  }
  // Each still has the rows of its own moment: 12 and 13 entries, all with all.
  const std::vector<int> sizes{1, 1, 12 * 12, 13 * 13};
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    int count = 0;
    for (; !cached[i]->AtEnd(); cached[i]->MoveNext()) ++count;
    EXPECT_EQ(count, sizes[i]) << i;
  }
  for (int i = 0; i < 100'000; ++i) cached[4]->MoveNext();
  cached.clear();
  EXPECT_TRUE(log.canBeEmptied());
}

TEST_F(Recordsets, ALongScanForUpdateGoesOnFromItsOwnMoment) {
  constexpr int kMany = 30'000;
  execute(connection, "DELETE FROM Entry");
  addEntries(*store, kMany);
  const Ref<Recordset> rows =
      open(connection, "SELECT EntryNo, Amnt FROM Entry ORDER BY EntryNo", {}, 1);
  for (std::int32_t i = 1; i <= kMany; ++i, rows->MoveNext()) {
    ASSERT_EQ(rows->Field(0).toLong(), i);
    if (i % 5'000 != 0) continue;
    rows->SetField("Amnt", -i);
    rows->Update();
    EXPECT_EQ(rows->Field(1), Value(Currency::fromInteger(-i)));
    EXPECT_EQ(only(connection, "SELECT Amnt FROM Entry WHERE EntryNo = ?", {i}), rows->Field(1));
    execute(connection, "DELETE FROM Entry WHERE EntryNo = ?", {i + 1});
  }
  EXPECT_TRUE(rows->AtEnd());
  EXPECT_EQ(only(connection, "SELECT COUNT(*) AS N FROM Entry WHERE Amnt < 0").toLong(), 6);
}

TEST_F(Recordsets, ClosedIsClosed) {
  const Ref<Recordset> rows = open(connection, all, {}, 1);
  rows->Close();
  rows->Close();
  raised(ErrorNumber::ObjectClosed, [&] { (void)rows->AtEnd(); });
  raised(ErrorNumber::ObjectClosed, [&] { (void)rows->FieldCount(); });
  raised(ErrorNumber::ObjectClosed, [&] { (void)rows->FieldName(0); });
  raised(ErrorNumber::ObjectClosed, [&] { (void)rows->FieldType(0); });
  raised(ErrorNumber::ObjectClosed, [&] { (void)rows->Field(0); });
  raised(ErrorNumber::ObjectClosed, [&] { (void)rows->Field("EntryNo"); });
  raised(ErrorNumber::ObjectClosed, [&] { rows->MoveFirst(); });
  raised(ErrorNumber::ObjectClosed, [&] { rows->MoveNext(); });
  raised(ErrorNumber::ObjectClosed, [&] { rows->Find("EntryNo = 1"); });
  raised(ErrorNumber::ObjectClosed, [&] { rows->AddNew(); });
  raised(ErrorNumber::ObjectClosed, [&] { rows->SetField("EntryNo", std::int32_t{1}); });
  raised(ErrorNumber::ObjectClosed, [&] { rows->Update(); });
}

TEST_F(Recordsets, ARecordsetOutlivesConnectionAndStore) {
  const Ref<Recordset> rows = open(connection, all);
  connection = nullptr;
  desktop = nullptr;
  store.reset();
  EXPECT_EQ(rest(rows), "1 2 3 4 5 6 7 8 9 10");
  EXPECT_TRUE(rows->Find("EntryNo = 5"));
}

TEST_F(Recordsets, OneTextManyRecordsets) {
  // The same prepared statement must never serve two readers, nor keep the values of the last one.
  const std::string from = "SELECT EntryNo FROM Entry WHERE EntryNo >= ? ORDER BY EntryNo";
  const Ref<Recordset> first = open(connection, from, {std::int32_t{8}});
  first->MoveNext();
  const Ref<Recordset> second = open(connection, from, {std::int32_t{9}});
  EXPECT_EQ(rest(second), "9 10");
  EXPECT_EQ(rest(first), "9 10");
  first->Close();
  second->Close();
  EXPECT_EQ(rest(open(connection, from, {Value::null()})), "");
  EXPECT_EQ(rest(open(connection, from, {std::int32_t{10}})), "10");
  // More texts than are kept, some of them open meanwhile.
  std::vector<Ref<Recordset>> kept;
  for (int i = 1; i <= 200; ++i) {
    const std::string text =
        "SELECT EntryNo + " + std::to_string(i) + " AS Sum FROM Entry WHERE EntryNo = 1";
    kept.push_back(open(connection, text));
    EXPECT_EQ(open(connection, text)->Field(0).toLong(), i + 1);
  }
  for (int i = 1; i <= 200; ++i)
    EXPECT_EQ(rest(kept[static_cast<std::size_t>(i - 1)]), std::to_string(i + 1));
}

}  // namespace
}  // namespace QuorHost::Testing
