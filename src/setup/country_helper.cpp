#include "setup/country_helper.h"

namespace QuorAccQueries {

const ClassInfo& CCountryHelper::info() {
  static const ClassInfo info = describeClass<CCountryHelper>("Country setup.", members());
  return info;
}

}  // namespace QuorAccQueries
