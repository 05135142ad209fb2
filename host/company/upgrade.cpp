#include <algorithm>
#include <array>

#include "host/company/company.h"
#include "host/company/schema.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Error;

/// A table, a view or an index, and the version of the schema that brought it.
struct Addition {
  int version;
  std::string_view name;
};

/// What the schema has that version 1 had not.
constexpr auto kAdditions = std::to_array<Addition>({
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
});

bool isNewSince(int version, std::string_view name) {
  return std::ranges::any_of(kAdditions, [&](const Addition& addition) {
    return addition.version > version && addition.name == name;
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
  const std::unique_ptr<Transaction> transaction = store.begin();
  // Another process may have been faster.
  const int version = store.schemaVersion();
  if (version >= kNewestSchemaVersion) return;
  forEachDefinition([&](std::string_view name, const std::string& statement) {
    if (!isNewSince(version, name)) return;
    if (name == "GLAcctByNumber" && accountsShareNumbers(store)) return;
    store.define(statement);
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
                "The company file has an older schema (" + std::to_string(version) + ", here " +
                    std::to_string(kNewestSchemaVersion) +
                    ") and must be brought up to date: " + error.description());
  }
}

}  // namespace QuorHost
