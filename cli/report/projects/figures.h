// A company's projects, and what they sold, spent and worked in a period beside their budgets.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/report/subject.h"
#include "cli/session.h"
#include "cli/words/options.h"
#include "projects/project_helper.h"
#include "projects/project_queries.h"

namespace QuorCli {

/// Something of a project, and what was planned of it.
struct Planned {
  QuorDataLib::Currency actual;
  QuorDataLib::Currency budget;

  [[nodiscard]] bool isNothing() const { return actual.isZero() && budget.isZero(); }
  /// More than was planned, where something was.
  [[nodiscard]] bool isOver() const { return !budget.isZero() && actual > budget; }
  void add(const Planned& more) {
    actual += more.actual;
    budget += more.budget;
  }
};

/// Amounts in home currency, and hours.
struct ProjectFigures {
  Planned sales;
  Planned purchases;
  Planned hours;

  [[nodiscard]] Planned margin() const {
    return {sales.actual - purchases.actual, sales.budget - purchases.budget};
  }
  [[nodiscard]] bool areNothing() const {
    return sales.isNothing() && purchases.isNothing() && hours.isNothing();
  }
  void add(const ProjectFigures& more) {
    sales.add(more.sales);
    purchases.add(more.purchases);
    hours.add(more.hours);
  }
};

/// Reads projects through the component's members.
class Projects {
 public:
  Projects(const RunOptions& options, Session& session);

  /// All of them, by code.
  [[nodiscard]] std::vector<Subject> all() const;

  /// The figures of a project from one day to another, both included.
  [[nodiscard]] ProjectFigures figures(std::int32_t project, QuorDataLib::Date from,
                                       QuorDataLib::Date to);

  /// The transactions that put hours on a project. Raises `Failure` where the component has none to
  /// give.
  [[nodiscard]] QuorDataLib::Ref<QuorDataLib::Recordset> hours(std::int32_t project,
                                                               QuorDataLib::Date from,
                                                               QuorDataLib::Date to);

 private:
  Session& session_;
  QuorDataLib::Ref<QuorAccQueries::CProjectHelper> helper_;
  QuorDataLib::Ref<QuorAccQueries::CProjectQueries> queries_;
};

}  // namespace QuorCli
