#include "cli/report/due/cash.h"

#include <algorithm>

#include "cli/report/period.h"

namespace QuorCli {

using QuorDataLib::Date;

namespace {

constexpr std::int64_t kDaysOfWeek = 7;

}  // namespace

void CashPeriod::add(const CashPeriod& more) {
  customers += more.customers;
  suppliers += more.suppliers;
  recurringIn += more.recurringIn;
  recurringOut += more.recurringOut;
}

CashWeeks::CashWeeks(Date day, Date until)
    : day_(day),
      until_(until),
      weeks_(static_cast<std::size_t>(daysBetween(day, until) / kDaysOfWeek + 1)) {}

std::size_t CashWeeks::periodOf(Date due) const {
  const std::int64_t days = daysBetween(day_, due);
  if (days < 0) return 0;
  if (due.dateOnly() > until_) return weeks_ + 1;
  return static_cast<std::size_t>(days / kDaysOfWeek) + 1;
}

Date CashWeeks::first(std::size_t period) const {
  return day_.addDays((static_cast<std::int64_t>(period) - 1) * kDaysOfWeek);
}

Date CashWeeks::last(std::size_t period) const {
  return period == weeks_ ? until_ : first(period).addDays(kDaysOfWeek - 1);
}

CashPeriod& CashPlan::at(std::int32_t currencyId, Date due) {
  std::vector<CashPeriod>& periods =
      byCurrency_.try_emplace(currencyId, weeks_.count()).first->second;
  return periods.at(weeks_.periodOf(due));
}

}  // namespace QuorCli
