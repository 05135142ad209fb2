#include "projects/project_queries.h"

namespace QuorAccQueries {

const ClassInfo& CProjectQueries::info() {
  static const ClassInfo info = describeClass<CProjectQueries>("Project queries.", members());
  return info;
}

}  // namespace QuorAccQueries
