#include "terms/term_helper.h"

namespace QuorAccQueries {

const ClassInfo& CTermHelper::info() {
  static const ClassInfo info = describeClass<CTermHelper>("Payment terms.", members());
  return info;
}

}  // namespace QuorAccQueries
