// The fixed texts of projects: their hours, sales, purchases and budgets.
#pragma once

#include <string_view>

#include "core/dialect_text.h"

namespace QuorAccQueries::ProjectSql {

// The transactions that put hours on a project: pays (pay codes of type 4 are hours worked) and
// purchases of services (type 3) of items that count as hours.

inline constexpr std::string_view kPaidHours =
    "SELECT 1 AS TrxType, TrxPay.InTrxPayID AS InTrxId, TrxPay.ChqDate AS TrxDate, Empl.EmplId AS "
    "ResId,(Empl.FirstName + ' ' + Empl.LastName) AS ResName, "
    "TrxPay.ChqNb AS RefNum, PayCode.Descr AS Detail, TrxPayDetails.Units AS NbHours "
    "FROM ((Empl "
    "INNER JOIN TrxPay ON Empl.InEmplId = TrxPay.ExEmplId) "
    "INNER JOIN TrxPayDetails ON TrxPay.InTrxPayId = TrxPayDetails.ExTrxPayId) "
    "INNER JOIN PayCode ON TrxPayDetails.ExPayCodeId = PayCode.InPayCodeId "
    "WHERE TrxPayDetails.ExProjId = ? AND (TrxPay.Canceled Is Null OR TrxPay.Canceled = 0) AND "
    "PayCode.PayCodeType = "
    "4"
    " AND "
    " TrxPay.ChqDate BETWEEN ? AND ? UNION ";
inline constexpr std::string_view kBoughtHours =
    "SELECT 2 AS TrxType, PurcHdr.InPurcId AS InTrxId, PurcHdr.PurcDate AS TrxDate, Supp.SuppId AS "
    "ResId, Supp.Name AS ResName, "
    "PurcHdr.DocNo AS RefNum,";
/// The server's descriptions may be long texts, which no union can compare as they are. Which text
/// goes out is decided by a test for the server.
inline constexpr DialectText kItemDescription{
    .desktop = " Item.Descr1 AS Detail, ",
    .server = " CAST(Item.Descr1 AS VARCHAR(8000)) AS Detail, "};
inline constexpr std::string_view kBoughtHoursFrom =
    "PurcDet.Qty AS NbHours "
    "FROM ((Supp "
    "INNER JOIN PurcHdr ON Supp.InSuppId = PurcHdr.ExSuppId) "
    "INNER JOIN PurcDet ON PurcHdr.InPurcId = PurcDet.ExPurcId) "
    "INNER JOIN Item ON PurcDet.ExItemId = Item.InItemId "
    "WHERE PurcDet.ExProjId=? AND PurcHdr.PurcType="
    "3"
    " AND PurcHdr.PurcDate BETWEEN ? AND ? AND (NOT Item.Hours IS NULL AND Item.Hours<>0) "
    "ORDER BY TrxType, ResId, TrxDate, RefNum";

// Totals of all time.

inline constexpr std::string_view kSales = "SELECT * FROM ProjSales_View WHERE ExProjId=?";
inline constexpr std::string_view kPurchases = "SELECT * FROM ProjPurchases_View WHERE ExProjId=?";

// Hours in total: of pays and of purchases, the two sums as rows of one union.

inline constexpr std::string_view kHoursPaid =
    "SELECT SUM(ProjHours) AS ProjHours FROM ("
    "SELECT SUM(TrxPayDetails.Units) AS ProjHours FROM (TrxPay INNER JOIN TrxPayDetails "
    "ON TrxPay.InTrxPayId = TrxPayDetails.ExTrxPayId) INNER JOIN PayCode ON "
    "TrxPayDetails.ExPayCodeId = PayCode.InPayCodeId "
    "WHERE TrxPayDetails.ExProjId = ? And (TrxPay.Canceled = 0 Or TrxPay.Canceled Is Null) And ";
inline constexpr std::string_view kOfAllPays =
    "PayCode.PayCodeType = "
    "4"
    " ";
inline constexpr std::string_view kOfPaysInPeriod =
    "PayCode.PayCodeType="
    "4"
    " AND TrxPay.ChqDate BETWEEN ? AND ? ";
inline constexpr std::string_view kOfPaySegment = " AND TrxPayDetails.ExSegmentId=";
/// A blank stands before it in the statement of a period, which has a further one here.
inline constexpr std::string_view kHoursBought =
    "UNION SELECT SUM(PurcDet.Qty) AS ProjHours FROM ((PurcHdr INNER JOIN PurcDet ON "
    "PurcHdr.InPurcId = PurcDet.ExPurcId) "
    "INNER JOIN Item ON Item.InItemId = PurcDet.ExItemId) "
    "WHERE PurcDet.ExProjId=? AND PurcHdr.PurcType="
    "3"
    " AND ";
inline constexpr std::string_view kBoughtInPeriod = "PurcHdr.PurcDate BETWEEN ? AND ? AND ";
inline constexpr std::string_view kOfHourItems = "(NOT Item.Hours IS NULL AND Item.Hours<>0)";
inline constexpr std::string_view kOfPurchaseSegment = " AND PurcDet.ExSegmentId=";
inline constexpr std::string_view kHoursSource = ") AS ProjHoursSource";

// Sales and purchases of a period, from the ledger's lines. In the fixed chart of accounts type 4
// is revenue, type 5 and what the host lists are expenses; in every other chart the types of the
// income statement (2) say it themselves.

inline constexpr std::string_view kFixedSales =
    "SELECT -Sum(GLDet.DetAmnt) AS ProjSales FROM GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = "
    "GLDet.ExAcctId "
    "WHERE GLAcct.AcctType = "
    "4"
    " AND ";
inline constexpr std::string_view kOwnSales =
    "SELECT -Sum(GLDet.DetAmnt) AS ProjSales "
    "FROM (GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId) "
    "LEFT JOIN AccountType ON AccountType.ID = GLAcct.AcctType "
    "WHERE AccountType.ExAcctTypeDefId="
    "2"
    " AND "
    "(AccountType.ReverseBalance IS NOT NULL AND AccountType.ReverseBalance <> 0) AND ";
inline constexpr std::string_view kFixedPurchases =
    "SELECT Sum(GLDet.DetAmnt) AS ProjPurchases FROM GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId "
    "= GLDet.ExAcctId "
    "WHERE GLAcct.AcctType IN ("
    "5"
    ",";
inline constexpr std::string_view kFixedPurchasesEnd =
    ") "
    " AND ";
inline constexpr std::string_view kOwnPurchases =
    "SELECT Sum(GLDet.DetAmnt) AS ProjPurchases "
    "FROM (GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId) "
    "LEFT JOIN AccountType ON AccountType.ID = GLAcct.AcctType "
    "WHERE AccountType.ExAcctTypeDefId = "
    "2"
    " AND "
    "(AccountType.ReverseBalance IS NULL OR AccountType.ReverseBalance=0) AND ";
inline constexpr std::string_view kOfProject = "GLDet.ExProjId=";
inline constexpr std::string_view kSoldInPeriod = " AND GLDet.DetDate BETWEEN ? AND ?";
inline constexpr std::string_view kSpentInPeriod = " AND GLDET.DetDate BETWEEN ? AND ?";
inline constexpr std::string_view kOfSegment = " AND GLDet.ExSegmentId=";

// Budgets: every fiscal period that overlaps the dates counts whole.

inline constexpr std::string_view kBudgets =
    "SELECT SUM(ProjBudgets.BudgetSales) AS Sales, SUM(ProjBudgets.BudgetPurch) AS Purch, "
    "SUM(ProjBudgets.BudgetHours) AS Hours FROM FiscalYearDet INNER JOIN ProjBudgets on "
    "FiscalYearDet.ID = ProjBudgets.ExFiscalYearDetId "
    "WHERE ProjBudgets.ExID=? AND ProjBudgets.ExSegmentId=? AND ((FiscalYearDet.BegDate BETWEEN ? "
    "AND ?) OR (FiscalYearDet.EndDate BETWEEN ? AND ?) OR (FiscalYearDet.BegDate < ? AND "
    "FiscalYearDet.EndDate > ?))";

}  // namespace QuorAccQueries::ProjectSql
