// Recordsets, changes and transactions of a company on a server, beside those of a file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/small_company.h"
#include "postgres/cluster.h"

namespace QuorHost::Testing {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::int32_t kPathFileAccess = 75;

class PostgresServer : public testing::Test {
 protected:
  void SetUp() override {
    if (cluster == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed";
    server = createCompanyFile(address(), Durability::Full, {.replace = true});
    file = createCompanyFile(folder.file("company"), Durability::Full);
    for (const auto& store : both()) defineSmallSchema(*store);
    connection = server->connect(Sql::Dialect::Server);
  }

  [[nodiscard]] std::string address() const { return cluster->company("small"); }
  [[nodiscard]] std::vector<std::shared_ptr<Store>> both() const { return {file, server}; }

  /// What `told` tells of the server's company must be what it tells of the file.
  template <class Tell>
  void expectAlike(const Tell& told) {
    EXPECT_EQ(told(*server), told(*file));
  }

  Cluster* cluster = Cluster::instance();
  TemporaryFolder folder;
  std::shared_ptr<Store> server;
  std::shared_ptr<Store> file;
  Ref<Connection> connection;
};

/// All rows of the accounts.
std::string accounts(Store& store) {
  std::string text;
  const auto rows =
      open(store.connect(Sql::Dialect::Server), "SELECT * FROM Account ORDER BY InAcctId");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    for (std::int32_t i = 0; i < rows->FieldCount(); ++i) {
      text += (rows->Field(i).isNull() ? "-" : rows->Field(i).toText()) + "|";
    }
    text += "\n";
  }
  return text;
}

TEST_F(PostgresServer, ChangesRowsAsAFileDoes) {
  expectAlike([](Store& store) {
    const auto to = store.connect(Sql::Dialect::Server);
    std::string told;
    const auto run = [&](const std::string& sql, std::vector<Value> values = {}) {
      told += std::to_string(execute(to, sql, std::move(values))) + " ";
    };
    run("INSERT INTO Currency (InCurrencyId, Code) VALUES (?, ?)", {1, "CAD"});
    run("INSERT INTO Account (AcctNo, Descr, Balance, Rate, Opened, Kind, ExCurrencyId) "
        "VALUES (?, ?, ?, ?, ?, ?, ?)",
        {"1000 ", "tab\t\\ ' é", Currency::fromUnits(123456789), 0.1,
         Date::of(2024, 2, 29, 23, 59, 58), 7, 1});
    run("INSERT INTO Account (InAcctId, AcctNo) VALUES (?, ?)", {9, "2000"});
    run("INSERT INTO Account (AcctNo, Active) SELECT 'x' + AcctNo, 0 FROM Account");
    run("UPDATE Account SET Balance = Balance * 2, Descr = 'é ' WHERE AcctNo = '1000'");
    run("DELETE FROM Account WHERE AcctNo = '2000 '");
    const auto rows = open(to, "SELECT * FROM Account", {}, 1);
    rows->AddNew();
    rows->SetField("AcctNo", Value("3000"));
    rows->SetField("Opened", Value(Date::of(2024, 1, 1)));
    rows->Update();
    told += rows->Field("InAcctId").toText() + rows->Field("Balance").toText();
    rows->MoveFirst();
    told += rows->Find("AcctNo = 'X1000'") ? "found " : "not found ";
    rows->SetField("Descr", Value("changed"));
    rows->Update();
    told += rows->Find("AcctNo = 'nobody'") ? "found " : "not found ";
    for (const char* const pattern : {"x1%", "%0", "[0-2]00_ ", "_000"}) {
      told += only(to, "SELECT COUNT(*) FROM Account WHERE AcctNo LIKE ?", {pattern}).toText();
    }
    return told + accounts(store);
  });
}

TEST_F(PostgresServer, ComputesAsAFileDoes) {
  expectAlike([](Store& store) {
    std::string told;
    const auto ask = [&](Sql::Dialect dialect, const std::string& expression,
                         std::vector<Value> values = {}) {
      try {
        const Value value =
            only(store.connect(dialect), "SELECT " + expression + " AS X", std::move(values));
        told += value.isNull() ? "-" : value.toText();
      } catch (const Error& error) {
        told += std::to_string(error.number());
      }
      told += " " + expression + "\n";
    };
    for (const char* const expression : {"1 / 2",
                                         "7 % 3",
                                         "-7 / 2",
                                         "1 / 0",
                                         "2000000000 + 2000000000",
                                         "CAST(2.5 AS INT)",
                                         "CAST(0.00005 AS MONEY)",
                                         "CAST('2.5' AS FLOAT)",
                                         "CAST('x' AS INT)",
                                         "0.1 + 0.2 - 0.3",
                                         "1.5 * 0.0001",
                                         "1.0000 / 3",
                                         "ROUND(2.675, 2)",
                                         "ROUND(-2.5, 0)",
                                         "ROUND(1234.5, -2)",
                                         "FLOOR(-1.5)",
                                         "CEILING(1.2E0)",
                                         "LEFT('abc', 2)",
                                         "LEFT('abc', -1)",
                                         "RIGHT('é x ', 2)",
                                         "SUBSTRING('abc', 0, 2)",
                                         "LEN('ab  ')",
                                         "UPPER('é')",
                                         "CHARINDEX('B', 'abc')",
                                         "ISNUMERIC('1e3')",
                                         "ISNUMERIC(NULL)",
                                         "DATEADD(month, 1, '2024-01-31')",
                                         "DATEDIFF(week, '2024-01-06', '2024-01-07')",
                                         "DATEADD(day, 9999999, '2024-01-01')",
                                         "CAST('2024-02-30' AS DATETIME)",
                                         "YEAR('1/31/2024')",
                                         "CAST(0.1E0 AS VARCHAR(20))",
                                         "CAST(1.50 AS VARCHAR(9))",
                                         "CASE WHEN 'a ' = 'A' THEN 1 ELSE 0 END",
                                         "CASE WHEN 'é' < 'f' THEN 1 ELSE 0 END",
                                         "COALESCE(NULL, 'x')"}) {
      ask(Sql::Dialect::Server, expression);
    }
    for (const char* const expression : {"7 / 2",
                                         "0.3 / 0.1",
                                         "Int(-1.5)",
                                         "CLng(2.5)",
                                         "CLng(3.5)",
                                         "CCur(0.00005)",
                                         "1 = 1",
                                         "-(1 = 1)",
                                         "True + 1",
                                         "IIf(Null = 1, 'a', 'b')",
                                         "'a' & Null & 1.5",
                                         "Mid('abc', 0, 1)",
                                         "InStr('abc', '')",
                                         "DateSerial(24, 14, 31)",
                                         "#2024-01-31# - #2024-01-01 12:00#",
                                         "DateDiff('h', #2024-01-01#, #2024-01-02#)",
                                         "'Abc' LIKE '[!b]#*'",
                                         "Round(2.5)",
                                         "Nz(Null)",
                                         "7 Mod 4",
                                         "IsNumeric('x')"}) {
      ask(Sql::Dialect::Desktop, expression);
    }
    ask(Sql::Dialect::Server, "?", {Value(Date::of(2024, 1, 1, 1, 2, 3))});
    ask(Sql::Dialect::Server, "? + 1.5", {Value(2)});
    return told;
  });
}

TEST_F(PostgresServer, RefusesWhatAFileRefuses) {
  for (const auto& store : both()) {
    const auto to = store->connect(Sql::Dialect::Server);
    execute(to, "INSERT INTO Currency (InCurrencyId, Code) VALUES (3, 'CAD')");
    execute(to, "INSERT INTO Account (AcctNo, ExCurrencyId) VALUES ('1', 3)");
  }
  struct Refused {
    const char* sql;
    const char* why;
    // What a server says beyond that, in the spelling of the definitions.
    const char* where = "";
  };
  for (const Refused& refused :
       {Refused{"INSERT INTO Account (AcctNo) VALUES ('1 ')", "must be unique",
                "in AcctNo of table Account"},
        Refused{"INSERT INTO Account (AcctNo) VALUES (NULL)", "cannot be null",
                "in AcctNo of table Account"},
        Refused{"INSERT INTO Account (AcctNo, ExCurrencyId) VALUES ('2', 5)", "foreign key",
                "Column ExCurrencyId of table Account would hold 5, but table Currency"},
        Refused{"DELETE FROM Currency", "foreign key",
                "Rows of table Account point at 3 in InCurrencyId of the row of table Currency"},
        Refused{"UPDATE Account SET Descr = 'longer than ten'", "longer than 10 characters",
                "Descr of table Account"},
        Refused{"UPDATE Account SET Kind = 1 / Balance", "division by zero"},
        Refused{"UPDATE Account SET Nothing = 1", "Nothing"}}) {
    for (const auto& store : both()) {
      EXPECT_THAT(
          raised(QuorDataLib::kStatementRefused,
                 [&] { execute(store->connect(Sql::Dialect::Server), refused.sql); }),
          testing::AllOf(HasSubstr(refused.why), HasSubstr(store == server ? refused.where : "")));
    }
  }
  const auto reader = openCompanyFile(address(), Access::Read);
  EXPECT_THAT(
      raised(QuorDataLib::kStatementRefused,
             [&] { execute(reader->connect(Sql::Dialect::Server), "DELETE FROM Account"); }),
      HasSubstr("reading only"));
  connection->SetCommandTimeout(1);
  addEntries(*server, 3000);
  EXPECT_THAT(raised(QuorDataLib::kStatementRefused,
                     [&] {
                       open(
                           connection,
                           "SELECT COUNT(*) FROM Entry A, Entry B, Entry C WHERE A.Amnt + B.Amnt = "
                           "C.Amnt * 2.5");
                     }),
              HasSubstr("command timeout of 1 second"));
}

TEST_F(PostgresServer, LimitsTheStatementsOfAConnectionAlone) {
  addEntries(*server, 4000);
  const auto held = openCompanyFile(address(), Access::Read);
  const auto moment = held->hold();
  const auto limited = held->connect(Sql::Dialect::Server);
  limited->SetCommandTimeout(1);
  EXPECT_EQ(only(limited, "SELECT COUNT(*) FROM Entry").toLong(), 4000);
  // One that lies open goes on under its own limit, whoever spoke last, and so do its batches.
  const auto lying =
      open(limited,
           "SELECT A.EntryNo FROM Entry A, Entry B WHERE A.EntryNo < 3 OR A.Amnt + B.Amnt = -1");
  // Takes longer than that.
  EXPECT_EQ(only(held->connect(Sql::Dialect::Server),
                 "SELECT COUNT(*) FROM Entry A, Entry B WHERE A.Amnt + B.Amnt = -1")
                .toLong(),
            0);
  EXPECT_THAT(raised(QuorDataLib::kStatementRefused, [&] { (void)rest(lying); }),
              HasSubstr("command timeout of 1 second"));
}

TEST_F(PostgresServer, KeepsWhatLiesOpenAndOneMomentForAll) {
  constexpr int kRows = 20'000;
  addEntries(*server, kRows);
  const auto lying = open(connection, "SELECT EntryNo FROM Entry ORDER BY EntryNo");
  const auto other = open(connection, "SELECT EntryNo FROM Entry ORDER BY EntryNo DESC");
  EXPECT_EQ(execute(connection, "DELETE FROM Entry WHERE EntryNo > 5"), kRows - 5);
  EXPECT_EQ(only(connection, "SELECT COUNT(*) FROM Entry").toLong(), 5);
  int count = 0;
  for (; !lying->AtEnd(); lying->MoveNext()) EXPECT_EQ(lying->Field(0).toLong(), ++count);
  EXPECT_EQ(count, kRows);
  EXPECT_EQ(other->Field(0).toLong(), kRows);
  lying->MoveFirst();
  EXPECT_EQ(rest(lying), "1 2 3 4 5");

  const auto reader = openCompanyFile(address(), Access::Read);
  const auto reading = reader->connect(Sql::Dialect::Server);
  {
    const auto moment = reader->hold();
    raised(ErrorNumber::InvalidArgument, [&] { (void)reader->hold(); });
    execute(connection, "DELETE FROM Entry WHERE EntryNo > 2");
    EXPECT_EQ(only(reading, "SELECT COUNT(*) FROM Entry").toLong(), 5);
  }
  EXPECT_EQ(only(reading, "SELECT COUNT(*) FROM Entry").toLong(), 2);

  {
    const auto transaction = server->begin();
    execute(connection, "DELETE FROM Entry");
    server->writer("Entry", {"EntryNo"})->add(std::vector<Value>{7});
    EXPECT_EQ(rest(open(connection, "SELECT EntryNo FROM Entry")), "7");
    EXPECT_EQ(only(reading, "SELECT COUNT(*) FROM Entry").toLong(), 2);
  }
  EXPECT_EQ(only(reading, "SELECT COUNT(*) FROM Entry").toLong(), 2);
  {
    const auto transaction = server->begin();
    execute(connection, "DELETE FROM Entry");
    raised(QuorDataLib::kStatementRefused,
           [&] { execute(connection, "INSERT INTO Entry (EntryNo) VALUES (NULL)"); });
    // Nothing goes on in another transaction.
    EXPECT_THAT(raised(QuorDataLib::kStatementRefused,
                       [&] { execute(connection, "INSERT INTO Entry (EntryNo) VALUES (1)"); }),
                HasSubstr("drop it"));
    raised(QuorDataLib::kStatementRefused, [&] { transaction->commit(); });
  }
  EXPECT_EQ(only(connection, "SELECT COUNT(*) FROM Entry").toLong(), 2);
}

TEST_F(PostgresServer, SaysWhenTheConnectionEnds) {
  addEntries(*server, 20'000);
  const auto end = [&] {
    cluster->run(
        "SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity WHERE application_name = "
        "'quoracc'");
    cluster->run("SELECT pg_sleep(0.05)");
  };
  end();
  // A read that has sent nothing connects anew.
  const auto rows = open(connection, "SELECT EntryNo FROM Entry");
  end();
  raised(kConnectionLost, [&] { (void)rest(rows); });
  EXPECT_EQ(only(connection, "SELECT COUNT(*) FROM Entry").toLong(), 20'000);
  const auto transaction = server->begin();
  execute(connection, "DELETE FROM Entry");
  end();
  EXPECT_THAT(raised(kConnectionLost, [&] { execute(connection, "DELETE FROM Entry"); }),
              HasSubstr("not known"));
  raised(kConnectionLost, [&] { transaction->commit(); });
}

TEST_F(PostgresServer, SaysWhatIsWrongWithAnAddress) {
  const std::string database = cluster->company("public");
  const auto refused = [](const std::string& company) {
    return raised(kPathFileAccess, [&] { (void)openCompanyFile(company, Access::Read); });
  };
  EXPECT_THAT(refused(database + "&schema=nowhere"), HasSubstr("no company"));
  EXPECT_THAT(refused("postgresql://quor:secret@/nowhere" + database.substr(database.find('?'))),
              testing::AllOf(HasSubstr("nowhere"), Not(HasSubstr("secret"))));
  EXPECT_THAT(refused("postgresql://quor@/x?host=/no/such/folder&password=secret"),
              testing::AllOf(HasSubstr("cannot be opened"), Not(HasSubstr("secret"))));
  for (const char* const wrong : {"postgresql://x?schema=", "postgresql://quor:secret@/x?schema=%4",
                                  "postgresql://quor:secret@/x?nonsense=1"}) {
    EXPECT_THAT(
        raised(ErrorNumber::InvalidArgument, [&] { (void)openCompanyFile(wrong, Access::Read); }),
        Not(HasSubstr("secret")));
  }
  server->setSchemaVersion(kNewestSchemaVersion + 1);
  EXPECT_THAT(refused(address()), HasSubstr("newer"));
}

}  // namespace
}  // namespace QuorHost::Testing
