// What a kit is made of.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/member_table.h"
#include "platform/values/currency.h"

namespace QuorAccQueries {

/// What one kit takes of an item.
class CKitComponent : public ComponentObject {
 public:
  static constexpr std::string_view kClassName = "CKitComponent";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  CKitComponent() = default;
  CKitComponent(std::int32_t item, QuorDataLib::Currency quantity, QuorDataLib::Currency factor)
      : item_(item), quantity_(quantity), factor_(factor) {}

  /// The item.
  [[nodiscard]] std::int32_t InItemId() const { return item_; }
  /// How many sale units of it one kit takes.
  [[nodiscard]] QuorDataLib::Currency Qty() const { return quantity_; }
  /// Stock units in a sale unit; 0 counts as 1.
  [[nodiscard]] QuorDataLib::Currency FacSales() const { return factor_; }

  /// What the component comes to at a cost of a stock unit, to four decimals. Raises 6 where that
  /// does not fit.
  [[nodiscard]] QuorDataLib::Currency valueAt(QuorDataLib::Currency cost) const;

 private:
  std::int32_t item_ = 0;
  QuorDataLib::Currency quantity_;
  QuorDataLib::Currency factor_;
};

}  // namespace QuorAccQueries
