// The ledger helper's balances and earnings.
#include <functional>

#include "core/platform_access.h"
#include "core/statement.h"
#include "ledger/balances_sql.h"
#include "ledger/general_ledger_helper.h"
#include "ledger/history_sql.h"

namespace QuorAccQueries {

namespace Sql = BalancesSql;

namespace {

/// `ExAcctTypeDefId` of the income statement.
constexpr std::int32_t kIncomeStatement = 2;

/// The first day that balances count from, and the one where no date is given. They differ by a
/// year, which no books reach back to.
Date firstDay() { return Date::of(1899, 12, 31); }
Date firstDayOfRange() { return Date::of(1900, 12, 31); }

/// The filters of a balance as one condition. What the caller gives is followed by " AND " whether
/// or not anything follows.
std::string conditionOf(const std::string& extra, std::int32_t segment, std::int32_t project) {
  std::string text;
  if (!extra.empty()) text = extra + " AND ";
  if (segment >= 1) text += " ExSegmentId = " + std::to_string(segment);
  if (segment < 0) text += " ExSegmentId IS NULL";
  if (project != 0 && !text.empty()) text += " AND ";
  if (project >= 1) text += "GLDet.ExProjId = " + std::to_string(project);
  if (project < 0) text += "GLDet.ExProjId IS NULL";
  return text;
}

Statement earnings(std::string_view sum, std::string_view dates, Date from, Date to,
                   const std::string& condition) {
  Statement statement(sum);
  statement.text(HistorySql::kOfIncomeStatement).text(dates).bind(from).bind(to);
  if (!condition.empty()) statement.text(Sql::kAnd).fragment(condition);
  return statement;
}

}  // namespace

void CGeneralLedgerHelper::readEarningsAccounts(Steps& step, Where where) {
  if (keepsRecordsets() && (currentEarnAcctId_ != 0 || retainEarnAcctId_ != 0)) return;
  step([&] { currentEarnAcctId_ = accountParameter(step, "GLCurntEarn"); }, where);
  step([&] { retainEarnAcctId_ = accountParameter(step, "GLRtainEarn"); }, where);
}

Currency CGeneralLedgerHelper::GetAcctBalance(std::int32_t AcctId, std::int32_t AcctType,
                                              std::int32_t AcctCurrencyId, Date AsOfDate,
                                              std::int32_t HomeCurrencyId, bool UseForeignAmnt,
                                              std::int32_t SegmentId, std::int32_t ProjId,
                                              bool IgnoreFiscalYear,
                                              const std::string& ExtraCondition) {
  return trap("GetAcctBalance", [&](Steps& step, Currency& result) {
    if (AcctId == 0) return;
    const Date yearStart =
        keepsRecordsets() ? step([&] {
          return MUtils::GetFiscalYearStartDateCached(fiscalYears_, AsOfDate, step);
        })
                          : askCompany(step, [&](QuorCastriaFoundation::Company& company) {
                              return company.GetFiscalYearStartDate(AsOfDate);
                            });
    readEarningsAccounts(step);

    Date from = firstDay();
    if (AcctId != currentEarnAcctId_ && AcctId != retainEarnAcctId_) {
      const std::int32_t definition = step([&] { return GetAccountTypeTypeDefinition(AcctType); });
      if (definition == kIncomeStatement && !IgnoreFiscalYear) from = yearStart;
    }

    const std::string condition = conditionOf(ExtraCondition, SegmentId, ProjId);
    const std::string none;
    if (AcctCurrencyId == 0 || AcctCurrencyId == HomeCurrencyId || !UseForeignAmnt) {
      step([&] { result = GetAcctBalanceRange(AcctId, from, AsOfDate, condition, none); });
    } else {
      const Ref<Recordset> rows = step([&] {
        return queries_->OpenGLAcctForeignBalanceRange(AcctCurrencyId, from, AsOfDate, AcctId, none,
                                                       condition);
      });
      if (hasRow(step, rows)) readField(step, rows, "AcctForeignBalance", result);
      step([&] { rows->Close(); });
    }

    if (AcctId == currentEarnAcctId_) {
      step([&] { result += CurrentEarnings(yearStart, AsOfDate, none); });
    } else if (AcctId == retainEarnAcctId_) {
      step([&] { result += RetainedEarnings(yearStart, none); });
    }
  });
}

void CGeneralLedgerHelper::readBalance(Steps& step, OpenRange openRange, RecordsetCache& cache,
                                       Range range, Currency& result, Where where) {
  if (range.from.dateOnly().empty()) range.from = firstDayOfRange();
  // What is kept has all accounts, so that it serves them all.
  const std::int32_t account = keepsRecordsets() ? 0 : range.account;
  const Ref<Recordset> rows = reuse(
      step, cache, {range.from, range.to, range.condition},
      [&] {
        return step(
            [&] {
              return std::invoke(openRange, *queries_, account, range.from, range.to,
                                 range.projects, range.condition);
            },
            where);
      },
      where);
  const bool found =
      keepsRecordsets()
          ? step([&] { return rows->Find("InGLAcctId = " + std::to_string(range.account)); }, where)
          : hasRow(step, rows, where);
  if (found) readField(step, rows, "AcctBalance", result, where);
  release(step, rows, where);
}

Currency CGeneralLedgerHelper::GetAcctBalanceRange(std::int32_t AcctId, Date FromDate, Date ToDate,
                                                   const std::string& ExtraCondition,
                                                   const std::string& ProjIdList) {
  return trap("GetAcctBalanceRange", [&](Steps& step, Currency& result) {
    readBalance(step, &CGeneralLedgerQueries::OpenGLAcctBalanceRange, balances_,
                {AcctId, FromDate, ToDate, ExtraCondition, ProjIdList}, result);
  });
}

Currency CGeneralLedgerHelper::GetAcctBalanceRangeTotRemittence(std::int32_t AcctId, Date FromDate,
                                                                Date ToDate,
                                                                const std::string& ExtraCondition,
                                                                const std::string& ProjIdList) {
  return trap("GetAcctBalanceRangeTotRemittence", [&](Steps& step, Currency& result) {
    readBalance(step, &CGeneralLedgerQueries::OpenGLAcctBalanceRangeTotRemittence, remittances_,
                {AcctId, FromDate, ToDate, ExtraCondition, ProjIdList}, result);
  });
}

Currency CGeneralLedgerHelper::GetAcctBalanceRangeForeign(
    std::int32_t AcctId, Date FromDate, Date ToDate, const std::string& ExtraCondition,
    const std::string& ProjIdList, std::int32_t CurrencyId, Currency& AcctBalance) {
  return trap("GetAcctBalanceRangeForeign", [&](Steps& step, Currency& result) {
    AcctBalance = {};
    const Date from = FromDate.dateOnly().empty() ? firstDayOfRange() : FromDate;
    const Ref<Recordset> rows = step([&] {
      return queries_->OpenGLAcctForeignBalanceRange(CurrencyId, from, ToDate, AcctId, ProjIdList,
                                                     ExtraCondition);
    });
    if (hasRow(step, rows)) {
      readField(step, rows, "AcctForeignBalance", result);
      readField(step, rows, "AcctBalance", AcctBalance);
    }
    step([&] { rows->Close(); });
  });
}

Currency CGeneralLedgerHelper::RetainedEarnings(Date FiscalYearStart,
                                                const std::string& ExtraCondition) {
  return trap("RetainedEarnings", [&](Steps& step, Currency& result) {
    const Statement statement = earnings(Sql::kRetainedEarnings, Sql::kEarnedBefore,
                                         firstDayOfRange(), FiscalYearStart, ExtraCondition);
    const Ref<Recordset> rows = reuse(step, retainedEarnings_, {FiscalYearStart},
                                      [&] { return open(step, statement, Pass::Array); });
    if (hasRow(step, rows)) readField(step, rows, "RetainEarn", result);
    release(step, rows);
  });
}

Currency CGeneralLedgerHelper::CurrentEarnings(Date FromDate, Date ToDate,
                                               const std::string& ExtraCondition) {
  return trap("CurrentEarnings", [&](Steps& step, Currency& result) {
    const Statement statement =
        earnings(Sql::kCurrentEarnings, Sql::kEarnedWithin, FromDate, ToDate, ExtraCondition);
    readFirst(step, statement, Pass::Array, "CurrentEarn", result);
  });
}

std::int32_t CGeneralLedgerHelper::GetAcctCurrency(std::int32_t AcctId) {
  return trap("GetAcctCurrency", [&](Steps& step, std::int32_t& result) {
    readFirst(step, Statement(Sql::kCurrencyOfAccount).bind(AcctId), Pass::Single, "ExCurrencyId",
              result);
  });
}

}  // namespace QuorAccQueries
