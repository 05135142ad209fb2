// Companies of an older schema.
#pragma once

#include <string>

#include "host/company/company.h"
#include "host/raw_sql.h"

namespace companytest {

/// Takes what `kind` of definition is called `name` out of a company.
inline std::string dropped(const std::string& kind, const std::string& name) {
  return "DROP " + kind + " " + name + "; DELETE FROM QuorCatalogue WHERE Name = '" + name + "';";
}

/// The same of a table with its indexes.
inline std::string droppedTable(const std::string& name) {
  return dropped("TABLE", name) + "DELETE FROM QuorCatalogue WHERE Name LIKE '" + name + "By%';";
}

/// Takes away what version 3 has brought of the ledger.
inline std::string withoutTheLedgersDocuments() {
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
inline std::string shrunk(const std::string& table, const std::string& column,
                          const std::string& text) {
  return "ALTER TABLE " + table + " DROP COLUMN " + column +
         "; UPDATE QuorCatalogue SET Sql = replace(Sql, '" + text + "', '') WHERE Name = '" +
         table + "';";
}

/// Takes away what the versions after the first have brought, but for the totals that are kept.
inline std::string backToVersion1() {
  std::string back = withoutTheLedgersDocuments();
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
  return back;
}

/// The sample as version 1 of the schema had it.
inline void makeVersion1(const std::string& path) {
  QuorHost::createCompany(path, {.sample = true});
  std::string back = "PRAGMA user_version=1; PRAGMA legacy_alter_table=ON;" + backToVersion1();
  for (const char* const event : {"insert", "update", "delete"}) {
    back.append("DROP TRIGGER \"GLDetTotals:").append(event).append("\";");
  }
  for (const char* const totals : {"GLDetTotals", "InvenDetTotals"}) {
    back += dropped("TABLE", totals);
    back.append("DELETE FROM QuorCatalogue WHERE Name LIKE '").append(totals).append(":%';");
  }
  QuorHost::Testing::runRaw(path, back);
}

}  // namespace companytest
