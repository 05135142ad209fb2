#include "host/company/check_ledger.h"

#include <array>
#include <map>

#include "platform/date.h"

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

/// A rule on the sums of documents; its rows are a name and an amount or a count.
struct Rule {
  const char* query;
  const char* before;
  const char* between;
  const char* after;
};

constexpr std::array kRules{
    Rule{"SELECT GLAcctId, COUNT(*) FROM GLAcct GROUP BY GLAcctId HAVING COUNT(*) > 1 "
         "ORDER BY GLAcctId",
         "The account number ", " is that of ", " accounts of GLAcct"},
    Rule{"SELECT ExGJTrxId, SUM(Amount) FROM GJTrxDet GROUP BY ExGJTrxId HAVING SUM(Amount) <> 0 "
         "ORDER BY ExGJTrxId",
         "The lines of journal entry ", " of GJTrxHdr add up to ", " and not to zero"},
    Rule{"SELECT DepHdr.InDepId, SUM(DepDet.Amount) FROM DepHdr "
         "INNER JOIN DepDet ON DepDet.ExDepId = DepHdr.InDepId "
         "GROUP BY DepHdr.InDepId, DepHdr.TotAmnt HAVING SUM(DepDet.Amount) <> DepHdr.TotAmnt "
         "ORDER BY DepHdr.InDepId",
         "The lines of deposit ", " of DepHdr add up to ", ", which is not its TotAmnt"},
};

}  // namespace

void checkBalanceSheets(Store& store, const Finding& report) {
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

void checkLedgerDocuments(Store& store, const Finding& report) {
  for (const Rule& rule : kRules) {
    const Ref<Recordset> broken = read(store, rule.query);
    for (; !broken->AtEnd(); broken->MoveNext()) {
      report(rule.before + broken->Field(0).toText() + rule.between + broken->Field(1).toText() +
             rule.after);
    }
  }
}

}  // namespace QuorHost
