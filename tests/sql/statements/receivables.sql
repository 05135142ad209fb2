-- desktop: aging of one customer, outstanding documents
SELECT CustAgingList.InvoiDate, CustAgingList.InvoiType, CustAgingList.ExchangeRate,
  CustAgingList.InInvoiId,
CustAgingList.DocOrderId, CustAgingList.Balance, CustAgingList.DocOrderDate,
  CustAgingList.DocType,
CustAgingList.InvoiID, CustAgingList.PaymentCreditApplication, CustAgingList.ExCustID,
  InvoiPaidAmntAll_View.TotalPaid,
(Cust.Name + LEFT(Cust.InCustId,1000)) AS CustNameID, Cust.CustId,Cust.CustInactive,Cust.Name,
  Cust.Contact,Cust.ContactTitle,Cust.Tel1,Cust.TelExt1,Cust.Tel2,Cust.TelExt2,Cust.Fax,
  Cust.Email,Cust.Web,Cust.ExTermId,Cust.CreditLim,Cust.SalesPerson,Cust.CustFee,Cust.SendStmnt,
  Cust.ExGLAcctId,Cust.ExPriceLevelId,Cust.Discount,Cust.MarginType,Cust.MarginDayLimit,
  Cust.CredOfficeRefNo,Cust.CredOfficeRating,Cust.CredOfficeDate,Cust.NSFChqNb,Cust.CredNoticeNb,
  Cust.EDIExport,Cust.EDIBusinessNo,Cust.NameLang,Cust.InvoiSendMeth,Cust.StmntSendMeth,
  Cust.Addr1,Cust.Addr2,Cust.City,Cust.Area,Cust.Zip,Cust.ExWarehouseId,Cust.ExTaxGroupId,
  Cust.ExCountryId,Cust.ShipVia,Cust.UseDirectDeposite,Cust.Transit,Cust.Institution,Cust.Account,
  Cust.ExPmtMethId,
CustAgingList.ExCurrencyId, WorldCurrency.CurrencyCode,WorldCurrency.Descr,
  WorldCurrency.UseCustomRate
 FROM (((( SELECT DocOrderDate, DocOrderId, ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS
   InvoiDate,
DetType AS InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, ExchangeRate,
        ExCurrencyId, DocType, DocOrderId AS ExInvoiId, ExSegmentId, PaymentCreditApplication
 FROM CustAgingDet
 UNION ALL  SELECT PmtHdr.PmtDate AS DocOrderDate, PmtHdr.InPmtId AS DocOrderId, PmtHdr.InPmtId AS
   InInvoiId,
PmtHdr.ChqNo AS InvoiId, PmtHdr.PmtDate AS InvoiDate, 99 AS InvoiType, PmtHdr.ExCustId,
-OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
  TotAmnt,
-OpenLeftCredits.CreditBalance AS Balance, 0 AS RecAmnt, PmtHdr.ExchangeRate, PmtHdr.ExCurrencyId,
99 AS DocType, 0 AS ExInvoiId, PmtHdr.ExSegmentId AS ExSegmentId, 0 As PaymentCreditApplication
 FROM PmtHdr
     LEFT JOIN (
 SELECT InPmtId, (TotalPaymentAmount - IIf(IsNull(TotalAppliedAmountDirect),0,
   TotalAppliedAmountDirect) + IIf(IsNull(TotalAppliedAmountIndirect),0,
   TotalAppliedAmountIndirect) + IIf(IsNull(TotalAppliedAmountOrder),0,TotalAppliedAmountOrder) )
   As CreditBalance
 FROM (
   SELECT PmtHdr.InPmtId, PmtHdr.PmtTotAmnt As TotalPaymentAmount,
     Direct.TotalAppliedAmountDirect,
 Indirect.TotalAppliedAmountIndirect, DirectOrder.TotalAppliedAmountOrder
   FROM ((PmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM PmtDet
                  GROUP BY ExPmtId) AS Direct ON PmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(PmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId
                  WHERE PmtHdr.PmtDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON PmtHdr.InPmtId = Indirect.ExPmtRefId)
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountOrder
                  FROM PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExinvoiId
                  WHERE InvoiHdr.InvoiType = 51                   GROUP BY ExPmtId) AS DirectOrder
                    ON PmtHdr.InPmtId = DirectOrder.ExPmtId
) AS OpenLeftCredits) AS OpenLeftCredits ON PmtHdr.InPmtId = OpenLeftCredits.InPmtId
 WHERE OpenLeftCredits.CreditBalance <> 0) AS CustAgingList
 INNER JOIN Cust ON CustAgingList.ExCustId = Cust.InCustId)
 LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = Cust.ExCurrencyId)
 LEFT JOIN (SELECT InvoiHdr.InInvoiId As InInvoiId
FROM InvoiHdr LEFT JOIN (SELECT PmtDet.ExInvoiId As ExInvoiId,
 IIf(IsNull(Sum(PmtAmnt)),0,Sum(PmtAmnt)) + IIf(IsNull(Sum(PmtDisc)),0,Sum(PmtDisc)) AS
   TotalPayments
FROM (PmtHdr INNER JOIN PmtDet ON PmtHdr.InPmtId = PmtDet.ExPmtId)
INNER JOIN InvoiHdr ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
WHERE NOT ExInvoiId IS NULL AND PmtHdr.PmtDate <= ? AND InvoiHdr.InvoiDate <= ?
GROUP BY ExInvoiId) As TotalPaymentsAtDate ON InvoiHdr.InInvoiId = TotalPaymentsAtDate.ExInvoiId
WHERE (TotalPaymentsAtDate.ExInvoiId IS NULL OR InvoiHdr.Balance -
  TotalPaymentsAtDate.TotalPayments <> 0)) AS InvOutstandingAtDate ON CustAgingList.ExInvoiId =
  InvOutstandingAtDate.InInvoiId)
 LEFT JOIN InvoiPaidAmntAll_View ON InvoiPaidAmntAll_View.InInvoiId = CustAgingList.InInvoiId
 WHERE CustAgingList.InvoiDate <= ? AND CustAgingList.ExCustId = 42
 AND (NOT InvOutstandingAtDate.InInvoiId IS NULL OR CustAgingList.ExInvoiId = 0) AND
   CustAgingList.Balance <> 0
 ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExCustId,1000)), CustAgingList.DocOrderDate,
   CustAgingList.DocOrderId, CustAgingList.InvoiType, CustAgingList.InvoiDate

