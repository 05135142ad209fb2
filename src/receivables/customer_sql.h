// The fixed texts of the customer account queries. Lines end with CR LF.
#pragma once

#include <string_view>

#include "core/party_statements.h"

namespace QuorAccQueries::CustomerSql {

/// The invoice's amount less what was applied to it up to a date.
inline constexpr std::string_view kInvoiceBalanceAtDate =
    "SELECT Min(InInvoiIdInternal) As ExInvoiId, Sum(BalanceInternal) As Balance \r\n"
    "FROM  (SELECT InInvoiId As InInvoiIdInternal, Balance As BalanceInternal \r\n"
    "       FROM InvoiHdr \r\n"
    "       WHERE InInvoiId=? \r\n"
    "       UNION ALL \r\n"
    "       SELECT Min(ExInvoiId) As InInvoiIdInternal, -SUM(PmtAmnt+PmtDisc) As BalanceInternal "
    "\r\n"
    "       FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId \r\n"
    "       WHERE ExInvoiId=? AND PmtHdr.PmtDate <= ? AND NOT ExInvoiId IS NULL) As InternalQuery";

inline constexpr std::string_view kHistory =
    "SELECT InvoiDate, InInvoiID, InvoiID, InvoiType, TotalToPay, TotAmnt, RecAmnt, ExCurrencyID "
    "\r\n"
    "FROM CustHistoryList_View \r\n"
    "WHERE InvoiDate BETWEEN ? AND ? AND ExCustID = ? \r\n"
    "ORDER BY InvoiDate";

inline constexpr std::string_view kPreviousBalance =
    "SELECT SUM(TotalToPay) as TotalToPay \r\n"
    "FROM CustHistoryList_View \r\n"
    "WHERE ExCustID = ? AND InvoiDate < ?";

inline constexpr BalanceTexts kBalance{
    .party = "ExCustId",
    .sums =
        ", SUM(CustBalance) AS CustBalance, SUM(CustBalanceHome) AS CustBalanceHome \r\n"
        "FROM CustBalance_View \r\n",
    .ofParty = "ExCustId = ? ",
    .ofSegment = " ExSegmentID = ? ",
    .orderBy = " \r\nORDER BY "};

inline constexpr std::string_view kOpenCredits =
    "SELECT * FROM CustOpenCredits_View WHERE ExCustId=?";
inline constexpr std::string_view kPaidOnInvoice =
    "SELECT * FROM InvoiPaidAmntAll_View WHERE InInvoiId=?";
inline constexpr std::string_view kUnapplied = "SELECT * FROM CustPmtUnappl_View WHERE InPmtId=?";

/// One customer's last document: the customer's key stands between the two pieces.
inline constexpr std::string_view kLastPayment =
    " SELECT TOP 1 * FROM CustLastPmt_View \r\n"
    " WHERE ExCustId = ";
inline constexpr std::string_view kLastPaymentOrder = "\r\n ORDER BY LastPmt DESC, PmtCode DESC";
inline constexpr std::string_view kLastSale =
    " SELECT TOP 1 * FROM CustLastSale_View \r\n"
    " WHERE ExCustId = ";
inline constexpr std::string_view kLastSaleOrder = "\r\n ORDER BY LastSale DESC, InInvoiId DESC";

/// Every customer's last document: of the documents of his last day, the one with the highest key.
inline constexpr std::string_view kLastPayments =
    " SELECT mainView.* FROM CustLastPmt_View AS mainView \r\n"
    " INNER JOIN (SELECT MAX(PmtCode) AS LastValidTrxId FROM CustLastPmt_View \r\n"
    "             INNER JOIN (SELECT ExCustId, MAX(LastPmt) as LastValidDate \r\n"
    "                         FROM CustLastPmt_View GROUP BY ExCustId \r\n"
    "                        ) AS LastValidTrxDate ON CustLastPmt_View.ExCustId = "
    "LastValidTrxDate.ExCustId AND \r\n"
    "                                                 CustLastPmt_View.LastPmt = "
    "LastValidTrxDate.LastValidDate \r\n"
    "             GROUP BY CustLastPmt_View.ExCustId \r\n"
    "             ) AS LastValidTrx ON mainView.PmtCode = LastValidTrx.LastValidTrxId ";
inline constexpr std::string_view kLastSales =
    " SELECT mainView.* FROM CustLastSale_View AS mainView \r\n"
    " INNER JOIN (SELECT MAX(InInvoiId) as LastValidTrxId FROM CustLastSale_View \r\n"
    "             INNER JOIN (SELECT ExCustId, MAX(LastSale) AS LastValidDate \r\n"
    "                         FROM CustLastSale_View GROUP BY ExCustID \r\n"
    "                        ) AS LastValidTrxDate ON CustLastSale_View.ExCustId = "
    "LastValidTrxDate.ExCustId AND \r\n"
    "                                                 CustLastSale_View.LastSale = "
    "LastValidTrxDate.LastValidDate \r\n"
    "             GROUP BY CustLastSale_View.ExCustId \r\n"
    "             ) AS LastValidTrx ON mainView.InInvoiId = LastValidTrx.LastValidTrxId ";

/// Ledger lines of invoices on projects, without the two work-in-progress accounts.
inline constexpr ProjectCostTexts kProjectCost{
    .list = "ExCustId, ExProjId",
    .sums = "SELECT SUM(GLDet.DetAmnt) As CustCost, SUM(GLDet.ForeignAmnt) As CustCostHome, \r\n",
    .lines =
        "\r\nFROM GLDet INNER JOIN InvoiHdr ON GLDet.ExSrcKeyVal = InvoiHdr.InInvoiId \r\n"
        "WHERE GLDet.ExProjId <> 0 AND GLDet.Source = 'INV' AND \r\n"
        "GLDet.DetAmnt <> 0 AND GLDet.ExAcctId <> ? AND GLDet.ExAcctId <> ? ",
    .ofParty = " AND ExCustId = ? ",
    .groupBy = "\r\nGROUP BY ",
    .orderBy = "\r\nORDER BY "};

}  // namespace QuorAccQueries::CustomerSql
