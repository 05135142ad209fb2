// The sample's stock: what is there of every item, what it is worth, and every movement posted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/company/sample/ledger.h"
#include "host/company/sample/money.h"
#include "host/company/table.h"
#include "platform/stock_costs.h"

namespace QuorHost::Sample {

using QuorDataLib::Currency;

inline constexpr std::int32_t kWarehouses = 3;
inline constexpr std::int32_t kMainWarehouse = 1;

/// The warehouse that a segment's customers are served from: those abroad from the main one.
inline std::int32_t warehouseOf(std::int32_t segment) {
  return segment <= kWarehouses ? segment : kMainWarehouse;
}

/// A movement of an item, positive for what comes in.
struct Movement {
  std::int32_t item = 0;
  Currency quantity;
  std::int32_t line = 0;
  std::int32_t warehouse = kMainWarehouse;
  std::int32_t project = 0;
  /// What a purchase comes to in home currency, with the sign of its quantity.
  Cents amount = 0;
  /// The cost of a unit that a count sets; 0 for the average cost.
  Currency cost;
  bool invoiced = false;
  bool adjustsReception = false;
};

/// A document that moves stock. What its movements come to goes to `account`, in the ledger
/// transaction `ledgerSequence` that posted the document, or in one of its own where that is 0.
struct StockDocument {
  std::int32_t type = 0;
  std::int32_t key = 0;
  std::int32_t ledgerSequence = 0;
  std::int32_t account = 0;
  std::int32_t segment = 0;
  std::int32_t project = 0;
  std::string_view source;
  std::string reference;
  std::string description;
  std::vector<Movement> movements;
};

/// Keeps stock at its moving average cost. The inventory account is what all items are worth at the
/// end of every day, each to the cent: what rounding, negative stock and returns at another cost
/// than the average leave over goes to a variance account.
class Stock {
 public:
  Stock(Store& store, Ledger& ledger);

  /// Takes a document of the day. It is entered when the day ends, because purchases come before
  /// sales whichever was written first.
  void add(StockDocument document);

  /// Enters the documents of a day in ledger order, writes their movements and posts them.
  void endDay(int day);

  /// What is there of an item, without the documents of today.
  [[nodiscard]] Currency quantity(std::int32_t item) const { return of(item).quantity; }
  [[nodiscard]] Currency quantityAt(std::int32_t item, std::int32_t warehouse) const {
    return of(item).at[static_cast<std::size_t>(warehouse) - 1];
  }
  [[nodiscard]] Currency averageCost(std::int32_t item) const { return of(item).average; }

 private:
  struct ItemState {
    Currency quantity;
    Currency average;
    Currency last;
    Cents value = 0;
    Currency at[kWarehouses];
  };

  [[nodiscard]] const ItemState& of(std::int32_t item) const {
    return items_[static_cast<std::size_t>(item)];
  }
  void enter(const StockDocument& document, std::int32_t sequence, int day);
  /// What the movement comes to in the books; `soFar` is what those before it in the document do.
  Cents enter(const Movement& movement, const StockDocument& document, std::int32_t sequence,
              int day, Cents soFar);

  Ledger& ledger_;
  Table rows_;
  std::vector<ItemState> items_;
  std::vector<StockDocument> today_;
  std::int32_t sequence_ = 0;
  Cents variance_ = 0;
};

}  // namespace QuorHost::Sample
