// The trial balance: every account's balance as a debit or a credit, and both sums.
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

std::vector<Column> columns() {
  using enum CellKind;
  using enum Audience;
  return {{"", "AccountId", Key, Programs},
          {"Account", "AccountCode", Code, Everyone},
          {"Name", "AccountName", Name, Everyone},
          {"", "TypeId", Key, Programs},
          {"", "Type", Name, Programs},
          {"Debit", "Debit", MoneyPart, Everyone},
          {"Credit", "Credit", MoneyPart, Everyone}};
}

/// Debits and credits, both positive.
struct Sides {
  Currency debit;
  Currency credit;

  static Sides of(Currency balance) {
    return balance < Currency() ? Sides{Currency(), -balance} : Sides{balance, Currency()};
  }
  void add(const Sides& other) {
    debit += other.debit;
    credit += other.credit;
  }
  [[nodiscard]] Line line() const {
    return {Value::null(), Value::null(), Value::null(), Value::null(),
            Value::null(), debit,         credit};
  }
};

/// An account's balance without the year's profit, which is in the accounts of the income statement
/// here and would count twice.
Currency balanceInTrial(Books& books, const LedgerAccount& account, Date day,
                        std::int32_t earningsAccount) {
  Currency balance = books.balance(account, day);
  if (account.key == earningsAccount) {
    const std::string noCondition;
    balance -=
        books.helper().CurrentEarnings(books.fiscalYearStart(day), endOfDay(day), noCondition);
  }
  return balance;
}

}  // namespace

int printTrialBalance(const LedgerOptions& options, Console& console) {
  if (options.asOf) static_cast<void>(parseDay("--as-of", *options.asOf));
  Books books(options.run, console);
  const Date day = dayOf(options.asOf, books.company().sessionDate);
  const std::int32_t earningsAccount = books.currentEarningsAccount();
  const auto report = makeReport(options.run.format, console);
  report->begin({.company = books.company().name,
                 .title = "Trial balance as at " + day.toText(),
                 .lines = "accounts",
                 .limit = options.run.limit},
                columns());
  Sides all;
  Sides ofType;
  std::optional<LedgerAccount> before;
  const auto closeType = [&] {
    if (before) report->total(0, Weight::Subtotal, "Total " + before->typeName, ofType.line());
    ofType = {};
  };
  for (const LedgerAccount& account : books.accounts()) {
    const Currency balance = balanceInTrial(books, account, day, earningsAccount);
    if (!before || before->type != account.type) {
      closeType();
      report->group(0, account.typeName, "");
      before = account;
    }
    const Sides sides = Sides::of(balance);
    ofType.add(sides);
    all.add(sides);
    if (balance.isZero() && !options.all) continue;
    report->line({account.key, account.code, account.name, account.type, account.typeName,
                  sides.debit, sides.credit});
  }
  closeType();
  report->summary("");
  report->grandTotal(Weight::Grand, "Total", all.line());
  const Currency difference = all.debit - all.credit;
  if (difference.isZero()) {
    report->note("Debits and credits are equal.");
  } else {
    report->alarm("The ledger is out of balance: debits less credits are " +
                  amountText(difference));
  }
  report->end();
  books.session().finish();
  return kDone;
}

}  // namespace QuorCli
