#include "setup/tax_helper.h"

namespace QuorAccQueries {

const ClassInfo& CTaxHelper::info() {
  static const ClassInfo info = describeClass<CTaxHelper>("Sales-tax setup.", members());
  return info;
}

}  // namespace QuorAccQueries
