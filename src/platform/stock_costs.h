// How stock movements move the costs of an item: the rules that the component answers by and that a
// host keeps its books by.
#pragma once

#include <cstdint>

#include "platform/values/currency.h"

namespace QuorDataLib {

/// Types of stock movements. On one day an item's movements are in the order of their types.
namespace MovementType {
inline constexpr std::int32_t kConsumption = 0;
inline constexpr std::int32_t kPurchase = 1;  // a reception
inline constexpr std::int32_t kAdjustment = 2;
inline constexpr std::int32_t kTransfer = 4;
inline constexpr std::int32_t kAssembly = 6;
inline constexpr std::int32_t kSale = 7;
}  // namespace MovementType

/// Which costs a movement moves.
struct CostsMoved {
  bool average = false;
  bool last = false;
  /// False for types of movements that the rules say nothing about.
  bool ruled = false;
};

/// Whether the answer of `costsMoved` depends on the movement being a reception adjustment.
[[nodiscard]] constexpr bool mayAdjustReception(std::int32_t type, bool invoiced) noexcept {
  return type == MovementType::kPurchase && !invoiced;
}

/// The costs that a movement of `quantity` moves: what comes in does. A reception adjustment, which
/// takes back what came in before its invoice, moves them when it goes out; a count that finds
/// nothing missing still sets the last cost.
[[nodiscard]] constexpr CostsMoved costsMoved(std::int32_t type, Currency quantity, bool invoiced,
                                              bool receptionAdjustment) noexcept {
  constexpr Currency kNone;
  switch (type) {
    case MovementType::kPurchase: {
      const bool goesOut = mayAdjustReception(type, invoiced) && receptionAdjustment;
      const bool moves = goesOut ? quantity < kNone : quantity > kNone;
      return {moves, moves, true};
    }
    case MovementType::kAdjustment:
      return {quantity > kNone, quantity >= kNone, true};
    case MovementType::kAssembly:
      return {quantity > kNone, quantity > kNone, true};
    default:
      return {};
  }
}

/// The average cost after a movement of `quantity` at `unitCost`, to four decimals. It stays while
/// the stock stays below zero; a stock that was below zero and is no longer, or that becomes
/// exactly zero, takes the movement's own cost. Raises 6 where a value does not fit.
[[nodiscard]] Currency movingAverage(Currency average, Currency quantityBefore, Currency quantity,
                                     Currency unitCost);

}  // namespace QuorDataLib
