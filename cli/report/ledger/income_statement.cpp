// The income statement of a period, beside its budget or the year before.
#include "cli/print/amount_text.h"
#include "cli/report/ledger/books.h"
#include "cli/report/ledger/pages.h"
#include "cli/report/period.h"
#include "cli/report/report.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Value;

constexpr std::size_t kFirstFigure = 6;

std::vector<Column> columnsFor(Comparison comparison) {
  using enum CellKind;
  using enum Audience;
  std::vector<Column> columns{
      {"", "AccountId", Key, Programs},        {"Account", "AccountCode", Code, Everyone},
      {"Name", "AccountName", Name, Everyone}, {"", "Side", Code, Programs},
      {"", "TypeId", Key, Programs},           {"", "Type", Name, Programs},
      {"Amount", "Amount", Money, Everyone}};
  if (comparison == Comparison::None) return columns;
  const bool budget = comparison == Comparison::Budget;
  columns.push_back(
      {budget ? "Budget" : "Last year", budget ? "Budget" : "LastYear", Money, Everyone});
  columns.push_back({"Difference", "Difference", Money, Everyone});
  columns.push_back({"%", "DifferencePercent", Percent, Everyone});
  return columns;
}

/// An amount and what it is compared with.
struct Pair {
  Currency amount;
  Currency other;

  void add(const Pair& more) {
    amount += more.amount;
    other += more.other;
  }
  void appendTo(Line& line, Comparison comparison) const {
    line.emplace_back(amount);
    if (comparison == Comparison::None) return;
    line.emplace_back(other);
    line.emplace_back(amount - other);
    line.push_back(other.isZero() ? Value::null()
                                  : Value((amount - other).toDouble() /
                                          (other < Currency() ? -other : other).toDouble() * 100));
  }
  [[nodiscard]] Line total(Comparison comparison) const {
    Line line(kFirstFigure, Value::null());
    appendTo(line, comparison);
    return line;
  }
};

class IncomeStatement {
 public:
  IncomeStatement(Books& books, Report& report, const LedgerOptions& options, Date from, Date to)
      : books_(books), report_(report), options_(options), from_(from), to_(to) {}

  /// One side with its types; its sum.
  Pair tellSide(const std::vector<LedgerAccount>& accounts, bool revenue) {
    const std::string side = revenue ? "Revenue" : "Expenses";
    report_.group(0, side, "");
    const auto belongs = [&](const LedgerAccount& account) {
      return account.onIncomeStatement && account.reversed == revenue;
    };
    const bool byType = severalTypes(accounts, belongs);
    Pair ofSide;
    Pair ofType;
    const LedgerAccount* before = nullptr;
    const auto closeType = [&] {
      if (byType && before != nullptr) {
        report_.total(1, Weight::Subtotal, "Total " + before->typeName, total(ofType));
      }
      ofType = {};
    };
    for (const LedgerAccount& account : accounts) {
      if (!belongs(account)) continue;
      if (before == nullptr || before->type != account.type) {
        closeType();
        if (byType) report_.group(1, account.typeName, "");
        before = &account;
      }
      const Pair pair = pairOf(account);
      ofType.add(pair);
      ofSide.add(pair);
      if (pair.amount.isZero() && pair.other.isZero() && !options_.all) continue;
      Line line{account.key, account.code, account.name, side, account.type, account.typeName};
      pair.appendTo(line, options_.comparison);
      report_.line(std::move(line));
    }
    closeType();
    report_.total(0, Weight::Subtotal, "Total " + side, total(ofSide));
    return ofSide;
  }

  [[nodiscard]] Line total(const Pair& pair) const { return pair.total(options_.comparison); }

 private:
  Pair pairOf(const LedgerAccount& account) {
    const std::string noCondition;
    const std::string noProjects;
    auto& helper = books_.helper();
    Pair pair;
    pair.amount = account.shown(
        helper.GetAcctBalanceRange(account.key, from_, endOfDay(to_), noCondition, noProjects));
    if (options_.comparison == Comparison::Budget) {
      pair.other = account.shown(helper.GetAcctBudget(account.key, from_, to_));
    } else if (options_.comparison == Comparison::LastYear) {
      pair.other = account.shown(helper.GetAcctBalanceRange(account.key, from_.addMonths(-12),
                                                            endOfDay(to_.addMonths(-12)),
                                                            noCondition, noProjects));
    }
    return pair;
  }

  Books& books_;
  Report& report_;
  const LedgerOptions& options_;
  Date from_;
  Date to_;
};

}  // namespace

int printIncomeStatement(const LedgerOptions& options, Console& console) {
  checkDays(options.from, options.to);
  Books books(options.run, console);
  const Date to = dayOf(options.to, books.company().sessionDate);
  const Date from = options.from ? dayOf(options.from, {}) : books.fiscalYearStart(to);
  const auto report = makeReport(options.run.format, console);
  report->begin({.company = books.company().name,
                 .title = "Income statement from " + from.toText() + " to " + to.toText(),
                 .lines = "accounts",
                 .depth = 2,
                 .limit = options.run.limit},
                columnsFor(options.comparison));
  const std::vector<LedgerAccount> accounts = books.accounts();
  IncomeStatement statement(books, *report, options, from, to);
  Pair net = statement.tellSide(accounts, true);
  const Pair expenses = statement.tellSide(accounts, false);
  net.amount -= expenses.amount;
  net.other -= expenses.other;
  report->summary("");
  report->grandTotal(Weight::Grand, net.amount < Currency() ? "Net loss" : "Net income",
                     statement.total(net));
  const std::string noCondition;
  const Currency earned = -books.helper().CurrentEarnings(from, endOfDay(to), noCondition);
  if (earned != net.amount) {
    report->alarm("The ledger's earnings of the period are another amount: " + amountText(earned));
  }
  report->end();
  books.session().finish();
  return kDone;
}

}  // namespace QuorCli
