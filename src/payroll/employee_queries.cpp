#include "payroll/employee_queries.h"

namespace QuorAccQueries {

const ClassInfo& CEmployeeQueries::info() {
  static const ClassInfo info = describeClass<CEmployeeQueries>("Payroll queries.", members());
  return info;
}

}  // namespace QuorAccQueries
