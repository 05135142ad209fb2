// The stock.
#include <algorithm>
#include <array>
#include <map>
#include <string>

#include "host/company/checks/check.h"
#include "host/company/stock/replay.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;

/// A month, so that months in order are numbers in order.
int monthOf(Date date) {
  const Date::Civil civil = date.civil();
  return (civil.year * 12) + civil.month - 1;
}

std::string monthEnd(int month) { return Date::build(month / 12, (month % 12) + 2, 0).toText(); }

Ref<Recordset> open(Store& store, const std::string& sql) {
  return store.connect(Sql::Dialect::Server)->OpenRecordset(sql, 4, 0, {}, 0);
}

/// Replays all items, compares their stored costs, and adds up what they are worth.
class CostCheck {
 public:
  explicit CostCheck(const Findings& report) : report_(report) {}

  void take(const LedgerRow& row) {
    if (row.item != item_) {
      item_ = row.item;
      state_ = {};
      sound_ = true;
    }
    const Currency before = state_.value();
    state_.take(row);
    worth_[monthOf(row.date)] += state_.value() - before;
    stale_ = stale_ || row.stale;
    // Behind a stale movement, or a wrong one, nothing more is told about the item.
    if (row.stale) sound_ = false;
    if (!sound_ || (row.average == state_.average && row.last == state_.last)) return;
    sound_ = false;
    report_("Movement " + std::to_string(row.transaction) + " of InvenDet (item " +
            std::to_string(row.item) + ") has an average cost of " + row.average.toText() +
            " and a last cost of " + row.last.toText() + "; its movements come to " +
            state_.average.toText() + " and " + state_.last.toText());
  }

  [[nodiscard]] bool stale() const { return stale_; }
  /// How much what all stock is worth changed in each month.
  [[nodiscard]] const std::map<int, Currency>& worth() const { return worth_; }

 private:
  const Findings& report_;
  std::int32_t item_ = 0;
  StockState state_;
  bool sound_ = true;
  bool stale_ = false;
  std::map<int, Currency> worth_;
};

/// The keys of the inventory accounts, as a list; empty where there is none.
std::string inventoryAccounts(Store& store) {
  std::string keys;
  const Ref<Recordset> rows = open(store,
                                   "SELECT ExInvAcctId FROM Item WHERE ExInvAcctId <> 0 UNION "
                                   "SELECT ParamValue FROM QuorAcctParams WHERE ParamName = "
                                   "'SuppGLInvAcct' AND ParamValue <> 0");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    keys += (keys.empty() ? "" : ", ") + rows->Field(0).toText();
  }
  return keys;
}

/// At every month's end the inventory accounts are what the stock is worth.
void compareWithLedger(Store& store, std::map<int, Currency> months, const Findings& report) {
  const std::string accounts = inventoryAccounts(store);
  if (months.empty() || accounts.empty()) return;
  const Ref<Recordset> rows =
      open(store, "SELECT DetDate, SUM(DetAmnt) FROM GLDet WHERE ExAcctId IN (" + accounts +
                      ") GROUP BY DetDate");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    months[monthOf(rows->Field(0).toDate())] -= rows->Field(1).toCurrency();
  }
  Currency difference;
  for (const auto& [month, change] : months) {
    if (change.isZero()) continue;
    difference += change;
    if (difference.isZero()) continue;
    report("On " + monthEnd(month) + " the stock is worth " + difference.toText(2) +
           " more at its average cost than the inventory accounts say");
  }
}

void lookAtCosts(Store& store, const Findings& report) {
  const Ref<Recordset> rows =
      open(store, "SELECT " + std::string(LedgerRow::kColumns) +
                      " FROM InvenDet ORDER BY ExItemId, " + std::string(LedgerRow::kOrder));
  CostCheck check(report);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const LedgerRow row = readLedgerRow(*rows);
    try {
      check.take(row);
    } catch (const QuorDataLib::Error& error) {
      report("Movement " + std::to_string(row.transaction) + " of InvenDet (item " +
             std::to_string(row.item) + ") cannot be costed: " + error.description());
      return;
    }
  }
  // What is stale has yet to be computed and posted.
  if (!check.stale()) compareWithLedger(store, check.worth(), report);
}

