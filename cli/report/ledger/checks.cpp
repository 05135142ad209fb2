// What is not reconciled: the lines of bank accounts that no bank statement has shown yet, and what
// that makes of the balance in the books.
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

std::vector<Column> columns(bool summary) {
  using enum CellKind;
  using enum Audience;
  const Audience ofAccount = summary ? Everyone : Programs;
  std::vector<Column> columns{{"", "AccountId", Key, Programs},
                              {"Account", "AccountCode", Code, ofAccount},
                              {"Name", "AccountName", Name, ofAccount}};
  if (summary) {
    columns.insert(columns.end(), {{"Books", "BookBalance", Money, Everyone},
                                   {"Deposits", "Deposits", MoneyPart, Everyone},
                                   {"Cheques", "Cheques", MoneyPart, Everyone},
                                   {"Bank", "BankBalance", Money, Everyone}});
  } else {
    columns.insert(columns.end(), {{"Date", "Date", Date, Everyone},
                                   {"Source", "Source", Code, Everyone},
                                   {"", "DocumentId", Key, Programs},
                                   {"Number", "Number", Code, Everyone},
                                   {"Description", "Description", Name, Everyone},
                                   {"Deposit", "Deposit", MoneyPart, Everyone},
                                   {"Cheque", "Cheque", MoneyPart, Everyone},
                                   {"Balance", "", Money, People}});
  }
  return columns;
}

/// What of an account is on its way to the bank.
struct Outstanding {
  Currency deposits;
  Currency cheques;
};

class ChecksPage {
 public:
  ChecksPage(Books& books, Report& report, Date day, bool summary)
      : books_(books), report_(report), day_(day), summary_(summary) {}

  void tell(const LedgerAccount& account) {
    if (!summary_) report_.group(0, account.code + " " + account.name, "");
    Outstanding outstanding;
    const Ref<Recordset> rows = books_.queries().OpenGLAcctHistory(
        false, account.currency, account.key, books_.company().homeCurrency, Books::firstDay(),
        endOfDay(day_));
    if (!rows) throw Failure("the component has returned no history of " + account.code);
    for (; !rows->AtEnd(); rows->MoveNext()) {
      const Currency amount = rows->Field("DetAmount").toCurrency();
      if (amount.isZero() || isReconciled(account, *rows, amount)) continue;
      const bool cheque = amount < Currency();
      (cheque ? outstanding.cheques : outstanding.deposits) += cheque ? -amount : amount;
      if (!summary_) tellLine(account, *rows, amount);
    }
    rows->Close();
    const Currency books = books_.balance(account, day_);
    const Currency bank = books - outstanding.deposits + outstanding.cheques;
    if (summary_) {
      report_.line({account.key, account.code, account.name, books, outstanding.deposits,
                    outstanding.cheques, bank});
    } else {
      const Value none = Value::null();
      report_.total(0, Weight::Subtotal, "Not reconciled",
                    totalLine(outstanding.deposits, outstanding.cheques, none));
      report_.total(0, Weight::Plain, "Balance in the books", totalLine(none, none, books));
      report_.total(0, Weight::Plain, "Balance on the bank's statements",
                    totalLine(none, none, bank));
    }
  }

 private:
  static std::string textOf(Recordset& rows, const char* column) {
    const Value value = rows.Field(column);
    return value.isNull() ? std::string() : value.toText();
  }

  bool isReconciled(const LedgerAccount& account, Recordset& rows, Currency amount) {
    const std::string source = textOf(rows, "Source");
    const std::string reference = textOf(rows, "DetRef");
    const Value document = rows.Field("ExSrcKeyVal");
    const std::int32_t key = document.isNull() ? 0 : document.toLong();
    return amount < Currency()
               ? books_.helper().ChequeIsConciliated(source, reference, account.key, key)
               : books_.helper().DepositIsConciliated(source, reference, account.key, key);
  }

  void tellLine(const LedgerAccount& account, Recordset& rows, Currency amount) {
    const bool cheque = amount < Currency();
    report_.line({account.key, account.code, account.name, rows.Field("DetDate"),
                  textOf(rows, "Source"), rows.Field("ExSrcKeyVal"), textOf(rows, "DetRef"),
                  textOf(rows, "DetDesc"), cheque ? Currency() : amount,
                  cheque ? -amount : Currency(), Value::null()});
  }

  static Line totalLine(Value deposits, Value cheques, Value balance) {
    Line line(8, Value::null());
    line.push_back(std::move(deposits));
    line.push_back(std::move(cheques));
    line.push_back(std::move(balance));
    return line;
  }

  Books& books_;
  Report& report_;
  Date day_;
  bool summary_;
};

}  // namespace

int printChecks(const LedgerOptions& options, Console& console) {
  if (options.asOf) static_cast<void>(parseDay("--as-of", *options.asOf));
  Books books(options.run, console);
  const Date day = dayOf(options.asOf, books.company().sessionDate);
  const auto report = makeReport(options.run.format, console);
  report->begin({.company = books.company().name,
                 .title = "Bank accounts as at " + day.toText() + ", what is not reconciled",
                 .lines = options.summary ? "accounts" : "lines",
                 .headingInGroups = !options.summary,
                 .depth = options.summary ? 0 : 1,
                 .limit = options.run.limit},
                columns(options.summary));
  ChecksPage page(books, *report, day, options.summary);
  if (options.account) {
    page.tell(books.account(*options.account));
  } else {
    for (const LedgerAccount& account : books.accounts()) {
      if (account.bank) page.tell(account);
    }
  }
  report->end();
  books.session().finish();
  return kDone;
}

}  // namespace QuorCli
