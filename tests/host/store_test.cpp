// The store: definitions, transactions, bulk filling, several processes.
#include "host/engines/sqlite/store.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "host/another_process.h"
#include "host/small_company.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::AllOf;
using testing::HasSubstr;

class Stores : public SmallCompany {
 protected:
  [[nodiscard]] std::int32_t entries() const {
    return only(connection, "SELECT COUNT(*) AS N FROM Entry").toLong();
  }
};

TEST_F(Stores, DefinitionsAreReadAgain) {
  EXPECT_EQ(store->catalogue().relations().size(), 4U);
  const auto again = openCompanyFile(path(), Access::Read);
  ASSERT_EQ(again->catalogue().relations().size(), 4U);
  const Sql::Relation* const account = again->catalogue().find("ACCOUNT");
  ASSERT_NE(account, nullptr);
  EXPECT_EQ(account->columns.size(), 9U);
  EXPECT_TRUE(account->find("InAcctId")->identity);
  EXPECT_TRUE(account->find("inacctid")->primaryKey);
  EXPECT_EQ(account->find("Descr")->size, 10);
  const Sql::Relation* const view = again->catalogue().find("OpenAccount");
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->kind, Sql::Relation::Kind::View);
  EXPECT_EQ(view->find("Balance")->type, Sql::Type::Currency);
}

TEST_F(Stores, ADefinitionThatFailsLeavesNothing) {
  raised(kStatementRefused, [&] { store->define("CREATE TABLE Entry (A INT)"); });
  raised(kStatementRefused, [&] { store->define("CREATE VIEW V AS SELECT Nowhere FROM Entry"); });
  raised(kStatementRefused, [&] { store->define("DELETE FROM Entry"); });
  store->define("CREATE INDEX EntryByAmnt ON Entry (Amnt)");
  raised(kStatementRefused, [&] { store->define("CREATE INDEX EntryByAmnt ON Entry (EntryNo)"); });
  EXPECT_EQ(store->catalogue().relations().size(), 4U);
  EXPECT_EQ(openCompanyFile(path(), Access::Read)->catalogue().relations().size(), 4U);
  {
    const auto transaction = store->begin();
    store->define("CREATE TABLE Passing (A INT)");
    EXPECT_EQ(execute(connection, "INSERT INTO Passing (A) VALUES (1)"), 1);
  }
  EXPECT_EQ(store->catalogue().find("Passing"), nullptr);
  raised(kStatementRefused, [&] { execute(connection, "INSERT INTO Passing (A) VALUES (1)"); });
  store->define("CREATE TABLE Passing (B INT)");
  EXPECT_EQ(execute(connection, "INSERT INTO Passing (B) VALUES (1)"), 1);
}

TEST_F(Stores, TransactionsKeepAllOrNothing) {
  {
    const auto transaction = store->begin();
    EXPECT_EQ(execute(connection, "INSERT INTO Entry (EntryNo) VALUES (1)"), 1);
    EXPECT_EQ(entries(), 1);
    raised(ErrorNumber::InvalidArgument, [&] { (void)store->begin(); });
  }
  EXPECT_EQ(entries(), 0);
  const auto transaction = store->begin();
  execute(connection, "INSERT INTO Entry (EntryNo) VALUES (2)");
  transaction->commit();
  raised(ErrorNumber::InvalidArgument, [&] { transaction->commit(); });
  EXPECT_EQ(entries(), 1);
}

TEST_F(Stores, AChangeThatCannotBeUndoneClosesTheCompanyForGood) {
  addEntries(*store, 100);
  const Ref<Recordset> reading = open(connection, "SELECT a.EntryNo FROM Entry a, Entry, Entry c");
  const auto undone = [](void*, int action, const char* what, auto...) {
    return action == SQLITE_TRANSACTION && std::string_view(what) == "ROLLBACK" ? SQLITE_DENY
                                                                                : SQLITE_OK;
  };
  std::unique_ptr<Transaction> transaction = store->begin();
  sqlite3_set_authorizer(static_cast<Sqlite::SqliteStore&>(*store).database()->handle(), undone,
                         nullptr);
  execute(connection, "DELETE FROM Entry");
  const Ref<Recordset> inside = open(connection, "SELECT COUNT(*) AS N FROM Entry");
  transaction.reset();
  for (int round = 0; round < 2; ++round) {
    raised(kStatementRefused, [&] { open(connection, "SELECT EntryNo FROM Entry"); });
    raised(kStatementRefused,
           [&] { execute(connection, "INSERT INTO Entry (EntryNo) VALUES (1)"); });
    raised(kStatementRefused, [&] { (void)store->begin(); });
    raised(kStatementRefused, [&] { (void)store->schemaVersion(); });
    raised(kStatementRefused, [&] { store->define("CREATE TABLE T (A INT)"); });
    raised(kStatementRefused, [&] { (void)store->writer("Entry", {"EntryNo"}); });
    for (const Ref<Recordset>& rows : {inside, reading}) {
      if (!rows->AtEnd()) rows->MoveNext();
      raised(kStatementRefused, [&] { rows->MoveFirst(); });
    }
  }
  const auto again = openCompanyFile(path(), Access::Write);
  EXPECT_EQ(execute(again->connect(Sql::Dialect::Server), "DELETE FROM Entry"), 100);
}

