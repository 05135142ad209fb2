#include "cli/report/projects/figures.h"

#include "cli/console.h"
#include "cli/report/company_facts.h"
#include "cli/report/period.h"

namespace QuorCli {

using QuorAccQueries::CProjectHelper;
using QuorAccQueries::CProjectQueries;
using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;

namespace {

/// The segment of all lines, and of the budget of the project as a whole.
constexpr std::int32_t kWhole = 0;

}  // namespace

Projects::Projects(const RunOptions& options, Session& session)
    : session_(session),
      helper_(QuorDataLib::make<CProjectHelper>()),
      queries_(QuorDataLib::make<CProjectQueries>()) {
  if (!options.defaultConnection) {
    helper_->SetCustomConnection(session_.connection());
    queries_->SetCustomConnection(session_.connection());
  }
  // One statement for the three budgets of a project, where the company allows it.
  helper_->SetCacheRecordsets(true);
}

std::vector<Subject> Projects::all() const {
  std::vector<Subject> projects;
  const auto rows = readBeside(
      *session_.store(), "SELECT InProjId, ProjId, Descr FROM Proj ORDER BY ProjId, InProjId");
  const auto text = [&](std::int32_t index) {
    return rows->Field(index).isNull() ? std::string() : rows->Field(index).toText();
  };
  for (; !rows->AtEnd(); rows->MoveNext()) {
    projects.push_back({rows->Field(0).toLong(), text(1), text(2)});
  }
  return projects;
}

ProjectFigures Projects::figures(std::int32_t project, Date from, Date to) {
  const Date end = endOfDay(to);
  return {.sales = {helper_->GetProjSalesRange(project, kWhole, from, end),
                    helper_->GetProjSalesBudgetRange(project, kWhole, from, end)},
          .purchases = {helper_->GetProjPurchasesRange(project, kWhole, from, end),
                        helper_->GetProjPurchBudgetRange(project, kWhole, from, end)},
          .hours = {helper_->GetProjHoursRange(project, kWhole, from, end),
                    helper_->GetProjHoursBudgetRange(project, kWhole, from, end)}};
}

Ref<Recordset> Projects::hours(std::int32_t project, Date from, Date to) {
  const Ref<Recordset> rows = queries_->OpenProjectHoursTransactions(project, from, endOfDay(to));
  if (!rows) throw Failure("the component has returned no hours of the project");
  return rows;
}

}  // namespace QuorCli
