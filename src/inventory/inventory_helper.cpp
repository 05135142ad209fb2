#include "inventory/inventory_helper.h"

namespace QuorAccQueries {

const ClassInfo& CInventoryHelper::info() {
  static const ClassInfo info = describeClass<CInventoryHelper>("Inventory values.", members());
  return info;
}

}  // namespace QuorAccQueries