-- desktop: aging of all customers by currency
SELECT WorldCurrency.InCurrencyId As ExCurrencyId, WorldCurrency.CurrencyCode As CurrencyCode,
  WorldCurrency.Descr As Descr, CustAgingList.*
FROM WorldCurrency LEFT JOIN (SELECT CustAgingList.InvoiDate, CustAgingList.InvoiType,
  CustAgingList.ExchangeRate, CustAgingList.InInvoiId,
CustAgingList.DocOrderId, CustAgingList.Balance, CustAgingList.DocOrderDate,
  CustAgingList.DocType,
CustAgingList.InvoiID, CustAgingList.PaymentCreditApplication, CustAgingList.ExCustID,
  InvoiPaidAmntAll_View.TotalPaid,
(Cust.Name + LEFT(Cust.InCustId,1000)) AS CustNameID, Cust.CustId,Cust.CustInactive,Cust.Name,
  Cust.Contact,Cust.ContactTitle,Cust.Tel1,Cust.TelExt1,Cust.Tel2,Cust.TelExt2,Cust.Fax,
  Cust.Email,Cust.Web,Cust.ExTermId,Cust.CreditLim,Cust.SalesPerson,Cust.CustFee,Cust.SendStmnt,
  Cust.ExGLAcctId,Cust.ExPriceLevelId,Cust.Discount,Cust.MarginType,Cust.MarginDayLimit,
  Cust.CredOfficeRefNo,Cust.CredOfficeRating,Cust.CredOfficeDate,Cust.NSFChqNb,Cust.CredNoticeNb,
  Cust.EDIExport,Cust.EDIBusinessNo,Cust.NameLang,Cust.InvoiSendMeth,Cust.StmntSendMeth,
  Cust.Addr1,Cust.Addr2,Cust.City,Cust.Area,Cust.Zip,Cust.ExWarehouseId,Cust.ExTaxGroupId,
  Cust.ExCountryId,Cust.ShipVia,Cust.UseDirectDeposite,Cust.Transit,Cust.Institution,Cust.Account,
  Cust.ExPmtMethId,IIf(IsNull(CustAgingList.ExCurrencyId),1,CustAgingList.ExCurrencyId) As
  InnerViewExCurrencyId
 FROM (((( SELECT DocOrderDate, DocOrderId, ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS
   InvoiDate,
DetType AS InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, ExchangeRate,
        ExCurrencyId, DocType, DocOrderId AS ExInvoiId, ExSegmentId, PaymentCreditApplication
 FROM CustAgingDet
 UNION ALL  SELECT PmtHdr.PmtDate AS DocOrderDate, PmtHdr.InPmtId AS DocOrderId, PmtHdr.InPmtId AS
   InInvoiId,
PmtHdr.ChqNo AS InvoiId, PmtHdr.PmtDate AS InvoiDate, 99 AS InvoiType, PmtHdr.ExCustId,
-OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
  TotAmnt,
-OpenLeftCredits.CreditBalance AS Balance, 0 AS RecAmnt, PmtHdr.ExchangeRate, PmtHdr.ExCurrencyId,
99 AS DocType, 0 AS ExInvoiId, PmtHdr.ExSegmentId AS ExSegmentId, 0 As PaymentCreditApplication
 FROM PmtHdr
     LEFT JOIN (
 SELECT InPmtId, (TotalPaymentAmount - IIf(IsNull(TotalAppliedAmountDirect),0,
   TotalAppliedAmountDirect) + IIf(IsNull(TotalAppliedAmountIndirect),0,
   TotalAppliedAmountIndirect) + IIf(IsNull(TotalAppliedAmountOrder),0,TotalAppliedAmountOrder) )
   As CreditBalance
 FROM (
   SELECT PmtHdr.InPmtId, PmtHdr.PmtTotAmnt As TotalPaymentAmount,
     Direct.TotalAppliedAmountDirect,
 Indirect.TotalAppliedAmountIndirect, DirectOrder.TotalAppliedAmountOrder
   FROM ((PmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM PmtDet
                  GROUP BY ExPmtId) AS Direct ON PmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(PmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId
                  WHERE PmtHdr.PmtDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON PmtHdr.InPmtId = Indirect.ExPmtRefId)
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountOrder
                  FROM PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExinvoiId
                  WHERE InvoiHdr.InvoiType = 51                   GROUP BY ExPmtId) AS DirectOrder
                    ON PmtHdr.InPmtId = DirectOrder.ExPmtId
) AS OpenLeftCredits) AS OpenLeftCredits ON PmtHdr.InPmtId = OpenLeftCredits.InPmtId
 WHERE OpenLeftCredits.CreditBalance <> 0) AS CustAgingList
 INNER JOIN Cust ON CustAgingList.ExCustId = Cust.InCustId)
 LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = Cust.ExCurrencyId)
 LEFT JOIN (SELECT InvoiHdr.InInvoiId As InInvoiId
FROM InvoiHdr LEFT JOIN (SELECT PmtDet.ExInvoiId As ExInvoiId,
 IIf(IsNull(Sum(PmtAmnt)),0,Sum(PmtAmnt)) + IIf(IsNull(Sum(PmtDisc)),0,Sum(PmtDisc)) AS
   TotalPayments
FROM (PmtHdr INNER JOIN PmtDet ON PmtHdr.InPmtId = PmtDet.ExPmtId)
INNER JOIN InvoiHdr ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
WHERE NOT ExInvoiId IS NULL AND PmtHdr.PmtDate <= ? AND InvoiHdr.InvoiDate <= ?
GROUP BY ExInvoiId) As TotalPaymentsAtDate ON InvoiHdr.InInvoiId = TotalPaymentsAtDate.ExInvoiId
WHERE (TotalPaymentsAtDate.ExInvoiId IS NULL OR InvoiHdr.Balance -
  TotalPaymentsAtDate.TotalPayments <> 0)) AS InvOutstandingAtDate ON CustAgingList.ExInvoiId =
  InvOutstandingAtDate.InInvoiId)
 LEFT JOIN InvoiPaidAmntAll_View ON InvoiPaidAmntAll_View.InInvoiId = CustAgingList.InInvoiId
 WHERE CustAgingList.InvoiDate <= ?) As CustAgingList ON
