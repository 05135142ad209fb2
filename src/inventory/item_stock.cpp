// Stock of items, and what kits and assemblies are made of.
#include "inventory/inventory_helper.h"
#include "inventory/item_sql.h"

namespace QuorAccQueries {

namespace Sql = ItemSql;

Ref<Collection> CInventoryHelper::GetKitComponents(std::int32_t ItemID) {
  return trap("GetKitComponents", [&](Steps& step, Ref<Collection>& result) {
    result = make<Collection>();
    const Ref<Recordset> rows =
        open(step, Statement(Sql::kKitComponents).bind(ItemID), Pass::Array);
    for (bool more = moreRows(step, rows); more; more = moveOn(step, rows)) {
      std::int32_t item = 0;
      Currency quantity;
      Currency factor;
      readField(step, rows, "InItemId", item);
      readField(step, rows, "Qty", quantity);
      readField(step, rows, "FacSales", factor);
      result->Add(make<CKitComponent>(item, quantity, factor));
    }
    step([&] { rows->Close(); });
  });
}

Currency CInventoryHelper::GetQtyInStockRange(std::int32_t ItemID, Date FromDate, Date ToDate,
                                              std::int32_t WarehouseID,
                                              const std::string& ProjIdList,
                                              const std::string& ExtraWhere, bool WithReplacement,
                                              bool UseSessionDate) {
  return trap("GetQtyInStockRange", [&](Steps& step, Currency& result) {
    applySessionDate(step, ToDate, UseSessionDate);
    const Filter filter{FromDate, ToDate, WarehouseID, ProjIdList, ExtraWhere};
    std::set<std::int32_t> counted;
    result = quantityOf(step, ItemID, filter, WithReplacement, counted);
  });
}

Currency CInventoryHelper::quantityOf(Steps& step, std::int32_t item, const Filter& filter,
                                      bool withReplacement, std::set<std::int32_t>& counted) {
  counted.insert(item);
  Currency sum = ownQuantity(step, item, filter);
  if (!withReplacement) return sum;
  const Ref<Recordset> rows = open(step, Statement(Sql::kReplacements).bind(item), Pass::Array);
  bool more = step([&] { return !rows->AtEnd(); });
  while (more) {
    const std::int32_t other = step([&] { return valueOrEmpty(rows, "ExItemId").toLong(); });
    if (!counted.contains(other)) {
      const Currency quantity = quantityOf(step, other, filter, true, counted);
      step([&] { sum += quantity; });
    }
    more = moveOn(step, rows);
  }
  step([&] { rows->Close(); });
  return sum;
}

Ref<Recordset> CInventoryHelper::openStock(Steps& step, std::int32_t item, bool isKit,
                                           const Filter& filter) {
  std::string projects = filter.projects;
  std::string condition = filter.condition;
  if (isKit || projects.empty()) {
    return step([&] {
      return queries_->OpenQtyStock(item, filter.warehouse, filter.from, filter.to, true, isKit,
                                    condition);
    });
  }
  if (filter.warehouse != 0) {
    const std::string warehouse = "ExWarehouseId = " + std::to_string(filter.warehouse);
    condition = condition.empty() ? warehouse : warehouse + " AND (" + condition + ")";
  }
  return step([&] {
    return queries_->OpenQtyStockProj(item, filter.from, filter.to, projects, condition);
  });
}

Currency CInventoryHelper::ownQuantity(Steps& step, std::int32_t item, const Filter& filter) {
  const bool isKit = step([&] { return ItemIsKit(item); });
  // The stock of all items is kept; of kits it is not part.
  const bool ofAll = keepsRecordsets() && !isKit;
  Ref<Recordset> rows;
  if (ofAll) {
    rows = reuse(step, stock_,
                 {filter.from, filter.to, filter.warehouse, filter.projects, filter.condition},
                 [&] { return openStock(step, 0, false, filter); });
  } else {
    rows = openStock(step, item, isKit, filter);
  }
  Currency sum;
  bool more =
      ofAll ? step([&] { return rows->Find(std::string(Sql::kFindStock) + std::to_string(item)); })
            : step([&] { return !rows->AtEnd(); });
  // Rows of an item need not stand together: how they are grouped is the engine's affair.
  while (more) {
    const bool own =
        !ofAll || step([&] { return valueOrEmpty(rows, "ExItemId").toLong(); }) == item;
    if (own && !step([&] { return valueOrEmpty(rows, "Servc").toBoolean(); })) {
      const Currency quantity = step([&] { return valueOrEmpty(rows, "QtyStock").toCurrency(); });
      step([&] { sum += quantity; });
    }
    more = moveOn(step, rows);
  }
  if (!ofAll) step([&] { rows->Close(); });
  return sum;
}

Currency CInventoryHelper::GetReservedQty(std::int32_t ItemID, Date FromDate, Date ToDate,
                                          std::int32_t WarehouseID) {
  return trap("GetReservedQty", [&](Steps& step, Currency& result) {
    const Ref<Recordset> rows = step([&] {
      return queries_->OpenQtyReserved(ItemID, WarehouseID, FromDate, ToDate, "SUM(Qty) AS Qty",
                                       false);
    });
    bool more = step([&] { return !rows->AtEnd(); });
    while (more) {
      const Currency quantity = step([&] { return valueOrEmpty(rows, "Qty").toCurrency(); });
      step([&] { result += quantity; });
      more = moveOn(step, rows);
    }
    step([&] { rows->Close(); });
  });
}

bool CInventoryHelper::IsValidAssembly(std::int32_t ItemID, std::string& Component) {
  return trap("IsValidAssembly", [&](Steps& step, bool& result) {
    bool any = false;
    std::set<std::int32_t> seen;
    const std::string circle = wayBack(step, ItemID, ItemID, seen, any);
    Component = circle;
    result = any && circle.empty();
  });
}

std::string CInventoryHelper::wayBack(Steps& step, std::int32_t item, std::int32_t assembly,
                                      std::set<std::int32_t>& seen, bool& any) {
  seen.insert(assembly);
  Statement statement(Sql::kAssemblyParts.of(engineType_));
  statement.text(Sql::kAssemblyPartsOf).bind(assembly);
  const Ref<Recordset> rows = open(step, statement, Pass::Array);
  std::string found;
  bool more = step([&] { return !rows->AtEnd(); });
  while (more && found.empty()) {
    any = true;
    const std::int32_t component = step([&] { return valueOrEmpty(rows, "ExItemId").toLong(); });
    const bool assembled = step([&] { return valueOrEmpty(rows, "IsAssembly").toBoolean(); });
    const std::string name = step([&] { return valueOrEmpty(rows, "ItemIdAndDescr1").toText(); });
    const bool comesBack =
        component == item || (assembled && !seen.contains(component) &&
                              !wayBack(step, item, component, seen, any).empty());
    if (comesBack) found = name;
    more = moveOn(step, rows);
  }
  step([&] { rows->Close(); });
  return found;
}

}  // namespace QuorAccQueries
