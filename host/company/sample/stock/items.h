// What the sample company buys and sells.
#pragma once

#include <cstdint>
#include <span>

#include "host/company/sample/money.h"
#include "host/company/sample/random.h"
#include "host/engines/store.h"
#include "platform/values/currency.h"

namespace QuorHost::Sample {

using QuorDataLib::Currency;

struct SampleItem {
  std::int32_t id;
  const char* code;
  const char* description;
  const char* unit;
  /// For a sale unit, and the cost of a stock unit.
  Cents price;
  Cents cost;
  /// Most sale units on one line of a sale.
  std::int32_t mostSold;
  /// The sale unit where it is not the stock unit, and stock units in one; 0 stands for 1 there.
  const char* saleUnit = nullptr;
  Currency factor = Currency::fromUnits(Currency::kUnitsPerOne);

  [[nodiscard]] Currency stockUnits() const {
    return factor.isZero() ? Currency::fromUnits(Currency::kUnitsPerOne) : factor;
  }
};

/// One past the greatest key of an item.
inline constexpr std::int32_t kItemsEnd = 80;

/// What one kit or assembled item takes of another: sale units for a kit, stock units otherwise.
struct SampleComponent {
  std::int32_t of;
  std::int32_t item;
  Currency quantity;
};

/// Fills `Item`, `ItemKitDet` and `ItemReplacement`.
void writeItems(Store& store);

/// The goods that are bought and kept in stock.
std::span<const SampleItem> stockedGoods();
/// The goods that are assembled, and what a kit or an assembled item is made of.
std::span<const SampleItem> assembledGoods();
std::span<const SampleComponent> componentsOf(std::int32_t item);
/// The stocked or assembled item of a key; null for kits and services.
const SampleItem* stockedItem(std::int32_t id);

/// Goods, kits and assembled items to sell.
const SampleItem& pickGoods(Random& random);
/// Services that the company renders by the hour.
const SampleItem& pickService(Random& random);
/// Services that it buys by the hour for its projects.
const SampleItem& pickSubcontract(Random& random);

}  // namespace QuorHost::Sample