WorldCurrency.InCurrencyId = CustAgingList.InnerViewExCurrencyId
 ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExCustId,1000)), CustAgingList.DocOrderDate,
   CustAgingList.DocOrderId, CustAgingList.InvoiType, CustAgingList.InvoiDate

-- desktop: aging by order, columns and groups of the caller
SELECT CustAgingList.DocOrderId1, SUM(CustAgingList.Balance) AS Balance
 FROM ((((SELECT Detdate As DocOrderDate, IIf(InvoiType=99 or InvoiType=100 ,0,DocOrderID) as
   DocOrderId1, ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS InvoiDate,
DetType AS InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, ExchangeRate,
ExCurrencyId, DocType, DocOrderId1 AS ExInvoiId, ExSegmentId, PaymentCreditApplication
 FROM CustAgingDet
 UNION ALL SELECT PmtHdr.PmtDate AS DocOrderDate, PmtHdr.InPmtId AS DocOrderId1, PmtHdr.InPmtId AS
   InInvoiId,
PmtHdr.ChqNo AS InvoiId, PmtHdr.PmtDate AS InvoiDate, 99 AS InvoiType, PmtHdr.ExCustId,
-OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
  TotAmnt,
-OpenLeftCredits.CreditBalance AS Balance, 0 AS RecAmnt, PmtHdr.ExchangeRate, PmtHdr.ExCurrencyId,
99 AS DocType, 0 AS ExInvoiId, PmtHdr.ExSegmentId AS ExSegmentId, 0 As PaymentCreditApplication
 FROM PmtHdr
     LEFT JOIN (
 SELECT InPmtId, (TotalPaymentAmount - IIf(IsNull(TotalAppliedAmountDirect),0,
   TotalAppliedAmountDirect) + IIf(IsNull(TotalAppliedAmountIndirect),0,
   TotalAppliedAmountIndirect) + IIf(IsNull(TotalAppliedAmountOrder),0,TotalAppliedAmountOrder) )
   As CreditBalance
 FROM (
   SELECT PmtHdr.InPmtId, PmtHdr.PmtTotAmnt As TotalPaymentAmount,
     Direct.TotalAppliedAmountDirect,
 Indirect.TotalAppliedAmountIndirect, DirectOrder.TotalAppliedAmountOrder
   FROM ((PmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM PmtDet
                  GROUP BY ExPmtId) AS Direct ON PmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(PmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId
                  WHERE PmtHdr.PmtDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON PmtHdr.InPmtId = Indirect.ExPmtRefId)
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountOrder
                  FROM PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExinvoiId
                  WHERE InvoiHdr.InvoiType = 51                   GROUP BY ExPmtId) AS DirectOrder
                    ON PmtHdr.InPmtId = DirectOrder.ExPmtId
) AS OpenLeftCredits) AS OpenLeftCredits ON PmtHdr.InPmtId = OpenLeftCredits.InPmtId
 WHERE OpenLeftCredits.CreditBalance <> 0) AS CustAgingList
 INNER JOIN Cust ON CustAgingList.ExCustId = Cust.InCustId)
 LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = Cust.ExCurrencyId)
 LEFT JOIN (SELECT InvoiHdr.InInvoiId As InInvoiId
FROM InvoiHdr LEFT JOIN (SELECT PmtDet.ExInvoiId As ExInvoiId,
 IIf(IsNull(Sum(PmtAmnt)),0,Sum(PmtAmnt)) + IIf(IsNull(Sum(PmtDisc)),0,Sum(PmtDisc)) AS
   TotalPayments
FROM (PmtHdr INNER JOIN PmtDet ON PmtHdr.InPmtId = PmtDet.ExPmtId)
INNER JOIN InvoiHdr ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
WHERE NOT ExInvoiId IS NULL AND PmtHdr.PmtDate <= ? AND InvoiHdr.InvoiDate <= ?
GROUP BY ExInvoiId) As TotalPaymentsAtDate ON InvoiHdr.InInvoiId = TotalPaymentsAtDate.ExInvoiId
WHERE (TotalPaymentsAtDate.ExInvoiId IS NULL OR InvoiHdr.Balance -
  TotalPaymentsAtDate.TotalPayments <> 0)) AS InvOutstandingAtDate ON CustAgingList.ExInvoiId =
  InvOutstandingAtDate.InInvoiId)
 LEFT JOIN InvoiPaidAmntAll_View ON InvoiPaidAmntAll_View.InInvoiId = CustAgingList.InInvoiId
 WHERE CustAgingList.InvoiDate <= ? GROUP BY CustAgingList.DocOrderId1
 ORDER BY CustAgingList.DocOrderId1

