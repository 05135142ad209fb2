// What a company has in stock, item by item, as the component's members give it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/session.h"
#include "cli/words/options.h"
#include "inventory/inventory_helper.h"
#include "inventory/inventory_queries.h"

namespace QuorCli {

/// What stock is asked for: 0 and no date filter nothing.
struct StockRequest {
  /// The last moment that counts.
  QuorDataLib::Date until;
  std::int32_t item = 0;
  std::int32_t warehouse = 0;
  std::int32_t project = 0;
};

/// An item and what there is of it, in stock units.
struct StockItem {
  std::int32_t key = 0;
  std::string code;
  std::string description;
  std::string unit;
  /// Sold as one and kept as its components: what is on hand is how many can be made.
  bool kit = false;

  QuorDataLib::Currency onHand;
  QuorDataLib::Currency reserved;
  QuorDataLib::Currency toCome;
  /// What lies where; key 0 is stock in no warehouse.
  std::map<std::int32_t, QuorDataLib::Currency> byWarehouse;
  QuorDataLib::Currency averageCost;
  QuorDataLib::Currency lastCost;
  /// The one of them that stock is valued at.
  QuorDataLib::Currency unitValue;
  /// What the stock is worth, to the cent; 0 for a kit, whose components are counted.
  QuorDataLib::Currency value;

  [[nodiscard]] QuorDataLib::Currency available() const { return onHand - reserved; }
  /// Its value where it lies; the parts add up to the value.
  [[nodiscard]] std::map<std::int32_t, QuorDataLib::Currency> valueByWarehouse() const;
};

struct WarehouseName {
  std::int32_t key = 0;
  std::string code;
  std::string name;
};

/// Reads stock. Quantities of all items take a statement for each warehouse and one for each kind
/// of quantity; costs are replayed for the items that have some.
class StockRoom {
 public:
  StockRoom(const RunOptions& options, Session& session);

  [[nodiscard]] const std::vector<WarehouseName>& warehouses() const noexcept {
    return warehouses_;
  }

  /// The items that are kept in stock, and kits, by code.
  [[nodiscard]] std::vector<StockItem> items(const StockRequest& request);

  /// Reads an item's costs and value, which take statements of their own.
  void readCosts(StockItem& item, const StockRequest& request);

 private:
  using ByItem = std::map<std::int32_t, QuorDataLib::Currency>;

  /// Sums a column of rows by their item, and closes them.
  static ByItem sums(const QuorDataLib::Ref<QuorDataLib::Recordset>& rows, const char* column);
  ByItem onHand(const StockRequest& request, std::int32_t warehouse);
  [[nodiscard]] static std::string conditionOf(const StockRequest& request);

  Session& session_;
  QuorDataLib::Ref<QuorAccQueries::CInventoryHelper> helper_;
  QuorDataLib::Ref<QuorAccQueries::CInventoryQueries> queries_;
  std::vector<WarehouseName> warehouses_;
  bool valuedAtLastCost_;
};

}  // namespace QuorCli
