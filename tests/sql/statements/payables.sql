-- desktop: aging of one supplier, outstanding documents
SELECT SuppAgingList_View.PurcDate, SuppAgingList_View.ExchangeRate,
       SuppAgingList_View.PurcType, IIf(IsNull(SuppAgingList_View.DocCredit),0,
         SuppAgingList_View.DocCredit) AS DocCredit,
IIf(IsNull(SuppAgingList_View.PurcCredit),0,SuppAgingList_View.PurcCredit) AS PurcCredit,
  SuppAgingList_View.InPurcId,
       SuppAgingList_View.Balance, SuppAgingList_View.DocOrderId, SuppAgingList_View.DocOrderDate,
       SuppAgingList_View.PaymentCreditApplication,
       SuppAgingList_View.DocNo, Supp.SuppId,Supp.SuppInactive,Supp.Name,Supp.Contact,
         Supp.ContactTitle,Supp.Tel1,Supp.TelExt1,Supp.Tel2,Supp.TelExt2,Supp.Fax,Supp.Email,
         Supp.Web,Supp.ExTermId,Supp.Addr1,Supp.Addr2,Supp.City,Supp.Area,Supp.ExCountryId,
         Supp.Zip,Supp.ExTaxGroupId,Supp.CreditLim,Supp.ExGLAcctId,Supp.Buyer,Supp.NameLang,
         Supp.SendPo,Supp.IncludeInT5018,Supp.BusinessNumber,Supp.UseDirectDeposite,Supp.Transit,
         Supp.Institution,Supp.Account,Supp.ExPmtMethId,
       SuppAgingList_View.ExSuppId, PurcPaidAmntAll_View.TotalPaid, (Supp.Name +
         LEFT(Supp.InSuppId,1000)) AS SuppNameID, SuppAgingList_View.ExCurrencyId,
         WorldCurrency.CurrencyCode,WorldCurrency.Descr,WorldCurrency.UseCustomRate
