// `due`: what is to come in and to go out by due date, with what recurring transactions will add.
#include <CLI/App.hpp>
#include <memory>
#include <utility>

#include "cli/commands.h"
#include "cli/print/amount_text.h"
#include "cli/report/aging/grouping.h"
#include "cli/report/aging/source.h"
#include "cli/report/company_facts.h"
#include "cli/report/due/cash.h"
#include "cli/report/due/recurring.h"
#include "cli/report/period.h"
#include "cli/report/report.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Value;

struct DueOptions {
  std::optional<std::string> until;
  RunOptions run;
};

/// A quarter, where nobody says until when.
constexpr std::int64_t kUsualDays = 13 * 7 - 1;
constexpr std::int64_t kMostDays = 3'653;

std::vector<Column> columns() {
  using enum CellKind;
  using enum Audience;
  return {{"", "Currency", Code, Programs},
          {"", "Period", Code, Programs},
          {"", "From", Date, Programs},
          {"", "To", Date, Programs},
          {"Due", "", Code, People},
          {"Customers", "Customers", Money, Everyone},
          {"Suppliers", "Suppliers", Money, Everyone},
          {"Recurring in", "RecurringIn", MoneyPart, Everyone},
          {"Recurring out", "RecurringOut", MoneyPart, Everyone},
          {"Net", "Net", Money, Everyone},
          {"Running", "Running", Money, Everyone}};
}

void appendFigures(Line& line, const CashPeriod& cash) {
  for (const Currency amount :
       {cash.customers, cash.suppliers, cash.recurringIn, cash.recurringOut, cash.net()}) {
    line.emplace_back(amount);
  }
}

Line totalLine(const CashPeriod& cash) {
  Line line(5, Value::null());
  appendFigures(line, cash);
  line.push_back(Value::null());
  return line;
}

class DuePage {
 public:
  DuePage(const CashPlan& plan, const CompanyFacts& company, Report& report)
      : plan_(plan), company_(company), report_(report) {}

  void tellCurrency(std::int32_t currencyId, const std::vector<CashPeriod>& periods) {
    const std::string currency = company_.currencyCode(currencyId);
    report_.group(0, currency, "");
    CashPeriod all;
    for (std::size_t period = 0; period < periods.size(); ++period) {
      const CashPeriod& cash = periods[period];
      if (cash.isNothing()) continue;
      all.add(cash);
      Line line = heading(currency, period);
      appendFigures(line, cash);
      line.emplace_back(all.net());
      report_.line(std::move(line));
    }
    report_.total(0, Weight::Subtotal, "Total " + currency, totalLine(all));
  }

 private:
  [[nodiscard]] Line heading(const std::string& currency, std::size_t period) const {
    const CashWeeks& weeks = plan_.weeks();
    if (weeks.isOverdue(period)) {
      return {currency, "overdue", Value::null(), weeks.first(1).addDays(-1), "overdue"};
    }
    if (weeks.isLater(period)) {
      return {currency, "later", weeks.last(period - 1).addDays(1), Value::null(), "later"};
    }
    const Date first = weeks.first(period);
    const Date last = weeks.last(period);
    return {currency, "week", first, last, first.toText() + " to " + last.toText()};
  }

  const CashPlan& plan_;
  const CompanyFacts& company_;
  Report& report_;
};

/// Adds what is open on one side of the trade, each document when it is due.
void addOpenDocuments(const AgingSource& source, Currency CashPeriod::* side, Date day,
                      const DueOptions& options, const Session& session,
                      const CompanyFacts& company, CashPlan& plan) {
  const AgingAnswer answer = openAging(
      source, {.asOf = day, .by = AgeBy::Due, .dialect = session.dialect()}, options.run, session);
  AgingGrouping grouping(day, AgeBuckets::parse("30", AgeBy::Due), company.homeCurrency,
                         [&](const AgingBlock& block) {
                           for (const AgedDocument& document : block.documents) {
                             plan.at(block.currencyId, document.agesFrom).*side += document.balance;
                           }
                           plan.inHome().*side += block.home;
                         });
  AgingReader reader(source, AgeBy::Due, answer.rows);
  for (AgingRow row; reader.next(row);) grouping.add(row);
  grouping.finish();
  answer.rows->Close();
}

