// The ledger helper's budgets, sales and small readings, and how all of its members read.
#include <array>

#include "core/platform_access.h"
#include "core/statement.h"
#include "ledger/balances_sql.h"
#include "ledger/general_ledger_helper.h"

namespace QuorAccQueries {

namespace Sql = BalancesSql;

namespace {

/// `text` with every "{0}", "{1}" and so on replaced by the value of that number. Values are put in
/// as they are: what looks like a marker in one stays.
std::string filled(std::string_view text, const std::array<std::string, 3>& values) {
  std::string result;
  while (!text.empty()) {
    const bool marker = text.size() >= 3 && text[0] == '{' && text[2] == '}' && text[1] >= '0' &&
                        text[1] < '0' + static_cast<int>(values.size());
    if (marker) {
      result += values.at(static_cast<std::size_t>(text[1] - '0'));
    } else {
      result += text.front();
    }
    text.remove_prefix(marker ? 3 : 1);
  }
  return result;
}

}  // namespace

std::string CGeneralLedgerHelper::companySetting(Steps& step, const std::string& name) {
  const Ref<Connection> connection = step([&] { return CustomConnection(); });
  return MUtils::GetCompanySetting(name, connection, step);
}

bool CGeneralLedgerHelper::parameterIsOn(Steps& step, const std::string& name, Where where) {
  return step(
      [&] {
        const Ref<Connection> connection = step([&] { return CustomConnection(); });
        return Value(MUtils::GetCastriaParam(name, "0", connection, step)).toBoolean();
      },
      where);
}

bool CGeneralLedgerHelper::anyRow(Steps& step, const Statement& statement, Pass pass, Where where) {
  const Ref<Recordset> rows = open(step, statement, pass, {}, where);
  const bool any = moreRows(step, rows, where);
  step([&] { rows->Close(); }, where);
  return any;
}

void CGeneralLedgerHelper::readList(Steps& step, const Statement& statement, Pass pass,
                                    const std::string& column, std::string& list, Where where) {
  const Ref<Recordset> rows = open(step, statement, pass, {}, where);
  for (bool more = moreRows(step, rows, where); more; more = moveOn(step, rows, where)) {
    std::string text;
    readField(step, rows, column, text, where);
    if (!list.empty()) list += ",";
    list += text;
  }
  step([&] { rows->Close(); }, where);
}

std::string CGeneralLedgerHelper::CheckAccountBalance(std::int32_t AcctId, Date AsOfDate) {
  return trap("CheckAccountBalance", [&](Steps& step, std::string& result) {
    const Ref<Recordset> rows =
        open(step, Statement(Sql::kAccountToCheck).number(AcctId), Pass::Nothing);
    std::string number;
    std::string description;
    if (hasRow(step, rows)) {
      readField(step, rows, "GLAcctId", number);
      readField(step, rows, "Descr", description);
    }
    step([&] { rows->Close(); });

    const Currency balance =
        step([&] { return GetAcctBalanceRange(AcctId, Date::of(1899, 12, 31), AsOfDate, {}, {}); });
    const std::string amount = askUtility(
        step, [&](QuorDataLib::Utility& utility) { return utility.FormatCurrency(balance); });
    const std::string first = step([&] { return companySetting(step, "1056"); });
    const std::string second = step([&] { return companySetting(step, "1057"); });
    result = filled(first + " " + second, {number, " - " + description, amount});
  });
}

Currency CGeneralLedgerHelper::GetTotalEarnings(Date FromDate, Date ToDate) {
  return trap("GetTotalEarnings", [&](Steps& step, Currency& result) {
    const bool foreign = foreignCurrencyUsed(step);
    const std::int32_t home =
        askCurrencyInfo(step, &QuorCastriaFoundation::CurrencyInfo::CieHomeCurrencyId);
    const std::int16_t engine = engineType(step);

    Statement invoices(Sql::kInvoiced);
    invoices.text(Sql::kInvoicedAtRate.of(engine)).text(Sql::kInvoicedTypes);
    Statement deposits(Sql::kSalesAtRate);
    deposits.text(Sql::kRate.of(engine)).text(Sql::kDeposited);
    Statement entries(Sql::kSalesAtRate);
    entries.text(Sql::kRate.of(engine)).text(Sql::kEntered);
    for (Statement* const each : {&invoices, &deposits, &entries}) {
      each->bind(FromDate).bind(ToDate);
      if (foreign) each->text(Sql::kOfCurrency).number(home);
    }

    Currency invoiced;
    Currency deposited;
    Currency entered;
    readFirst(step, invoices, Pass::Array, "TotalInvoi", invoiced);
    readFirst(step, deposits, Pass::Array, "TotalDeposits", deposited);
    readFirst(step, entries, Pass::Array, "TotalGJ", entered);
    step([&] { result = invoiced + deposited + entered; });
  });
}

void CGeneralLedgerHelper::readBudget(Steps& step, std::string_view budget, std::int32_t key,
                                      const std::string& condition, Date from, Date to,
                                      Currency& result, Where where) {
  Statement statement(budget);
  statement.number(key);
  if (!condition.empty()) statement.text(Sql::kAnd).fragment(condition);
  statement.text(Sql::kOverlappingPeriods);
  for (int pair = 0; pair < 3; ++pair) statement.bind(from).bind(to);
  readFirst(step, statement, Pass::Array, "Budget", result, where);
}

Currency CGeneralLedgerHelper::GetAcctBudget(std::int32_t AcctId, Date FromDate, Date ToDate) {
  return trap("GetAcctBudget", [&](Steps& step, Currency& result) {
    readBudget(step, Sql::kBudgetOfAccount, AcctId, {}, FromDate, ToDate, result);
  });
}

Currency CGeneralLedgerHelper::GetAcctSegmentBudget(std::int32_t SegmentBudgetId,
                                                    const std::string& Condition, Date FromDate,
                                                    Date ToDate) {
  return trap("GetAcctSegmentBudget", [&](Steps& step, Currency& result) {
    readBudget(step, Sql::kBudgetOfSegment, SegmentBudgetId, Condition, FromDate, ToDate, result);
  });
}

std::string CGeneralLedgerHelper::GetSeqNoFromExSrcKeyVal(const std::string& Source,
                                                          std::int32_t ExSrcKeyVal) {
  return trap("GetSeqNoFromExSrcKeyVal", [&](Steps& step, std::string& result) {
    readList(step, Statement(Sql::kTransactionsOfDocument).bind(Source).bind(ExSrcKeyVal),
             Pass::Array, "SeqNo", result);
  });
}

}  // namespace QuorAccQueries
