#include "ledger/general_ledger_queries.h"

namespace QuorAccQueries {

const ClassInfo& CGeneralLedgerQueries::info() {
  static const ClassInfo info =
      describeClass<CGeneralLedgerQueries>("General ledger queries.", members());
  return info;
}

}  // namespace QuorAccQueries
