// Balances of many accounts and earnings; the ledger's other queries are in
// general_ledger_queries.cpp.
#include "core/statement.h"
#include "ledger/general_ledger_queries.h"
#include "ledger/history_sql.h"

namespace QuorAccQueries {

namespace Sql = HistorySql;

struct CGeneralLedgerQueries::BalanceRange {
  const DialectText& sums;
  /// The tables and the condition on the dates, with their two markers.
  std::string_view ofDates;
  std::string_view groups;
  Date from;
  Date to;
  std::int32_t account;
  const std::string& projects;
  const std::string& condition;
  /// The currency of the accounts, for `ofDates` that end in it.
  std::int32_t currency = 0;
};

Ref<Recordset> CGeneralLedgerQueries::openBalances(std::string_view methodName,
                                                   const BalanceRange& range) {
  return trap(methodName, [&](Steps& step, Ref<Recordset>& result) {
    const std::int16_t engine = engineType(step);
    Statement statement(range.sums.ofKnown(engine));
    statement.text(range.ofDates).bind(range.from).bind(range.to);
    if (range.ofDates == Sql::kOfCurrency) statement.number(range.currency);
    if (range.account != 0) statement.text(Sql::kOfAccount).number(range.account);
    if (!range.projects.empty()) {
      statement.text(Sql::kOfProjects).fragment(range.projects).text(")");
    }
    if (!range.condition.empty()) statement.text(Sql::kAnd).fragment(range.condition);
    statement.text(range.groups);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CGeneralLedgerQueries::OpenGLAcctBalanceRange(std::int32_t AcctId, Date FromDate,
                                                             Date ToDate,
                                                             const std::string& ProjIdList,
                                                             const std::string& ExtraCondition) {
  return openBalances("OpenGLAcctBalanceRange",
                      {Sql::kBalances, Sql::kOfLedgerDates, Sql::kByLedgerAccount, FromDate, ToDate,
                       AcctId, ProjIdList, ExtraCondition});
}

Ref<Recordset> CGeneralLedgerQueries::OpenGLAcctBalanceRangeTotRemittence(
    std::int32_t AcctId, Date FromDate, Date ToDate, const std::string& ProjIdList,
    const std::string& ExtraCondition) {
  return openBalances("OpenGLAcctBalanceRangeTotRemittence",
                      {Sql::kBalances, Sql::kOfRemittancePeriods, Sql::kByLedgerAccount, FromDate,
                       ToDate, AcctId, ProjIdList, ExtraCondition});
}

Ref<Recordset> CGeneralLedgerQueries::OpenGLAcctForeignBalanceRange(
    std::int32_t CurrencyId, Date FromDate, Date ToDate, std::int32_t AcctId,
    const std::string& ProjIdList, const std::string& ExtraCondition) {
  return openBalances("OpenGLAcctForeignBalanceRange",
                      {Sql::kForeignBalances, Sql::kOfCurrency, Sql::kByAccount, FromDate, ToDate,
                       AcctId, ProjIdList, ExtraCondition, CurrencyId});
}

Ref<Recordset> CGeneralLedgerQueries::OpenCurrentEarnRange(Date FromDate, Date ToDate) {
  return trap("OpenCurrentEarnRange", [&](Steps& step, Ref<Recordset>& result) {
    const std::int16_t engine = engineType(step);
    Statement statement(Sql::kEarnings.ofKnown(engine));
    statement.text(Sql::kOfIncomeStatement).text(Sql::kEarnedInPeriod).bind(FromDate).bind(ToDate);
    result = open(step, statement, Pass::Array);
  });
}

}  // namespace QuorAccQueries
