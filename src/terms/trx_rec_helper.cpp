#include "terms/trx_rec_helper.h"

namespace QuorAccQueries {

const ClassInfo& CTrxRecHelper::info() {
  static const ClassInfo info = describeClass<CTrxRecHelper>("Recurring transactions.", members());
  return info;
}

}  // namespace QuorAccQueries
