// Companies of an older schema.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "company/company_file.h"
#include "host/another_process.h"
#include "host/engines/store.h"
#include "host/raw_sql.h"

namespace {

using companytest::Folder;
using QuorHost::Access;
using QuorHost::Testing::runRaw;
using testing::HasSubstr;
using testing::IsEmpty;

/// Takes what `kind` of definition is called `name` out of a company.
std::string dropped(const std::string& kind, const std::string& name) {
  return "DROP " + kind + " " + name + "; DELETE FROM QuorCatalogue WHERE Name = '" + name + "';";
}

/// The same of a table with its indexes.
std::string droppedTable(const std::string& name) {
  return dropped("TABLE", name) + "DELETE FROM QuorCatalogue WHERE Name LIKE '" + name + "By%';";
}

/// Takes away what version 3 has brought of the ledger.
std::string withoutTheLedgersDocuments() {
  std::string back = dropped("VIEW", "AllIssuedChecks_View");
  for (const char* const index :
       {"GLAcctByNumber", "GLDetByRef", "SuppPmtHdrByChq", "PmtHdrByChq"}) {
    back += dropped("INDEX", index);
  }
  for (const char* const table :
       {"GLAcctBudget", "GLAcctSegmentBudget", "GJTrxDet", "GJTrxHdr", "BankTransfer", "DepDet",
        "DepHdr", "TaxTrxHdr", "TaxCode", "PmtMeth", "RPDPmtDet", "RPDPmtHdr", "TrxPayDetails",
        "TrxPay", "PayCode", "Empl"}) {
    back += droppedTable(table);
  }
  return back;
}

/// Takes the last columns of a table away, as they stand in its definition.
std::string shrunk(const std::string& table, const std::string& column, const std::string& text) {
  return "ALTER TABLE " + table + " DROP COLUMN " + column +
         "; UPDATE QuorCatalogue SET Sql = replace(Sql, '" + text + "', '') WHERE Name = '" +
         table + "';";
}

/// The sample as version 1 of the schema had it.
void makeVersion1(const std::string& path) {
  QuorHost::createCompany(path, {.sample = true});
  std::string back =
      "PRAGMA user_version=1; PRAGMA legacy_alter_table=ON;" + withoutTheLedgersDocuments();
  for (const char* const view : {"ProjSales_View", "ProjPurchases_View"}) {
    back += dropped("VIEW", view);
  }
  for (const char* const table : {"ProjBudgets", "TermDet", "Term", "TrxRec"}) {
    back += droppedTable(table);
  }
  back += dropped("INDEX", "PurcDetByProj");
  for (const char* const index :
       {"InvoiHdrById", "InvoiHdrByType", "PurcHdrById", "PurcHdrByStatus", "InvoiDetByOrder"}) {
    back += dropped("INDEX", index);
  }
  for (const char* const view :
       {"ItemToRec_View", "ItemToRecExpected_View", "ItemToRecAssembly_View",
        "ItemToRecExpAssembly_View", "ItemToRecPurch_view", "ItemToRecExpPurch_View",
        "ItemReservedAll_View", "ItemReservedAssembly_View", "ItemReservedInvoi_View",
        "ItemAvgCost_View"}) {
    back += dropped("VIEW", view);
  }
  for (const char* const table :
       {"WarehouseTransDet", "WarehouseTransHdr", "AssemblyDet", "AssemblyHdr", "AdjItemDet",
        "AdjItemHdr", "InvenDet", "ItemReplacement", "ItemKitDet", "Warehouse"}) {
    back += droppedTable(table);
  }
  back += shrunk("Item", "IsKit", "  IsKit BIT DEFAULT 0,\n") +
          shrunk("Item", "IsAssembly", "  IsAssembly BIT DEFAULT 0,\n") +
          shrunk("InvoiDet", "ExWarehouseId", ",\n  ExWarehouseId INT") +
          shrunk("InvoiDet", "ExOrderDetId", ",\n  ExOrderDetId INT") +
          shrunk("PurcDet", "ExWarehouseId", ",\n  ExWarehouseId INT") +
          shrunk("InvoiHdr", "ExTermId", ",\n  ExTermId INT") +
          shrunk("PurcHdr", "ExTermId", ",\n  ExTermId INT");
  for (const char* const event : {"insert", "update", "delete"}) {
    back.append("DROP TRIGGER \"GLDetTotals:").append(event).append("\";");
  }
  for (const char* const totals : {"GLDetTotals", "InvenDetTotals"}) {
    back += dropped("TABLE", totals);
    back.append("DELETE FROM QuorCatalogue WHERE Name LIKE '").append(totals).append(":%';");
  }
  runRaw(path, back);
}

bool isUpToDate(const std::string& path, Access access) {
  return QuorHost::openCompany(path, access)->schemaVersion() == QuorHost::kNewestSchemaVersion;
}

TEST(OlderSchema, IsBroughtUpToDateWhenTheCompanyIsOpened) {
  const Folder folder;
  const std::string path = folder.file("company");
  const std::string fresh = folder.file("fresh");
  makeVersion1(path);
  QuorHost::createCompany(fresh, {.sample = true});
  // Whoever only reads has a company of the new schema, and the file stays as it is.
  const std::string before = companytest::bytesOf(path);
  {
    const auto store = QuorHost::openCompany(path, Access::Read);
    EXPECT_EQ(store->schemaVersion(), QuorHost::kNewestSchemaVersion);
    EXPECT_FALSE(store->writable());
    EXPECT_THAT(QuorHost::checkCompany(*store), IsEmpty());
  }
  EXPECT_TRUE(companytest::bytesOf(path) == before);
  EXPECT_TRUE(isUpToDate(path, Access::Write));
  EXPECT_EQ(QuorHost::openCompanyFile(path, Access::Read)->schemaVersion(),
            QuorHost::kNewestSchemaVersion);
  // Whatever the schema has is there now, whichever way the file came to it.
  runRaw(
      path,
      "ATTACH '" + fresh +
          "' AS Fresh; CREATE TEMP TABLE Difference (N INT CHECK (N = 0));"
          "INSERT INTO Difference SELECT count(*) FROM (SELECT Name, Sql FROM Fresh.QuorCatalogue "
          "EXCEPT SELECT Name, Sql FROM main.QuorCatalogue);"
          "INSERT INTO Difference SELECT count(*) FROM (SELECT name, sql FROM Fresh.sqlite_schema "
          "EXCEPT SELECT name, sql FROM main.sqlite_schema)");
}

TEST(OlderSchema, IsBroughtUpToDateByOneOfSeveralProcesses) {
  const Folder folder;
  const std::string path = folder.file("company");
  makeVersion1(path);
  std::array<pid_t, 4> children{};
  for (pid_t& child : children) {
    child = QuorHost::Testing::inAnotherProcess([&] { return isUpToDate(path, Access::Write); });
  }
  for (const pid_t child : children) EXPECT_EQ(QuorHost::Testing::statusOf(child), 0);
}

TEST(OlderSchema, IsOpenedAlthoughAccountsShareANumber) {
  const Folder folder;
  const std::string path = folder.file("company");
  makeVersion1(path);
  runRaw(path, "INSERT INTO GLAcct (GLAcctId, AcctType) VALUES ('6050', 6)");
  const auto store = QuorHost::openCompany(path, Access::Write);
  EXPECT_THAT(QuorHost::checkCompany(*store),
              testing::ElementsAre("The account number 6050 is that of 2 accounts of GLAcct"));
}

TEST(OlderSchema, StaysAsItIsWhereItCannotBeChanged) {
  const Folder folder;
  const std::string path = folder.file("company");
  makeVersion1(path);
  // An index of the same name in the way of the new one.
  QuorHost::openCompanyFile(path, Access::Write)
      ->define("CREATE INDEX PurcHdrByStatus ON PurcHdr (PurcType)");
  try {
    static_cast<void>(QuorHost::openCompany(path, Access::Write));
    ADD_FAILURE() << "it was opened";
  } catch (const companytest::Error& error) {
    EXPECT_THAT(error.description(), HasSubstr("older schema (1, here 7)"));
  }
  EXPECT_EQ(QuorHost::openCompanyFile(path, Access::Read)->schemaVersion(), 1);
}

}  // namespace