FROM ((((SELECT DocOrderDate, DocOrderId, ExSrcId As InPurcId, DocNo As PurcId, DetDate as
  PurcDate,
         DetType as PurcType, PurcCredit, ExSuppId, DocNo, DetAmnt, TaxAmnt, TotAmnt, Balance,
           PaidAmnt,
         ExchangeRate, ExCurrencyId, Balance As TotalToPay, DocOrderId As ExPurcId, DocCredit,
           ExSegmentId, PaymentCreditApplication
         FROM SuppAgingDet
 UNION ALL
 SELECT SuppPmtHdr.ChqDate AS DocOrderDate, SuppPmtHdr.InPmtId AS DocOrderId,
        SuppPmtHdr.InPmtId, SuppPmtHdr.ChqNo AS PurcId, SuppPmtHdr.ChqDate, 99 AS PmtType,
        0 AS PurcCredit, SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqNo AS DocNo,
        -OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
          TotAmnt,
        -OpenLeftCredits.CreditBalance AS Balance, 0 AS PaidAmnt,
        SuppPmtHdr.ExchangeRate AS ExchangeRate, SuppPmtHdr.ExCurrencyId,
          -OpenLeftCredits.CreditBalance AS TotalToPay,
        0 AS ExPurcId, 0 AS DocCredit, SuppPmtHdr.ExSegmentId, 0 As PaymentCreditApplication
 FROM SuppPmtHdr
     LEFT JOIN (
 SELECT InPmtId, TotalPaymentAmount-IIf(IsNull(TotalAppliedAmountDirect), 0,
   TotalAppliedAmountDirect)+IIf(IsNull(TotalAppliedAmountIndirect), 0,
   TotalAppliedAmountIndirect) As CreditBalance
 FROM (
   SELECT SuppPmtHdr.InPmtId,
          SuppPmtHdr.PmtTotAmnt As TotalPaymentAmount,
          Direct.TotalAppliedAmountDirect,
          Indirect.TotalAppliedAmountIndirect
   FROM (SuppPmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(SuppPmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM SuppPmtDet
                  GROUP BY ExPmtId) AS Direct ON SuppPmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(SuppPmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM SuppPmtDet INNER JOIN SuppPmtHdr ON SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId
                  WHERE SuppPmtHdr.ChqDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON SuppPmtHdr.InPmtId = Indirect.ExPmtRefId
) AS OpenLeftCredits) AS OpenLeftCredits ON SuppPmtHdr.InPmtId = OpenLeftCredits.InPmtId
WHERE OpenLeftCredits.CreditBalance <> 0) AS SuppAgingList_View
 INNER JOIN Supp ON SuppAgingList_View.ExSuppId = Supp.InSuppId)
 LEFT JOIN WorldCurrency ON Supp.ExCurrencyId = WorldCurrency.InCurrencyId)
 LEFT JOIN (SELECT PurcHdr.InPurcId As PurcOutstandingAtDateInPurcId
            FROM PurcHdr LEFT JOIN (SELECT SuppPmtDet.ExPurcId As ExPurcId,
 (IIf(IsNull(Sum(PmtAmnt)),0,Sum(PmtAmnt)) + IIf(IsNull(Sum(PmtDisc)),0,Sum(PmtDisc))) AS
   TotalPayments
                                    FROM (SuppPmtHdr INNER JOIN SuppPmtDet ON SuppPmtHdr.InPmtId =
                                      SuppPmtDet.ExPmtId)
                                    INNER JOIN PurcHdr ON SuppPmtDet.ExPurcId = PurcHdr.InPurcId
                                    WHERE NOT ExPurcId IS NULL
 AND SuppPmtHdr.ExSuppId = 7
                                    AND PurcHdr.PurcDate <= ? AND SuppPmtHdr.ChqDate <= ?
                                    GROUP BY ExPurcId) As TotalPaymentsAtDate ON PurcHdr.InPurcId
                                      = TotalPaymentsAtDate.ExPurcId
               WHERE (TotalPaymentsAtDate.ExPurcId IS NULL OR PurcHdr.Balance -
                 TotalPaymentsAtDate.TotalPayments <> 0)
 AND PurcHdr.ExSuppId = ?
) AS PurcOutstandingAtDate ON SuppAgingList_View.ExPurcId =
  PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId)
 LEFT JOIN PurcPaidAmntAll_View ON PurcPaidAmntAll_View.InPurcId = SuppAgingList_View.InPurcId
 WHERE SuppAgingList_View.PurcDate <= ? AND SuppAgingList_View.DocOrderDate <= ?
 AND SuppAgingList_View.ExSuppId = ?
 AND (NOT (PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId) IS NULL OR
   SuppAgingList_View.ExPurcId = 0) AND SuppAgingList_View.Balance <> 0
 ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExSuppId,1000)),
   SuppAgingList_View.DocOrderdate, SuppAgingList_View.DocOrderId, SuppAgingList_View.PurcType,
   SuppAgingList_View.PurcDate

-- desktop: aging of all suppliers by currency
SELECT WorldCurrency.InCurrencyId As ExCurrencyId, WorldCurrency.CurrencyCode As CurrencyCode,
  WorldCurrency.Descr As Descr, SuppAgingList_View.*
