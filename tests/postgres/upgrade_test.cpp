// Companies of an older schema on a server, and roles that may only read.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <future>
#include <regex>

#include "company/company_file.h"
#include "company/version_1.h"
#include "host/small_company.h"
#include "postgres/cluster.h"
#include "postgres/proxy.h"

namespace QuorHost::Testing {
namespace {

using companytest::exported;
using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int32_t kPathFileAccess = 75;

class PostgresRoles : public testing::Test {
 protected:
  void SetUp() override {
    if (cluster == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed";
  }

  Cluster* cluster = Cluster::instance();
  TemporaryFolder folder;
};

using PostgresUpgrade = PostgresRoles;

/// Takes what the later versions have brought out of the schema of the newest one.
std::string serverBackToVersion1(const std::string& schema) {
  std::string back = "SET search_path = " + schema + "; DROP TABLE gldettotals, invendettotals;" +
                     companytest::backToVersion1() +
                     "DELETE FROM QuorCatalogue WHERE name LIKE '%Totals';"
                     "UPDATE QuorCatalogue SET sql = '1' WHERE position = 0";
  for (const char* const table : {"gldet", "invendet"}) {
    for (const char* const event : {"insert", "update", "delete"}) {
      back.append("; DROP FUNCTION \"").append(table).append("totals:").append(event);
      back.append("\" CASCADE");
    }
  }
  return std::regex_replace(back, std::regex("QuorCatalogue"), "quor_catalogue");
}

TEST_F(PostgresUpgrade, IsWholeOrNotAtAllAndWhatItIsInAFile) {
  const std::string file = folder.file("company");
  const std::string address = cluster->company("up");
  cluster->run("CREATE ROLE upread LOGIN");
  createCompany(address, {.sample = true, .readers = {"upread"}});
  companytest::makeVersion1(file);
  ASSERT_EQ(cluster->run(serverBackToVersion1("up")), "");

  const auto version = [&] { return openCompanyFile(address, Access::Read)->schemaVersion(); };
  EXPECT_THAT(
      raised(ErrorNumber::InvalidArgument, [&] { (void)openCompany(address, Access::Read); }),
      testing::AllOf(HasSubstr("older schema (1, here 7)"), HasSubstr("sql --write")));
  // Somebody who may not, an index in the way of a new one, and a connection that breaks off.
  raised(QuorDataLib::kStatementRefused,
         [&] { (void)openCompany(cluster->companyAs("upread", "up"), Access::Write); });
  cluster->run("CREATE INDEX purchdrbystatus ON up.purchdr (purctype)");
  EXPECT_THAT(
      raised(QuorDataLib::kStatementRefused, [&] { (void)openCompany(address, Access::Write); }),
      HasSubstr("older schema (1, here 7)"));
  EXPECT_EQ(version(), 1);
  cluster->run("DROP INDEX up.purchdrbystatus");
  Proxy proxy(cluster->folder());
  for (const int messages : {60, 250}) {
    proxy.cutAfter(messages);
    raised(kConnectionLost, [&] { (void)openCompany(Proxy::through(address), Access::Write); });
    EXPECT_EQ(version(), 1);
  }

  std::array<std::future<int>, 3> several;
  for (std::future<int>& one : several) {
    one = std::async(std::launch::async, [&] {
      const auto store = openCompany(address, Access::Write);
      // Those that have waited know the new tables, too.
      (void)open(store->connect(Sql::Dialect::Server), "SELECT * FROM Term");
      return store->schemaVersion();
    });
  }
  for (std::future<int>& one : several) EXPECT_EQ(one.get(), kNewestSchemaVersion);
  const auto server = openCompany(address, Access::Read);
  const auto original = openCompany(file, Access::Write);
  EXPECT_EQ(server->definitions(), original->definitions());
  EXPECT_THAT(checkCompany(*server), IsEmpty());
  const auto reader = openCompany(cluster->companyAs("upread", "up"), Access::Read);
  for (const Sql::Relation& relation : original->catalogue().relations()) {
    if (relation.kind != Sql::Relation::Kind::Table) continue;
    EXPECT_EQ(exported(*reader, relation.name), exported(*original, relation.name))
        << relation.name;
  }
}

TEST_F(PostgresUpgrade, PutsNewFunctionsInThePlaceOfOldOnes) {
  const std::string address = cluster->company("functions");
  createCompany(address, {});
  cluster->run(
      "SET search_path = functions; UPDATE quor_catalogue SET sql = '0' WHERE position = -1;"
      "CREATE OR REPLACE FUNCTION quor_length(bpchar) RETURNS bigint LANGUAGE sql AS 'SELECT -1'");
  EXPECT_THAT(raised(kPathFileAccess, [&] { (void)openCompany(address, Access::Read); }),
              HasSubstr("functions of an older version"));
  EXPECT_EQ(openCompany(address, Access::Write)->schemaVersion(), kNewestSchemaVersion);
  EXPECT_EQ(
      only(openCompany(address, Access::Read)->connect(Sql::Dialect::Server), "SELECT LEN('abc')")
          .toLong(),
      3);
}

// That a reader reads everything the component asks for is seen where its statements are compared.
TEST_F(PostgresRoles, ReadAndDoNoMore) {
  const std::string address = cluster->company("read");
  const std::string longest(63, 'r');
  cluster->run("CREATE ROLE \"Zo\u00eb \"\"R\" LOGIN; CREATE ROLE " + longest);
  const std::string odd = "Zo\u00eb \"R";
  for (const std::string& nobody :
       {std::string("no'body\""), std::string("public"), std::string(), longest + "r"}) {
    EXPECT_THAT(raised(kPathFileAccess, [&] { createCompany(address, {.readers = {nobody}}); }),
                HasSubstr("no such role"));
  }
  EXPECT_EQ(cluster->run("SELECT count(*) FROM pg_namespace WHERE nspname = 'read'"), "0");
  EXPECT_THAT(raised(ErrorNumber::InvalidArgument,
                     [&] { createCompany(folder.file("file"), {.readers = {odd}}); }),
              HasSubstr("--reader"));
  createCompany(address, {.readers = {longest, odd}});

  cluster->run("CREATE ROLE stranger LOGIN");
  EXPECT_THAT(
      raised(kPathFileAccess,
             [&] { (void)openCompany(cluster->companyAs("stranger", "read"), Access::Read); }),
      HasSubstr("not for this role"));
  const auto store = openCompany(cluster->companyAs("Zo%C3%AB%20%22R", "read"), Access::Write);
  const auto connection = store->connect(Sql::Dialect::Server);
  EXPECT_EQ(only(connection, "SELECT COUNT(*) FROM CustAgingDet").toLong(), 0);
  for (const char* const change : {"INSERT INTO Cust (CustId, Name) VALUES ('A', 'Ann')",
                                   "UPDATE Cust SET Name = 'Bo'", "DELETE FROM Cust"}) {
    EXPECT_THAT(raised(QuorDataLib::kStatementRefused, [&] { execute(connection, change); }),
                HasSubstr("no right"));
  }
  raised(QuorDataLib::kStatementRefused, [&] { store->define("CREATE TABLE Mine (Id INT)"); });
  for (const char* const change :
       {"INSERT INTO cust (custid, name) VALUES ('A', 'Ann')", "TRUNCATE gldet CASCADE",
        "UPDATE quor_catalogue SET sql = '9'", "CREATE TABLE read.mine (id int)",
        "DROP VIEW custagingdet", "DROP SCHEMA read CASCADE", "ALTER TABLE cust ADD x int",
        "CREATE INDEX ON cust (name)", "SELECT setval('cust_incustid_seq', 5)",
        "SELECT nextval('cust_incustid_seq')",
        "CREATE OR REPLACE FUNCTION read.mine() RETURNS int LANGUAGE sql AS 'SELECT 1'"}) {
    EXPECT_THAT(cluster->run("SET ROLE \"" + std::regex_replace(odd, std::regex("\""), "\"\"") +
                             "\"; SET search_path = read; " + change),
                AnyOf(HasSubstr("permission denied"), HasSubstr("must be owner")))
        << change;
  }
}

}  // namespace
}  // namespace QuorHost::Testing
