// PostgreSQL's own driver, on companies in the tests' server: what runs there as it stands gives
// the rows of a file.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>

#include "host/small_company.h"
#include "postgres/cluster.h"
#include "queries/company_fixture.h"
#include "sql/component_statements.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// A company of the tests' server, over the driver.
class OverPostgres : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(POSTGRES_ODBC_DRIVER)) {
      GTEST_SKIP() << "PostgreSQL's ODBC driver is not installed (scripts/bootstrap servers)";
    }
    if (cluster == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed";
  }

  [[nodiscard]] std::string address(const std::string& schema, const std::string& more = "") const {
    return std::string("odbc:Driver=") + POSTGRES_ODBC_DRIVER +
           ";Servername=" + cluster->folder().string() +
           ";Database=postgres;UID=quor;UseDeclareFetch=1;BoolsAsChar=0;dialect=server;"
           "ConnSettings={SET search_path TO " +
           schema + "};" + more;
  }

  /// The small schema, on the server.
  void makeSmall(const std::string& schema) const {
    const auto store = createCompanyFile(cluster->company(schema), Durability::Full);
    const auto transaction = store->begin();
    defineSmallSchema(*store);
    store->setSchemaVersion(kNewestSchemaVersion);
    transaction->commit();
  }

  Cluster* const cluster = Cluster::instance();
};

/// The rows of a query, sorted and without regard to case; or why there are none.
std::vector<std::string> rowsOf(const Ref<Connection>& connection, const Sql::Testing::Sent& sent) {
  try {
    std::vector<std::string> rows = fixture::lines(open(connection, sent.text, sent.values));
    for (std::string& row : rows) {
      std::ranges::transform(row, row.begin(), [](unsigned char c) { return std::tolower(c); });
    }
    std::ranges::sort(rows);
    return rows;
  } catch (const Error& error) {
    return {"refused: " + error.description()};
  }
}

/// The members of which PostgreSQL does not read every text as it stands: it has no TOP, no LEFT of
/// a number, no comparison of a boolean with a number, and joins no texts by +. All others it
/// reads.
const std::set<std::string> kNotAsTheyStand{"CCustomerQueries.OpenCustAgingTransactions",
                                            "CGeneralLedgerHelper.ChequeIsConciliated",
                                            "CGeneralLedgerHelper.ChequeIsUnconciliated",
                                            "CGeneralLedgerHelper.CreateGLAccount",
                                            "CGeneralLedgerHelper.DepositIsConciliated",
                                            "CGeneralLedgerHelper.DepositIsUnconciliated",
                                            "CGeneralLedgerHelper.FindNextGLAcctId",
                                            "CGeneralLedgerHelper.GetGLAccountCount",
                                            "CInventoryHelper.GetQtyInStockRange",
                                            "CInventoryHelper.IsValidAssembly",
                                            "CInventoryQueries.OpenQtyStock",
                                            "CInventoryQueries.OpenQuantityOnHandBySegmentProject",
                                            "CProjectHelper.GetProjHours",
                                            "CProjectHelper.GetProjHoursRange",
                                            "CProjectQueries.OpenProjectHoursTransactions",
                                            "CSupplierQueries.OpenSuppAgingTransactions",
                                            "CSupplierQueries.OpenSuppLastPmt",
                                            "CSupplierQueries.OpenSuppLastPurc"};

