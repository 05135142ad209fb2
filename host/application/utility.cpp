#include "host/application/services.h"
#include "platform/error.h"

namespace QuorHost {

using QuorDataLib::ErrorNumber;
using QuorDataLib::Parameters;
using QuorDataLib::raise;
using QuorDataLib::Value;

Parameters HostUtility::ParameterArray(const std::vector<Value>& values) {
  return Parameters::array(values);
}

std::string HostUtility::NullSafe(const std::string& expression, std::int16_t defaultValue,
                                  std::int32_t /*flag*/) {
  const std::string otherwise = std::to_string(defaultValue);
  return dialect_ == Sql::Dialect::Desktop
             ? "IIf(IsNull(" + expression + ")," + otherwise + "," + expression + ")"
             : "COALESCE(" + expression + "," + otherwise + ")";
}

std::int32_t HostUtility::DaysInMonth(std::int32_t year, std::int32_t month) {
  constexpr std::int32_t kNextJanuary = 13;
  if (month < 1 || month > kNextJanuary) {
    raise(ErrorNumber::InvalidArgument, "There is no month " + std::to_string(month));
  }
  return month == kNextJanuary ? QuorDataLib::daysInMonth(year + 1, 1)
                               : QuorDataLib::daysInMonth(year, month);
}

std::string HostUtility::FurtherAccountTypes(std::int32_t accountClass) {
  constexpr std::int32_t kExpenses = 2;
  if (accountClass != kExpenses) {
    raise(ErrorNumber::InvalidArgument,
          "Account class " + std::to_string(accountClass) + " has no further account types");
  }
  return "6,7";
}

}  // namespace QuorHost
