// The balance sheet: assets, and what they belong to.
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
  return {{"", "AccountId", Key, Programs},        {"Account", "AccountCode", Code, Everyone},
          {"Name", "AccountName", Name, Everyone}, {"", "Side", Code, Programs},
          {"", "TypeId", Key, Programs},           {"", "Type", Name, Programs},
          {"Balance", "Balance", Money, Everyone}};
}

Line totalLine(Currency amount) {
  Line line(6, Value::null());
  line.emplace_back(amount);
  return line;
}

/// One side with its types, told to the report; its sum.
Currency tellSide(Report& report, Books& books, const std::vector<LedgerAccount>& accounts,
                  bool reversed, Date day, bool all) {
  const std::string side = reversed ? "Liabilities and equity" : "Assets";
  report.group(0, side, "");
  const auto belongs = [&](const LedgerAccount& account) {
    return !account.onIncomeStatement && account.reversed == reversed;
  };
  const bool byType = severalTypes(accounts, belongs);
  Currency ofSide;
  Currency ofType;
  const LedgerAccount* before = nullptr;
  const auto closeType = [&] {
    if (byType && before != nullptr) {
      report.total(1, Weight::Subtotal, "Total " + before->typeName, totalLine(ofType));
    }
    ofType = Currency();
  };
  for (const LedgerAccount& account : accounts) {
    if (!belongs(account)) continue;
    if (before == nullptr || before->type != account.type) {
      closeType();
      if (byType) report.group(1, account.typeName, "");
      before = &account;
    }
    const Currency balance = account.shown(books.balance(account, day));
    ofType += balance;
    ofSide += balance;
    if (balance.isZero() && !all) continue;
    report.line(
        {account.key, account.code, account.name, side, account.type, account.typeName, balance});
  }
  closeType();
  report.total(0, Weight::Grand, "Total " + side, totalLine(ofSide));
  return ofSide;
}

}  // namespace

int printBalanceSheet(const LedgerOptions& options, Console& console) {
  if (options.asOf) static_cast<void>(parseDay("--as-of", *options.asOf));
  Books books(options.run, console);
  const Date day = dayOf(options.asOf, books.company().sessionDate);
  const auto report = makeReport(options.run.format, console);
  report->begin({.company = books.company().name,
                 .title = "Balance sheet as at " + day.toText(),
                 .lines = "accounts",
                 .depth = 2,
                 .limit = options.run.limit},
                columns());
  const std::vector<LedgerAccount> accounts = books.accounts();
  const Currency assets = tellSide(*report, books, accounts, false, day, options.all);
  const Currency claims = tellSide(*report, books, accounts, true, day, options.all);
  if (assets == claims) {
    report->note("Assets equal liabilities and equity.");
  } else {
    report->alarm("The balance sheet is out of balance: assets less liabilities and equity are " +
                  amountText(assets - claims));
  }
  report->end();
  books.session().finish();
  return kDone;
}

}  // namespace QuorCli
