#include "inventory/kit_component.h"

#include "core/frame.h"
#include "platform/values/rounding.h"

namespace QuorAccQueries {

const ClassInfo& CKitComponent::info() {
  static const ClassInfo info = describeClass<CKitComponent>(
      "What one kit takes of an item.",
      {
          propertyGet<&CKitComponent::InItemId>("InItemId", "The item."),
          propertyGet<&CKitComponent::Qty>("Qty", "Sale units of it in one kit."),
          propertyGet<&CKitComponent::FacSales>("FacSales",
                                                "Stock units in a sale unit; 0 counts as 1."),
      });
  return info;
}

Currency CKitComponent::valueAt(Currency cost) const {
  constexpr int kDecimals = 4;
  const Currency each = QuorDataLib::roundedProduct(cost, quantity_, kDecimals);
  return factor_.isZero() ? each : QuorDataLib::roundedProduct(each, factor_, kDecimals);
}

}  // namespace QuorAccQueries