TEST_F(OverPostgres, WhatRunsAsItStandsGivesTheRowsOfAFile) {
  const fixture::CompanyFile company(CreateOptions{.sample = true});
  const std::vector<Sql::Testing::Sent> statements =
      Sql::Testing::componentStatements(openCompany(company.path(), Access::Write), 1);
  copyCompany(company.path(), cluster->company("over_odbc"), true);
  const auto file = openCompany(company.path(), Access::Read);
  const auto server = openCompany(address("over_odbc"), Access::Read);
  const auto onFile = file->connect(Sql::Dialect::Server);
  const auto overDriver = server->connect(Sql::Dialect::Server);

  int alike = 0;
  int refused = 0;
  for (const Sql::Testing::Sent& sent : statements) {
    if (sent.dialect != Sql::Dialect::Server || !sent.text.starts_with("SELECT")) continue;
    SCOPED_TRACE(sent.member + ": " + sent.text);
    const std::vector<std::string> there = rowsOf(overDriver, sent);
    if (there.size() == 1 && there.front().starts_with("refused")) {
      EXPECT_TRUE(kNotAsTheyStand.contains(sent.member)) << there.front();
      ++refused;
      continue;
    }
    EXPECT_EQ(there, rowsOf(onFile, sent));
    ++alike;
  }
  std::cout << alike << " statements run as they stand and give the rows of a file, " << refused
            << " are refused\n";
  EXPECT_GT(alike, refused);
}

TEST_F(OverPostgres, ReadsAndChangesRows) {
  makeSmall("odbc_small");
  const auto store = openCompany(address("odbc_small"), Access::Write);
  const auto connection = store->connect(Sql::Dialect::Server);
  EXPECT_TRUE(store->hasTable("ACCOUNT"));
  EXPECT_FALSE(store->hasTable("Acc_unt"));
  EXPECT_THAT(store->engineName(), HasSubstr("PostgreSQL"));
  const std::vector<Value> values{
      "1000", "é🙂",           Currency::fromUnits(-15'001), 0.1, Date::of(2024, 2, 29, 1, 2, 3),
      true,   std::int16_t{-7}};
  EXPECT_EQ(execute(connection,
                    "INSERT INTO Account (AcctNo, Descr, Balance, Rate, Opened, Active, Kind) "
                    "VALUES (?, ?, ?, ?, ?, ?, ?)",
                    values),
            1);
  const auto row =
      open(connection, "SELECT AcctNo, Descr, Balance, Rate, Opened, Active, Kind FROM Account");
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(row->Field(static_cast<std::int32_t>(i)), values[i]) << i;
  }
  EXPECT_THAT(raised(kStatementRefused,
                     [&] { execute(connection, "INSERT INTO Account (AcctNo) VALUES ('1000')"); }),
              HasSubstr("breaks a rule"));
  EXPECT_THAT(raised(kStatementRefused,
                     [&] { execute(connection, "UPDATE Account SET ExCurrencyId = 7"); }),
              HasSubstr("breaks a rule"));

  const auto entries = open(connection, "SELECT EntryNo, Amnt FROM Entry", {}, 1);
  for (std::int32_t i = 1; i <= 3; ++i) {
    entries->AddNew();
    entries->SetField("EntryNo", i);
    entries->Update();
    EXPECT_TRUE(entries->Field("Amnt").isNull());
  }
  entries->SetField("Amnt", Currency::fromInteger(5));
  entries->Update();
  EXPECT_EQ(entries->Field("Amnt"), Value(Currency::fromInteger(5)));
  EXPECT_EQ(rest(open(connection, "SELECT Amnt FROM Entry ORDER BY EntryNo")), "null null 5");
  const auto accounts = open(connection, "SELECT * FROM Account", {}, 1);
  accounts->AddNew();
  accounts->SetField("AcctNo", "2000");
  accounts->Update();
  EXPECT_EQ(accounts->Field("InAcctId"),
            only(connection, "SELECT InAcctId FROM Account WHERE AcctNo = '2000'"));
  EXPECT_EQ(accounts->Field("Balance"), Value(Currency()));

  // Rows that lie open stay as they were when others change.
  execute(connection, "INSERT INTO Entry SELECT n, n FROM generate_series(10, 3000) AS n");
  const auto lying = open(connection, "SELECT EntryNo FROM Entry ORDER BY EntryNo");
  execute(connection, "DELETE FROM Entry");
  EXPECT_TRUE(lying->Find("EntryNo = 3000"));
}