-- server: aging of one customer, outstanding documents
SELECT CustAgingList.InvoiDate, CustAgingList.InvoiType, CustAgingList.ExchangeRate,
  CustAgingList.InInvoiId,
CustAgingList.DocOrderId, CustAgingList.Balance, CustAgingList.DocOrderDate,
  CustAgingList.DocType,
CustAgingList.InvoiID, CustAgingList.PaymentCreditApplication, CustAgingList.ExCustID,
  InvoiPaidAmntAll_View.TotalPaid,
(Cust.Name + LEFT(Cust.InCustId,1000)) AS CustNameID, Cust.CustId,Cust.CustInactive,Cust.Name,
  Cust.Contact,Cust.ContactTitle,Cust.Tel1,Cust.TelExt1,Cust.Tel2,Cust.TelExt2,Cust.Fax,
  Cust.Email,Cust.Web,Cust.ExTermId,Cust.CreditLim,Cust.SalesPerson,Cust.CustFee,Cust.SendStmnt,
  Cust.ExGLAcctId,Cust.ExPriceLevelId,Cust.Discount,Cust.MarginType,Cust.MarginDayLimit,
  Cust.CredOfficeRefNo,Cust.CredOfficeRating,Cust.CredOfficeDate,Cust.NSFChqNb,Cust.CredNoticeNb,
  Cust.EDIExport,Cust.EDIBusinessNo,Cust.NameLang,Cust.InvoiSendMeth,Cust.StmntSendMeth,
  Cust.Addr1,Cust.Addr2,Cust.City,Cust.Area,Cust.Zip,Cust.ExWarehouseId,Cust.ExTaxGroupId,
  Cust.ExCountryId,Cust.ShipVia,Cust.UseDirectDeposite,Cust.Transit,Cust.Institution,Cust.Account,
  Cust.ExPmtMethId,
