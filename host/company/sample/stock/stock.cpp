#include "host/company/sample/stock/stock.h"

#include <algorithm>
#include <utility>

#include "host/company/sample/calendar.h"
#include "host/company/sample/stock/items.h"
#include "platform/values/rounding.h"

namespace QuorHost::Sample {

namespace {

namespace MovementType = QuorDataLib::MovementType;
using QuorDataLib::roundedProduct;

constexpr std::int64_t kUnitsPerCent = Currency::kUnitsPerOne / 100;

/// What a quantity is worth, to the cent.
Cents worth(Currency quantity, Currency cost) {
  return roundedProduct(quantity, cost, 2).units() / kUnitsPerCent;
}

/// The cost of one of `quantity` units that come to `amount`.
Currency unitCost(Cents amount, Currency quantity) {
  const double home = Currency::fromUnits(amount * kUnitsPerCent).toDouble();
  return QuorDataLib::roundedToCurrency(home / quantity.toDouble());
}

}  // namespace

Stock::Stock(Store& store, Ledger& ledger)
    : ledger_(ledger),
      rows_(store, "InvenDet",
            {"ExItemId", "DetDate", "Type", "SeqNo", "ExSrcKeyVal", "ExDetId", "Qty", "Cost",
             "Invoiced", "ExWarehouseId", "ExProjId", "ExSegmentId", "RunningLastCost",
             "RunningAvgCost", "RunningValuesDirty"}),
      items_(kItemsEnd) {}

void Stock::add(StockDocument document) {
  if (document.movements.empty()) return;
  const auto place = std::ranges::upper_bound(today_, document.type, {}, &StockDocument::type);
  today_.insert(place, std::move(document));
}

void Stock::endDay(int day) {
  for (const StockDocument& document : today_) enter(document, ++sequence_, day);
  today_.clear();
  const Cents variance = std::exchange(variance_, 0);
  if (variance == 0) return;
  ledger_.begin(
      {.day = day, .source = "ADJ", .description = "Écarts d'inventaire / Inventory variances"});
  ledger_.line(Acct::kInventory, variance, variance);
  ledger_.line(Acct::kInventoryVariance, -variance, -variance);
  ledger_.end();
}

void Stock::enter(const StockDocument& document, std::int32_t sequence, int day) {
  Cents sum = 0;
  for (const Movement& movement : document.movements) {
    sum += enter(movement, document, sequence, day, sum);
  }
  if (sum == 0) return;
  const Ledger::Heading heading{.day = day,
                                .source = document.source,
                                .key = document.key,
                                .reference = document.reference,
                                .description = document.description,
                                .project = document.project,
                                .segment = document.segment};
  ledger_.begin(heading, document.ledgerSequence);
  ledger_.line(Acct::kInventory, sum, sum);
  ledger_.line(document.account, -sum, -sum);
  ledger_.end();
}

Cents Stock::enter(const Movement& movement, const StockDocument& document, std::int32_t sequence,
                   int day, Cents soFar) {
  ItemState& item = items_[static_cast<std::size_t>(movement.item)];
  const bool comesIn = movement.quantity > Currency();
  Currency cost = item.average;
  Cents amount = 0;
  if (document.type == MovementType::kPurchase) {
    amount = movement.amount;
    cost = unitCost(amount, movement.quantity);
  } else if (document.type == MovementType::kAssembly && comesIn) {
    amount = -soFar;
    cost = unitCost(amount, movement.quantity);
  } else {
    if (!movement.cost.isZero()) cost = movement.cost;
    amount = worth(movement.quantity, cost);
  }
  const QuorDataLib::CostsMoved moved = QuorDataLib::costsMoved(
      document.type, movement.quantity, movement.invoiced, movement.adjustsReception);
  if (moved.average) {
    item.average = QuorDataLib::movingAverage(item.average, item.quantity, movement.quantity, cost);
  }
  if (moved.last) item.last = cost;
  item.quantity += movement.quantity;
  item.at[movement.warehouse - 1] += movement.quantity;
  const Cents before = std::exchange(item.value, worth(item.quantity, item.average));
  variance_ += item.value - before - amount;
  rows_.add({movement.item, dateOf(day), document.type, sequence, document.key, movement.line,
             movement.quantity, cost, movement.invoiced, movement.warehouse,
             keyOrNull(movement.project), movement.warehouse, item.last, item.average,
             std::int32_t{0}});
  return amount;
}

}  // namespace QuorHost::Sample
