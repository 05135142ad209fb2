#include "ledger/general_ledger_helper.h"

namespace QuorAccQueries {

const ClassInfo& CGeneralLedgerHelper::info() {
  static const ClassInfo info =
      describeClass<CGeneralLedgerHelper>("General ledger values.", members());
  return info;
}

}  // namespace QuorAccQueries
