// The fixed texts of the customer aging statement, in the order in which they are joined. Lines end
// with CR LF, as everywhere in this area.
#pragma once

#include <string_view>

#include "core/dialect_text.h"

namespace QuorAccQueries::CustomerAgingSql {

/// Every column of a customer that an aging report shows; the list that needs no database.
inline constexpr std::string_view kCustomerColumns =
    "Cust.CustId,Cust.CustInactive,Cust.Name,Cust.Contact,Cust.ContactTitle,Cust.Tel1,Cust.TelExt1,"
    "Cust.Tel2,Cust.TelExt2,"
    "Cust.Fax,Cust.Email,Cust.Web,Cust.ExTermId,Cust.CreditLim,Cust.SalesPerson,Cust.CustFee,"
    "Cust.SendStmnt,Cust.ExGLAcctId,"
    "Cust.ExPriceLevelId,Cust.Discount,Cust.MarginType,Cust.MarginDayLimit,Cust.CredOfficeRefNo,"
    "Cust.CredOfficeRating,Cust.CredOfficeDate,Cust.NSFChqNb,Cust.CredNoticeNb,Cust.EDIExport,"
    "Cust.EDIBusinessNo,Cust.NameLang,"
    "Cust.InvoiSendMeth,Cust.StmntSendMeth,Cust.Addr1,Cust.Addr2,Cust.City,Cust.Area,Cust.Zip,"
    "Cust.ExWarehouseId,Cust.ExTaxGroupId,"
    "Cust.ExCountryId,Cust.ShipVia,Cust.UseDirectDeposite,Cust.Transit,Cust.Institution,"
    "Cust.Account,Cust.ExPmtMethId";

/// Columns of a currency, shared with the supplier side.
inline constexpr std::string_view kCurrencyColumns =
    "WorldCurrency.CurrencyCode,WorldCurrency.Descr,"
    "WorldCurrency.UseCustomRate";

/// A query without rows that tells the columns of the customer table.
inline constexpr std::string_view kNoCustomers = "SELECT * FROM CUST WHERE 1=0";

/// The default select list up to the customer's columns. Name and key together keep two customers
/// of one name apart while sorting by name.
inline constexpr std::string_view kSelectDocument =
    "CustAgingList.InvoiDate, CustAgingList.InvoiType, CustAgingList.ExchangeRate, "
    "CustAgingList.InInvoiId, CustAgingList.DocOrderId, CustAgingList.Balance, \r\n"
    "CustAgingList.DocOrderDate, CustAgingList.DocType, CustAgingList.InvoiID, "
    "CustAgingList.PaymentCreditApplication, CustAgingList.ExCustID, "
    "InvoiPaidAmntAll_View.TotalPaid, \r\n"
    "(Cust.Name + LEFT(Cust.InCustId,1000)) AS CustNameID, \r\n";

/// What the column list leaves out: the currency stands beside the document.
inline constexpr std::string_view kColumnsBesideDocument = "ExCurrencyId,InCustID";

inline constexpr std::string_view kJoinParties =
    ") AS CustAgingList \r\n"
    " INNER JOIN Cust ON CustAgingList.ExCustId = Cust.InCustId) \r\n"
    " LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = Cust.ExCurrencyId) \r\n";

/// Documents still outstanding at the date: never paid up to then, or not in full. The total of the
/// payments stands between the two pieces.
inline constexpr std::string_view kJoinOutstanding =
    " LEFT JOIN (SELECT InvoiHdr.InInvoiId As InInvoiId \r\n"
    "FROM InvoiHdr LEFT JOIN (SELECT PmtDet.ExInvoiId As ExInvoiId, \r\n";
inline constexpr DialectText kTotalPayments{
    .desktop =
        " IIf(IsNull(Sum(PmtAmnt)),0,Sum(PmtAmnt)) + IIf(IsNull(Sum(PmtDisc)),0,Sum(PmtDisc)) "
        "AS TotalPayments\r\n",
    .server = " COALESCE(Sum(PmtAmnt),0) + COALESCE(Sum(PmtDisc),0) AS TotalPayments\r\n"};
inline constexpr std::string_view kOutstandingAtDate =
    "FROM (PmtHdr INNER JOIN PmtDet ON PmtHdr.InPmtId = PmtDet.ExPmtId) \r\n"
    "INNER JOIN InvoiHdr ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId \r\n"
    "WHERE NOT ExInvoiId IS NULL AND PmtHdr.PmtDate <= ? AND InvoiHdr.InvoiDate <= ? \r\n"
    "GROUP BY ExInvoiId) As TotalPaymentsAtDate ON InvoiHdr.InInvoiId = "
    "TotalPaymentsAtDate.ExInvoiId \r\n"
    "WHERE (TotalPaymentsAtDate.ExInvoiId IS NULL OR InvoiHdr.Balance - "
    "TotalPaymentsAtDate.TotalPayments <> 0)) AS InvOutstandingAtDate ON CustAgingList.ExInvoiId = "
    "InvOutstandingAtDate.InInvoiId) \r\n"
    " LEFT JOIN InvoiPaidAmntAll_View ON InvoiPaidAmntAll_View.InInvoiId = CustAgingList.InInvoiId "
    "\r\n"
    " WHERE CustAgingList.InvoiDate <= ?";

inline constexpr std::string_view kOfCustomer = " AND CustAgingList.ExCustId = ";

/// Only rows of outstanding documents, or tied to none, and with something to show.
inline constexpr std::string_view kOutstandingOnly =
    " AND (NOT InvOutstandingAtDate.InInvoiId IS NULL OR CustAgingList.ExInvoiId = 0) AND "
    "CustAgingList.Balance <> 0 ";

inline constexpr std::string_view kDefaultOrder =
    " ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExCustId,1000)), "
    "CustAgingList.DocOrderDate, CustAgingList.DocOrderId, CustAgingList.InvoiType, "
    "CustAgingList.InvoiDate";

/// Around the rows when every currency is to be listed first, also one without rows.
inline constexpr std::string_view kByCurrencyBefore =
    "SELECT WorldCurrency.InCurrencyId As ExCurrencyId, WorldCurrency.CurrencyCode As "
    "CurrencyCode, WorldCurrency.Descr As Descr, CustAgingList.* \r\n"
    "FROM WorldCurrency LEFT JOIN (";
inline constexpr std::string_view kByCurrencyAfter =
    ") As CustAgingList ON \r\n"
    "WorldCurrency.InCurrencyId = CustAgingList.InnerViewExCurrencyId";

/// The detail rows. By order, payments and discounts (types 99 and 100) stand under order 0 at
/// their own date. The desktop text tests the alias `InvoiType`, which that engine resolves to the
/// column `DetType` that the server text names.
inline constexpr std::string_view kDetails =
    " SELECT DocOrderDate, DocOrderId, ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS "
    "InvoiDate, \r\n"
    "        DetType AS InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, "
    "ExchangeRate, \r\n"
    "        ExCurrencyId, DocType, DocOrderId AS ExInvoiId, ExSegmentId, PaymentCreditApplication "
    "\r\n"
    " FROM CustAgingDet ";
inline constexpr DialectText kDetailsByOrder{
    .desktop =
        "SELECT Detdate As DocOrderDate,\r\n"
        " IIf(InvoiType=99 or InvoiType=100 ,0,DocOrderID)\r\n"
        " as DocOrderId1, ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS InvoiDate, \r\n"
        "        DetType AS InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, "
        "ExchangeRate, \r\n"
        "        ExCurrencyId, DocType, DocOrderId1 AS ExInvoiId, ExSegmentId, "
        "PaymentCreditApplication \r\n"
        " FROM CustAgingDet ",
    .server =
        "SELECT detdate as DocOrderDate,\r\n"
        " DocOrderId1 = Case When DetType=99 then 0 When DetType=100 then 0 else DocOrderID end "
        "\r\n"
        "  , ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS InvoiDate, \r\n"
        "        DetType as InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, "
        "ExchangeRate, \r\n"
        "        ExCurrencyId, DocType, ExInvoiId = Case When DetType=99 then 0 When DetType=100 "
        "then 0 else DocOrderID end, ExSegmentId, PaymentCreditApplication \r\n"
        " FROM CustAgingDet "};

/// The open payment credits, as negative rows of type 99 under the payment's own key.
inline constexpr std::string_view kCreditKeys =
    " SELECT PmtHdr.PmtDate AS DocOrderDate, PmtHdr.InPmtId AS DocOrderId, PmtHdr.InPmtId AS "
    "InInvoiId, \r\n";
inline constexpr DialectText kCreditKeysByOrder{
    .desktop =
        "SELECT PmtHdr.PmtDate AS DocOrderDate, PmtHdr.InPmtId AS DocOrderId1, PmtHdr.InPmtId AS "
        "InInvoiId, \r\n",
    .server =
        "SELECT PmtHdr.PmtDate AS DocOrderDate, DocOrderId1 = PmtHdr.InPmtId, PmtHdr.InPmtId AS "
        "InInvoiId, \r\n"};
inline constexpr std::string_view kCreditColumns =
    "PmtHdr.ChqNo AS InvoiId, PmtHdr.PmtDate AS InvoiDate, 99 AS InvoiType, PmtHdr.ExCustId, \r\n"
    "-OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS "
    "TotAmnt, \r\n"
    "-OpenLeftCredits.CreditBalance AS Balance, 0 AS RecAmnt, PmtHdr.ExchangeRate, "
    "PmtHdr.ExCurrencyId, \r\n"
    "99 AS DocType, 0 AS ExInvoiId, PmtHdr.ExSegmentId AS ExSegmentId, 0 As "
    "PaymentCreditApplication \r\n"
    " FROM PmtHdr \r\n"
    "     LEFT JOIN ( \r\n"
    " SELECT InPmtId, (TotalPaymentAmount - ";

/// The order type whose applications leave a payment's credit open: a deposit stays a credit.
inline constexpr std::int32_t kOrderType = 51;

/// What a payment has been applied to. Only the applications by reference are limited by the date.
inline constexpr std::string_view kCreditApplications =
    ") As CreditBalance \r\n"
    " FROM ( \r\n"
    "   SELECT PmtHdr.InPmtId, \r\n"
    "          PmtHdr.PmtTotAmnt As TotalPaymentAmount, \r\n"
    "          Direct.TotalAppliedAmountDirect, \r\n"
    "          Indirect.TotalAppliedAmountIndirect, \r\n"
    "          DirectOrder.TotalAppliedAmountOrder \r\n"
    "   FROM ((PmtHdr \r\n"
    "       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountDirect \r\n"
    "                  FROM PmtDet \r\n"
    "                  GROUP BY ExPmtId) AS Direct ON PmtHdr.InPmtId = Direct.ExPmtId) \r\n"
    "       LEFT JOIN (SELECT ExPmtRefId, SUM(PmtDet.PmtAmnt) AS TotalAppliedAmountIndirect \r\n"
    "                  FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId \r\n"
    "                  WHERE PmtHdr.PmtDate <= ? AND NOT ExPmtRefId IS NULL \r\n"
    "                  GROUP BY ExPmtRefId) AS Indirect ON PmtHdr.InPmtId = Indirect.ExPmtRefId) "
    "\r\n"
    "       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountOrder \r\n"
    "                  FROM PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExinvoiId "
    "\r\n"
    "                  WHERE InvoiHdr.InvoiType = ";
inline constexpr std::string_view kOpenCredits =
    " \r\n"
    "                  GROUP BY ExPmtId) AS DirectOrder ON PmtHdr.InPmtId = DirectOrder.ExPmtId "
    "\r\n"
    ") AS OpenLeftCredits) AS OpenLeftCredits ON PmtHdr.InPmtId = OpenLeftCredits.InPmtId \r\n"
    " WHERE OpenLeftCredits.CreditBalance <> 0";

}  // namespace QuorAccQueries::CustomerAgingSql
