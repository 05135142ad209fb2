// A company that moves between files and a server.
#include "host/company/company.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "host/small_company.h"
#include "postgres/cluster.h"

namespace QuorHost::Testing {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int32_t kPathFileAccess = 75;

class PostgresCompany : public testing::Test {
 protected:
  void SetUp() override {
    if (cluster == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed";
  }

  Cluster* cluster = Cluster::instance();
  TemporaryFolder folder;
};

std::string exported(Store& store, const std::string& relation) {
  std::stringstream csv;
  exportCsv(store, relation, csv);
  return csv.str();
}

std::vector<std::string> sortedLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  std::ranges::sort(lines);
  return lines;
}

TEST_F(PostgresCompany, IsOnAServerWhatItIsInAFile) {
  const std::string file = folder.file("company");
  const std::string back = folder.file("back");
  // A name that has to be quoted.
  const std::string address = cluster->company("Ma%20%22Soci%C3%A9t%C3%A9%22");
  createCompany(file, {.sample = true});
  createCompany(address, {.sample = true});
  EXPECT_THAT(checkCompany(*openCompany(address, Access::Read)), IsEmpty());
  EXPECT_THAT(openCompany(address, Access::Read)->integrityFindings(), IsEmpty());
  copyCompany(address, back, false);
  const auto original = openCompany(file, Access::Read);
  const auto server = openCompany(address, Access::Read);
  const auto copy = openCompany(back, Access::Read);
  EXPECT_EQ(server->schemaVersion(), kNewestSchemaVersion);
  EXPECT_EQ(server->definitions(), original->definitions());
  for (const Sql::Relation& relation : original->catalogue().relations()) {
    SCOPED_TRACE(relation.name);
    const std::string rows = exported(*original, relation.name);
    const bool table = relation.kind == Sql::Relation::Kind::Table;
    // The rows of a table in their order; those of a view have none.
    EXPECT_EQ(sortedLines(exported(*server, relation.name)), sortedLines(rows));
    EXPECT_EQ(exported(*copy, relation.name), rows);
    if (table) {
      EXPECT_EQ(exported(*server, relation.name), rows);
    }
  }
}

TEST_F(PostgresCompany, AppearsWholeOrNotAtAll) {
  const std::string address = cluster->company("whole");
  const std::string small = folder.file("small");
  {
    const auto store = createCompanyFile(small, Durability::Full);
    defineSmallSchema(*store);
    addEntries(*store, 3);
    store->setSchemaVersion(kNewestSchemaVersion);
  }
  copyCompany(small, address, false);
  EXPECT_THAT(raised(kPathFileAccess, [&] { copyCompany(small, address, false); }),
              HasSubstr("--force"));
  const auto interrupt = [](std::string_view, std::int64_t done, std::int64_t) {
    if (done > 0) throw std::runtime_error("interrupted");
  };
  EXPECT_THROW(createCompany(address, {.sample = true, .force = true}, interrupt),
               std::runtime_error);
  EXPECT_EQ(exported(*openCompany(address, Access::Read), "Entry"),
            "EntryNo,Amnt\r\n1,1.00\r\n2,2.00\r\n3,3.00\r\n");
  EXPECT_THROW(createCompany(cluster->company("nowhere"), {.sample = true}, interrupt),
               std::runtime_error);
  EXPECT_EQ(cluster->run("SELECT count(*) FROM pg_namespace WHERE nspname = 'nowhere'"), "0");
  copyCompany(small, address, true);
  raised(ErrorNumber::InvalidArgument, [&] { copyCompany(address, address, true); });

  cluster->run("CREATE SCHEMA other; CREATE TABLE other.mine (id int)");
  for (const bool force : {false, true}) {
    EXPECT_THAT(raised(kPathFileAccess,
                       [&] { createCompany(cluster->company("other"), {.force = force}); }),
                HasSubstr("no company's"));
  }
}

TEST_F(PostgresCompany, IsFilledByImportAsAFileIs) {
  const std::string address = cluster->company("import");
  createCompany(address, {});
  const auto store = openCompany(address, Access::Write);
  const auto import = [&](const std::string& table, const std::string& text, bool replace = false) {
    std::istringstream csv(text);
    return importCsv(*store, table, csv, replace);
  };
  EXPECT_EQ(import("Cust", "InCustId,CustId,Name\n7,A-7,\"Tab\there\nand \\ é \"\n"), 1);
  EXPECT_THAT(exported(*store, "Cust"), HasSubstr("\"Tab\there\nand \\ é \""));
  // The identity goes on behind it.
  import("Cust", "CustId,Name\nB,Deux\n");
  EXPECT_EQ(
      only(store->connect(Sql::Dialect::Server), "SELECT InCustId FROM Cust WHERE CustId = 'b '")
          .toLong(),
      8);
  const std::string tooLong(300, 'x');
  EXPECT_THAT(raised(ErrorNumber::TypeMismatch,
                     [&] { import("Cust", "CustId,Name\nC,Trois\n" + tooLong + ",Quatre\n"); }),
              HasSubstr("Line 3"));
  EXPECT_THAT(raised(QuorDataLib::kStatementRefused,
                     [&] { import("Cust", "InCustId,CustId,Name\n9,D,Q\n7,E,Cinq\n"); }),
              HasSubstr("already has 7"));
  EXPECT_EQ(only(store->connect(Sql::Dialect::Server), "SELECT COUNT(*) FROM Cust").toLong(), 2);
  // What is kept of sums is true after every kind of change, and found out where it is not.
  import("GLAcct", "InGLAcctId,GLAcctId,Descr,AcctType\n1,1000,Bank,1\n2,2000,Loan,2\n");
  import("GLDet",
         "InGLDetId,SeqNo,DetDate,Source,ExSrcKeyVal,ExAcctId,DetAmnt,ForeignAmnt\n"
         "1,1,2024-01-01,GJ,1,1,5.00,5.00\n2,1,2024-01-01,GJ,1,2,-5.00,-5.00\n");
  const auto connection = store->connect(Sql::Dialect::Server);
  execute(connection, "UPDATE GLDet SET DetAmnt = DetAmnt * 2 WHERE InGLDetId = 1");
  execute(connection, "DELETE FROM GLDet WHERE InGLDetId = 2");
  // Another program, which knows nothing of the company.
  cluster->run("UPDATE import.gldet SET detamnt = detamnt + 1, foreignamnt = 6");
  EXPECT_EQ(exported(*store, "GLDetTotals"),
            "ExAcctId,DetDate,ExProjId,ExSegmentId,DetAmnt,ForeignAmnt,LineCount\r\n"
            "1,2024-01-01,,,11.00,6.00,1\r\n");
  EXPECT_THAT(store->integrityFindings(), IsEmpty());
  cluster->run("UPDATE import.gldettotals SET detamnt = 1");
  EXPECT_THAT(store->integrityFindings(), testing::ElementsAre(HasSubstr("GLDetTotals")));
}

TEST_F(PostgresCompany, NotesWhichCostsNoLongerHold) {
  std::vector<std::string> exports;
  for (const std::string& company : {folder.file("company"), cluster->company("costs")}) {
    createCompany(company, {.sample = true});
    const auto store = openCompany(company, Access::Write);
    std::istringstream csv(
        "InTrxId,ExItemId,DetDate,Type,SeqNo,ExSrcKeyVal,Qty,Cost\n"
        "900001,1,2023-02-01,1,1,1,2,3\n900002,2,2024-02-01,1,1,1,2,3\n");
    importCsv(*store, "InvenDet", csv, false);
    exports.push_back(exported(*store, "InvenDet"));
  }
  // A row that was changed stands elsewhere on a server.
  EXPECT_EQ(sortedLines(exports[0]), sortedLines(exports[1]));
  EXPECT_EQ(cluster->run("SELECT count(*) > 0 FROM costs.invendet WHERE runningvaluesdirty = 2"),
            "t");
}

}  // namespace
}  // namespace QuorHost::Testing