CustAgingList.ExCurrencyId, WorldCurrency.CurrencyCode,WorldCurrency.Descr,
  WorldCurrency.UseCustomRate
 FROM (((( SELECT DocOrderDate, DocOrderId, ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS
   InvoiDate,
DetType AS InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, ExchangeRate,
        ExCurrencyId, DocType, DocOrderId AS ExInvoiId, ExSegmentId, PaymentCreditApplication
 FROM CustAgingDet
 UNION ALL  SELECT PmtHdr.PmtDate AS DocOrderDate, PmtHdr.InPmtId AS DocOrderId, PmtHdr.InPmtId AS
   InInvoiId,
PmtHdr.ChqNo AS InvoiId, PmtHdr.PmtDate AS InvoiDate, 99 AS InvoiType, PmtHdr.ExCustId,
-OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
  TotAmnt,
-OpenLeftCredits.CreditBalance AS Balance, 0 AS RecAmnt, PmtHdr.ExchangeRate, PmtHdr.ExCurrencyId,
99 AS DocType, 0 AS ExInvoiId, PmtHdr.ExSegmentId AS ExSegmentId, 0 As PaymentCreditApplication
 FROM PmtHdr
     LEFT JOIN (
 SELECT InPmtId, (TotalPaymentAmount - COALESCE(TotalAppliedAmountDirect,0) +
   COALESCE(TotalAppliedAmountIndirect,0) + COALESCE(TotalAppliedAmountOrder,0) ) As CreditBalance
 FROM (
   SELECT PmtHdr.InPmtId, PmtHdr.PmtTotAmnt As TotalPaymentAmount,
     Direct.TotalAppliedAmountDirect,
 Indirect.TotalAppliedAmountIndirect, DirectOrder.TotalAppliedAmountOrder
   FROM ((PmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM PmtDet
                  GROUP BY ExPmtId) AS Direct ON PmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(PmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId
                  WHERE PmtHdr.PmtDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON PmtHdr.InPmtId = Indirect.ExPmtRefId)
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountOrder
                  FROM PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExinvoiId
                  WHERE InvoiHdr.InvoiType = 51                   GROUP BY ExPmtId) AS DirectOrder
                    ON PmtHdr.InPmtId = DirectOrder.ExPmtId
) AS OpenLeftCredits) AS OpenLeftCredits ON PmtHdr.InPmtId = OpenLeftCredits.InPmtId
 WHERE OpenLeftCredits.CreditBalance <> 0) AS CustAgingList
 INNER JOIN Cust ON CustAgingList.ExCustId = Cust.InCustId)
 LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = Cust.ExCurrencyId)
 LEFT JOIN (SELECT InvoiHdr.InInvoiId As InInvoiId
FROM InvoiHdr LEFT JOIN (SELECT PmtDet.ExInvoiId As ExInvoiId,
 COALESCE(Sum(PmtAmnt),0) + COALESCE(Sum(PmtDisc),0) AS TotalPayments
FROM (PmtHdr INNER JOIN PmtDet ON PmtHdr.InPmtId = PmtDet.ExPmtId)
INNER JOIN InvoiHdr ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
WHERE NOT ExInvoiId IS NULL AND PmtHdr.PmtDate <= ? AND InvoiHdr.InvoiDate <= ?
GROUP BY ExInvoiId) As TotalPaymentsAtDate ON InvoiHdr.InInvoiId = TotalPaymentsAtDate.ExInvoiId
WHERE (TotalPaymentsAtDate.ExInvoiId IS NULL OR InvoiHdr.Balance -
  TotalPaymentsAtDate.TotalPayments <> 0)) AS InvOutstandingAtDate ON CustAgingList.ExInvoiId =
  InvOutstandingAtDate.InInvoiId)
 LEFT JOIN InvoiPaidAmntAll_View ON InvoiPaidAmntAll_View.InInvoiId = CustAgingList.InInvoiId
 WHERE CustAgingList.InvoiDate <= ? AND CustAgingList.ExCustId = 42
 AND (NOT InvOutstandingAtDate.InInvoiId IS NULL OR CustAgingList.ExInvoiId = 0) AND
   CustAgingList.Balance <> 0
 ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExCustId,1000)), CustAgingList.DocOrderDate,
   CustAgingList.DocOrderId, CustAgingList.InvoiType, CustAgingList.InvoiDate

-- server: aging of all customers by currency
SELECT WorldCurrency.InCurrencyId As ExCurrencyId, WorldCurrency.CurrencyCode As CurrencyCode,
  WorldCurrency.Descr As Descr, CustAgingList.*
