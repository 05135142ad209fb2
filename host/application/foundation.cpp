#include "host/application/foundation.h"

#include <ctime>
#include <utility>

#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Date;
using QuorDataLib::Ref;
using QuorDataLib::Value;

constexpr KeyedTable kSettings{"AppSetting", "SettingNo", "SettingValue"};
constexpr KeyedTable kCompanyParams{"CieParam", "ParamName", "ParamValue"};
constexpr std::string_view kCompanyTable = "CieInfo";
constexpr std::string_view kFiscalYears = "FiscalYearHdr";

constexpr std::int32_t kHomeCurrency = 1;
constexpr std::int32_t kFixedChart = 1;
constexpr std::int32_t kRecurringTransactions = 42;

Date today() {
  constexpr int kFirstYear = 1900;
  const std::time_t now = std::time(nullptr);
  // Each thread has its own: the standard function would hand out one that all share.
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &now);
#else
  localtime_r(&now, &local);
#endif
  return Date::of(local.tm_year + kFirstYear, local.tm_mon + 1, local.tm_mday);
}

/// The last day on or before `date` that has this month and day.
Date lastStart(Date date, int month, int day) {
  const int year = date.civil().year;
  const Date start = Date::build(year, month, day);
  return start <= date ? start : Date::build(year - 1, month, day);
}

}  // namespace

Value FoundationSettings::GetSetting(std::int16_t number) {
  const auto overridden = sources_->overrides.settings.find(number);
  if (overridden != sources_->overrides.settings.end()) return overridden->second;
  return sources_->tables.find(kSettings, number).value_or(std::int32_t{0});
}

bool FoundationCurrencyInfo::CieIsForeignCurrencyUsed() {
  if (const auto& given = sources_->overrides.foreignCurrencyUsed) return *given;
  return sources_->tables.first(kCompanyTable, "ForeignCurrencyUsed").value_or(false).toBoolean();
}

std::int32_t FoundationCurrencyInfo::CieHomeCurrencyId() {
  if (const auto& given = sources_->overrides.homeCurrencyId) return *given;
  return sources_->tables.first(kCompanyTable, "HomeCurrencyId").value_or(kHomeCurrency).toLong();
}

FoundationCompany::FoundationCompany(SharedSources sources,
                                     Ref<QuorCastriaFoundation::CurrencyInfo> currencyInfo)
    : sources_(std::move(sources)), currencyInfo_(std::move(currencyInfo)), today_(today()) {}

Date FoundationCompany::GetFiscalYearStartDate(Date date) {
  const Date day = date.dateOnly();
  if (const std::optional<MonthAndDay>& start = sources_->overrides.fiscalYearStart) {
    return lastStart(day, start->month, start->day);
  }
  const std::optional<Value> year = sources_->tables.first(
      kFiscalYears, "MAX(BegDate)", "BegDate <= ? AND EndDate >= ?", {day, day});
  if (year) return year->toDate();
  const std::optional<Value> first = sources_->tables.first(kFiscalYears, "MIN(BegDate)");
  const Date::Civil start = first ? first->toDate().civil() : Date::Civil{.month = 1, .day = 1};
  return lastStart(day, start.month, start.day);
}

Date FoundationCompany::SessionDate() {
  if (const auto& given = sources_->overrides.sessionDate) return *given;
  return sources_->tables.first(kCompanyTable, "SessionDate").value_or(today_).toDate();
}

Value FoundationCompany::GetParam(const std::string& name, const Value& defaultValue) {
  const std::string key = Sql::lowerName(name);
  if (const auto set = set_.find(key); set != set_.end()) return set->second;
  const std::map<std::string, std::string>& overrides = sources_->overrides.companyParams;
  if (const auto overridden = overrides.find(key); overridden != overrides.end()) {
    return overridden->second;
  }
  return sources_->tables.find(kCompanyParams, name).value_or(defaultValue);
}

void FoundationCompany::SetParam(const std::string& name, const Value& value) {
  sources_->tables.put(kCompanyParams, name, value);
  set_[Sql::lowerName(name)] = value;
}

std::int32_t FoundationCompany::CieAccountTypeChart() {
  if (const auto& given = sources_->overrides.accountTypeChart) return *given;
  return sources_->tables.first(kCompanyTable, "AccountTypeChart").value_or(kFixedChart).toLong();
}

Ref<QuorCastriaFoundation::CurrencyInfo> FoundationCompany::CurrencyInfo() { return currencyInfo_; }

std::int32_t FoundationDeclares::DATA_TRX_REC() { return kRecurringTransactions; }

FoundationApplication::FoundationApplication(Ref<QuorCastriaFoundation::Settings> settings,
                                             Ref<QuorCastriaFoundation::Company> company,
                                             Ref<QuorCastriaFoundation::Declares> declares)
    : settings_(std::move(settings)),
      company_(std::move(company)),
      declares_(std::move(declares)) {}

}  // namespace QuorHost
