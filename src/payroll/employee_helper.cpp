#include "payroll/employee_helper.h"

namespace QuorAccQueries {

const ClassInfo& CEmployeeHelper::info() {
  static const ClassInfo info = describeClass<CEmployeeHelper>("Payroll values.", members());
  return info;
}

}  // namespace QuorAccQueries
