// Running costs of stock: marking those that no longer hold, and computing them again.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "host/company/company.h"
#include "platform/values/currency.h"
#include "platform/values/date.h"

namespace QuorHost {

/// What computing an item's running costs again has come to.
struct RecostedItem {
  std::int32_t item = 0;
  /// Movements that were computed, and those of them whose costs are others than before.
  std::int64_t computed = 0;
  std::int64_t changed = 0;
  /// The costs after the item's last movement.
  QuorDataLib::Currency averageBefore;
  QuorDataLib::Currency average;
  QuorDataLib::Currency lastBefore;
  QuorDataLib::Currency last;
};

/// Computes the running costs that are marked as stale, of all items or (not 0) of one: from each
/// item's first marked movement on, its state before that being what the movements before it come
/// to. All marks of these items are cleared, in one transaction. Returns the items computed, by
/// key; raises what stands in the way, naming the item, and then changes nothing. Memory does not
/// grow with the number of movements.
std::vector<RecostedItem> recostStock(Store& store, std::int32_t item = 0,
                                      const Progress& progress = {});

/// Whether running costs depend on what is in a table, besides their own columns: on movements, and
/// on the lines of purchases, by which a reception is known to adjust another one.
[[nodiscard]] bool movesCosts(std::string_view table) noexcept;

/// While it lives, it notes which movements and which lines of purchases are added, removed or
/// changed in what costs depend on.
class CostWatch {
 public:
  /// Needs a transaction, in which everything happens that it is to note.
  explicit CostWatch(Store& store);

  /// Marks the running costs of the items concerned from the first day on that was touched: of a
  /// movement its own, of a purchase's line that of the receptions made of it. Nothing is noted any
  /// more.
  void markStale();

 private:
  /// Adds the items of receptions that are of `lines`, which are in the order of their keys.
  void addReceptions(const std::vector<ChangeLog::Change>& lines,
                     std::map<std::int32_t, QuorDataLib::Date>& items) const;

  Store& store_;
  std::unique_ptr<ChangeLog> movements_;
  std::unique_ptr<ChangeLog> lines_;
};

/// The tables of movements and of the lines of purchases.
inline constexpr const char* kMovements = "InvenDet";
inline constexpr const char* kPurchaseLines = "PurcDet";

}  // namespace QuorHost