FROM WorldCurrency LEFT JOIN (SELECT SuppAgingList_View.PurcDate, SuppAgingList_View.ExchangeRate,
       SuppAgingList_View.PurcType, IIf(IsNull(SuppAgingList_View.DocCredit),0,
         SuppAgingList_View.DocCredit) AS DocCredit,
IIf(IsNull(SuppAgingList_View.PurcCredit),0,SuppAgingList_View.PurcCredit) AS PurcCredit,
  SuppAgingList_View.InPurcId,
       SuppAgingList_View.Balance, SuppAgingList_View.DocOrderId, SuppAgingList_View.DocOrderDate,
       SuppAgingList_View.PaymentCreditApplication,
       SuppAgingList_View.DocNo, Supp.SuppId,Supp.SuppInactive,Supp.Name,Supp.Contact,
         Supp.ContactTitle,Supp.Tel1,Supp.TelExt1,Supp.Tel2,Supp.TelExt2,Supp.Fax,Supp.Email,
         Supp.Web,Supp.ExTermId,Supp.Addr1,Supp.Addr2,Supp.City,Supp.Area,Supp.ExCountryId,
         Supp.Zip,Supp.ExTaxGroupId,Supp.CreditLim,Supp.ExGLAcctId,Supp.Buyer,Supp.NameLang,
         Supp.SendPo,Supp.IncludeInT5018,Supp.BusinessNumber,Supp.UseDirectDeposite,Supp.Transit,
         Supp.Institution,Supp.Account,Supp.ExPmtMethId,
       SuppAgingList_View.ExSuppId, PurcPaidAmntAll_View.TotalPaid, (Supp.Name +
         LEFT(Supp.InSuppId,1000)) AS SuppNameID, IIf(IsNull(SuppAgingList_View.ExCurrencyId),1,
         SuppAgingList_View.ExCurrencyId) As InnerViewExCurrencyId
FROM ((((SELECT DocOrderDate, DocOrderId, ExSrcId As InPurcId, DocNo As PurcId, DetDate as
  PurcDate,
         DetType as PurcType, PurcCredit, ExSuppId, DocNo, DetAmnt, TaxAmnt, TotAmnt, Balance,
           PaidAmnt,
         ExchangeRate, ExCurrencyId, Balance As TotalToPay, DocOrderId As ExPurcId, DocCredit,
           ExSegmentId, PaymentCreditApplication
         FROM SuppAgingDet
 UNION ALL
 SELECT SuppPmtHdr.ChqDate AS DocOrderDate, SuppPmtHdr.InPmtId AS DocOrderId,
        SuppPmtHdr.InPmtId, SuppPmtHdr.ChqNo AS PurcId, SuppPmtHdr.ChqDate, 99 AS PmtType,
        0 AS PurcCredit, SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqNo AS DocNo,
        -OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
          TotAmnt,
        -OpenLeftCredits.CreditBalance AS Balance, 0 AS PaidAmnt,
        SuppPmtHdr.ExchangeRate AS ExchangeRate, SuppPmtHdr.ExCurrencyId,
          -OpenLeftCredits.CreditBalance AS TotalToPay,
        0 AS ExPurcId, 0 AS DocCredit, SuppPmtHdr.ExSegmentId, 0 As PaymentCreditApplication
 FROM SuppPmtHdr
     LEFT JOIN (
 SELECT InPmtId, TotalPaymentAmount-IIf(IsNull(TotalAppliedAmountDirect), 0,
   TotalAppliedAmountDirect)+IIf(IsNull(TotalAppliedAmountIndirect), 0,
   TotalAppliedAmountIndirect) As CreditBalance
 FROM (
   SELECT SuppPmtHdr.InPmtId,
          SuppPmtHdr.PmtTotAmnt As TotalPaymentAmount,
          Direct.TotalAppliedAmountDirect,
          Indirect.TotalAppliedAmountIndirect
   FROM (SuppPmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(SuppPmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM SuppPmtDet
                  GROUP BY ExPmtId) AS Direct ON SuppPmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(SuppPmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM SuppPmtDet INNER JOIN SuppPmtHdr ON SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId
                  WHERE SuppPmtHdr.ChqDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON SuppPmtHdr.InPmtId = Indirect.ExPmtRefId
) AS OpenLeftCredits) AS OpenLeftCredits ON SuppPmtHdr.InPmtId = OpenLeftCredits.InPmtId
WHERE OpenLeftCredits.CreditBalance <> 0) AS SuppAgingList_View
 INNER JOIN Supp ON SuppAgingList_View.ExSuppId = Supp.InSuppId)
 LEFT JOIN WorldCurrency ON Supp.ExCurrencyId = WorldCurrency.InCurrencyId)
 LEFT JOIN (SELECT PurcHdr.InPurcId As PurcOutstandingAtDateInPurcId
            FROM PurcHdr LEFT JOIN (SELECT SuppPmtDet.ExPurcId As ExPurcId,
 (IIf(IsNull(Sum(PmtAmnt)),0,Sum(PmtAmnt)) + IIf(IsNull(Sum(PmtDisc)),0,Sum(PmtDisc))) AS
   TotalPayments
                                    FROM (SuppPmtHdr INNER JOIN SuppPmtDet ON SuppPmtHdr.InPmtId =
                                      SuppPmtDet.ExPmtId)
                                    INNER JOIN PurcHdr ON SuppPmtDet.ExPurcId = PurcHdr.InPurcId
                                    WHERE NOT ExPurcId IS NULL
                                    AND PurcHdr.PurcDate <= ? AND SuppPmtHdr.ChqDate <= ?
                                    GROUP BY ExPurcId) As TotalPaymentsAtDate ON PurcHdr.InPurcId
                                      = TotalPaymentsAtDate.ExPurcId
               WHERE (TotalPaymentsAtDate.ExPurcId IS NULL OR PurcHdr.Balance -
                 TotalPaymentsAtDate.TotalPayments <> 0)
) AS PurcOutstandingAtDate ON SuppAgingList_View.ExPurcId =
  PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId)
 LEFT JOIN PurcPaidAmntAll_View ON PurcPaidAmntAll_View.InPurcId = SuppAgingList_View.InPurcId
 WHERE SuppAgingList_View.PurcDate <= ? AND SuppAgingList_View.DocOrderDate <= ?
) As SuppAgingList_View ON
WorldCurrency.InCurrencyId = SuppAgingList_View.InnerViewExCurrencyId
 ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExSuppId,1000)),
   SuppAgingList_View.DocOrderdate, SuppAgingList_View.DocOrderId, SuppAgingList_View.PurcType,
   SuppAgingList_View.PurcDate

