// `projects`: sales, purchases, margin and hours of projects against their budgets.
#include <CLI/App.hpp>
#include <memory>
#include <utility>

#include "cli/commands.h"
#include "cli/print/amount_text.h"
#include "cli/report/company_facts.h"
#include "cli/report/period.h"
#include "cli/report/projects/figures.h"
#include "cli/report/report.h"
#include "core/mutils.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Value;

struct ProjectOptions {
  std::optional<std::string> project;
  std::optional<std::string> from;
  std::optional<std::string> to;
  /// Projects of nothing, too.
  bool all = false;
  RunOptions run;
};

/// Columns before a project's figures, and the columns of the figures.
constexpr std::size_t kNameColumns = 3;
constexpr std::size_t kFigureColumns = 8;

std::vector<Column> projectColumns() {
  using enum CellKind;
  using enum Audience;
  return {{"", "ProjectId", Key, Programs},
          {"Project", "ProjectCode", Code, Everyone},
          {"Name", "ProjectName", Name, Everyone},
          {"Sales", "Sales", Money, Everyone},
          {"Budget", "SalesBudget", Money, Everyone},
          {"Purchases", "Purchases", Money, Everyone},
          {"Budget", "PurchasesBudget", Money, Everyone},
          {"Margin", "Margin", Money, Everyone},
          {"Budget", "MarginBudget", Money, Everyone},
          {"Hours", "Hours", Quantity, Everyone},
          {"Budget", "HoursBudget", Quantity, Everyone}};
}

/// What each line of hours has, the hours themselves last.
std::vector<Column> hourColumns() {
  using enum CellKind;
  using enum Audience;
  return {{"", "TransactionType", Key, Programs},     {"", "TransactionId", Key, Programs},
          {"Kind", "Kind", Code, Everyone},           {"Date", "Date", Date, Everyone},
          {"Who", "ResourceCode", Code, Everyone},    {"Name", "ResourceName", Name, Everyone},
          {"Reference", "Reference", Code, Everyone}, {"Detail", "Detail", Name, Everyone}};
}

Line lineOf(const Subject& project, const ProjectFigures& figures) {
  return {project.key,
          project.code,
          project.name,
          figures.sales.actual,
          figures.sales.budget,
          figures.purchases.actual,
          figures.purchases.budget,
          figures.margin().actual,
          figures.margin().budget,
          figures.hours.actual,
          figures.hours.budget};
}

/// "Over budget: P22-03, purchases by 1,234.50 and hours by 12"; empty where nothing is.
std::string whatIsOver(const Subject& project, const ProjectFigures& figures) {
  std::string text;
  const auto trimmed = [](std::string amount) {
    if (amount.ends_with(' ')) amount.pop_back();
    return amount;
  };
  if (figures.purchases.isOver()) {
    text +=
        "purchases by " + trimmed(amountText(figures.purchases.actual - figures.purchases.budget));
  }
  if (figures.hours.isOver()) {
    const Currency hours = figures.hours.actual - figures.hours.budget;
    text += text.empty() ? "" : " and ";
    text += "hours by " + quantityText(hours, decimalsOf(hours));
  }
  return text.empty() ? text : "Over budget: " + project.code + ", " + text + ".";
}

class ProjectsPage {
 public:
  ProjectsPage(Projects& projects, const ProjectOptions& options, const CompanyFacts& company,
               Date from, Date to, Console& console)
      : projects_(projects),
        options_(options),
        company_(company),
        from_(from),
        to_(to),
        console_(console) {}

  void tellAll() {
    const auto report = makeReport(options_.run.format, console_);
    report->begin(form("Projects from "), projectColumns());
    ProjectFigures all;
    for (const Subject& project : projects_.all()) {
      const ProjectFigures figures = projects_.figures(project.key, from_, to_);
      if (figures.areNothing() && !options_.all) continue;
      all.add(figures);
      report->line(lineOf(project, figures));
      tellOver(*report, project, figures);
    }
    report->summary("");
    Line total = lineOf({}, all);
    std::fill_n(total.begin(), kNameColumns, Value::null());
    report->grandTotal(Weight::Grand, "All projects", std::move(total));
    report->end();
  }

  void tellOne(const Subject& project) {
    const ProjectFigures figures = projects_.figures(project.key, from_, to_);
    options_.run.format == Format::Table ? tellOnSheets(project, figures)
                                         : tellInRows(project, figures);
  }

 private:
  [[nodiscard]] ReportForm form(const std::string& title, const std::string& lines = "projects") {
    return {.company = company_.name,
            .title = title + from_.toText() + " to " + to_.toText(),
            .lines = lines,
            .depth = 0,
            .always = true,
            .limit = options_.run.limit};
  }

  static void tellOver(Report& report, const Subject& project, const ProjectFigures& figures) {
    const std::string over = whatIsOver(project, figures);
    if (!over.empty()) report.note(over);
  }

