#include "inventory/inventory_helper.h"

#include "inventory/item_sql.h"
#include "inventory/movement_codes.h"

namespace QuorAccQueries {

namespace Sql = ItemSql;

namespace {

/// A number of the user's as scanners read it.
std::string withPoint(std::string number, const std::string& separator) {
  if (separator.empty()) return number;
  for (std::size_t place = number.find(separator); place != std::string::npos;
       place = number.find(separator, place + 1)) {
    number.replace(place, separator.size(), ".");
  }
  return number;
}

}  // namespace

CInventoryHelper::CInventoryHelper(Steps& step)
    : HelperFrame(step),
      qtyCostAtSessionDate_(askCompany(step,
                                       [](QuorCastriaFoundation::Company& company) {
                                         return company.GetParam("QtyCostAtSessionDate",
                                                                 std::int32_t{0});
                                       })
                                .toBoolean()),
      engineType_(engineType(step)) {}

const ClassInfo& CInventoryHelper::info() {
  static const ClassInfo info = describeClass<CInventoryHelper>(
      "Inventory values: kits, stock, costs, and look-ups of items.",
      joined(
          HelperFrame::members(),
          {
              method<&CInventoryHelper::ItemIsKit>("ItemIsKit", {"ItemID"},
                                                   "Whether an item is a kit."),
              method<&CInventoryHelper::GetInventValue>(
                  "GetInventValue", {"ItemID", "UseSessionDate"}, "What an item's stock is worth."),
              method<&CInventoryHelper::GetAvgCostRange>(
                  "GetAvgCostRange",
                  {"ItemID", "AtDate", "WarehouseID", "ProjIdList", "ExtraWhere", "UseSessionDate"},
                  "An item's average cost, replayed from its movements."),
              method<&CInventoryHelper::CalculateAverageCost>(
                  "CalculateAverageCost", {"PrevAvgCost", "PrevQty", "Qty", "UnitCost"},
                  "The average cost after one movement."),
              method<&CInventoryHelper::InvenDetAdjustAvgCost>(
                  "InvenDetAdjustAvgCost", {"TrxType", "SrcKey", "DetId", "Qty", "Invoiced"},
                  "Whether a movement moves the average cost."),
              method<&CInventoryHelper::InvenDetAdjustLastCost>(
                  "InvenDetAdjustLastCost", {"TrxType", "SrcKeyId", "DetId", "Qty", "Invoiced"},
                  "Whether a movement moves the last cost."),
              method<&CInventoryHelper::InvenDetAdjustCost>(
                  "InvenDetAdjustCost",
                  {"TrxType", "SrcKey", "DetId", "Qty", "Invoiced", "AdjustsAvg", "AdjustsLast"},
                  "Which costs a movement moves."),
              method<&CInventoryHelper::FlagInventoryDirty>(
                  "FlagInventoryDirty", {"MarkRows", "AtDate", "CurType", "CurSeqNo"},
                  "Marks stored running costs behind a position as stale."),
              method<&CInventoryHelper::IsReceptionAdjustment2>(
                  "IsReceptionAdjustment2", {"SrcKeyId", "DetId"},
                  "Whether a document's line invoices or adjusts a reception."),
              method<&CInventoryHelper::IsReceptionAdjustment>(
                  "IsReceptionAdjustment", {"PurcId", "PurcDetId", "RecId"},
                  "Whether a purchase's line invoices or adjusts a reception, and which."),
              method<&CInventoryHelper::GetStockUnit>("GetStockUnit", {"ItemID"},
                                                      "The unit that stock is counted in."),
              method<&CInventoryHelper::GetSaleUnit>("GetSaleUnit", {"ItemID"},
                                                     "The unit that an item is sold by."),
              method<&CInventoryHelper::GetItemId>("GetItemId", {"ItemID"}, "An item's code."),
              method<&CInventoryHelper::GetItemPrice>("GetItemPrice", {"ItemID"},
                                                      "An item's first price."),
              method<&CInventoryHelper::GetPurchAccount>("GetPurchAccount", {"ItemID"},
                                                         "The account of an item's purchases."),
              method<&CInventoryHelper::GetDiscAccount>(
                  "GetDiscAccount", {"ItemID"}, "The account of discounts on an item's sales."),
              method<&CInventoryHelper::GetItemBarCodeValue>(
                  "GetItemBarCodeValue", {"ItemID", "Qty"}, "What an item's bar code says."),
              method<&CInventoryHelper::ItemInTransactionsCount>(
                  "ItemInTransactionsCount", {"ItemID"},
                  "In how many movements and document lines an item stands."),
              method<&CInventoryHelper::ItemInTransactions>("ItemInTransactions", {"ItemID"},
                                                            "Whether an item was ever used."),
              method<&CInventoryHelper::GetQtyInStockRange>(
                  "GetQtyInStockRange",
                  {"ItemID", "FromDate", "ToDate", "WarehouseID", "ProjIdList", "ExtraWhere",
                   "WithReplacement", "UseSessionDate"},
                  "An item's stock, or how many kits its components make."),
              method<&CInventoryHelper::GetLastCost>(
                  "GetLastCost",
                  {"ItemID", "AtDate", "WarehouseID", "ProjIdList", "ExtraWhere", "UseSessionDate"},
                  "The cost of an item's last movement that sets one."),
              method<&CInventoryHelper::GetAssemblyComponentsCost>(
                  "GetAssemblyComponentsCost",
                  {"ItemID", "AtDate", "WarehouseID", "ProjIdList", "ExtraWhere", "UseSessionDate"},
                  "What the components of an assembled item cost."),
              method<&CInventoryHelper::IsValidAssembly>(
                  "IsValidAssembly", {"ItemID", "Component"},
                  "Whether an item has components and is not made of itself."),
              method<&CInventoryHelper::GetReservedQty>(
                  "GetReservedQty", {"ItemID", "FromDate", "ToDate", "WarehouseID"},
                  "What is reserved of an item."),
              method<&CInventoryHelper::GetTrxTypeFromSource>("GetTrxTypeFromSource", {"Source"},
                                                              "The type of a source code."),
              method<&CInventoryHelper::GetSourceFromTrxType>("GetSourceFromTrxType", {"TrxType"},
                                                              "The source code of a type."),
              method<&CInventoryHelper::GetKitComponents>("GetKitComponents", {"ItemID"},
                                                          "What a kit is made of."),
              method<&CInventoryHelper::GetInventoryGLAccounts>("GetInventoryGLAccounts", {},
                                                                "The inventory accounts in use."),
          }));
  return info;
}

Value CInventoryHelper::firstField(Steps& step, const Statement& statement, Pass pass,
                                   const std::string& column, std::source_location where) {
  Value value;
  const Ref<Recordset> rows = open(step, statement, pass, {}, where);
  if (step([&] { return !rows->AtEnd(); }, where)) {
    value = step([&] { return valueOrEmpty(rows, column); }, where);
  }
  step([&] { rows->Close(); }, where);
  return value;
}

Value CInventoryHelper::fieldOfItem(Steps& step, Ref<Recordset>& kept, std::string_view all,
                                    const Statement& one, Pass pass, std::int32_t item,
                                    const std::string& column, std::source_location where) {
  if (!keepsRecordsets()) return firstField(step, one, pass, column, where);
  if (!kept) kept = open(step, Statement(all), Pass::Nothing, {}, where);
  const std::string criterion = std::string(Sql::kFindItem) + std::to_string(item);
  if (!step([&] { return kept->Find(criterion); }, where)) return {};
  return step([&] { return valueOrEmpty(kept, column); }, where);
}

bool CInventoryHelper::ItemIsKit(std::int32_t ItemID) {
  return trap("ItemIsKit", [&](Steps& step, bool& result) {
    Statement one(Sql::kIsKit);
    one.number(ItemID);
    const Value kit = fieldOfItem(step, kits_, Sql::kKits, one, Pass::Nothing, ItemID, "IsKit");
    step([&] { result = kit.toBoolean(); });
  });
}

std::string CInventoryHelper::GetStockUnit(std::int32_t ItemID) {
  return trap("GetStockUnit", [&](Steps& step, std::string& result) {
    const Value unit =
        fieldOfItem(step, stockUnits_, Sql::kStockUnits, Statement(Sql::kStockUnit).bind(ItemID),
                    Pass::Array, ItemID, "StockUnit");
    step([&] { result = unit.toText(); });
  });
}

std::string CInventoryHelper::GetSaleUnit(std::int32_t ItemID) {
  return trap("GetSaleUnit", [&](Steps& step, std::string& result) {
    const Value unit =
        fieldOfItem(step, saleUnits_, Sql::kSaleUnits, Statement(Sql::kSaleUnit).bind(ItemID),
                    Pass::Array, ItemID, "SaleUnit");
    step([&] { result = unit.toText(); });
  });
}

std::string CInventoryHelper::GetItemId(std::int32_t ItemID) {
  return trap("GetItemId", [&](Steps& step, std::string& result) {
    const Value code =
        firstField(step, Statement(Sql::kItemCode).bind(ItemID), Pass::Array, "ItemId");
    step([&] { result = code.toText(); });
  });
}

Currency CInventoryHelper::GetItemPrice(std::int32_t ItemID) {
  return trap("GetItemPrice", [&](Steps& step, Currency& result) {
    const Value price =
        firstField(step, Statement(Sql::kPrice).bind(ItemID), Pass::Array, "Price1");
    step([&] { result = price.toCurrency(); });
  });
}

std::int32_t CInventoryHelper::GetPurchAccount(std::int32_t ItemID) {
  return trap("GetPurchAccount", [&](Steps& step, std::int32_t& result) {
    const Value account = firstField(step, Statement(Sql::kPurchaseAccount).bind(ItemID),
                                     Pass::Array, "ExPurcAcctId");
    if (account.isEmpty()) {
      result = accountParameter(step, "SuppGLPurchAcct");
    } else {
      step([&] { result = account.toLong(); });
    }
  });
}

std::int32_t CInventoryHelper::GetDiscAccount(std::int32_t ItemID) {
  return trap("GetDiscAccount", [&](Steps& step, std::int32_t& result) {
    const Value account = firstField(step, Statement(Sql::kDiscountAccount).bind(ItemID),
                                     Pass::Array, "ExDiscSalesAcctId");
    if (account.isEmpty()) {
      result = accountParameter(step, "CustGLDiscSale");
    } else {
      step([&] { result = account.toLong(); });
    }
  });
}

std::string CInventoryHelper::GetItemBarCodeValue(std::int32_t ItemID, Currency Qty) {
  return trap("GetItemBarCodeValue", [&](Steps& step, std::string& result) {
    const Ref<Recordset> rows = open(step, Statement(Sql::kItem).bind(ItemID), Pass::Array);
    if (step([&] { return !rows->AtEnd(); })) {
      const bool withQuantity =
          step([&] { return valueOrEmpty(rows, "ChkQtyWithBarCode").toBoolean(); });
      step([&] { result = valueOrEmpty(rows, "ItemId").toText(); });
      if (withQuantity) {
        const std::string quantity = askUtility(
            step, [&](QuorDataLib::Utility& utility) { return utility.FormatNumber(Qty); });
        const std::string separator = askUtility(
            step, [](QuorDataLib::Utility& utility) { return utility.DecimalSeparator(); });
        result += "*" + withPoint(quantity, separator);
      }
    }
    step([&] { rows->Close(); });
  });
}

std::int32_t CInventoryHelper::ItemInTransactionsCount(std::int32_t ItemID) {
  return trap("ItemInTransactionsCount", [&](Steps& step, std::int32_t& result) {
    Statement statement(Sql::kUseBegin);
    for (const std::string_view table : Sql::kUseTables) {
      if (table != Sql::kUseTables.front()) statement.text(Sql::kUnionAll);
      statement.text(Sql::kUseCount).text(table).text(Sql::kUseOfItem).number(ItemID);
    }
    statement.text(Sql::kUseEnd);
    const Value count = firstField(step, statement, Pass::Nothing, "TrxCount");
    step([&] { result = count.toLong(); });
  });
}

bool CInventoryHelper::ItemInTransactions(std::int32_t ItemID) {
  return trap("ItemInTransactions", [&](Steps& step, bool& result) {
    step([&] { result = ItemInTransactionsCount(ItemID) >= 1; });
  });
}

bool CInventoryHelper::IsReceptionAdjustment(std::int32_t PurcId, std::int32_t PurcDetId,
                                             std::int32_t& RecId) {
  return trap("IsReceptionAdjustment", [&](Steps& step, bool& result) {
    const Ref<Recordset> rows =
        open(step, Statement(Sql::kReceptionOfLine).bind(PurcId).bind(PurcDetId), Pass::Array);
    if (step([&] { return !rows->AtEnd(); })) {
      const std::int32_t line = step([&] { return valueOrEmpty(rows, "ExRecDetId").toLong(); });
      if (line > 0) {
        step([&] { RecId = valueOrEmpty(rows, "ExRecId").toLong(); });
        result = true;
      }
    }
    step([&] { rows->Close(); });
  });
}

Ref<Collection> CInventoryHelper::GetInventoryGLAccounts() {
  return trap("GetInventoryGLAccounts", [&](Steps& step, Ref<Collection>& result) {
    result = make<Collection>();
    const std::int32_t usual = accountParameter(step, "SuppGLInvAcct");
    Statement statement(Sql::kAccounts);
    if (usual != 0) {
      result->Add(usual);
      statement.text(Sql::kAccountsBut).number(usual);
    }
    statement.text(Sql::kAccountsGroup);
    const Ref<Recordset> rows = open(step, statement, Pass::Nothing);
    for (bool more = moreRows(step, rows); more; more = moveOn(step, rows)) {
      std::int32_t account = 0;
      readField(step, rows, "ExInvAcctId", account);
      result->Add(account);
    }
    step([&] { rows->Close(); });
  });
}

std::int32_t CInventoryHelper::GetTrxTypeFromSource(const std::string& Source) {
  return trap("GetTrxTypeFromSource", [&](Steps& step, std::int32_t& result) {
    step([&] { result = typeOfSource(Source); });
  });
}

std::string CInventoryHelper::GetSourceFromTrxType(std::int32_t TrxType) {
  return trap("GetSourceFromTrxType", [&](Steps& step, std::string& result) {
    step([&] { result = std::string(sourceOfType(TrxType)); });
  });
}

}  // namespace QuorAccQueries
