#include "cli/report/stock/stock_room.h"

#include <algorithm>

#include "cli/report/company_facts.h"
#include "core/mutils.h"
#include "platform/values/rounding.h"

namespace QuorCli {

using QuorAccQueries::CInventoryHelper;
using QuorAccQueries::CInventoryQueries;
using QuorDataLib::Currency;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

namespace {

constexpr int kCents = 2;

Currency valueAt(Currency quantity, Currency cost) {
  return QuorDataLib::roundedProduct(quantity, cost, kCents);
}

std::string textOf(Recordset& rows, std::int32_t index) {
  return rows.Field(index).isNull() ? std::string() : rows.Field(index).toText();
}

}  // namespace

std::map<std::int32_t, Currency> StockItem::valueByWarehouse() const {
  std::map<std::int32_t, Currency> parts;
  if (byWarehouse.empty()) return parts;
  Currency rest = value;
  for (const auto& [warehouse, quantity] : byWarehouse) {
    rest -= parts[warehouse] = valueAt(quantity, unitValue);
  }
  // What rounding leaves goes where most lies.
  const auto most =
      std::ranges::max_element(byWarehouse, {}, [](const auto& entry) { return entry.second; });
  parts[most->first] += rest;
  return parts;
}

StockRoom::StockRoom(const RunOptions& options, Session& session)
    : session_(session),
      helper_(QuorDataLib::make<CInventoryHelper>()),
      queries_(QuorDataLib::make<CInventoryQueries>()) {
  if (!options.defaultConnection) {
    helper_->SetCustomConnection(session.connection());
    queries_->SetCustomConnection(session.connection());
  }
  helper_->SetCacheRecordsets(true);
  const auto company = QuorAccQueries::MUtils::QuorCastriaFoundation()->Application()->Company();
  valuedAtLastCost_ = company->GetParam("CostCalculMeth", "0").toText() != "0";
  const auto rows = readBeside(*session.store(),
                               "SELECT InWarehouseId, WarehouseId, Descr FROM Warehouse "
                               "ORDER BY WarehouseId, InWarehouseId");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    warehouses_.push_back({rows->Field(0).toLong(), textOf(*rows, 1), textOf(*rows, 2)});
  }
}

std::string StockRoom::conditionOf(const StockRequest& request) {
  return request.project == 0 ? std::string()
                              : "InvenDet.ExProjId = " + std::to_string(request.project);
}

StockRoom::ByItem StockRoom::sums(const Ref<Recordset>& rows, const char* column) {
  ByItem sums;
  if (!rows) throw Failure("the component has returned no quantities");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const Value quantity = rows->Field(column);
    if (!quantity.isNull()) sums[rows->Field("ExItemId").toLong()] += quantity.toCurrency();
  }
  rows->Close();
  return sums;
}

StockRoom::ByItem StockRoom::onHand(const StockRequest& request, std::int32_t warehouse) {
  constexpr bool kKnown = true;
  constexpr bool kNoKit = false;
  return sums(queries_->OpenQtyStock(request.item, warehouse, {}, request.until, kKnown, kNoKit,
                                     conditionOf(request)),
              "QtyStock");
}

std::vector<StockItem> StockRoom::items(const StockRequest& request) {
  const auto of = [](const ByItem& quantities, std::int32_t item) {
    const auto found = quantities.find(item);
    return found == quantities.end() ? Currency() : found->second;
  };
  const ByItem all = onHand(request, request.warehouse);
  std::map<std::int32_t, ByItem> placed;
  for (const WarehouseName& warehouse : warehouses_) {
    if (request.warehouse != 0 && request.warehouse != warehouse.key) continue;
    placed.emplace(warehouse.key, onHand(request, warehouse.key));
  }
  const std::int32_t anySupplier = 0;
  ByItem reserved;
  ByItem toCome;
  if (request.project == 0) {  // neither knows of projects
    reserved = sums(
        queries_->OpenQtyReserved(request.item, request.warehouse, {}, request.until, "", false),
        "Qty");
    toCome = sums(queries_->OpenQtyToRec(request.item, request.warehouse, {}, request.until,
                                         anySupplier, false, false),
                  "Qty");
  }
  const auto rows =
      readBeside(*session_.store(),
                 std::string("SELECT InItemId, ItemId, Descr1, StockUnit, IsKit FROM Item "
                             "WHERE (Servc = 0 OR Servc IS NULL)") +
                     (request.item == 0 ? "" : " AND InItemId = " + std::to_string(request.item)) +
                     " ORDER BY ItemId, InItemId");
  std::vector<StockItem> items;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    StockItem item;
    item.key = rows->Field(0).toLong();
    item.code = textOf(*rows, 1);
    item.description = textOf(*rows, 2);
    item.unit = textOf(*rows, 3);
    item.kit = !rows->Field(4).isNull() && rows->Field(4).toBoolean();
    item.reserved = of(reserved, item.key);
    item.toCome = of(toCome, item.key);
    if (item.kit) {
      item.onHand = helper_->GetQtyInStockRange(item.key, {}, request.until, request.warehouse, "",
                                                conditionOf(request), false, false);
    } else {
      item.onHand = of(all, item.key);
      Currency elsewhere = item.onHand;
      for (const auto& [warehouse, quantities] : placed) {
        const Currency quantity = of(quantities, item.key);
        elsewhere -= quantity;
        if (!quantity.isZero()) item.byWarehouse[warehouse] = quantity;
      }
      if (!elsewhere.isZero()) item.byWarehouse[0] = elsewhere;
    }
    items.push_back(std::move(item));
  }
  return items;
}

void StockRoom::readCosts(StockItem& item, const StockRequest& request) {
  item.averageCost = helper_->GetAvgCostRange(item.key, request.until, 0, "", "", false);
  item.lastCost = helper_->GetLastCost(item.key, request.until, 0, "", "", false);
  if (item.kit) return;
  item.unitValue = valuedAtLastCost_ ? item.lastCost : item.averageCost;
  item.value = valueAt(item.onHand, item.unitValue);
}

}  // namespace QuorCli