FROM WorldCurrency LEFT JOIN (SELECT CustAgingList.InvoiDate, CustAgingList.InvoiType,
  CustAgingList.ExchangeRate, CustAgingList.InInvoiId,
CustAgingList.DocOrderId, CustAgingList.Balance, CustAgingList.DocOrderDate,
  CustAgingList.DocType,
CustAgingList.InvoiID, CustAgingList.PaymentCreditApplication, CustAgingList.ExCustID,
  InvoiPaidAmntAll_View.TotalPaid,
(Cust.Name + LEFT(Cust.InCustId,1000)) AS CustNameID, Cust.CustId,Cust.CustInactive,Cust.Name,
  Cust.Contact,Cust.ContactTitle,Cust.Tel1,Cust.TelExt1,Cust.Tel2,Cust.TelExt2,Cust.Fax,
  Cust.Email,Cust.Web,Cust.ExTermId,Cust.CreditLim,Cust.SalesPerson,Cust.CustFee,Cust.SendStmnt,
  Cust.ExGLAcctId,Cust.ExPriceLevelId,Cust.Discount,Cust.MarginType,Cust.MarginDayLimit,
  Cust.CredOfficeRefNo,Cust.CredOfficeRating,Cust.CredOfficeDate,Cust.NSFChqNb,Cust.CredNoticeNb,
  Cust.EDIExport,Cust.EDIBusinessNo,Cust.NameLang,Cust.InvoiSendMeth,Cust.StmntSendMeth,
  Cust.Addr1,Cust.Addr2,Cust.City,Cust.Area,Cust.Zip,Cust.ExWarehouseId,Cust.ExTaxGroupId,
  Cust.ExCountryId,Cust.ShipVia,Cust.UseDirectDeposite,Cust.Transit,Cust.Institution,Cust.Account,
  Cust.ExPmtMethId,COALESCE(CustAgingList.ExCurrencyId,1) As InnerViewExCurrencyId
 FROM (((( SELECT DocOrderDate, DocOrderId, ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS
   InvoiDate,
DetType AS InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, ExchangeRate,
        ExCurrencyId, DocType, DocOrderId AS ExInvoiId, ExSegmentId, PaymentCreditApplication
 FROM CustAgingDet
 UNION ALL  SELECT PmtHdr.PmtDate AS DocOrderDate, PmtHdr.InPmtId AS DocOrderId, PmtHdr.InPmtId AS
   InInvoiId,
PmtHdr.ChqNo AS InvoiId, PmtHdr.PmtDate AS InvoiDate, 99 AS InvoiType, PmtHdr.ExCustId,
-OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
  TotAmnt,
-OpenLeftCredits.CreditBalance AS Balance, 0 AS RecAmnt, PmtHdr.ExchangeRate, PmtHdr.ExCurrencyId,
99 AS DocType, 0 AS ExInvoiId, PmtHdr.ExSegmentId AS ExSegmentId, 0 As PaymentCreditApplication
 FROM PmtHdr
     LEFT JOIN (
 SELECT InPmtId, (TotalPaymentAmount - COALESCE(TotalAppliedAmountDirect,0) +
   COALESCE(TotalAppliedAmountIndirect,0) + COALESCE(TotalAppliedAmountOrder,0) ) As CreditBalance
 FROM (
   SELECT PmtHdr.InPmtId, PmtHdr.PmtTotAmnt As TotalPaymentAmount,
     Direct.TotalAppliedAmountDirect,
 Indirect.TotalAppliedAmountIndirect, DirectOrder.TotalAppliedAmountOrder
   FROM ((PmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM PmtDet
                  GROUP BY ExPmtId) AS Direct ON PmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(PmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId
                  WHERE PmtHdr.PmtDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON PmtHdr.InPmtId = Indirect.ExPmtRefId)
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountOrder
                  FROM PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExinvoiId
                  WHERE InvoiHdr.InvoiType = 51                   GROUP BY ExPmtId) AS DirectOrder
                    ON PmtHdr.InPmtId = DirectOrder.ExPmtId
) AS OpenLeftCredits) AS OpenLeftCredits ON PmtHdr.InPmtId = OpenLeftCredits.InPmtId
 WHERE OpenLeftCredits.CreditBalance <> 0) AS CustAgingList
 INNER JOIN Cust ON CustAgingList.ExCustId = Cust.InCustId)
 LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = Cust.ExCurrencyId)
 LEFT JOIN (SELECT InvoiHdr.InInvoiId As InInvoiId
FROM InvoiHdr LEFT JOIN (SELECT PmtDet.ExInvoiId As ExInvoiId,
 COALESCE(Sum(PmtAmnt),0) + COALESCE(Sum(PmtDisc),0) AS TotalPayments
FROM (PmtHdr INNER JOIN PmtDet ON PmtHdr.InPmtId = PmtDet.ExPmtId)
INNER JOIN InvoiHdr ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
WHERE NOT ExInvoiId IS NULL AND PmtHdr.PmtDate <= ? AND InvoiHdr.InvoiDate <= ?
GROUP BY ExInvoiId) As TotalPaymentsAtDate ON InvoiHdr.InInvoiId = TotalPaymentsAtDate.ExInvoiId
WHERE (TotalPaymentsAtDate.ExInvoiId IS NULL OR InvoiHdr.Balance -
  TotalPaymentsAtDate.TotalPayments <> 0)) AS InvOutstandingAtDate ON CustAgingList.ExInvoiId =
  InvOutstandingAtDate.InInvoiId)
 LEFT JOIN InvoiPaidAmntAll_View ON InvoiPaidAmntAll_View.InInvoiId = CustAgingList.InInvoiId
 WHERE CustAgingList.InvoiDate <= ?) As CustAgingList ON
