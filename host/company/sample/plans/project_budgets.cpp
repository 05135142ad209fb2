#include "host/company/sample/plans/project_budgets.h"

#include <array>

#include "host/company/sample/calendar.h"
#include "host/company/sample/lists.h"
#include "host/company/sample/money.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;

/// What is planned for a month at scale 1.
struct Plan {
  std::int64_t salesDollars;
  std::int64_t purchaseDollars;
  std::int64_t hours;
};
constexpr std::array<Plan, kAllProjects> kPlans{{
    {700, 300, 6},
    {600, 700, 12},
    {700, 650, 5},
    {1'000, 500, 6},
    {1'000, 600, 9},
    {1'000, 700, 8},
    {1'000, 500, 6},
    {900, 500, 5},
    {0, 160, 6},
    {150, 0, 0},
}};

/// How a plan is shared by segments 1 to 3, in percent.
constexpr std::array<std::int64_t, 3> kShares{60, 25, 15};

}  // namespace

void writeProjectBudgets(Store& store, std::int32_t scale) {
  Table budgets(
      store, "ProjBudgets",
      {"ExID", "ExSegmentId", "ExFiscalYearDetId", "BudgetSales", "BudgetPurch", "BudgetHours"});
  const Date start = dateOf(0);
  for (std::int32_t project = 1; project <= kAllProjects; ++project) {
    const Plan& plan = kPlans.at(static_cast<std::size_t>(project) - 1);
    for (int period = 0; period < kFiscalYears * 12; ++period) {
      const Date first = start.addMonths(period);
      if (!projectRunsWithin(project, first, start.addMonths(period + 1).addDays(-1))) continue;
      std::int32_t segment = 0;
      const auto add = [&](std::int64_t percent) {
        const auto part = [&](std::int64_t planned) { return planned * scale * percent; };
        budgets.add({project, segment, period + 1, money(part(plan.salesDollars)),
                     money(part(plan.purchaseDollars)),
                     Currency::fromUnits(part(plan.hours) * Currency::kUnitsPerOne / 100)});
      };
      add(100);
      for (const std::int64_t percent : kShares) {
        ++segment;
        add(percent);
      }
    }
  }
}

}  // namespace QuorHost::Sample
