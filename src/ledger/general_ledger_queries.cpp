#include "ledger/general_ledger_queries.h"

#include "core/platform_access.h"
#include "core/statement.h"
#include "ledger/account_numbers.h"
#include "ledger/history_sql.h"

namespace QuorAccQueries {

namespace Sql = HistorySql;

namespace {

/// `DebitCreditKind` of the credits; everything else means the debits.
constexpr std::int32_t kCreditKind = 2;
/// `AcctClass` of the expenses; everything else means the revenue.
constexpr std::int32_t kExpenseClass = 2;

constexpr std::string_view signOf(std::int32_t debitCreditKind) {
  return debitCreditKind == kCreditKind ? Sql::kCredits : Sql::kDebits;
}

}  // namespace

const ClassInfo& CGeneralLedgerQueries::info() {
  using Self = CGeneralLedgerQueries;
  static const ClassInfo info = describeClass<CGeneralLedgerQueries>(
      "General ledger queries: histories of accounts and projects, balances, earnings, cheques.",
      joined(QueryFrame::members(),
             {
                 commandTimeoutLine<Self>(),
                 method<&Self::OpenGLAcctHistory>(
                     "OpenGLAcctHistory",
                     {"UseForeignAmnt", "AcctCurrencyId", "AcctId", "HomeCurrencyId",
                      unwritten("FromDate"), unwritten("ToDate")},
                     "The ledger lines of an account in a period."),
                 method<&Self::OpenGLAcctHistoryForwardBalance>(
                     "OpenGLAcctHistoryForwardBalance",
                     {"UseForeignAmnt", "AcctCurrencyId", "AcctId", "HomeCurrencyId",
                      unwritten("FromDate"), unwritten("ToDate")},
                     "An account's total from a day up to the day before another."),
                 method<&Self::OpenGLAcctHistoryDebitsCredits>(
                     "OpenGLAcctHistoryDebitsCredits",
                     {"UseForeignAmnt", "AcctCurrencyId", "AcctId", "HomeCurrencyId",
                      unwritten("FromDate"), unwritten("ToDate"), "DebitCreditKind"},
                     "An account's credits (kind 2) or debits (any other) of a period."),
                 method<&Self::OpenProjectHistory>(
                     "OpenProjectHistory",
                     {"UseForeignAmnt", "CurrencyId", "ProjId", unwritten("FromDate"),
                      unwritten("ToDate"), "AcctClass"},
                     "A project's expenses (class 2) or revenue (any other) in a period, line by "
                     "line, in home currency."),
                 method<&Self::OpenProjHistoryForwardBalance>(
                     "OpenProjHistoryForwardBalance",
                     {"UseForeignAmnt", "CurrencyId", "ProjId", unwritten("FromDate"),
                      unwritten("ToDate"), "AcctClass"},
                     "A project's expenses or revenue of a period, in all."),
                 method<&Self::OpenProjHistoryDebitsCredits>(
                     "OpenProjHistoryDebitsCredits",
                     {"UseForeignAmnt", "CurrencyId", "ProjId", unwritten("FromDate"),
                      unwritten("ToDate"), "DebitCreditKind", "AcctClass"},
                     "A project's net total of a period where it is negative (kind 2) or positive "
                     "(any other)."),
                 method<&Self::OpenGLAcctBalanceRange>(
                     "OpenGLAcctBalanceRange",
                     {"AcctId", unwritten("FromDate"), unwritten("ToDate"), "ProjIdList",
                      "ExtraCondition"},
                     "What the lines of a period come to, by account."),
                 method<&Self::OpenGLAcctBalanceRangeTotRemittence>(
                     "OpenGLAcctBalanceRangeTotRemittence",
                     {"AcctId", unwritten("FromDate"), unwritten("ToDate"), "ProjIdList",
                      "ExtraCondition"},
                     "What the payroll remittances for the periods between two days come to, by "
                     "account."),
                 method<&Self::OpenGLAcctForeignBalanceRange>(
                     "OpenGLAcctForeignBalanceRange",
                     {"CurrencyId", unwritten("FromDate"), unwritten("ToDate"), "AcctId",
                      "ProjIdList", "ExtraCondition"},
                     "What the lines of a period come to, by account kept in a currency."),
                 method<&Self::OpenCurrentEarnRange>(
                     "OpenCurrentEarnRange", {unwritten("FromDate"), unwritten("ToDate")},
                     "The earnings of a period; a profit is positive."),
                 method<&Self::OpenAllIssuedChecks>("OpenAllIssuedChecks", {"ChqNo", "GLAcctId"},
                                                    "The cheques issued under a number."),
             }));
  return info;
}

Ref<Recordset> CGeneralLedgerQueries::OpenGLAcctHistory(bool UseForeignAmnt,
                                                        std::int32_t AcctCurrencyId,
                                                        std::int32_t AcctId,
                                                        std::int32_t HomeCurrencyId, Date FromDate,
                                                        Date ToDate) {
  return trap("OpenGLAcctHistory", [&](Steps& step, Ref<Recordset>& result) {
    const std::string amount = step([&] {
      return MUtils::GLAcctQueryFieldToUse(UseForeignAmnt, AcctCurrencyId, HomeCurrencyId);
    });
    Statement statement;
    statement.text(Sql::kAccountLines).text(amount).text(Sql::kAccountLinesFrom).number(AcctId);
    statement.text(Sql::kInPeriod).bind(FromDate).bind(ToDate).text(Sql::kAccountOrder);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CGeneralLedgerQueries::OpenGLAcctHistoryForwardBalance(bool UseForeignAmnt,
                                                                      std::int32_t AcctCurrencyId,
                                                                      std::int32_t AcctId,
                                                                      std::int32_t HomeCurrencyId,
                                                                      Date FromDate, Date ToDate) {
  return trap("OpenGLAcctHistoryForwardBalance", [&](Steps& step, Ref<Recordset>& result) {
    const std::string amount = step([&] {
      return MUtils::GLAcctQueryFieldToUse(UseForeignAmnt, AcctCurrencyId, HomeCurrencyId);
    });
    Statement statement(Sql::kSum);
    statement.text(amount).text(Sql::kForwardOfAccount).number(AcctId);
    statement.text(Sql::kBeforePeriod).bind(FromDate).bind(ToDate);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CGeneralLedgerQueries::OpenGLAcctHistoryDebitsCredits(
    bool UseForeignAmnt, std::int32_t AcctCurrencyId, std::int32_t AcctId,
    std::int32_t HomeCurrencyId, Date FromDate, Date ToDate, std::int32_t DebitCreditKind) {
  return trap("OpenGLAcctHistoryDebitsCredits", [&](Steps& step, Ref<Recordset>& result) {
    const std::string amount = step([&] {
      return MUtils::GLAcctQueryFieldToUse(UseForeignAmnt, AcctCurrencyId, HomeCurrencyId);
    });
    Statement statement(Sql::kSum);
    statement.text(amount).text(Sql::kValueOfAccount).number(AcctId);
    statement.text(Sql::kInPeriod).bind(FromDate).bind(ToDate);
    statement.text(Sql::kAnd).text(amount).text(signOf(DebitCreditKind));
    result = open(step, statement, Pass::Array);
  });
}

void CGeneralLedgerQueries::addAccountClass(Steps& step, Statement& statement,
                                            std::int32_t AcctClass) {
  const bool expenses = AcctClass == kExpenseClass;
  const std::int32_t chart = askCompany(step, &QuorCastriaFoundation::Company::CieAccountTypeChart);
  if (chart != kFixedChart) {
    statement.text(expenses ? Sql::kOwnExpenses : Sql::kOwnRevenue);
  } else if (expenses) {
    const std::string furtherTypes = askUtility(step, [](QuorDataLib::Utility& utility) {
      return utility.FurtherAccountTypes(kExpenseClass);
    });
    statement.text(Sql::kFixedExpenses).fragment(furtherTypes).text(")");
  } else {
    statement.text(Sql::kFixedRevenue);
  }
}

Ref<Recordset> CGeneralLedgerQueries::OpenProjectHistory(bool UseForeignAmnt,
                                                         std::int32_t CurrencyId,
                                                         std::int32_t ProjId, Date FromDate,
                                                         Date ToDate, std::int32_t AcctClass) {
  return trap("OpenProjectHistory", [&](Steps& step, Ref<Recordset>& result) {
    const std::string amount =
        step([&] { return MUtils::GLAcctQueryFieldToUse(UseForeignAmnt, CurrencyId, CurrencyId); });
    Statement statement(Sql::kProjectLines);
    statement.text(amount).text(Sql::kProjectLinesFrom).text(amount);
    statement.text(Sql::kNotZeroOfProject).number(ProjId);
    statement.text(Sql::kInPeriodOfClass).bind(FromDate).bind(ToDate);
    addAccountClass(step, statement, AcctClass);
    statement.text(Sql::kProjectGroups).text(amount).text(")");
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CGeneralLedgerQueries::OpenProjHistoryForwardBalance(bool UseForeignAmnt,
                                                                    std::int32_t CurrencyId,
                                                                    std::int32_t ProjId,
                                                                    Date FromDate, Date ToDate,
                                                                    std::int32_t AcctClass) {
  return trap("OpenProjHistoryForwardBalance", [&](Steps& step, Ref<Recordset>& result) {
    const std::string amount =
        step([&] { return MUtils::GLAcctQueryFieldToUse(UseForeignAmnt, CurrencyId, CurrencyId); });
    Statement statement(Sql::kSum);
    statement.text(amount).text(Sql::kValueOfProject).number(ProjId);
    statement.text(Sql::kInPeriodOfClass).bind(FromDate).bind(ToDate);
    addAccountClass(step, statement, AcctClass);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CGeneralLedgerQueries::OpenProjHistoryDebitsCredits(
    bool UseForeignAmnt, std::int32_t CurrencyId, std::int32_t ProjId, Date FromDate, Date ToDate,
    std::int32_t DebitCreditKind, std::int32_t AcctClass) {
  return trap("OpenProjHistoryDebitsCredits", [&](Steps& step, Ref<Recordset>& result) {
    const std::string amount =
        step([&] { return MUtils::GLAcctQueryFieldToUse(UseForeignAmnt, CurrencyId, CurrencyId); });
    Statement statement(Sql::kNetOfProject);
    statement.text(amount).text(Sql::kNetOfProjectFrom).number(ProjId);
    statement.text(Sql::kInPeriodOfClass).bind(FromDate).bind(ToDate);
    addAccountClass(step, statement, AcctClass);
    statement.text(Sql::kNetWithSign).text(signOf(DebitCreditKind));
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CGeneralLedgerQueries::OpenAllIssuedChecks(const std::string& ChqNo,
                                                          std::int32_t GLAcctId) {
  return trap("OpenAllIssuedChecks", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kIssuedCheques);
    statement.number(GLAcctId).text(Sql::kOfNumber).bind(ChqNo);
    result = open(step, statement, Pass::Single);
  });
}

}  // namespace QuorAccQueries
