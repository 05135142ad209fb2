// The fixed texts of the supplier account queries. Nothing separates their pieces.
#pragma once

#include <string_view>

#include "core/party_statements.h"

namespace QuorAccQueries::SupplierSql {

inline constexpr std::string_view kHistory =
    "SELECT PurcDate, InPurcID, DocNo, PurcType, PurcCredit, PaidAmnt, TotAmnt, TotalToPay, "
    "ExCurrencyID "
    "FROM SuppHistoryList_View "
    "WHERE PurcDate BETWEEN ? AND ? AND ExSuppID = ? "
    "ORDER BY PurcDate";

inline constexpr std::string_view kOpenReceptions =
    "SELECT * FROM SuppOpenRec_View WHERE ExSuppId = ";
inline constexpr std::string_view kOpenOrders =
    "SELECT * FROM SuppOpenPurcOrd_View WHERE ExSuppId = ";
inline constexpr std::string_view kExpectedReceptions =
    "SELECT * FROM PurcOpenExpectedRec_View WHERE ExSuppId = ";

inline constexpr std::string_view kPreviousBalance =
    "SELECT SUM(TotalToPay) as TotalToPay "
    "FROM SuppHistoryList_View "
    "WHERE ExSuppID = ? AND PurcDate < ?";

/// The purchase's amount less what was applied to it up to a date.
inline constexpr std::string_view kPurchaseBalanceAtDate =
    "SELECT Min(InPurcIdInternal) As ExPurcId, Sum(BalanceInternal) As Balance "
    "FROM  (SELECT InPurcId As InPurcIdInternal, Balance As BalanceInternal "
    "       FROM PurcHdr "
    "       WHERE InPurcId=? "
    "       UNION ALL "
    "       SELECT Min(ExPurcId) As InPurcIdInternal, -SUM(PmtAmnt+PmtDisc) As BalanceInternal "
    "       FROM SuppPmtDet INNER JOIN SuppPmtHdr ON SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId "
    "       WHERE ExPurcId=? AND SuppPmtHdr.ChqDate <= ? AND NOT ExPurcId IS NULL) As "
    "InternalQuery";

inline constexpr BalanceTexts kBalance{
    .party = "ExSuppId",
    .sums =
        ", SUM(SuppBalance) AS SuppBalance, SUM(SuppBalanceHome) AS SuppBalanceHome "
        "FROM SuppBalance_View ",
    .ofParty = "ExSuppId = ? ",
    .ofSegment = " ExSegmentId = ? ",
    .orderBy = " ORDER BY "};

inline constexpr std::string_view kOpenCredits =
    "SELECT * FROM SuppOpenCredits_View WHERE ExSuppId=?";

inline constexpr std::string_view kLastPurchase =
    "SELECT TOP 1 * FROM SuppLastPurc_View WHERE ExSuppId=? ORDER BY LastPurc DESC, InPurcId DESC";
inline constexpr std::string_view kLastPayment =
    "SELECT TOP 1 * FROM SuppLastPmt_View WHERE ExSuppId= ";
inline constexpr std::string_view kLastPaymentOrder = " ORDER BY LastPmt DESC, Code DESC";

inline constexpr std::string_view kUnapplied = "SELECT * FROM SuppPmtUnappl_View WHERE InPmtId=";

/// Orders of status 1, the expected ones.
inline constexpr std::string_view kExpectedOrders =
    "SELECT * FROM PurcHdr WHERE PurcHdr.POrderStatus = "
    "1"
    " AND ExSuppId = ";

/// Ledger lines of purchases and expenses on projects, without the two work-in-progress accounts.
/// Nothing separates the bare list from the keyword after it: hosts always give fields, and the
/// list then ends with a blank.
inline constexpr ProjectCostTexts kProjectCost{
    .list = "ExSuppId, ExProjId",
    .sums = "SELECT SUM(GLDet.DetAmnt) As SuppCost, SUM(GLDet.ForeignAmnt) As SuppCostHome, ",
    .lines =
        "FROM GLDet INNER JOIN PurcHdr ON GLDet.ExSrcKeyVal = PurcHdr.InPurcId "
        "WHERE GLDet.ExProjId <> 0 AND (GLDet.Source = 'PUR' OR GLDet.Source = 'EXP') AND "
        "GLDet.DetAmnt <> 0 AND GLDet.ExAcctId <> ? AND GLDet.ExAcctId <> ? ",
    .ofParty = " AND ExSuppId = ? ",
    .groupBy = "GROUP BY ",
    .orderBy = "ORDER BY "};

}  // namespace QuorAccQueries::SupplierSql