TEST_F(Stores, RowsAreWrittenConvertedAndChecked) {
  const auto transaction = store->begin();
  const auto writer = store->writer("account", {"AcctNo", "Balance", "Opened", "Descr"});
  writer->add(std::vector<Value>{"1000", "12.5", "2024-03-01", Value()});
  const Ref<Recordset> row = open(connection, "SELECT * FROM Account");
  EXPECT_EQ(row->Field("Balance"), Value(Currency::fromUnits(125'000)));
  EXPECT_EQ(row->Field("Opened"), Value(Date::of(2024, 3, 1)));
  EXPECT_TRUE(row->Field("Descr").isNull());

  const auto refusal = [&](std::int32_t number, std::vector<Value> values) {
    return raised(number, [&] { writer->add(values); });
  };
  EXPECT_THAT(refusal(13, {"1001", "dear", Value(), Value()}), HasSubstr("Balance"));
  EXPECT_THAT(refusal(13, {"1001", "1", "yesterday", Value()}), HasSubstr("Opened"));
  EXPECT_THAT(refusal(kStatementRefused, {"1001", "1", Value(), "much too long"}),
              AllOf(HasSubstr("Descr"), HasSubstr("Account")));
  EXPECT_THAT(refusal(kStatementRefused, {"1000", "1", Value(), Value()}), HasSubstr("AcctNo"));
  EXPECT_THAT(refusal(5, {"1001"}), HasSubstr("4 values"));
  writer->add(std::vector<Value>{"1001", "1", Value(), "last"});
  transaction->commit();
  EXPECT_EQ(only(connection, "SELECT COUNT(*) AS N FROM Account").toLong(), 2);
  raised(ErrorNumber::InvalidArgument,
         [&] { writer->add(std::vector<Value>{"1002", "1", Value(), Value()}); });

  raised(kStatementRefused, [&] { (void)store->writer("Nowhere", {"A"}); });
  raised(kStatementRefused, [&] { (void)store->writer("Account", {"A"}); });
  raised(kStatementRefused, [&] { (void)store->writer("OpenAccount", {"AcctNo"}); });
}

TEST_F(Stores, IntegrityFindingsNameTheMissingRow) {
  EXPECT_TRUE(store->integrityFindings().empty());
  EXPECT_THAT(store->engineName(), HasSubstr("SQLite 3."));
  EXPECT_GT(store->sizeInBytes(), 0);
}

std::string contentOf(const std::string& path) {
  const std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

TEST(BulkStores, TheSameWorkGivesTheSameBytesAndACleanFolder) {
  const TemporaryFolder folder;
  const auto fill = [&](const std::string& name) {
    const auto store = createCompanyFile(folder.file(name), Durability::Bulk);
    defineSmallSchema(*store);
    addEntries(*store, 20'000);
    {
      // Rolling back must work without a journal on the disk, too.
      const auto transaction = store->begin();
      execute(store->connect(Sql::Dialect::Server), "DELETE FROM Entry");
    }
    store->setSchemaVersion(1);
  };
  fill("a");
  fill("b");
  EXPECT_EQ(contentOf(folder.file("a")), contentOf(folder.file("b")));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);

  const auto store = openCompanyFile(folder.file("a"), Access::Write);
  EXPECT_TRUE(store->integrityFindings().empty());
  EXPECT_EQ(only(store->connect(Sql::Dialect::Server), "SELECT COUNT(*) AS N FROM Entry").toLong(),
            20'000);
  // Bytes 18 and 19 of the file say that it is kept with a write-ahead log.
  EXPECT_EQ(contentOf(folder.file("b")).substr(18, 2), "\2\2");
}

TEST(BulkStores, AfterACommitTheFileStandsOnItsOwn) {
  const TemporaryFolder folder;
  const auto store = createCompanyFile(folder.file("company"), Durability::Bulk);
  defineSmallSchema(*store);
  addEntries(*store, 100);
  std::filesystem::copy_file(folder.file("company"), folder.file("copy"));
  EXPECT_TRUE(openCompanyFile(folder.file("copy"), Access::Read)->integrityFindings().empty());
}

TEST_F(Stores, EightProcessesReadWhileOneWrites) {
  // The writer moves money to and fro between two rows; whoever reads must always see the sum.
  execute(connection, "INSERT INTO Entry (EntryNo, Amnt) VALUES (1, 1000)");
  execute(connection, "INSERT INTO Entry (EntryNo, Amnt) VALUES (2, 0)");
  connection = nullptr;
  desktop = nullptr;
  store.reset();

  const auto write = [&] {
    const auto own = openCompanyFile(path(), Access::Write);
    const Ref<Connection> writing = own->connect(Sql::Dialect::Server);
    for (std::int32_t i = 1; i <= 100; ++i) {
      const auto transaction = own->begin();
      execute(writing, "UPDATE Entry SET Amnt = Amnt - ? WHERE EntryNo = 1", {i});
      execute(writing, "UPDATE Entry SET Amnt = Amnt + ? WHERE EntryNo = 2", {i});
      transaction->commit();
    }
    return true;
  };
  const auto read = [&] {
    const auto own = openCompanyFile(path(), Access::Read);
    const Ref<Connection> reading = own->connect(Sql::Dialect::Desktop);
    for (int i = 0; i < 100; ++i) {
      const Ref<Recordset> rows = open(reading, "SELECT EntryNo, Amnt FROM Entry ORDER BY EntryNo");
      Currency sum = rows->Field(1).toCurrency();
      rows->MoveNext();
      sum += rows->Field(1).toCurrency();
      if (sum != Currency::fromInteger(1000)) return false;
    }
    return true;
  };
  constexpr int kReaders = 8;
  std::vector<pid_t> children{inAnotherProcess(write)};
  for (int i = 0; i < kReaders; ++i) children.push_back(inAnotherProcess(read));
  for (const pid_t child : children) EXPECT_EQ(statusOf(child), 0);
}

TEST_F(Stores, ASnapshotIsOfOneMoment) {
  addEntries(*store, 10);
  const auto reader = openCompanyFile(path(), Access::Read);
  const Ref<Connection> reading = reader->connect(Sql::Dialect::Server);
  const auto count = [&] { return only(reading, "SELECT COUNT(*) AS N FROM Entry").toLong(); };
  Ref<Recordset> rows;
  {
    const auto snapshot = reader->hold();
    execute(connection, "DELETE FROM Entry WHERE EntryNo > 4");
    EXPECT_EQ(count(), 10);
    raised(ErrorNumber::InvalidArgument, [&] { (void)reader->hold(); });
    rows = open(reading, "SELECT EntryNo FROM Entry ORDER BY EntryNo");
  }
  EXPECT_EQ(rest(rows), "1 2 3 4 5 6 7 8 9 10");
  EXPECT_EQ(count(), 4);
  raised(ErrorNumber::InvalidArgument, [&] { (void)store->hold(); });
  EXPECT_EQ(execute(connection, "DELETE FROM Entry WHERE EntryNo > 2"), 2);
}

TEST_F(Stores, AMillionAmountsAddUpToTheLastUnit) {
  constexpr int kCount = 1'000'000;
  constexpr std::int64_t kUnits = 123'456'789;
  {
    const auto transaction = store->begin();
    const auto writer = store->writer("Entry", {"EntryNo", "Amnt"});
    std::vector<Value> row(2);
    for (int i = 1; i <= kCount; ++i) {
      row[0] = i;
      row[1] = Currency::fromUnits(kUnits + i);
      writer->add(row);
    }
    transaction->commit();
  }
  const Currency sum =
      Currency::fromUnits(kUnits * kCount + std::int64_t{kCount} * (kCount + 1) / 2);
  EXPECT_EQ(only(connection, "SELECT SUM(Amnt) AS S FROM Entry"), Value(sum));
  EXPECT_EQ(only(desktop, "SELECT SUM(Amnt) - SUM(-Amnt) AS S FROM Entry"), Value(sum + sum));
}

TEST_F(Stores, AnOpenRecordsetDoesNotKeepOthersFromWriting) {
  addEntries(*store, 1000);
  const Ref<Recordset> reading = open(connection, "SELECT EntryNo FROM Entry ORDER BY EntryNo");
  const auto other = openCompanyFile(path(), Access::Write);
  EXPECT_EQ(execute(other->connect(Sql::Dialect::Server), "DELETE FROM Entry WHERE EntryNo > 500"),
            500);
  // This store's view of the file is an old one now; it must still be able to write.
  EXPECT_EQ(execute(connection, "DELETE FROM Entry WHERE EntryNo > 400"), 100);
  std::int32_t count = 0;
  for (; !reading->AtEnd(); reading->MoveNext()) ++count;
  EXPECT_EQ(count, 1000);
  EXPECT_EQ(entries(), 400);
}

}  // namespace
}  // namespace QuorHost::Testing
