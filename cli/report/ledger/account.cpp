// The history of an account: brought forward, its lines with the running balance, carried forward.
#include "cli/print/amount_text.h"
#include "cli/report/ledger/books.h"
#include "cli/report/ledger/pages.h"
#include "cli/report/period.h"
#include "cli/report/report.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

constexpr std::int32_t kDebits = 1;
constexpr std::int32_t kCredits = 2;

std::vector<Column> columns() {
  using enum CellKind;
  using enum Audience;
  return {
      {"Date", "Date", Date, Everyone},           {"Number", "SeqNo", Key, Everyone},
      {"Source", "Source", Code, Everyone},       {"", "DocumentId", Key, Programs},
      {"Reference", "Reference", Code, Everyone}, {"Description", "Description", Name, Everyone},
      {"Debit", "Debit", MoneyPart, Everyone},    {"Credit", "Credit", MoneyPart, Everyone},
      {"Balance", "Balance", Money, Everyone}};
}

Line balanceLine(Value debit, Value credit, Value balance) {
  Line line(6, Value::null());
  line.push_back(std::move(debit));
  line.push_back(std::move(credit));
  line.push_back(std::move(balance));
  return line;
}

/// The single amount of a query of one row, 0 where it is null.
Currency onlyAmount(const Ref<Recordset>& rows) {
  const Value value = rows->AtEnd() ? Value::null() : rows->Field(0);
  rows->Close();
  return value.isNull() ? Currency() : value.toCurrency();
}

}  // namespace

int printAccount(const LedgerOptions& options, Console& console) {
  checkDays(options.from, options.to);
  if (!options.account) throw UsageError("say which account, by its number or key");
  Books books(options.run, console);
  const LedgerAccount account = books.account(*options.account);
  const Date to = dayOf(options.to, books.company().sessionDate);
  const Date from = options.from ? dayOf(options.from, {}) : books.fiscalYearStart(to);
  // Accounts of the income statement start anew with each fiscal year.
  const Date start = account.onIncomeStatement ? books.fiscalYearStart(from) : Books::firstDay();
  const std::int32_t home = books.company().homeCurrency;
  auto& queries = books.queries();

  const auto report = makeReport(options.run.format, console);
  report->begin({.company = books.company().name,
                 .title = "Account " + account.code + " " + account.name + " from " +
                          from.toText() + " to " + to.toText(),
                 .lines = "lines",
                 .depth = 0,
                 .always = true,
                 .limit = options.run.limit},
                columns());
  Currency balance = onlyAmount(queries.OpenGLAcctHistoryForwardBalance(
      false, account.currency, account.key, home, start, from));
  report->grandTotal(Weight::Plain, "Brought forward",
                     balanceLine(Value::null(), Value::null(), balance));
  const Ref<Recordset> rows =
      queries.OpenGLAcctHistory(false, account.currency, account.key, home, from, endOfDay(to));
  if (!rows) throw Failure("the component has returned no history of the account");
  const auto text = [&](const char* column) {
    const Value value = rows->Field(column);
    return value.isNull() ? Value("") : value;
  };
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const Currency amount = rows->Field("DetAmount").toCurrency();
    const bool credit = amount < Currency();
    balance += amount;
    report->line({rows->Field("DetDate"), rows->Field("SeqNo"), text("Source"),
                  rows->Field("ExSrcKeyVal"), text("DetRef"), text("DetDesc"),
                  credit ? Currency() : amount, credit ? -amount : Currency(), balance});
  }
  rows->Close();
  const auto total = [&](std::int32_t kind) {
    return onlyAmount(queries.OpenGLAcctHistoryDebitsCredits(false, account.currency, account.key,
                                                             home, from, endOfDay(to), kind));
  };
  report->grandTotal(Weight::Subtotal, "Debits and credits",
                     balanceLine(total(kDebits), -total(kCredits), Value::null()));
  report->grandTotal(Weight::Grand, "Carried forward",
                     balanceLine(Value::null(), Value::null(), balance));
  report->end();
  books.session().finish();
  return kDone;
}

}  // namespace QuorCli
