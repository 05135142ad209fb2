#include "inventory/inventory_queries.h"

namespace QuorAccQueries {

const ClassInfo& CInventoryQueries::info() {
  static const ClassInfo info = describeClass<CInventoryQueries>("Inventory queries.", members());
  return info;
}

}  // namespace QuorAccQueries
