// The general ledger.
#include <array>
#include <map>

#include "host/company/checks/check.h"
#include "platform/values/date.h"

namespace QuorHost {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;

constexpr std::int32_t kBalanceSheet = 1;
constexpr std::int32_t kIncomeStatement = 2;

Ref<Recordset> read(Store& store, const char* query) {
  return store.connect(Sql::Dialect::Server)->OpenRecordset(query, 4, 0, {}, 0);
}

/// What is posted on a day to the accounts of either statement.
struct Day {
  Currency balanceSheet;
  Currency income;
};

std::map<Date, Day> postedByDay(Store& store) {
  std::map<std::int32_t, std::int32_t> definitions;  // by account
  const Ref<Recordset> accounts =
      read(store,
           "SELECT GLAcct.InGLAcctId, AccountType.ExAcctTypeDefId FROM GLAcct "
           "INNER JOIN AccountType ON AccountType.ID = GLAcct.AcctType");
  for (; !accounts->AtEnd(); accounts->MoveNext()) {
    definitions[accounts->Field(0).toLong()] = accounts->Field(1).toLong();
  }
  std::map<Date, Day> days;
  const Ref<Recordset> sums =
      read(store, "SELECT ExAcctId, DetDate, SUM(DetAmnt) FROM GLDet GROUP BY ExAcctId, DetDate");
  for (; !sums->AtEnd(); sums->MoveNext()) {
    const auto definition = definitions.find(sums->Field(0).toLong());
    if (definition == definitions.end()) continue;
    Day& day = days[sums->Field(1).toDate()];
    if (definition->second == kBalanceSheet) day.balanceSheet += sums->Field(2).toCurrency();
    if (definition->second == kIncomeStatement) day.income += sums->Field(2).toCurrency();
  }
  return days;
}

/// The balance sheet of every fiscal period's last day: the accounts of the balance sheet, with the
/// earnings of the fiscal year on the current earnings account and those of all years before on the
/// retained earnings account, add up to zero, just as the ledger helper computes them. Lines on
/// accounts that belong to neither statement, and lines before 1900-12-31, make them differ.
void lookAtBalanceSheets(Store& store, const Findings& report) {
  const Date firstEarnings = Date::of(1900, 12, 31);
  const std::map<Date, Day> days = postedByDay(store);
  const Ref<Recordset> ends =
      read(store,
           "SELECT FiscalYearDet.EndDate, MAX(FiscalYearHdr.BegDate) AS YearBeg FROM FiscalYearDet "
           "INNER JOIN FiscalYearHdr ON FiscalYearHdr.BegDate <= FiscalYearDet.EndDate "
           "AND FiscalYearHdr.EndDate >= FiscalYearDet.EndDate "
           "GROUP BY FiscalYearDet.EndDate ORDER BY FiscalYearDet.EndDate");
  for (; !ends->AtEnd(); ends->MoveNext()) {
    const Date end = ends->Field(0).toDate();
    const Date year = ends->Field(1).toDate();
    Currency total;
    for (auto day = days.begin(); day != days.end() && day->first <= end; ++day) {
      total += day->second.balanceSheet;
      const bool current = day->first >= year;
      const bool retained = !current && day->first >= firstEarnings;
      if (current || retained) total += day->second.income;
    }
    if (total.isZero()) continue;
    report("The balance sheet of " + end.toText() +
           " does not balance: assets, liabilities, equity and earnings add up to " +
           total.toText(2) + "; look for accounts without a type and for lines before 1900-12-31");
  }
}

constexpr std::array kLedgerChecks{
    Check{.rule = "every ledger transaction balances",
          .query = "SELECT SeqNo, SUM(DetAmnt) FROM GLDet GROUP BY SeqNo HAVING SUM(DetAmnt) <> 0 "
                   "ORDER BY SeqNo",
          .finding = "Ledger transaction {0} of GLDet does not balance: its lines add up to {1}"},
    Check{.rule = "every ledger line is posted to an account",
          .query = "SELECT GLDet.InGLDetId, GLDet.ExAcctId FROM GLDet "
                   "LEFT JOIN GLAcct ON GLAcct.InGLAcctId = GLDet.ExAcctId "
                   "WHERE GLAcct.InGLAcctId IS NULL ORDER BY GLDet.InGLDetId",
          .finding = "Row {0} of GLDet is posted to account {1}, which is missing in GLAcct"},
    Check{.rule = "account numbers are unique",
          .query = "SELECT GLAcctId, COUNT(*) FROM GLAcct GROUP BY GLAcctId HAVING COUNT(*) > 1 "
                   "ORDER BY GLAcctId",
          .finding = "The account number {0} is that of {1} accounts of GLAcct"},
    Check{.rule = "journal entries add up to zero",
          .query = "SELECT ExGJTrxId, SUM(Amount) FROM GJTrxDet GROUP BY ExGJTrxId "
                   "HAVING SUM(Amount) <> 0 ORDER BY ExGJTrxId",
          .finding = "The lines of journal entry {0} of GJTrxHdr add up to {1} and not to zero"},
    Check{.rule = "the lines of deposits add up to them",
          .query = "SELECT DepHdr.InDepId, SUM(DepDet.Amount) FROM DepHdr "
                   "INNER JOIN DepDet ON DepDet.ExDepId = DepHdr.InDepId "
                   "GROUP BY DepHdr.InDepId, DepHdr.TotAmnt "
                   "HAVING SUM(DepDet.Amount) <> DepHdr.TotAmnt ORDER BY DepHdr.InDepId",
          .finding = "The lines of deposit {0} of DepHdr add up to {1}, which is not its TotAmnt"},
    Check{.rule = "balance sheets balance", .look = lookAtBalanceSheets},
};

}  // namespace

std::span<const Check> ledgerChecks() { return kLedgerChecks; }

}  // namespace QuorHost
