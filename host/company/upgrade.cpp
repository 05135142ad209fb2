#include <algorithm>
#include <array>
#include <span>

#include "host/company/company.h"
#include "host/company/schema.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Error;

/// A table, a view or an index, and the version of the schema that brought it, or that gave a table
/// further columns.
struct Change {
  int version;
  std::string_view name;
};

/// What the schema has that version 1 had not.
constexpr auto kAdditions = std::to_array<Change>({
    {2, "InvoiHdrById"},
    {2, "InvoiHdrByType"},
    {2, "PurcHdrById"},
    {2, "PurcHdrByStatus"},
    {3, "Empl"},
    {3, "PayCode"},
    {3, "TrxPay"},
    {3, "TrxPayDetails"},
    {3, "RPDPmtHdr"},
    {3, "RPDPmtDet"},
    {3, "TrxPayByEmpl"},
    {3, "TrxPayDetailsByPay"},
    {3, "TrxPayDetailsByProj"},
    {3, "RPDPmtDetByPmt"},
    {3, "PmtMeth"},
    {3, "TaxCode"},
    {3, "TaxTrxHdr"},
    {3, "DepHdr"},
    {3, "DepDet"},
    {3, "BankTransfer"},
    {3, "GJTrxHdr"},
    {3, "GJTrxDet"},
    {3, "AllIssuedChecks_View"},
    {3, "SuppPmtHdrByChq"},
    {3, "PmtHdrByChq"},
    {3, "TrxPayByChq"},
    {3, "DepHdrByDate"},
    {3, "GJTrxHdrByDate"},
    {3, "DepDetByDep"},
    {3, "GJTrxDetByTrx"},
    {3, "GLAcctBudget"},
    {3, "GLAcctSegmentBudget"},
    {3, "GLAcctBudgetByAcct"},
    {3, "GLAcctSegmentBudgetByAcct"},
    {3, "GLAcctByNumber"},
    {3, "GLDetByRef"},
    {4, "Warehouse"},
    {4, "ItemKitDet"},
    {4, "ItemReplacement"},
    {4, "InvenDet"},
    {4, "AdjItemHdr"},
    {4, "AdjItemDet"},
    {4, "AssemblyHdr"},
    {4, "AssemblyDet"},
    {4, "WarehouseTransHdr"},
    {4, "WarehouseTransDet"},
    {4, "ItemAvgCost_View"},
    {4, "ItemReservedInvoi_View"},
    {4, "ItemReservedAssembly_View"},
    {4, "ItemReservedAll_View"},
    {4, "ItemToRecExpPurch_View"},
    {4, "ItemToRecPurch_view"},
    {4, "ItemToRecExpAssembly_View"},
    {4, "ItemToRecAssembly_View"},
    {4, "ItemToRecExpected_View"},
    {4, "ItemToRec_View"},
    {4, "InvenDetByItem"},
    {4, "ItemKitDetByKit"},
    {4, "ItemKitDetByItem"},
    {4, "ItemReplacementByItem"},
    {4, "InvoiDetByOrder"},
    {4, "AdjItemDetByHdr"},
    {4, "AdjItemDetByItem"},
    {4, "AssemblyHdrByItem"},
    {4, "AssemblyHdrByStatus"},
    {4, "AssemblyDetByHdr"},
    {4, "AssemblyDetByItem"},
    {4, "WarehouseTransDetByHdr"},
    {4, "WarehouseTransDetByItem"},
    {6, "Term"},
    {6, "TermDet"},
    {6, "TrxRec"},
    {6, "ProjBudgets"},
    {6, "ProjSales_View"},
    {6, "ProjPurchases_View"},
    {6, "TermDetByTerm"},
    {6, "ProjBudgetsByProj"},
    {6, "PurcDetByProj"},
    {7, "GLDetTotals"},
    {7, "InvenDetTotals"},
});

/// Tables that version 1 had with fewer columns. Where another table refers to one, a version may
/// only add a column at its end.
constexpr auto kGrowths = std::to_array<Change>(
    {{4, "Item"}, {4, "InvoiDet"}, {4, "PurcDet"}, {6, "InvoiHdr"}, {6, "PurcHdr"}});

bool isNewSince(std::span<const Change> changes, int version, std::string_view name) {
  return std::ranges::any_of(changes, [&](const Change& change) {
    return change.version > version && change.name == name;
  });
}

/// Whether accounts share a number, which nothing kept them from before version 3. Such a company
/// is opened all the same, without the index that would refuse it; `checkCompany` names the
/// accounts.
bool accountsShareNumbers(Store& store) {
  return !store.connect(Sql::Dialect::Server)
              ->OpenRecordset(
                  "SELECT TOP 1 GLAcctId FROM GLAcct GROUP BY GLAcctId HAVING COUNT(*) > 1", 4, 0,
                  {}, 0)
              ->AtEnd();
}

/// Adds what the company's schema lacks, all or nothing.
void bringUp(Store& store) {
  const std::unique_ptr<Transaction> transaction = store.beginToDefine();
  // Another process may have been faster.
  const int version = store.schemaVersion();
  if (version >= kNewestSchemaVersion) return;
  forEachDefinition([&](std::string_view name, const std::string& statement) {
    if (isNewSince(kGrowths, version, name)) store.redefine(name, statement);
    if (!isNewSince(kAdditions, version, name)) return;
    if (name == "GLAcctByNumber" && accountsShareNumbers(store)) return;
    try {
      store.define(statement);
    } catch (const Error& error) {
      // Where sums are too large to be kept, as only mistaken amounts are, they go without.
      if (!error.is(QuorDataLib::ErrorNumber::Overflow)) throw;
    }
  });
  store.setSchemaVersion(kNewestSchemaVersion);
  transaction->commit();
}

}  // namespace

std::shared_ptr<Store> openCompany(const std::string& path, Access access) {
  std::shared_ptr<Store> store = openCompanyFile(path, access);
  const int version = store->schemaVersion();
  if (version < 1 || version >= kNewestSchemaVersion) return store;
  try {
    if (access == Access::Read) return openChangedCopy(path, bringUp);
    bringUp(*store);
    return store;
  } catch (const Error& error) {
    throw Error(error.number(), error.source(),
                "The company has an older schema (" + std::to_string(version) + ", here " +
                    std::to_string(kNewestSchemaVersion) +
                    ") and must be brought up to date: " + error.description());
  }
}

}  // namespace QuorHost
