// Cash that is to come and to go, by currency and by when it is due.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "cli/report/exchange.h"
#include "platform/values/date.h"

namespace QuorCli {

/// Money that is due in one period.
struct CashPeriod {
  QuorDataLib::Currency customers;
  QuorDataLib::Currency suppliers;
  /// What schedules will add.
  QuorDataLib::Currency recurringIn;
  QuorDataLib::Currency recurringOut;

  [[nodiscard]] QuorDataLib::Currency net() const {
    return customers - suppliers + recurringIn - recurringOut;
  }
  [[nodiscard]] bool isNothing() const { return *this == CashPeriod(); }
  void add(const CashPeriod& more);
  bool operator==(const CashPeriod&) const = default;
};

/// The periods of a report: what is overdue, each week from the report's day to the last one, and
/// what is due later.
class CashWeeks {
 public:
  CashWeeks(QuorDataLib::Date day, QuorDataLib::Date until);

  [[nodiscard]] std::size_t count() const noexcept { return weeks_ + 2; }
  [[nodiscard]] std::size_t periodOf(QuorDataLib::Date due) const;

  [[nodiscard]] bool isOverdue(std::size_t period) const noexcept { return period == 0; }
  [[nodiscard]] bool isLater(std::size_t period) const noexcept { return period == weeks_ + 1; }
  /// The first and the last day of a week; the last one may be short.
  [[nodiscard]] QuorDataLib::Date first(std::size_t period) const;
  [[nodiscard]] QuorDataLib::Date last(std::size_t period) const;

 private:
  QuorDataLib::Date day_;
  QuorDataLib::Date until_;
  std::size_t weeks_;
};

/// The cash of all currencies. Amounts of different ones are never added.
class CashPlan {
 public:
  explicit CashPlan(CashWeeks weeks) : weeks_(weeks) {}

  /// The period of a due date in a currency, to add to.
  CashPeriod& at(std::int32_t currencyId, QuorDataLib::Date due);

  /// Everything in home currency.
  CashPeriod& inHome() noexcept { return home_; }

  [[nodiscard]] const CashWeeks& weeks() const noexcept { return weeks_; }
  [[nodiscard]] const std::map<std::int32_t, std::vector<CashPeriod>>& byCurrency() const noexcept {
    return byCurrency_;
  }

 private:
  CashWeeks weeks_;
  std::map<std::int32_t, std::vector<CashPeriod>> byCurrency_;
  CashPeriod home_;
};

}  // namespace QuorCli
