// The fixed texts of the ledger helper's balances, earnings and budgets. Those of the income
// statement's lines are in history_sql.h.
#pragma once

#include <string_view>

#include "core/dialect_text.h"

namespace QuorAccQueries::BalancesSql {

inline constexpr std::string_view kRetainedEarnings = "SELECT Sum(DetAmnt) AS RetainEarn ";
inline constexpr std::string_view kEarnedBefore = "GLDet.DetDate >= ? AND GLDet.DetDate < ?";
inline constexpr std::string_view kCurrentEarnings = "SELECT Sum(DetAmnt) AS CurrentEarn ";
inline constexpr std::string_view kEarnedWithin = "GLDet.DetDate BETWEEN ? AND ? ";
inline constexpr std::string_view kAnd = " AND ";

inline constexpr std::string_view kCurrencyOfAccount =
    "SELECT ExCurrencyId FROM GLAcct WHERE InGLAcctId=?";
inline constexpr std::string_view kAccountToCheck =
    "SELECT InGLAcctId, GLAcctId, Descr FROM GLAcct WHERE InGLAcctId = ";

// Sales of a period.

inline constexpr std::string_view kInvoiced = "SELECT Sum((DetAmnt + ";
inline constexpr DialectText kInvoicedAtRate{
    .desktop =
        " IIF(IsNull(ShipAmnt),0,ShipAmnt)) * IIf(ExchangeRate <> 0 And "
        " Not IsNull(ExchangeRate), ExchangeRate, 1)) As TotalInvoi FROM InvoiHdr ",
    .server =
        " (CASE WHEN ShipAmnt IS NULL THEN 0 ELSE ShipAmnt END)) * (CASE WHEN ExchangeRate <> 0 "
        "And "
        " Not ExchangeRate IS NULL THEN ExchangeRate ELSE 1 END)) As TotalInvoi FROM InvoiHdr "};
inline constexpr std::string_view kInvoicedTypes =
    " WHERE InvoiType In("
    "1,2,3,4"
    ") AND "
    " InvoiDate BETWEEN ? AND ?";

inline constexpr std::string_view kSalesAtRate = "SELECT Sum(SalesAmnt * ";
inline constexpr DialectText kRate{.desktop =
                                       "IIf(ExchangeRate <> 0 And "
                                       " Not IsNull(ExchangeRate), ExchangeRate, 1)",
                                   .server =
                                       "(CASE WHEN ExchangeRate <> 0 And "
                                       " Not ExchangeRate IS NULL THEN ExchangeRate ELSE 1 END)"};
inline constexpr std::string_view kDeposited =
    ") As TotalDeposits "
    "FROM DepHdr "
    "WHERE DepDate BETWEEN ? AND ?";
inline constexpr std::string_view kEntered =
    ") As TotalGJ FROM GJTrxHdr"
    " WHERE TrxDate BETWEEN ? AND ?";
inline constexpr std::string_view kOfCurrency = " AND ExCurrencyId = ";

// Budgets: the same over two tables.

inline constexpr std::string_view kBudgetOfAccount =
    "SELECT SUM(GLAcctBudget.Amount) as Budget "
    "FROM ((FiscalYearHdr INNER JOIN FiscalYearDet ON FiscalYearDet.ExID = FiscalYearHdr.ID) "
    "INNER JOIN GLAcctBudget ON GLAcctBudget.ExFiscalYearDetId = FiscalYearDet.ID) "
    "WHERE GLAcctBudget.ExGLAcctId = ";
inline constexpr std::string_view kBudgetOfSegment =
    "SELECT SUM(GLAcctSegmentBudget.Amount) as Budget "
    "FROM ((FiscalYearHdr INNER JOIN FiscalYearDet ON FiscalYearDet.ExID = FiscalYearHdr.ID) "
    "INNER JOIN GLAcctSegmentBudget ON GLAcctSegmentBudget.ExFiscalYearDetId = FiscalYearDet.ID) "
    "WHERE GLAcctSegmentBudget.ExID = ";
inline constexpr std::string_view kOverlappingPeriods =
    " AND ((FiscalYearDet.BegDate BETWEEN ? AND ?) OR "
    "(FiscalYearDet.EndDate BETWEEN ? AND ?) OR (FiscalYearDet.BegDate < ? AND "
    "FiscalYearDet.EndDate > ?))";

inline constexpr std::string_view kTransactionsOfDocument =
    "SELECT DISTINCT SeqNo FROM GLDet WHERE Source=? AND ExSrcKeyVal=?";

}  // namespace QuorAccQueries::BalancesSql