TEST_F(OverPostgres, NothingGoesOnInAnotherTransactionUnnoticed) {
  makeSmall("odbc_failing");
  const std::string company = address("odbc_failing");
  const auto store = openCompany(company, Access::Write);
  const auto connection = store->connect(Sql::Dialect::Server);
  {
    const auto transaction = store->begin();
    execute(connection, "INSERT INTO Entry (EntryNo) VALUES (1)");
    raised(kStatementRefused, [&] { open(connection, "SELECT FROM WHERE"); });
    raised(kStatementRefused, [&] { open(connection, "SELECT EntryNo FROM Entry"); });
    raised(kStatementRefused,
           [&] { execute(connection, "INSERT INTO Entry (EntryNo) VALUES (2)"); });
    raised(kStatementRefused, [&] { transaction->commit(); });
  }
  EXPECT_EQ(rest(open(connection, "SELECT EntryNo FROM Entry")), "");
  {
    const auto transaction = store->begin();
    execute(connection, "INSERT INTO Entry (EntryNo) VALUES (3)");
    transaction->commit();
  }
  const auto reader = openCompany(company, Access::Read);
  const auto read = reader->connect(Sql::Dialect::Server);
  {
    const auto moment = reader->hold();
    execute(connection, "DELETE FROM Entry");
    EXPECT_EQ(rest(open(read, "SELECT EntryNo FROM Entry")), "3");
    raised(kStatementRefused, [&] { open(read, "SELECT 1 / 0"); });
    raised(kStatementRefused, [&] { open(read, "SELECT EntryNo FROM Entry"); });
  }
  EXPECT_EQ(rest(open(read, "SELECT EntryNo FROM Entry")), "");
}

TEST_F(OverPostgres, BadDaysHaveTheirNumbers) {
  makeSmall("odbc_bad");
  const auto store = openCompany(address("odbc_bad"), Access::Write);
  const auto connection = store->connect(Sql::Dialect::Server);
  connection->SetCommandTimeout(1);
  EXPECT_THAT(raised(kStatementRefused, [&] { open(connection, "SELECT pg_sleep(5)"); }),
              HasSubstr("timeout of 1 second"));
  connection->SetCommandTimeout(0);
  EXPECT_EQ(only(connection, "SELECT current_setting('statement_timeout')"), Value("0"));
  const auto end = [&] {
    cluster->run(
        "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> "
        "pg_backend_pid() AND backend_type = 'client backend'");
  };
  end();
  EXPECT_EQ(rest(open(connection, "SELECT EntryNo FROM Entry")), "") << "it connects anew";
  execute(connection, "INSERT INTO Entry (EntryNo) VALUES (1)");
  end();
  raised(kConnectionLost, [&] { execute(connection, "DELETE FROM Entry"); });
  EXPECT_EQ(execute(connection, "DELETE FROM Entry"), 1);
  end();
  {
    const auto transaction = store->begin();
    execute(connection, "INSERT INTO Entry (EntryNo) VALUES (1)");
    end();
    raised(kConnectionLost, [&] { open(connection, "SELECT EntryNo FROM Entry"); });
    raised(kStatementRefused, [&] { transaction->commit(); });
  }
  EXPECT_EQ(rest(open(connection, "SELECT EntryNo FROM Entry")), "");

  constexpr std::int32_t kCannotOpen = 75;
  const auto refused = [&](std::string text, const std::string& part, const std::string& other) {
    text.replace(text.find(part), part.size(), other);
    return raised(kCannotOpen, [&] { (void)openCompany(text, Access::Read); });
  };
  const std::string withPassword = address("odbc_bad", "PWD=geheim;");
  EXPECT_THAT(refused(withPassword, "Database=postgres", "Database=nowhere"),
              AllOf(HasSubstr("nowhere"), Not(HasSubstr("geheim"))));
  EXPECT_THAT(refused(withPassword, "UID=quor", "UID=nobody"),
              AllOf(HasSubstr("nobody"), Not(HasSubstr("geheim"))));
  EXPECT_THAT(refused(withPassword, "Servername=", "Servername=/no"),
              AllOf(HasSubstr("server runs"), Not(HasSubstr("geheim"))));
}

}  // namespace
}  // namespace QuorHost::Testing