-- server: aging of one supplier, outstanding documents
SELECT SuppAgingList_View.PurcDate, SuppAgingList_View.ExchangeRate,
       SuppAgingList_View.PurcType, COALESCE(SuppAgingList_View.DocCredit,0) AS DocCredit,
COALESCE(SuppAgingList_View.PurcCredit,0) AS PurcCredit, SuppAgingList_View.InPurcId,
       SuppAgingList_View.Balance, SuppAgingList_View.DocOrderId, SuppAgingList_View.DocOrderDate,
       SuppAgingList_View.PaymentCreditApplication,
       SuppAgingList_View.DocNo, Supp.SuppId,Supp.SuppInactive,Supp.Name,Supp.Contact,
         Supp.ContactTitle,Supp.Tel1,Supp.TelExt1,Supp.Tel2,Supp.TelExt2,Supp.Fax,Supp.Email,
         Supp.Web,Supp.ExTermId,Supp.Addr1,Supp.Addr2,Supp.City,Supp.Area,Supp.ExCountryId,
         Supp.Zip,Supp.ExTaxGroupId,Supp.CreditLim,Supp.ExGLAcctId,Supp.Buyer,Supp.NameLang,
         Supp.SendPo,Supp.IncludeInT5018,Supp.BusinessNumber,Supp.UseDirectDeposite,Supp.Transit,
         Supp.Institution,Supp.Account,Supp.ExPmtMethId,
       SuppAgingList_View.ExSuppId, PurcPaidAmntAll_View.TotalPaid, (Supp.Name +
         LEFT(Supp.InSuppId,1000)) AS SuppNameID, SuppAgingList_View.ExCurrencyId,
         WorldCurrency.CurrencyCode,WorldCurrency.Descr,WorldCurrency.UseCustomRate
