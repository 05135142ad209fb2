#include "host/company/sample/stock/stock_room.h"

#include <algorithm>
#include <utility>

namespace QuorHost::Sample {

namespace {

namespace MovementType = QuorDataLib::MovementType;

constexpr int kDaysWithoutSupply = 240;
constexpr std::int32_t kPlanned = 1;
constexpr std::int32_t kMade = 2;

/// Not bought at first.
bool isScarce(const SampleItem& item) { return item.id == 16 || item.id == 29; }

Currency times(Currency quantity, std::int32_t count) {
  return Currency::fromUnits(quantity.units() * count);
}

}  // namespace

StockRoom::StockRoom(Store& store, Stock& stock, std::int32_t scale, Random random)
    : stock_(stock),
      scale_(scale),
      random_(random),
      adjustments_(store, "AdjItemHdr",
                   {"InAdjItemId", "AdjItemId", "AdjType", "AdjDate", "Descr", "ExWarehouseId"}),
      adjustmentLines_(
          store, "AdjItemDet",
          {"InAdjItemDetId", "ExAdjItemId", "ExItemId", "Qty", "UnitCost", "ExProjId"}),
      assemblies_(store, "AssemblyHdr",
                  {"InAssemblyId", "AssemblyId", "AssemblyDate", "AssemblyStatus", "ExItemId",
                   "Qty", "ExWarehouseId"}),
      assemblyLines_(store, "AssemblyDet", {"InAssemblyDetId", "ExAssemblyId", "ExItemId", "Qty"}),
      transfers_(store, "WarehouseTransHdr",
                 {"InWarehouseTransId", "WarehouseTransId", "TransDate", "Descr",
                  "ExFromWarehouseId", "ExToWarehouseId"}),
      transferLines_(store, "WarehouseTransDet",
                     {"InWarehouseTransDetId", "ExWarehouseTransId", "ExItemId", "Qty"}),
      uses_(kDays) {
  begin();
}

/// The stock units that the largest sale of the item takes.
std::int32_t StockRoom::largestSale(const SampleItem& item) {
  const std::int64_t units = item.stockUnits().units() * item.mostSold / Currency::kUnitsPerOne;
  return std::max(1, static_cast<std::int32_t>(units));
}

const SampleItem& StockRoom::wanted(Random& random, int day) const {
  constexpr int kCompared = 12;
  const SampleItem* chosen = nullptr;
  std::int64_t least = 0;
  for (int i = 0; i < kCompared || chosen == nullptr; ++i) {
    const SampleItem& item = random.pick(stockedGoods());
    if (isScarce(item) && day < kDaysWithoutSupply) continue;
    const std::int64_t cover = stock_.quantity(item.id).units() / largestSale(item);
    if (chosen == nullptr || cover < least) {
      chosen = &item;
      least = cover;
    }
  }
  return *chosen;
}

void StockRoom::keepForProject(std::int32_t project, std::int32_t item, std::int32_t quantity,
                               int day) {
  const int later = day + random_.between(5, 60);
  if (later >= kDays) return;
  const std::int32_t used = random_.between((quantity + 1) / 2, quantity);
  uses_[static_cast<std::size_t>(later)].push_back({project, item, Currency::fromInteger(used)});
}

void StockRoom::day(int day) {
  use(day);
  if (weekday(day) == 0) {
    for (std::int32_t to = kMainWarehouse + 1; to <= kWarehouses; ++to) transfer(day, to);
  }
  if (day % 14 == 4 || inLastWeeks(day)) {
    for (const SampleItem& item : assembledGoods()) assemble(item, day);
  }
  if (endsMonth(day)) count(day);
}

void StockRoom::begin() {
  for (std::int32_t warehouse = 1; warehouse <= kWarehouses; ++warehouse) {
    std::vector<Movement> movements;
    for (const SampleItem& item : stockedGoods()) {
      if (isScarce(item) && warehouse != kMainWarehouse) continue;
      const std::int64_t sales = isScarce(item) ? 1 : 1 + scale_;
      movements.push_back(
          {.item = item.id,
           .quantity = Currency::fromInteger(sales * largestSale(item)),
           .cost = Currency::fromUnits(item.cost * (Currency::kUnitsPerOne / 100))});
    }
    adjust(MovementType::kAdjustment, 0, warehouse, Acct::kShareCapital,
           "Inventaire d'ouverture / Opening stock", std::move(movements));
  }
}

/// A month's count in one of the warehouses: a little is missing, a little was found, and one item
/// gets the price that it would be bought at now.
void StockRoom::count(int day) {
  constexpr int kCounted = 5;
  std::vector<Movement> movements;
  for (int i = 0; i < kCounted; ++i) {
    const SampleItem& item = random_.pick(stockedGoods());
    const std::int32_t most = 1 + largestSale(item) * scale_ / 10;
    const std::int32_t difference = random_.between(-most, most);
    if (difference == 0) continue;
    movements.push_back({.item = item.id, .quantity = Currency::fromInteger(difference)});
  }
  const SampleItem& item = random_.pick(stockedGoods());
  const Cents price = item.cost * random_.between(96, 106) / 100;
  movements.push_back(
      {.item = item.id, .cost = Currency::fromUnits(price * (Currency::kUnitsPerOne / 100))});
  adjust(MovementType::kAdjustment, day, random_.between(1, kWarehouses), Acct::kCountDifferences,
         "Décompte mensuel / Monthly count", std::move(movements));
}

void StockRoom::use(int day) {
  for (const Use& each : std::exchange(uses_[static_cast<std::size_t>(day)], {})) {
    adjust(MovementType::kConsumption, day, kMainWarehouse, Acct::kMaterialsUsed,
           "Matériaux utilisés sur un chantier",
           {{.item = each.item, .quantity = -each.quantity, .project = each.project}});
  }
}

void StockRoom::adjust(std::int32_t type, int day, std::int32_t warehouse, std::int32_t account,
                       const std::string& description, std::vector<Movement> movements) {
  const bool used = type == MovementType::kConsumption;
  ++adjustment_;
  StockDocument document{.type = type,
                         .key = adjustment_,
                         .account = account,
                         .segment = warehouse,
                         .project = movements.front().project,
                         .source = used ? "CON" : "ADJ",
                         .reference = (used ? "M" : "A") + std::to_string(adjustment_),
                         .description = description};
  adjustments_.add({adjustment_, document.reference, type, dateOf(day), description, warehouse});
  for (Movement& movement : movements) {
    movement.line = ++adjustmentLine_;
    movement.warehouse = warehouse;
    const Currency cost =
        movement.cost.isZero() ? stock_.averageCost(movement.item) : movement.cost;
    adjustmentLines_.add({movement.line, adjustment_, movement.item, movement.quantity, cost,
                          keyOrNull(movement.project)});
  }
  document.movements = std::move(movements);
  stock_.add(std::move(document));
}

/// Fills up a warehouse from the main one, as far as that has enough.
void StockRoom::transfer(int day, std::int32_t to) {
  StockDocument document{.type = MovementType::kTransfer, .key = transfer_ + 1};
  const auto move = [&](const SampleItem& item) {
    const std::int32_t usual = largestSale(item) * (1 + scale_ / 2);
    const Currency there = stock_.quantityAt(item.id, to);
    if (there > Currency::fromInteger(usual / 2)) return;
    const Currency quantity = Currency::fromInteger(usual) - there;
    if (stock_.quantityAt(item.id, kMainWarehouse) < quantity) return;
    ++transferLine_;
    document.movements.push_back({.item = item.id, .quantity = -quantity, .line = transferLine_});
    document.movements.push_back(
        {.item = item.id, .quantity = quantity, .line = transferLine_, .warehouse = to});
  };
  for (const SampleItem& item : stockedGoods()) move(item);
  for (const SampleItem& item : assembledGoods()) move(item);
  if (document.movements.empty()) return;
  ++transfer_;
  transfers_.add({transfer_, "T" + std::to_string(transfer_), dateOf(day),
                  "Transfert hebdomadaire / Weekly transfer", kMainWarehouse, to});
  for (std::size_t i = 1; i < document.movements.size(); i += 2) {
    const Movement& in = document.movements[i];
    transferLines_.add({in.line, transfer_, in.item, in.quantity});
  }
  stock_.add(std::move(document));
}

/// Makes some more of an item whose stock has run low. What is begun in the last days is planned
/// only.
void StockRoom::assemble(const SampleItem& item, int day) {
  const std::int32_t count = (1 + scale_) * item.mostSold;
  const bool planned = day >= kDays - 10;
  if (!planned && stock_.quantityAt(item.id, kMainWarehouse) > Currency::fromInteger(count)) return;
  for (const SampleComponent& component : componentsOf(item.id)) {
    const Currency there = stock_.quantityAt(component.item, kMainWarehouse);
    if (!planned && there < times(component.quantity, count)) return;
  }
  ++assembly_;
  const Currency made = Currency::fromInteger(count);
  StockDocument document{.type = MovementType::kAssembly, .key = assembly_};
  assemblies_.add({assembly_, "F" + std::to_string(assembly_), dateOf(planned ? day + 14 : day),
                   planned ? kPlanned : kMade, item.id, made, kMainWarehouse});
  for (const SampleComponent& component : componentsOf(item.id)) {
    const Currency taken = times(component.quantity, count);
    assemblyLines_.add({++assemblyLine_, assembly_, component.item, taken});
    document.movements.push_back(
        {.item = component.item, .quantity = -taken, .line = assemblyLine_});
  }
  document.movements.push_back({.item = item.id, .quantity = made});
  if (!planned) stock_.add(std::move(document));
}

}  // namespace QuorHost::Sample
