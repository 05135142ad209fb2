// The fixed texts of the ledger's history and balance queries.
#pragma once

#include <string_view>

#include "core/dialect_text.h"

namespace QuorAccQueries::HistorySql {

// One account. The column of the amount stands after each "SUM(" and in the list of lines.

inline constexpr std::string_view kAccountLines =
    "SELECT DetDate, SeqNo, ExSrcKeyVal, DetRef, Source, DetDesc, ";
inline constexpr std::string_view kAccountLinesFrom =
    " as DetAmount "
    "FROM GLDet "
    "WHERE ExAcctId = ";
inline constexpr std::string_view kInPeriod = " AND DetDate BETWEEN ? AND ? ";
inline constexpr std::string_view kAccountOrder = "ORDER BY DetDate, SeqNo";

inline constexpr std::string_view kSum = "SELECT SUM(";
inline constexpr std::string_view kForwardOfAccount =
    ") As ForwardBalance "
    "FROM GLDet "
    "WHERE ExAcctId = ";
inline constexpr std::string_view kBeforePeriod = " AND DetDate >= ? AND DetDate < ?";
inline constexpr std::string_view kValueOfAccount =
    ") As CurrentValue "
    "FROM GLDet "
    "WHERE ExAcctId = ";
/// Stands after the blank that `kInPeriod` ends with, so that there are two.
inline constexpr std::string_view kAnd = " AND ";
inline constexpr std::string_view kCredits = "< 0";
inline constexpr std::string_view kDebits = "> 0";

// One project.

inline constexpr std::string_view kProjectLines =
    "SELECT GLDet.DetDate, GLDet.SeqNo, GLDet.ExSrcKeyVal, GLDet.DetRef, GLDet.Source, "
    "GLDet.DetDesc, GLDet.ExCurrencyID, SUM(";
inline constexpr std::string_view kProjectLinesFrom =
    ") AS DetAmount "
    "FROM GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId "
    "WHERE ";
inline constexpr std::string_view kNotZeroOfProject = " <> 0 AND ExProjId = ";
inline constexpr std::string_view kInPeriodOfClass = " AND DetDate BETWEEN ? AND ? AND ";
inline constexpr std::string_view kProjectGroups =
    " "
    "GROUP BY GLDet.DetDate, GLDet.SeqNo, GLDet.ExSrcKeyVal, GLDet.DetRef, GLDet.Source, "
    "GLDet.DetDesc, GLDet.ExCurrencyID ORDER BY DetDate, SeqNo, SUM(";

inline constexpr std::string_view kValueOfProject =
    ") As CurrentValue "
    "FROM GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId "
    "WHERE ExProjId = ";
inline constexpr std::string_view kNetOfProject =
    "SELECT SUM(ProjBalance) as CurrentValue FROM ("
    "SELECT SUM(";
inline constexpr std::string_view kNetOfProjectFrom =
    ") As ProjBalance "
    "FROM GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId "
    "WHERE ExProjId = ";
inline constexpr std::string_view kNetWithSign =
    ") AS TrxQuery "
    "WHERE ProjBalance ";

// The income statement's accounts: type 4 is revenue in the fixed chart, type 5 and what the host
// lists are expenses; in every other chart the types say it themselves.

inline constexpr std::string_view kFixedExpenses = "GLAcct.AcctType IN (5,";
inline constexpr std::string_view kFixedRevenue = "GLAcct.AcctType = 4";
inline constexpr std::string_view kOwnExpenses =
    "GLAcct.AcctType IN (SELECT ID FROM AccountType WHERE ExAcctTypeDefId = 2 AND (ReverseBalance "
    "IS NULL OR ReverseBalance = 0))";
inline constexpr std::string_view kOwnRevenue =
    "GLAcct.AcctType IN (SELECT ID FROM AccountType WHERE ExAcctTypeDefId = 2 AND (ReverseBalance "
    "IS NOT NULL AND ReverseBalance<>0))";

// Balances of many accounts.

inline constexpr DialectText kBalances{
    .desktop =
        "SELECT GLDet.ExAcctId As InGLAcctId, IIf(IsNull(SUM(DetAmnt)),0,SUM(DetAmnt)) AS "
        "AcctBalance, "
        "IIf(IsNull(SUM(ForeignAmnt)),0,SUM(ForeignAmnt)) AS AcctForeignBalance ",
    .server =
        "SELECT GLDet.ExAcctId As InGLAcctId, COALESCE(SUM(DetAmnt), 0) AS AcctBalance, "
        "COALESCE(SUM(ForeignAmnt), 0) AS AcctForeignBalance "};
inline constexpr std::string_view kOfLedgerDates =
    " FROM GLDet WHERE GLDet.DetDate >=? AND GLDet.DetDate <=? ";
inline constexpr std::string_view kOfRemittancePeriods =
    " FROM GLDet INNER JOIN RPDPmtHdr ON GLDet.DetRef = RPDPmtHdr.ChqNo WHERE RPDPmtHdr.DateFrom "
    ">=? AND RPDPmtHdr.DateTo <=? ";
inline constexpr std::string_view kByLedgerAccount = " GROUP BY GLDet.ExAcctId";

inline constexpr DialectText kForeignBalances{
    .desktop =
        "SELECT GLAcct.InGLAcctId AS InGLAcctId, IIf(IsNull(SUM(DetAmnt)),0,SUM(DetAmnt)) AS "
        "AcctBalance, "
        "IIf(IsNull(SUM(ForeignAmnt)),0,SUM(ForeignAmnt)) AS AcctForeignBalance ",
    .server =
        "SELECT GLAcct.InGLAcctId As InGLAcctId, COALESCE(SUM(DetAmnt), 0) AS AcctBalance, "
        "COALESCE(SUM(ForeignAmnt), 0) AS AcctForeignBalance "};
inline constexpr std::string_view kOfCurrency =
    " FROM GLAcct LEFT JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId "
    " WHERE GLDet.DetDate >= ? AND GLDet.DetDate <= ? AND GLAcct.ExCurrencyId = ";
inline constexpr std::string_view kByAccount = " GROUP BY GLAcct.InGLAcctId";

inline constexpr std::string_view kOfAccount = " AND GLDet.ExAcctId = ";
inline constexpr std::string_view kOfProjects = " AND GLDet.ExProjId IN (";

// Earnings.

inline constexpr DialectText kEarnings{
    .desktop = "SELECT IIF(IsNull(-SUM(DetAmnt)), 0, -SUM(DetAmnt)) AS CurrentEarn ",
    .server = "SELECT -SUM(CASE WHEN DetAmnt IS NULL THEN 0 ELSE DetAmnt END) AS CurrentEarn "};
inline constexpr std::string_view kOfIncomeStatement =
    "FROM (GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId) "
    "LEFT JOIN AccountType ON AccountType.ID = GLAcct.AcctType "
    "WHERE AccountType.ExAcctTypeDefId = "
    "2"
    " AND ";
inline constexpr std::string_view kEarnedInPeriod = "GLDet.DetDate BETWEEN ? AND ?";

// Cheques.

inline constexpr std::string_view kIssuedCheques =
    "SELECT ChqId, ExGLAcctId, ChqDate, ChqNo, ChqAmnt, PayTo, TrxType "
    "FROM AllIssuedChecks_View "
    "WHERE ExGLAcctId = ";
inline constexpr std::string_view kOfNumber = " AND ChqNo = ?";

}  // namespace QuorAccQueries::HistorySql