WorldCurrency.InCurrencyId = CustAgingList.InnerViewExCurrencyId
 ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExCustId,1000)), CustAgingList.DocOrderDate,
   CustAgingList.DocOrderId, CustAgingList.InvoiType, CustAgingList.InvoiDate

-- server: aging by order, columns and groups of the caller
SELECT CustAgingList.DocOrderId1, SUM(CustAgingList.Balance) AS Balance
 FROM ((((SELECT detdate as DocOrderDate, DocOrderId1 = Case When DetType=99 then 0 When
   DetType=100 then 0 else DocOrderID end   , ExSrcId AS InInvoiId, DocNo AS InvoiId, DetDate AS
   InvoiDate,
DetType as InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt, Balance, RecAmnt, ExchangeRate,
        ExCurrencyId, DocType, ExInvoiId = Case When DetType=99 then 0 When DetType=100 then 0
          else DocOrderID end, ExSegmentId, PaymentCreditApplication
 FROM CustAgingDet
 UNION ALL SELECT PmtHdr.PmtDate AS DocOrderDate, DocOrderId1 = PmtHdr.InPmtId, PmtHdr.InPmtId AS
   InInvoiId,
PmtHdr.ChqNo AS InvoiId, PmtHdr.PmtDate AS InvoiDate, 99 AS InvoiType, PmtHdr.ExCustId,
-OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
  TotAmnt,
-OpenLeftCredits.CreditBalance AS Balance, 0 AS RecAmnt, PmtHdr.ExchangeRate, PmtHdr.ExCurrencyId,
99 AS DocType, 0 AS ExInvoiId, PmtHdr.ExSegmentId AS ExSegmentId, 0 As PaymentCreditApplication
 FROM PmtHdr
     LEFT JOIN (
 SELECT InPmtId, (TotalPaymentAmount - COALESCE(TotalAppliedAmountDirect,0) +
   COALESCE(TotalAppliedAmountIndirect,0) + COALESCE(TotalAppliedAmountOrder,0) ) As CreditBalance
 FROM (
   SELECT PmtHdr.InPmtId, PmtHdr.PmtTotAmnt As TotalPaymentAmount,
     Direct.TotalAppliedAmountDirect,
 Indirect.TotalAppliedAmountIndirect, DirectOrder.TotalAppliedAmountOrder
   FROM ((PmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM PmtDet
                  GROUP BY ExPmtId) AS Direct ON PmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(PmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId
                  WHERE PmtHdr.PmtDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON PmtHdr.InPmtId = Indirect.ExPmtRefId)
       LEFT JOIN (SELECT ExPmtId, SUM(PmtDet.PmtAmnt) As TotalAppliedAmountOrder
                  FROM PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExinvoiId
                  WHERE InvoiHdr.InvoiType = 51                   GROUP BY ExPmtId) AS DirectOrder
                    ON PmtHdr.InPmtId = DirectOrder.ExPmtId
) AS OpenLeftCredits) AS OpenLeftCredits ON PmtHdr.InPmtId = OpenLeftCredits.InPmtId
 WHERE OpenLeftCredits.CreditBalance <> 0) AS CustAgingList
 INNER JOIN Cust ON CustAgingList.ExCustId = Cust.InCustId)
 LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = Cust.ExCurrencyId)
 LEFT JOIN (SELECT InvoiHdr.InInvoiId As InInvoiId
FROM InvoiHdr LEFT JOIN (SELECT PmtDet.ExInvoiId As ExInvoiId,
 COALESCE(Sum(PmtAmnt),0) + COALESCE(Sum(PmtDisc),0) AS TotalPayments
FROM (PmtHdr INNER JOIN PmtDet ON PmtHdr.InPmtId = PmtDet.ExPmtId)
INNER JOIN InvoiHdr ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
WHERE NOT ExInvoiId IS NULL AND PmtHdr.PmtDate <= ? AND InvoiHdr.InvoiDate <= ?
GROUP BY ExInvoiId) As TotalPaymentsAtDate ON InvoiHdr.InInvoiId = TotalPaymentsAtDate.ExInvoiId
WHERE (TotalPaymentsAtDate.ExInvoiId IS NULL OR InvoiHdr.Balance -
  TotalPaymentsAtDate.TotalPayments <> 0)) AS InvOutstandingAtDate ON CustAgingList.ExInvoiId =
  InvOutstandingAtDate.InInvoiId)
 LEFT JOIN InvoiPaidAmntAll_View ON InvoiPaidAmntAll_View.InInvoiId = CustAgingList.InInvoiId
 WHERE CustAgingList.InvoiDate <= ? GROUP BY CustAgingList.DocOrderId1
 ORDER BY CustAgingList.DocOrderId1

-- both: the columns of a table
SELECT * FROM CUST WHERE 1=0

-- both: balance of an invoice at a date
SELECT Min(InInvoiIdInternal) As ExInvoiId, Sum(BalanceInternal) As Balance
FROM  (SELECT InInvoiId As InInvoiIdInternal, Balance As BalanceInternal
       FROM InvoiHdr
       WHERE InInvoiId=?
       UNION ALL
       SELECT Min(ExInvoiId) As InInvoiIdInternal, -SUM(PmtAmnt+PmtDisc) As BalanceInternal
       FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId
       WHERE ExInvoiId=? AND PmtHdr.PmtDate <= ? AND NOT ExInvoiId IS NULL) As InternalQuery

-- both: history of a customer
SELECT InvoiDate, InInvoiID, InvoiID, InvoiType, TotalToPay, TotAmnt, RecAmnt, ExCurrencyID
FROM CustHistoryList_View
WHERE InvoiDate BETWEEN ? AND ? AND ExCustID = ?
ORDER BY InvoiDate

-- both: balance before a date
SELECT SUM(TotalToPay) as TotalToPay
FROM CustHistoryList_View
WHERE ExCustID = ? AND InvoiDate < ?

-- both: balances of customers
SELECT ExCustId, SUM(CustBalance) AS CustBalance, SUM(CustBalanceHome) AS CustBalanceHome
FROM CustBalance_View
 WHERE ExCustId = ?  AND  BalanceDate <= ?  AND  ExSegmentID = ?
GROUP BY ExCustId ORDER BY ExCustId

-- both: open credits
SELECT * FROM CustOpenCredits_View WHERE ExCustId=?

-- both: amounts paid
SELECT * FROM InvoiPaidAmntAll_View WHERE InInvoiId=?

-- both: unapplied payment
SELECT * FROM CustPmtUnappl_View WHERE InPmtId=?

-- both: last payment of a customer
 SELECT TOP 1 * FROM CustLastPmt_View  WHERE ExCustId = 42 ORDER BY LastPmt DESC, PmtCode DESC

-- both: last payment of every customer
 SELECT mainView.* FROM CustLastPmt_View AS mainView
 INNER JOIN (SELECT MAX(PmtCode) AS LastValidTrxId FROM CustLastPmt_View
             INNER JOIN (SELECT ExCustId, MAX(LastPmt) as LastValidDate
                         FROM CustLastPmt_View GROUP BY ExCustId
                        ) AS LastValidTrxDate ON CustLastPmt_View.ExCustId =
                          LastValidTrxDate.ExCustId AND
                                                 CustLastPmt_View.LastPmt =
                                                   LastValidTrxDate.LastValidDate
             GROUP BY CustLastPmt_View.ExCustId
             ) AS LastValidTrx ON mainView.PmtCode = LastValidTrx.LastValidTrxId

-- both: last sale of a customer
 SELECT TOP 1 * FROM CustLastSale_View WHERE ExCustId = 42 ORDER BY LastSale DESC, InInvoiId DESC

-- both: last sale of every customer
 SELECT mainView.* FROM CustLastSale_View AS mainView
 INNER JOIN (SELECT MAX(InInvoiId) as LastValidTrxId FROM CustLastSale_View
             INNER JOIN (SELECT ExCustId, MAX(LastSale) AS LastValidDate
                         FROM CustLastSale_View GROUP BY ExCustID
                        ) AS LastValidTrxDate ON CustLastSale_View.ExCustId =
                          LastValidTrxDate.ExCustId AND
                                                 CustLastSale_View.LastSale =
                                                   LastValidTrxDate.LastValidDate
             GROUP BY CustLastSale_View.ExCustId
             ) AS LastValidTrx ON mainView.InInvoiId = LastValidTrx.LastValidTrxId

-- both: costs by project
SELECT SUM(GLDet.DetAmnt) As CustCost, SUM(GLDet.ForeignAmnt) As CustCostHome, ExCustId, ExProjId
FROM GLDet INNER JOIN InvoiHdr ON GLDet.ExSrcKeyVal = InvoiHdr.InInvoiId
WHERE GLDet.ExProjId <> 0 AND GLDet.Source = 'INV' AND
GLDet.DetAmnt <> 0 AND GLDet.ExAcctId <> ? AND GLDet.ExAcctId <> ?  AND ExCustId = ?  AND
  GLDet.DetDate <= ?  AND ExProjId = ?  AND ExSegmentId = ?
GROUP BY ExCustId, ExProjId
ORDER BY ExCustId, ExProjId