  /// The figures, and on a sheet of its own the hours line by line.
  void tellOnSheets(const Subject& project, const ProjectFigures& figures) {
    const auto sheet = makeReport(Format::Table, console_);
    sheet->begin(form("Project " + project.code + " from "), projectColumns());
    sheet->line(lineOf(project, figures));
    tellOver(*sheet, project, figures);
    sheet->end();
    console_.out << '\n';

    const auto hours = makeReport(Format::Table, console_);
    ReportForm hourForm = form("Hours of " + project.code + " from ", "lines");
    hourForm.company.clear();
    std::vector<Column> columns = hourColumns();
    columns.push_back({"Hours", "Hours", CellKind::Quantity, Audience::Everyone});
    const std::size_t width = columns.size();
    hours->begin(std::move(hourForm), std::move(columns));
    Currency sum;
    forEachHour(project, [&](Line line, Currency worked) {
      line.emplace_back(worked);
      hours->line(std::move(line));
      sum += worked;
    });
    Line total(width - 1, Value::null());
    total.emplace_back(sum);
    hours->grandTotal(Weight::Grand, "Total", std::move(total));
    if (sum != figures.hours.actual) {
      hours->note("The project's hours are " + hoursText(figures.hours.actual) +
                  ", its lines come to " + hoursText(sum) +
                  ": lines that are alike are listed once, and as many hours bought "
                  "as paid count once.");
    }
    hours->end();
  }

  /// A row for the project, and one for each line of hours, told apart by the first column.
  void tellInRows(const Subject& project, const ProjectFigures& figures) {
    const auto rows = makeReport(options_.run.format, console_);
    std::vector<Column> columns{{"", "Row", CellKind::Code, Audience::Programs}};
    for (const auto& part : {projectColumns(), hourColumns()}) {
      columns.insert(columns.end(), part.begin(), part.end());
    }
    const std::size_t width = columns.size();
    rows->begin(form("", "rows"), std::move(columns));
    Line first = lineOf(project, figures);
    first.insert(first.begin(), Value("project"));
    first.resize(width, Value::null());
    rows->line(std::move(first));
    forEachHour(project, [&](Line line, Currency worked) {
      Line row{"hours", project.key, project.code, project.name};
      row.resize(1 + kNameColumns + kFigureColumns, Value::null());
      row[row.size() - 2] = worked;
      row.insert(row.end(), line.begin(), line.end());
      rows->line(std::move(row));
    });
    rows->end();
  }

  template <class Tell>
  void forEachHour(const Subject& project, Tell tell) {
    const auto rows = projects_.hours(project.key, from_, to_);
    const auto text = [&](const char* column) {
      const Value value = rows->Field(column);
      return value.isNull() ? Value("") : value;
    };
    for (; !rows->AtEnd(); rows->MoveNext()) {
      const Value type = rows->Field("TrxType");
      const Value hours = rows->Field("NbHours");
      tell(Line{type, rows->Field("InTrxId"), type.toLong() == 1 ? "pay" : "purchase",
                rows->Field("TrxDate"), text("ResId"), text("ResName"), text("RefNum"),
                text("Detail")},
           hours.isNull() ? Currency() : hours.toCurrency());
    }
    rows->Close();
  }

  static std::string hoursText(Currency hours) { return quantityText(hours, decimalsOf(hours)); }

  Projects& projects_;
  const ProjectOptions& options_;
  const CompanyFacts& company_;
  Date from_;
  Date to_;
  Console& console_;
};

int runProjects(const ProjectOptions& options, Console& console) {
  checkDays(options.from, options.to);
  Session session(options.run, QuorHost::Access::Read, console);
  const auto snapshot = session.store()->hold();
  const CompanyFacts company = readCompany(session);
  const Date to = options.to ? parseDay("--to", *options.to) : company.sessionDate;
  const Date from = options.from ? parseDay("--from", *options.from)
                                 : QuorAccQueries::MUtils::QuorCastriaFoundation()
                                       ->Application()
                                       ->Company()
                                       ->GetFiscalYearStartDate(to);
  Projects projects(options.run, session);
  ProjectsPage page(projects, options, company, from, to, console);
  if (options.project) {
    page.tellOne(findSubject(kProjects, *options.project, *session.store()));
  } else {
    page.tellAll();
  }
  session.finish();
  return kDone;
}

}  // namespace

void addProjects(CLI::App& program, Action& action) {
  const auto options = std::make_shared<ProjectOptions>();
  CLI::App& command = *program.add_subcommand(
      "projects", "Print what projects sold, spent and worked, and their budgets");
  command
      .add_option("--project", options->project,
                  "Only the project with this code or key, with its hours\nline by line")
      ->type_name("CODE|KEY");
  command.add_option("--from", options->from, "The first day [that of the last day's fiscal year]")
      ->type_name("DATE");
  command.add_option("--to", options->to, "The last day [the session date]")->type_name("DATE");
  command.add_flag("--all", options->all, "Projects of nothing, too");
  addRunOptions(command, options->run, true);
  command.callback([&action, options] {
    action = [options](Console& console) { return runProjects(*options, console); };
  });
}

}  // namespace QuorCli
