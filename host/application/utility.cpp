#include "host/application/services.h"
#include "platform/error.h"

namespace QuorHost {

using QuorDataLib::ErrorNumber;
using QuorDataLib::Parameters;
using QuorDataLib::raise;
using QuorDataLib::Value;

namespace {

constexpr const char* kLanguage = "Language";
constexpr const char* kFurtherTypes = "FurtherExpenseAccountTypes";
constexpr const char* kNoBreakSpace = "\u00a0";
constexpr std::size_t kGroup = 3;

/// Whether a text is numbers separated by commas. It goes into statements as it stands.
bool isListOfNumbers(std::string_view text) {
  bool inNumber = false;
  for (const char c : text) {
    const bool digit = c >= '0' && c <= '9';
    if (!digit && (c != ',' || !inNumber)) return false;
    inNumber = digit;
  }
  return inNumber;
}

}  // namespace

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
  const std::string types = company_->GetParam(kFurtherTypes, "6,7").toText();
  if (!isListOfNumbers(types)) {
    raise(ErrorNumber::InvalidArgument, "The company parameter " + std::string(kFurtherTypes) +
                                            " is '" + types +
                                            "': it must be a list of account types such as 6,7");
  }
  return types;
}

std::string HostUtility::FormatCurrency(QuorDataLib::Currency amount) {
  const bool french = inFrench();
  std::string text = amount.toText(2);
  const bool negative = text.starts_with('-');
  if (negative) text.erase(0, 1);
  const std::size_t point = text.find('.');
  if (french) text.replace(point, 1, ",");
  for (std::size_t place = point; place > kGroup; place -= kGroup) {
    text.insert(place - kGroup, french ? kNoBreakSpace : ",");
  }
  text = french ? text + kNoBreakSpace + "$" : "$" + text;
  return negative ? "-" + text : text;
}

std::string HostUtility::FormatNumber(QuorDataLib::Currency number) {
  std::string text = Value(number).toText();
  const std::size_t point = text.find('.');
  if (point != std::string::npos) text.replace(point, 1, DecimalSeparator());
  return text;
}

std::string HostUtility::DecimalSeparator() { return inFrench() ? "," : "."; }

bool HostUtility::inFrench() const {
  const std::string language = company_->GetParam(kLanguage, "").toText();
  return language.starts_with('F') || language.starts_with('f');
}

}  // namespace QuorHost
