// Costs of items, the rules that movements move them by, and what stock is worth.
#include "inventory/inventory_helper.h"
#include "inventory/item_sql.h"
#include "inventory/movement_codes.h"
#include "platform/values/rounding.h"

namespace QuorAccQueries {

namespace Sql = ItemSql;
using QuorDataLib::CostsMoved;
using QuorDataLib::roundedProduct;

namespace {

/// Whether stock is valued at its moving average, and not at the last cost.
bool valuesAtAverage(Steps& step, std::source_location where = std::source_location::current()) {
  const Value method = askCompany(
      step,
      [](QuorCastriaFoundation::Company& company) {
        return company.GetParam("CostCalculMeth", std::int32_t{0});
      },
      where);
  return step([&] { return method.toText() == "0"; }, where);
}

constexpr int kCostDecimals = 4;

}  // namespace

Currency CInventoryHelper::GetInventValue(std::int32_t ItemID, bool UseSessionDate) {
  return trap("GetInventValue", [&](Steps& step, Currency& result) {
    const bool atAverage = valuesAtAverage(step);
    const Currency quantity =
        step([&] { return GetQtyInStockRange(ItemID, {}, {}, 0, {}, {}, false, UseSessionDate); });
    const Currency cost = step([&] {
      return atAverage ? GetAvgCostRange(ItemID, {}, 0, {}, {}, UseSessionDate)
                       : GetLastCost(ItemID, {}, 0, {}, {}, UseSessionDate);
    });
    constexpr int kCents = 2;
    step([&] { result = roundedProduct(quantity, cost, kCents); });
  });
}

void CInventoryHelper::applySessionDate(Steps& step, Date& to, bool useSessionDate,
                                        std::source_location where) const {
  if (!to.empty() || !useSessionDate || !qtyCostAtSessionDate_) return;
  to = askCompany(step, &QuorCastriaFoundation::Company::SessionDate, where);
}

Currency CInventoryHelper::GetAvgCostRange(std::int32_t ItemID, Date AtDate,
                                           std::int32_t WarehouseID, const std::string& ProjIdList,
                                           const std::string& ExtraWhere, bool UseSessionDate) {
  return trap("GetAvgCostRange", [&](Steps& step, Currency& result) {
    applySessionDate(step, AtDate, UseSessionDate);
    const auto costOf = [&](std::int32_t item) {
      return GetAvgCostRangeForItem(item, AtDate, WarehouseID, ProjIdList, ExtraWhere,
                                    UseSessionDate);
    };
    if (step([&] { return ItemIsKit(ItemID); })) {
      const Ref<Collection> components = step([&] { return GetKitComponents(ItemID); });
      for (const Value& each : components->values()) {
        const Ref<CKitComponent> component = each.toObject().as<CKitComponent>();
        const Currency cost = step([&] { return costOf(component->InItemId()); });
        step([&] { result += component->valueAt(cost); });
      }
    } else {
      step([&] { result = costOf(ItemID); });
    }
  });
}

Currency CInventoryHelper::GetAvgCostRangeForItem(std::int32_t ItemID, Date AtDate,
                                                  std::int32_t WarehouseID,
                                                  const std::string& ProjIdList,
                                                  const std::string& ExtraWhere,
                                                  bool UseSessionDate) {
  return trap("GetAvgCostRangeForItem", [&](Steps& step, Currency& result) {
    applySessionDate(step, AtDate, UseSessionDate);
    const Ref<Recordset> rows = step([&] {
      return queries_->OpenItemAvgCost(ItemID, AtDate, WarehouseID, ProjIdList, ExtraWhere);
    });
    step([&] { result = CalculateAverageCostForRS(rows); });
    step([&] { rows->Close(); });
  });
}

Currency CInventoryHelper::GetLastCost(std::int32_t ItemID, Date AtDate, std::int32_t WarehouseID,
                                       const std::string& ProjIdList, const std::string& ExtraWhere,
                                       bool UseSessionDate) {
  return trap("GetLastCost", [&](Steps& step, Currency& result) {
    applySessionDate(step, AtDate, UseSessionDate);
    const auto costOf = [&](std::int32_t item) {
      return GetLastCostItem(item, AtDate, WarehouseID, ProjIdList, ExtraWhere, UseSessionDate);
    };
    if (step([&] { return ItemIsKit(ItemID); })) {
      const Ref<Collection> components = step([&] { return GetKitComponents(ItemID); });
      for (const Value& each : components->values()) {
        const Ref<CKitComponent> component = each.toObject().as<CKitComponent>();
        const Currency cost = step([&] { return costOf(component->InItemId()); });
        step([&] { result += component->valueAt(cost); });
      }
    } else {
      step([&] { result = costOf(ItemID); });
    }
  });
}

Currency CInventoryHelper::GetLastCostItem(std::int32_t ItemID, Date AtDate,
                                           std::int32_t WarehouseID, const std::string& ProjIdList,
                                           const std::string& ExtraWhere, bool UseSessionDate) {
  return trap("GetLastCostItem", [&](Steps& step, Currency& result) {
    applySessionDate(step, AtDate, UseSessionDate);
    const Ref<Recordset> rows = step([&] {
      return queries_->OpenItemLastCost(ItemID, AtDate, WarehouseID, ProjIdList, ExtraWhere);
    });
    bool more = step([&] { return !rows->AtEnd(); });
    while (more) {
      const std::int32_t type =
          step([&] { return typeOfSource(valueOrEmpty(rows, "Source").toText()); });
      const std::int32_t document =
          step([&] { return valueOrEmpty(rows, "ExSrcKeyVal").toLong(); });
      const std::int32_t line = step([&] { return valueOrEmpty(rows, "ExDetId").toLong(); });
      const Currency quantity = step([&] { return valueOrEmpty(rows, "Qty").toCurrency(); });
      const bool invoiced = step([&] { return valueOrEmpty(rows, "Invoiced").toBoolean(); });
      if (step([&] { return InvenDetAdjustLastCost(type, document, line, quantity, invoiced); })) {
        step([&] { result = valueOrEmpty(rows, "LastCost").toCurrency(); });
        break;
      }
      more = moveOn(step, rows);
    }
    step([&] { rows->Close(); });
  });
}

Currency CInventoryHelper::GetAssemblyComponentsCost(std::int32_t ItemID, Date AtDate,
                                                     std::int32_t WarehouseID,
                                                     const std::string& ProjIdList,
                                                     const std::string& ExtraWhere,
                                                     bool UseSessionDate) {
  return trap("GetAssemblyComponentsCost", [&](Steps& step, Currency& result) {
    const bool atAverage = valuesAtAverage(step);
    const Ref<Recordset> rows =
        open(step, Statement(Sql::kAssemblyComponents).bind(ItemID), Pass::Array);
    bool more = step([&] { return !rows->AtEnd(); });
    while (more) {
      const std::int32_t item = step([&] { return valueOrEmpty(rows, "ExItemID").toLong(); });
      const Currency quantity = step([&] { return valueOrEmpty(rows, "Qty").toCurrency(); });
      const Currency cost = step([&] {
        return atAverage
                   ? GetAvgCostRange(item, AtDate, WarehouseID, ProjIdList, ExtraWhere,
                                     UseSessionDate)
                   : GetLastCost(item, AtDate, WarehouseID, ProjIdList, ExtraWhere, UseSessionDate);
      });
      step([&] { result += roundedProduct(quantity, cost, kCostDecimals); });
      more = moveOn(step, rows);
    }
    step([&] { rows->Close(); });
  });
}

Currency CInventoryHelper::CalculateAverageCost(Currency PrevAvgCost, Currency PrevQty,
                                                Currency Qty, Currency UnitCost) {
  return trap("CalculateAverageCost", [&](Steps& step, Currency& result) {
    step([&] { result = QuorDataLib::movingAverage(PrevAvgCost, PrevQty, Qty, UnitCost); });
  });
}

Currency CInventoryHelper::CalculateAverageCostForRS(const Ref<Recordset>& rows) {
  return trap("CalculateAverageCostForRS", [&](Steps& step, Currency& result) {
    Currency quantity;
    bool more = step([&] { return !rows->AtEnd(); });
    if (more) step([&] { rows->MoveFirst(); });
    while (more) {
      const std::int32_t type = step([&] { return valueOrEmpty(rows, "Type").toLong(); });
      const std::int32_t document =
          step([&] { return valueOrEmpty(rows, "ExSrcKeyVal").toLong(); });
      const std::int32_t line = step([&] { return valueOrEmpty(rows, "ExDetId").toLong(); });
      const Currency moved = step([&] { return valueOrEmpty(rows, "Qty").toCurrency(); });
      const bool invoiced = step([&] { return valueOrEmpty(rows, "Invoiced").toBoolean(); });
      const bool adjusts = step([&] {
        return InvenDetAdjustAvgCost(type, std::to_string(document), line, moved, invoiced);
      });
      if (adjusts) {
        const Currency cost = step([&] { return valueOrEmpty(rows, "Cost").toCurrency(); });
        step([&] { result = CalculateAverageCost(result, quantity, moved, cost); });
      }
      step([&] { quantity += moved; });
      more = moveOn(step, rows);
    }
  });
}

bool CInventoryHelper::InvenDetAdjustAvgCost(std::int32_t TrxType, const std::string& SrcKey,
                                             std::int32_t DetId, Currency Qty, bool Invoiced) {
  return trap("InvenDetAdjustAvgCost", [&](Steps& step, bool& result) {
    bool adjustment = false;
    if (QuorDataLib::mayAdjustReception(TrxType, Invoiced)) {
      const std::int32_t document = step([&] { return Value(SrcKey).toLong(); });
      adjustment = step([&] { return IsReceptionAdjustment2(document, DetId); });
    }
    result = QuorDataLib::costsMoved(TrxType, Qty, Invoiced, adjustment).average;
  });
}

bool CInventoryHelper::InvenDetAdjustLastCost(std::int32_t TrxType, std::int32_t SrcKeyId,
                                              std::int32_t DetId, Currency Qty, bool Invoiced) {
  return trap("InvenDetAdjustLastCost", [&](Steps& step, bool& result) {
    bool adjustment = false;
    if (QuorDataLib::mayAdjustReception(TrxType, Invoiced)) {
      adjustment = step([&] { return IsReceptionAdjustment2(SrcKeyId, DetId); });
    }
    result = QuorDataLib::costsMoved(TrxType, Qty, Invoiced, adjustment).last;
  });
}

void CInventoryHelper::InvenDetAdjustCost(std::int32_t TrxType, const std::string& SrcKey,
                                          std::int32_t DetId, Currency Qty, bool Invoiced,
                                          bool& AdjustsAvg, bool& AdjustsLast) {
  trap("InvenDetAdjustCost", [&](Steps& step) {
    bool adjustment = false;
    if (QuorDataLib::mayAdjustReception(TrxType, Invoiced)) {
      const std::int32_t document = step([&] { return Value(SrcKey).toLong(); });
      adjustment = step([&] { return IsReceptionAdjustment2(document, DetId); });
    }
    const CostsMoved moved = QuorDataLib::costsMoved(TrxType, Qty, Invoiced, adjustment);
    if (!moved.ruled) return;
    AdjustsAvg = moved.average;
    AdjustsLast = moved.last;
  });
}

bool CInventoryHelper::IsReceptionAdjustment2(std::int32_t SrcKeyId, std::int32_t DetId) {
  return trap("IsReceptionAdjustment2", [&](Steps& step, bool& result) {
    Statement statement(Sql::kReceptionCount);
    statement.number(SrcKeyId).text(Sql::kReceptionCountOfLine).number(DetId);
    statement.text(Sql::kReceptionCountEnd);
    const Ref<Recordset> rows = open(step, statement, Pass::Nothing);
    const std::int32_t count = step([&] { return rows->Field(0).toLong(); });
    result = count >= 1;
    step([&] { rows->Close(); });
  });
}

void CInventoryHelper::FlagInventoryDirty(bool MarkRows, Date AtDate, std::int32_t CurType,
                                          std::int32_t CurSeqNo) {
  trap("FlagInventoryDirty", [&](Steps& step) {
    askCompany(step, [](QuorCastriaFoundation::Company& company) {
      company.SetParam("InventGLToDate", std::int32_t{0});
    });
    if (!MarkRows) return;
    Statement statement(Sql::kMarkStale);
    statement.number(CurType).text(Sql::kMarkOfType).number(CurType);
    statement.text(Sql::kMarkOfSequence).number(CurSeqNo).text(Sql::kMarkEnd);
    statement.bind(AtDate).bind(AtDate).bind(AtDate);
    const Ref<Connection> connection = defaultConnection(step);
    execute(step, statement, connection);
  });
}

}  // namespace QuorAccQueries