ScheduleCount addRecurring(Date day, Date until, const DueOptions& options, Session& session,
                           const CompanyFacts& company, CashPlan& plan) {
  return Recurring(options.run, session).forEachRun(day, until, [&](const ScheduledCash& cash) {
    const bool in = cash.amount > Currency();
    Currency CashPeriod::* const side = in ? &CashPeriod::recurringIn : &CashPeriod::recurringOut;
    const Currency amount = in ? cash.amount : -cash.amount;
    // What is made by the last day and due after it stands among what is later.
    plan.at(cash.currencyId, cash.due).*side += amount;
    plan.inHome().*side +=
        inHomeCurrency(amount, cash.currencyId == company.homeCurrency ? Value::null() : cash.rate);
  });
}

std::string scheduleNote(const ScheduleCount& count) {
  std::string text = grouped(count.running) + (count.running == 1 ? " schedule" : " schedules") +
                     " of recurring transactions " + (count.running == 1 ? "runs" : "run");
  if (count.late > 0) {
    text += ", " + grouped(count.late) + " of them late: what they have missed is to be made yet";
  }
  return text + (count.ended > 0 ? "; " + grouped(count.ended) + " ended." : ".");
}

int runDue(const DueOptions& options, Console& console) {
  if (options.until) static_cast<void>(parseDay("--until", *options.until));
  Session session(options.run, QuorHost::Access::Read, console);
  const auto snapshot = session.store()->hold();
  const CompanyFacts company = readCompany(session);
  const Date day = company.sessionDate;
  const Date until = options.until ? parseDay("--until", *options.until) : day.addDays(kUsualDays);
  if (until < day) {
    throw UsageError("--until " + until.toText() + " comes before the session date, " +
                     day.toText());
  }
  if (daysBetween(day, until) > kMostDays) {
    throw UsageError("--until " + until.toText() +
                     " is more than ten years after the session "
                     "date, " +
                     day.toText());
  }

  CashPlan plan(CashWeeks(day, until));
  addOpenDocuments(kCustomerAging, &CashPeriod::customers, day, options, session, company, plan);
  addOpenDocuments(kSupplierAging, &CashPeriod::suppliers, day, options, session, company, plan);
  const ScheduleCount schedules = addRecurring(day, until, options, session, company, plan);

  const auto report = makeReport(options.run.format, console);
  report->begin({.company = company.name,
                 .title = "Due from " + day.toText() + " to " + until.toText(),
                 .lines = "periods",
                 .limit = options.run.limit},
                columns());
  DuePage page(plan, company, *report);
  for (const auto& [currency, periods] : plan.byCurrency()) page.tellCurrency(currency, periods);
  if (plan.byCurrency().size() > 1) {
    report->summary("All currencies");
    report->grandTotal(
        Weight::Grand,
        "All in " + company.currencyCode(company.homeCurrency) + ", at the documents' rates",
        totalLine(plan.inHome()));
  }
  report->note("Credits that are tied to no document are due on the day that they were given.");
  report->note(scheduleNote(schedules));
  report->end();
  session.finish();
  return kDone;
}

}  // namespace

void addDue(CLI::App& program, Action& action) {
  const auto options = std::make_shared<DueOptions>();
  CLI::App& command =
      *program.add_subcommand("due", "Print what is to come in and to go out, by due date");
  command
      .add_option("--until", options->until,
                  "The last day to tell week by week [13 weeks from the\nsession date]")
      ->type_name("DATE");
  addRunOptions(command, options->run, true);
  command.callback([&action, options] {
    action = [options](Console& console) { return runDue(*options, console); };
  });
}

}  // namespace QuorCli
