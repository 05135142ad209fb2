// The fixed texts of the supplier aging statement, in the order in which they are joined. Lines end
// with CR LF, as everywhere in this area.
#pragma once

#include <string_view>

#include "core/dialect_text.h"

namespace QuorAccQueries::SupplierAgingSql {

/// Every column of a supplier that an aging report shows; the list that needs no database.
inline constexpr std::string_view kSupplierColumns =
    "Supp.SuppId,Supp.SuppInactive,Supp.Name,Supp.Contact,Supp.ContactTitle,Supp.Tel1,Supp.TelExt1,"
    "Supp.Tel2,Supp.TelExt2,Supp.Fax,Supp.Email,Supp.Web,Supp.ExTermId,Supp.Addr1,Supp.Addr2,"
    "Supp.City,Supp.Area,Supp.ExCountryId,Supp.Zip,Supp.ExTaxGroupId,Supp.CreditLim,"
    "Supp.ExGLAcctId,Supp.Buyer,Supp.NameLang,Supp.SendPo,Supp.IncludeInT5018,"
    "Supp.BusinessNumber,Supp.UseDirectDeposite,Supp.Transit,Supp.Institution,Supp.Account,"
    "Supp.ExPmtMethId";

/// A query without rows that tells the columns of the supplier table.
inline constexpr std::string_view kNoSuppliers = "SELECT * FROM Supp WHERE 1=0";

/// The default select list, in the pieces between its null-safe columns and the supplier's columns.
/// Name and key together keep two suppliers of one name apart while sorting by name.
inline constexpr std::string_view kSelectDocument =
    "SuppAgingList_View.PurcDate, SuppAgingList_View.ExchangeRate, \r\n"
    "       SuppAgingList_View.PurcType, ";
inline constexpr std::string_view kSelectDocCredit = " AS DocCredit, \r\n";
inline constexpr std::string_view kSelectPurcCredit =
    " AS PurcCredit, SuppAgingList_View.InPurcId, \r\n"
    "       SuppAgingList_View.Balance, SuppAgingList_View.DocOrderId, "
    "SuppAgingList_View.DocOrderDate, \r\n"
    "       SuppAgingList_View.PaymentCreditApplication, \r\n"
    "       SuppAgingList_View.DocNo, ";
inline constexpr std::string_view kSelectParty =
    ", \r\n"
    "       SuppAgingList_View.ExSuppId, PurcPaidAmntAll_View.TotalPaid, "
    "(Supp.Name + LEFT(Supp.InSuppId,1000)) AS SuppNameID, ";

/// What the column list leaves out: the currency stands beside the document.
inline constexpr std::string_view kColumnsBesideDocument = "InSuppID,ExCurrencyId";

inline constexpr std::string_view kDetails =
    "FROM ((((SELECT DocOrderDate, DocOrderId, ExSrcId As InPurcId, DocNo As PurcId, DetDate as "
    "PurcDate, "
    "         DetType as PurcType, PurcCredit, ExSuppId, DocNo, DetAmnt, TaxAmnt, TotAmnt, "
    "Balance, PaidAmnt, "
    "         ExchangeRate, ExCurrencyId, Balance As TotalToPay, DocOrderId As ExPurcId, "
    "DocCredit, ExSegmentId, PaymentCreditApplication "
    "         FROM SuppAgingDet \r\n"
    " UNION ALL \r\n";

inline constexpr std::string_view kJoinParties =
    ") AS SuppAgingList_View \r\n"
    " INNER JOIN Supp ON SuppAgingList_View.ExSuppId = Supp.InSuppId) \r\n"
    " LEFT JOIN WorldCurrency ON Supp.ExCurrencyId = WorldCurrency.InCurrencyId) \r\n";

/// Purchases still outstanding at the date: never paid up to then, or not in full. The total of the
/// payments stands between the first two pieces, the tests on the supplier after the second and the
/// third: the first of them as a number in the text, the other as a parameter.
inline constexpr std::string_view kJoinOutstanding =
    " LEFT JOIN (SELECT PurcHdr.InPurcId As PurcOutstandingAtDateInPurcId \r\n"
    "            FROM PurcHdr LEFT JOIN (SELECT SuppPmtDet.ExPurcId As ExPurcId, \r\n";
inline constexpr DialectText kTotalPayments{
    .desktop =
        " (IIf(IsNull(Sum(PmtAmnt)),0,Sum(PmtAmnt)) + IIf(IsNull(Sum(PmtDisc)),0,Sum(PmtDisc))) "
        "AS TotalPayments \r\n",
    .server = " (COALESCE(Sum(PmtAmnt),0) + COALESCE(Sum(PmtDisc),0)) AS TotalPayments \r\n"};
inline constexpr std::string_view kPayments =
    "                                    FROM (SuppPmtHdr INNER JOIN SuppPmtDet ON "
    "SuppPmtHdr.InPmtId = SuppPmtDet.ExPmtId) \r\n"
    "                                    INNER JOIN PurcHdr ON SuppPmtDet.ExPurcId = "
    "PurcHdr.InPurcId \r\n"
    "                                    WHERE NOT ExPurcId IS NULL \r\n";
inline constexpr std::string_view kPaymentsOfSupplier = " AND SuppPmtHdr.ExSuppId = ";
inline constexpr std::string_view kOutstandingAtDate =
    "                                    AND PurcHdr.PurcDate <= ? AND SuppPmtHdr.ChqDate <= ? \r\n"
    "                                    GROUP BY ExPurcId) As TotalPaymentsAtDate ON "
    "PurcHdr.InPurcId = TotalPaymentsAtDate.ExPurcId \r\n"
    "               WHERE (TotalPaymentsAtDate.ExPurcId IS NULL OR PurcHdr.Balance - "
    "TotalPaymentsAtDate.TotalPayments <> 0) \r\n";
inline constexpr std::string_view kPurchasesOfSupplier = " AND PurcHdr.ExSuppId = ? \r\n";
inline constexpr std::string_view kRows =
    ") AS PurcOutstandingAtDate ON SuppAgingList_View.ExPurcId = "
    "PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId) \r\n"
    " LEFT JOIN PurcPaidAmntAll_View ON PurcPaidAmntAll_View.InPurcId = "
    "SuppAgingList_View.InPurcId\r\n"
    " WHERE SuppAgingList_View.PurcDate <= ? AND SuppAgingList_View.DocOrderDate <= ?\r\n";

inline constexpr std::string_view kOfSupplier = " AND SuppAgingList_View.ExSuppId = ? \r\n";

/// Only rows of outstanding purchases, or tied to none, and with something to show.
inline constexpr std::string_view kOutstandingOnly =
    " AND (NOT (PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId) IS NULL OR "
    "SuppAgingList_View.ExPurcId = 0) AND SuppAgingList_View.Balance <> 0 \r\n";

inline constexpr std::string_view kDefaultOrder =
    "WorldCurrency.CurrencyCode, (Name + LEFT(ExSuppId,1000)), SuppAgingList_View.DocOrderdate, "
    "SuppAgingList_View.DocOrderId, SuppAgingList_View.PurcType, SuppAgingList_View.PurcDate";

/// Around the rows when every currency is to be listed first, also one without rows.
inline constexpr std::string_view kByCurrencyBefore =
    "SELECT WorldCurrency.InCurrencyId As ExCurrencyId, WorldCurrency.CurrencyCode As "
    "CurrencyCode, WorldCurrency.Descr As Descr, SuppAgingList_View.* "
    "FROM WorldCurrency LEFT JOIN (";
inline constexpr std::string_view kByCurrencyAfter =
    ") As SuppAgingList_View ON "
    "WorldCurrency.InCurrencyId = SuppAgingList_View.InnerViewExCurrencyId";

/// The open payment credits, as negative rows of type 99 under the payment's own key: the payment's
/// total less what was applied from it, of any date, plus what other payments drew on it up to the
/// aging date.
inline constexpr std::string_view kCredits =
    " SELECT SuppPmtHdr.ChqDate AS DocOrderDate, SuppPmtHdr.InPmtId AS DocOrderId, \r\n"
    "        SuppPmtHdr.InPmtId, SuppPmtHdr.ChqNo AS PurcId, SuppPmtHdr.ChqDate, 99 AS PmtType, "
    "\r\n"
    "        0 AS PurcCredit, SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqNo AS DocNo, \r\n"
    "        -OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, "
    "-OpenLeftCredits.CreditBalance AS TotAmnt,  \r\n"
    "        -OpenLeftCredits.CreditBalance AS Balance, 0 AS PaidAmnt, \r\n"
    "        SuppPmtHdr.ExchangeRate AS ExchangeRate, SuppPmtHdr.ExCurrencyId, "
    "-OpenLeftCredits.CreditBalance AS TotalToPay, \r\n"
    "        0 AS ExPurcId, 0 AS DocCredit, SuppPmtHdr.ExSegmentId, 0 As PaymentCreditApplication "
    "\r\n"
    " FROM SuppPmtHdr \r\n"
    "     LEFT JOIN ( \r\n";
inline constexpr DialectText kCreditBalance{
    .desktop =
        " SELECT InPmtId, TotalPaymentAmount-IIf(IsNull(TotalAppliedAmountDirect), 0, "
        "TotalAppliedAmountDirect)+IIf(IsNull(TotalAppliedAmountIndirect), 0, "
        "TotalAppliedAmountIndirect) As CreditBalance \r\n",
    .server =
        " SELECT InPmtId, TotalPaymentAmount-COALESCE(TotalAppliedAmountDirect,0)"
        "+COALESCE(TotalAppliedAmountIndirect,0) As CreditBalance \r\n"};
inline constexpr std::string_view kCreditApplications =
    " FROM ( \r\n"
    "   SELECT SuppPmtHdr.InPmtId, \r\n"
    "          SuppPmtHdr.PmtTotAmnt As TotalPaymentAmount, \r\n"
    "          Direct.TotalAppliedAmountDirect, \r\n"
    "          Indirect.TotalAppliedAmountIndirect \r\n"
    "   FROM (SuppPmtHdr \r\n"
    "       LEFT JOIN (SELECT ExPmtId, SUM(SuppPmtDet.PmtAmnt) As TotalAppliedAmountDirect \r\n"
    "                  FROM SuppPmtDet \r\n"
    "                  GROUP BY ExPmtId) AS Direct ON SuppPmtHdr.InPmtId = Direct.ExPmtId) \r\n"
    "       LEFT JOIN (SELECT ExPmtRefId, SUM(SuppPmtDet.PmtAmnt) AS TotalAppliedAmountIndirect "
    "\r\n"
    "                  FROM SuppPmtDet INNER JOIN SuppPmtHdr ON SuppPmtDet.ExPmtId = "
    "SuppPmtHdr.InPmtId \r\n"
    "                  WHERE SuppPmtHdr.ChqDate <= ? AND NOT ExPmtRefId IS NULL \r\n"
    "                  GROUP BY ExPmtRefId) AS Indirect ON SuppPmtHdr.InPmtId = "
    "Indirect.ExPmtRefId \r\n"
    ") AS OpenLeftCredits) AS OpenLeftCredits ON SuppPmtHdr.InPmtId = OpenLeftCredits.InPmtId \r\n"
    "WHERE OpenLeftCredits.CreditBalance <> 0\r\n";

}  // namespace QuorAccQueries::SupplierAgingSql