constexpr std::array kInventoryChecks{
    Check{.rule = "stock movements are of known types",
          .query = "SELECT InTrxId, Type FROM InvenDet WHERE Type NOT IN (0, 1, 2, 4, 6, 7) "
                   "ORDER BY InTrxId",
          .finding = "Movement {0} of InvenDet is of type {1}, which is unknown"},
    Check{
        .rule = "only kept items have stock movements",
        .query = "SELECT InvenDet.InTrxId, InvenDet.ExItemId FROM InvenDet "
                 "LEFT JOIN Item ON Item.InItemId = InvenDet.ExItemId "
                 "WHERE Item.InItemId IS NULL OR Item.Servc <> 0 OR Item.IsKit <> 0 "
                 "ORDER BY InvenDet.InTrxId",
        .finding = "Movement {0} of InvenDet moves item {1}, which is missing, a service or a kit"},
    Check{
        .rule = "the movements of a sequence number are of one document",
        .query = "SELECT SeqNo FROM InvenDet GROUP BY SeqNo HAVING MIN(DetDate) <> MAX(DetDate) "
                 "OR MIN(Type) <> MAX(Type) OR MIN(ExSrcKeyVal) <> MAX(ExSrcKeyVal) ORDER BY SeqNo",
        .finding =
            "The movements of InvenDet with sequence number {0} are of several days or documents"},
    Check{
        .rule = "the movements of a document have one sequence number",
        .query = "SELECT Type, ExSrcKeyVal FROM InvenDet GROUP BY Type, ExSrcKeyVal "
                 "HAVING MIN(SeqNo) <> MAX(SeqNo) ORDER BY Type, ExSrcKeyVal",
        .finding =
            "The movements of InvenDet of type {0} and document {1} have several sequence numbers"},
    Check{.rule = "transfers bring what they take",
          .query =
              "SELECT ExSrcKeyVal, ExItemId, SUM(Qty) FROM InvenDet WHERE Type = 4 "
              "GROUP BY ExSrcKeyVal, ExItemId HAVING SUM(Qty) <> 0 ORDER BY ExSrcKeyVal, ExItemId",
          .finding = "Transfer {0} of WarehouseTransHdr takes another quantity of item {1} out of "
                     "one warehouse "
                     "than it brings into the other; the difference is {2}"},
    Check{.rule = "stock movements come from a document",
          .query =
              "SELECT InTrxId, Type, ExSrcKeyVal FROM InvenDet WHERE "
              "(Type = 7 AND NOT EXISTS (SELECT InvoiDet.InInvoiDetId FROM InvoiDet WHERE "
              "InvoiDet.InInvoiDetId = ExDetId AND InvoiDet.ExInvoiId = ExSrcKeyVal)) OR "
              "(Type = 1 AND NOT EXISTS (SELECT PurcDet.InPurcDetId FROM PurcDet WHERE "
              "PurcDet.InPurcDetId = ExDetId AND PurcDet.ExPurcId = ExSrcKeyVal)) OR "
              "(Type IN (0, 2) AND NOT EXISTS (SELECT AdjItemDet.InAdjItemDetId FROM AdjItemDet "
              "WHERE "
              "AdjItemDet.InAdjItemDetId = ExDetId AND AdjItemDet.ExAdjItemId = ExSrcKeyVal)) OR "
              "(Type = 4 AND NOT EXISTS (SELECT WarehouseTransDet.InWarehouseTransDetId FROM "
              "WarehouseTransDet WHERE WarehouseTransDet.InWarehouseTransDetId = ExDetId "
              "AND WarehouseTransDet.ExWarehouseTransId = ExSrcKeyVal)) OR "
              "(Type = 6 AND NOT EXISTS (SELECT AssemblyHdr.InAssemblyId FROM AssemblyHdr WHERE "
              "AssemblyHdr.InAssemblyId = ExSrcKeyVal)) ORDER BY InTrxId",
          .finding = "Movement {0} of InvenDet (type {1}) comes from no line of document {2}"},
    Check{.rule = "running costs and inventory accounts agree with the stock", .look = lookAtCosts},
};

}  // namespace

std::span<const Check> inventoryChecks() { return kInventoryChecks; }

}  // namespace QuorHost