FROM ((((SELECT DocOrderDate, DocOrderId, ExSrcId As InPurcId, DocNo As PurcId, DetDate as
  PurcDate,
         DetType as PurcType, PurcCredit, ExSuppId, DocNo, DetAmnt, TaxAmnt, TotAmnt, Balance,
           PaidAmnt,
         ExchangeRate, ExCurrencyId, Balance As TotalToPay, DocOrderId As ExPurcId, DocCredit,
           ExSegmentId, PaymentCreditApplication
         FROM SuppAgingDet
 UNION ALL
 SELECT SuppPmtHdr.ChqDate AS DocOrderDate, SuppPmtHdr.InPmtId AS DocOrderId,
        SuppPmtHdr.InPmtId, SuppPmtHdr.ChqNo AS PurcId, SuppPmtHdr.ChqDate, 99 AS PmtType,
        0 AS PurcCredit, SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqNo AS DocNo,
        -OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
          TotAmnt,
        -OpenLeftCredits.CreditBalance AS Balance, 0 AS PaidAmnt,
        SuppPmtHdr.ExchangeRate AS ExchangeRate, SuppPmtHdr.ExCurrencyId,
          -OpenLeftCredits.CreditBalance AS TotalToPay,
        0 AS ExPurcId, 0 AS DocCredit, SuppPmtHdr.ExSegmentId, 0 As PaymentCreditApplication
 FROM SuppPmtHdr
     LEFT JOIN (
 SELECT InPmtId, TotalPaymentAmount-COALESCE(TotalAppliedAmountDirect,
   0)+COALESCE(TotalAppliedAmountIndirect,0) As CreditBalance
 FROM (
   SELECT SuppPmtHdr.InPmtId,
          SuppPmtHdr.PmtTotAmnt As TotalPaymentAmount,
          Direct.TotalAppliedAmountDirect,
          Indirect.TotalAppliedAmountIndirect
   FROM (SuppPmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(SuppPmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM SuppPmtDet
                  GROUP BY ExPmtId) AS Direct ON SuppPmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(SuppPmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM SuppPmtDet INNER JOIN SuppPmtHdr ON SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId
                  WHERE SuppPmtHdr.ChqDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON SuppPmtHdr.InPmtId = Indirect.ExPmtRefId
) AS OpenLeftCredits) AS OpenLeftCredits ON SuppPmtHdr.InPmtId = OpenLeftCredits.InPmtId
WHERE OpenLeftCredits.CreditBalance <> 0) AS SuppAgingList_View
 INNER JOIN Supp ON SuppAgingList_View.ExSuppId = Supp.InSuppId)
 LEFT JOIN WorldCurrency ON Supp.ExCurrencyId = WorldCurrency.InCurrencyId)
 LEFT JOIN (SELECT PurcHdr.InPurcId As PurcOutstandingAtDateInPurcId
            FROM PurcHdr LEFT JOIN (SELECT SuppPmtDet.ExPurcId As ExPurcId,
 (COALESCE(Sum(PmtAmnt),0) + COALESCE(Sum(PmtDisc),0)) AS TotalPayments
                                    FROM (SuppPmtHdr INNER JOIN SuppPmtDet ON SuppPmtHdr.InPmtId =
                                      SuppPmtDet.ExPmtId)
                                    INNER JOIN PurcHdr ON SuppPmtDet.ExPurcId = PurcHdr.InPurcId
                                    WHERE NOT ExPurcId IS NULL
 AND SuppPmtHdr.ExSuppId = 7
                                    AND PurcHdr.PurcDate <= ? AND SuppPmtHdr.ChqDate <= ?
                                    GROUP BY ExPurcId) As TotalPaymentsAtDate ON PurcHdr.InPurcId
                                      = TotalPaymentsAtDate.ExPurcId
               WHERE (TotalPaymentsAtDate.ExPurcId IS NULL OR PurcHdr.Balance -
                 TotalPaymentsAtDate.TotalPayments <> 0)
 AND PurcHdr.ExSuppId = ?
) AS PurcOutstandingAtDate ON SuppAgingList_View.ExPurcId =
  PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId)
 LEFT JOIN PurcPaidAmntAll_View ON PurcPaidAmntAll_View.InPurcId = SuppAgingList_View.InPurcId
 WHERE SuppAgingList_View.PurcDate <= ? AND SuppAgingList_View.DocOrderDate <= ?
 AND SuppAgingList_View.ExSuppId = ?
 AND (NOT (PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId) IS NULL OR
   SuppAgingList_View.ExPurcId = 0) AND SuppAgingList_View.Balance <> 0
 ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExSuppId,1000)),
   SuppAgingList_View.DocOrderdate, SuppAgingList_View.DocOrderId, SuppAgingList_View.PurcType,
   SuppAgingList_View.PurcDate

