#include "projects/project_helper.h"

namespace QuorAccQueries {

const ClassInfo& CProjectHelper::info() {
  static const ClassInfo info = describeClass<CProjectHelper>("Project values.", members());
  return info;
}

}  // namespace QuorAccQueries
