#include "host/company/sample/budgets.h"

#include <array>

#include "host/company/sample/accounts.h"
#include "host/company/sample/calendar.h"
#include "host/company/sample/money.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

/// What is planned for an account and a month of the first year, in dollars at scale 1.
struct Plan {
  std::int32_t account;
  std::int64_t dollars;
};

constexpr std::array<Plan, 13> kPlans{{
    {Acct::kSales, -40'000},
    {Acct::kServiceSales, -8'000},
    {Acct::kShippingCharged, -300},
    {Acct::kSundryIncome, -100},
    {Acct::kSalesDiscounts, 300},
    {Acct::kPurchases, 24'000},
    {Acct::kSubcontractors, 5'000},
    {Acct::kShippingPaid, 500},
    {Acct::kWages, 6'500},
    {Acct::kContributions, 650},
    {Acct::kRent, 2'000},
    {Acct::kSupplies, 700},
    {Acct::kInterest, 180},
}};

/// How a plan is shared by segments 1 to 4, in percent.
constexpr std::array<std::int64_t, 4> kShares{50, 30, 12, 8};
constexpr std::int64_t kGrowth = 12;  // percent a year

}  // namespace

void writeBudgets(Store& store, std::int32_t scale) {
  Table budgets(store, "GLAcctBudget", {"ExGLAcctId", "ExFiscalYearDetId", "Amount"});
  Table segments(store, "GLAcctSegmentBudget",
                 {"ExID", "ExSegmentId", "ExFiscalYearDetId", "Amount"});
  for (const Plan& plan : kPlans) {
    for (std::int32_t period = 0; period < kFiscalYears * 12; ++period) {
      const std::int64_t percent = 100 + (kGrowth * (period / 12));
      const std::int64_t dollars = plan.dollars * scale * percent / 100;
      budgets.add({plan.account, period + 1, money(dollars * 100)});
      std::int64_t left = dollars;
      for (std::size_t segment = kShares.size(); segment > 0; --segment) {
        const std::int64_t part =
            segment == 1 ? left : share(dollars, kShares.at(segment - 1), 100);
        left -= part;
        segments.add(
            {plan.account, static_cast<std::int32_t>(segment), period + 1, money(part * 100)});
      }
    }
  }
}

}  // namespace QuorHost::Sample