-- server: aging of all suppliers by currency
SELECT WorldCurrency.InCurrencyId As ExCurrencyId, WorldCurrency.CurrencyCode As CurrencyCode,
  WorldCurrency.Descr As Descr, SuppAgingList_View.*
FROM WorldCurrency LEFT JOIN (SELECT SuppAgingList_View.PurcDate, SuppAgingList_View.ExchangeRate,
       SuppAgingList_View.PurcType, COALESCE(SuppAgingList_View.DocCredit,0) AS DocCredit,
COALESCE(SuppAgingList_View.PurcCredit,0) AS PurcCredit, SuppAgingList_View.InPurcId,
       SuppAgingList_View.Balance, SuppAgingList_View.DocOrderId, SuppAgingList_View.DocOrderDate,
       SuppAgingList_View.PaymentCreditApplication,
       SuppAgingList_View.DocNo, Supp.SuppId,Supp.SuppInactive,Supp.Name,Supp.Contact,
         Supp.ContactTitle,Supp.Tel1,Supp.TelExt1,Supp.Tel2,Supp.TelExt2,Supp.Fax,Supp.Email,
         Supp.Web,Supp.ExTermId,Supp.Addr1,Supp.Addr2,Supp.City,Supp.Area,Supp.ExCountryId,
         Supp.Zip,Supp.ExTaxGroupId,Supp.CreditLim,Supp.ExGLAcctId,Supp.Buyer,Supp.NameLang,
         Supp.SendPo,Supp.IncludeInT5018,Supp.BusinessNumber,Supp.UseDirectDeposite,Supp.Transit,
         Supp.Institution,Supp.Account,Supp.ExPmtMethId,
       SuppAgingList_View.ExSuppId, PurcPaidAmntAll_View.TotalPaid, (Supp.Name +
         LEFT(Supp.InSuppId,1000)) AS SuppNameID, COALESCE(SuppAgingList_View.ExCurrencyId,1) As
         InnerViewExCurrencyId
FROM ((((SELECT DocOrderDate, DocOrderId, ExSrcId As InPurcId, DocNo As PurcId, DetDate as
  PurcDate,
         DetType as PurcType, PurcCredit, ExSuppId, DocNo, DetAmnt, TaxAmnt, TotAmnt, Balance,
           PaidAmnt,
         ExchangeRate, ExCurrencyId, Balance As TotalToPay, DocOrderId As ExPurcId, DocCredit,
           ExSegmentId, PaymentCreditApplication
         FROM SuppAgingDet
 UNION ALL
 SELECT SuppPmtHdr.ChqDate AS DocOrderDate, SuppPmtHdr.InPmtId AS DocOrderId,
        SuppPmtHdr.InPmtId, SuppPmtHdr.ChqNo AS PurcId, SuppPmtHdr.ChqDate, 99 AS PmtType,
        0 AS PurcCredit, SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqNo AS DocNo,
        -OpenLeftCredits.CreditBalance AS DetAmnt, 0 AS TaxAmnt, -OpenLeftCredits.CreditBalance AS
          TotAmnt,
        -OpenLeftCredits.CreditBalance AS Balance, 0 AS PaidAmnt,
        SuppPmtHdr.ExchangeRate AS ExchangeRate, SuppPmtHdr.ExCurrencyId,
          -OpenLeftCredits.CreditBalance AS TotalToPay,
        0 AS ExPurcId, 0 AS DocCredit, SuppPmtHdr.ExSegmentId, 0 As PaymentCreditApplication
 FROM SuppPmtHdr
     LEFT JOIN (
 SELECT InPmtId, TotalPaymentAmount-COALESCE(TotalAppliedAmountDirect,
   0)+COALESCE(TotalAppliedAmountIndirect,0) As CreditBalance
 FROM (
   SELECT SuppPmtHdr.InPmtId,
          SuppPmtHdr.PmtTotAmnt As TotalPaymentAmount,
          Direct.TotalAppliedAmountDirect,
          Indirect.TotalAppliedAmountIndirect
   FROM (SuppPmtHdr
       LEFT JOIN (SELECT ExPmtId, SUM(SuppPmtDet.PmtAmnt) As TotalAppliedAmountDirect
                  FROM SuppPmtDet
                  GROUP BY ExPmtId) AS Direct ON SuppPmtHdr.InPmtId = Direct.ExPmtId)
       LEFT JOIN (SELECT ExPmtRefId, SUM(SuppPmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                  FROM SuppPmtDet INNER JOIN SuppPmtHdr ON SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId
                  WHERE SuppPmtHdr.ChqDate <= ? AND NOT ExPmtRefId IS NULL
                  GROUP BY ExPmtRefId) AS Indirect ON SuppPmtHdr.InPmtId = Indirect.ExPmtRefId
) AS OpenLeftCredits) AS OpenLeftCredits ON SuppPmtHdr.InPmtId = OpenLeftCredits.InPmtId
WHERE OpenLeftCredits.CreditBalance <> 0) AS SuppAgingList_View
 INNER JOIN Supp ON SuppAgingList_View.ExSuppId = Supp.InSuppId)
 LEFT JOIN WorldCurrency ON Supp.ExCurrencyId = WorldCurrency.InCurrencyId)
 LEFT JOIN (SELECT PurcHdr.InPurcId As PurcOutstandingAtDateInPurcId
            FROM PurcHdr LEFT JOIN (SELECT SuppPmtDet.ExPurcId As ExPurcId,
 (COALESCE(Sum(PmtAmnt),0) + COALESCE(Sum(PmtDisc),0)) AS TotalPayments
                                    FROM (SuppPmtHdr INNER JOIN SuppPmtDet ON SuppPmtHdr.InPmtId =
                                      SuppPmtDet.ExPmtId)
                                    INNER JOIN PurcHdr ON SuppPmtDet.ExPurcId = PurcHdr.InPurcId
                                    WHERE NOT ExPurcId IS NULL
                                    AND PurcHdr.PurcDate <= ? AND SuppPmtHdr.ChqDate <= ?
                                    GROUP BY ExPurcId) As TotalPaymentsAtDate ON PurcHdr.InPurcId
                                      = TotalPaymentsAtDate.ExPurcId
               WHERE (TotalPaymentsAtDate.ExPurcId IS NULL OR PurcHdr.Balance -
                 TotalPaymentsAtDate.TotalPayments <> 0)
) AS PurcOutstandingAtDate ON SuppAgingList_View.ExPurcId =
  PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId)
 LEFT JOIN PurcPaidAmntAll_View ON PurcPaidAmntAll_View.InPurcId = SuppAgingList_View.InPurcId
 WHERE SuppAgingList_View.PurcDate <= ? AND SuppAgingList_View.DocOrderDate <= ?
) As SuppAgingList_View ON
WorldCurrency.InCurrencyId = SuppAgingList_View.InnerViewExCurrencyId
 ORDER BY WorldCurrency.CurrencyCode, (Name + LEFT(ExSuppId,1000)),
   SuppAgingList_View.DocOrderdate, SuppAgingList_View.DocOrderId, SuppAgingList_View.PurcType,
   SuppAgingList_View.PurcDate

-- both: history of a supplier
SELECT PurcDate, InPurcID, DocNo, PurcType, PurcCredit, PaidAmnt, TotAmnt, TotalToPay,
  ExCurrencyID
FROM SuppHistoryList_View
WHERE PurcDate BETWEEN ? AND ? AND ExSuppID = ?
ORDER BY PurcDate

-- both: open receptions
SELECT * FROM SuppOpenRec_View WHERE ExSuppId = 7 AND (InPurcId NOT IN (12,15))

-- both: open orders
SELECT * FROM SuppOpenPurcOrd_View WHERE ExSuppId = 7

-- both: expected receptions
SELECT * FROM PurcOpenExpectedRec_View WHERE ExSuppId = 7 AND PurcType = 3

-- both: balance before a date
SELECT SUM(TotalToPay) as TotalToPay FROM SuppHistoryList_View WHERE ExSuppID = ? AND PurcDate < ?

-- both: balance of a purchase at a date
SELECT Min(InPurcIdInternal) As ExPurcId, Sum(BalanceInternal) As Balance FROM  (SELECT InPurcId
  As InPurcIdInternal, Balance As BalanceInternal        FROM PurcHdr        WHERE InPurcId=?
  UNION ALL        SELECT Min(ExPurcId) As InPurcIdInternal, -SUM(PmtAmnt+PmtDisc) As
  BalanceInternal        FROM SuppPmtDet INNER JOIN SuppPmtHdr ON SuppPmtDet.ExPmtId =
  SuppPmtHdr.InPmtId        WHERE ExPurcId=? AND SuppPmtHdr.ChqDate <= ? AND NOT ExPurcId IS NULL)
  As InternalQuery

-- both: balances of suppliers in a segment
SELECT ExSuppId, SUM(SuppBalance) AS SuppBalance, SUM(SuppBalanceHome) AS SuppBalanceHome FROM
  SuppBalance_View  WHERE  ExSegmentId = ? GROUP BY ExSuppId ORDER BY ExSuppId

-- both: open credits
SELECT * FROM SuppOpenCredits_View WHERE ExSuppId=?

-- both: last purchase
SELECT TOP 1 * FROM SuppLastPurc_View WHERE ExSuppId=? ORDER BY LastPurc DESC, InPurcId DESC

-- both: last payment
SELECT TOP 1 * FROM SuppLastPmt_View WHERE ExSuppId= 7 ORDER BY LastPmt DESC, Code DESC

-- both: unapplied payment
SELECT * FROM SuppPmtUnappl_View WHERE InPmtId=5

-- both: expected orders
SELECT * FROM PurcHdr WHERE PurcHdr.POrderStatus = 1 AND ExSuppId = 7

-- both: costs by project
SELECT SUM(GLDet.DetAmnt) As SuppCost, SUM(GLDet.ForeignAmnt) As SuppCostHome, ExSuppId, ExProjId,
  DetDate FROM GLDet INNER JOIN PurcHdr ON GLDet.ExSrcKeyVal = PurcHdr.InPurcId WHERE
  GLDet.ExProjId <> 0 AND (GLDet.Source = 'PUR' OR GLDet.Source = 'EXP') AND GLDet.DetAmnt <> 0
  AND GLDet.ExAcctId <> ? AND GLDet.ExAcctId <> ?  AND ExSuppId = ?  AND GLDet.DetDate <= ?  AND
  ExProjId = ?  AND ExSegmentId = ? GROUP BY ExSuppId, ExProjId, DetDate ORDER BY ExSuppId,
  ExProjId, DetDate
