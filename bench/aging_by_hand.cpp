#include "bench/aging_by_hand.h"

namespace QuorBench {

std::string customerAgingByHand(const std::string& customerColumns) {
  return R"sql(
SELECT CustAgingList.InvoiDate, CustAgingList.InvoiType, CustAgingList.ExchangeRate,
       CustAgingList.InInvoiId, CustAgingList.DocOrderId, CustAgingList.Balance,
       CustAgingList.DocOrderDate, CustAgingList.DocType, CustAgingList.InvoiId,
       CustAgingList.PaymentCreditApplication, CustAgingList.ExCustId,
       InvoiPaidAmntAll_View.TotalPaid, Cust.Name || Cust.InCustId AS CustNameID, )sql" +
         customerColumns + R"sql(,
       CustAgingList.ExCurrencyId, WorldCurrency.CurrencyCode, WorldCurrency.Descr,
       WorldCurrency.UseCustomRate
FROM (SELECT DocOrderDate, DocOrderID AS DocOrderId, ExSrcId AS InInvoiId, DocNo AS InvoiId,
             DetDate AS InvoiDate, DetType AS InvoiType, ExCustId, DetAmnt, TaxAmnt, TotAmnt,
             Balance, RecAmnt, ExchangeRate, ExCurrencyId, DocType, DocOrderID AS ExInvoiId,
             ExSegmentId, PaymentCreditApplication
      FROM CustAgingDet
      UNION ALL
      SELECT PmtHdr.PmtDate, PmtHdr.InPmtId, PmtHdr.InPmtId, PmtHdr.ChqNo, PmtHdr.PmtDate, 99,
             PmtHdr.ExCustId, -OpenLeftCredits.CreditBalance, 0, -OpenLeftCredits.CreditBalance,
             -OpenLeftCredits.CreditBalance, 0, PmtHdr.ExchangeRate, PmtHdr.ExCurrencyId, 99, 0,
             PmtHdr.ExSegmentId, 0
      FROM PmtHdr
      LEFT JOIN (SELECT InPmtId,
                        TotalPaymentAmount - coalesce(TotalAppliedAmountDirect, 0) +
                            coalesce(TotalAppliedAmountIndirect, 0) +
                            coalesce(TotalAppliedAmountOrder, 0) AS CreditBalance
                 FROM (SELECT PmtHdr.InPmtId, PmtHdr.PmtTotAmnt AS TotalPaymentAmount,
                              Direct.TotalAppliedAmountDirect,
                              Indirect.TotalAppliedAmountIndirect,
                              DirectOrder.TotalAppliedAmountOrder
                       FROM PmtHdr
                       LEFT JOIN (SELECT ExPmtId, sum(PmtAmnt) AS TotalAppliedAmountDirect
                                  FROM PmtDet
                                  GROUP BY ExPmtId) AS Direct ON PmtHdr.InPmtId = Direct.ExPmtId
                       LEFT JOIN (SELECT ExPmtRefId, sum(PmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                                  FROM PmtDet INNER JOIN PmtHdr ON PmtDet.ExPmtId = PmtHdr.InPmtId
                                  WHERE PmtHdr.PmtDate <= ?1 AND ExPmtRefId IS NOT NULL
                                  GROUP BY ExPmtRefId) AS Indirect
                              ON PmtHdr.InPmtId = Indirect.ExPmtRefId
                       LEFT JOIN (SELECT ExPmtId, sum(PmtDet.PmtAmnt) AS TotalAppliedAmountOrder
                                  FROM PmtDet INNER JOIN InvoiHdr
                                       ON InvoiHdr.InInvoiId = PmtDet.ExInvoiId
                                  WHERE InvoiHdr.InvoiType = 51
                                  GROUP BY ExPmtId) AS DirectOrder
                              ON PmtHdr.InPmtId = DirectOrder.ExPmtId)) AS OpenLeftCredits
             ON PmtHdr.InPmtId = OpenLeftCredits.InPmtId
      WHERE OpenLeftCredits.CreditBalance <> 0) AS CustAgingList
INNER JOIN Cust ON CustAgingList.ExCustId = Cust.InCustId
LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = Cust.ExCurrencyId
LEFT JOIN (SELECT InvoiHdr.InInvoiId
           FROM InvoiHdr
           LEFT JOIN (SELECT PmtDet.ExInvoiId,
                             coalesce(sum(PmtAmnt), 0) + coalesce(sum(PmtDisc), 0) AS TotalPayments
                      FROM PmtHdr
                      INNER JOIN PmtDet ON PmtHdr.InPmtId = PmtDet.ExPmtId
                      INNER JOIN InvoiHdr ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
                      WHERE ExInvoiId IS NOT NULL AND PmtHdr.PmtDate <= ?1
                            AND InvoiHdr.InvoiDate <= ?1
                      GROUP BY ExInvoiId) AS TotalPaymentsAtDate
                ON InvoiHdr.InInvoiId = TotalPaymentsAtDate.ExInvoiId
           WHERE TotalPaymentsAtDate.ExInvoiId IS NULL
                 OR InvoiHdr.Balance - TotalPaymentsAtDate.TotalPayments <> 0)
          AS InvOutstandingAtDate ON CustAgingList.ExInvoiId = InvOutstandingAtDate.InInvoiId
LEFT JOIN InvoiPaidAmntAll_View ON InvoiPaidAmntAll_View.InInvoiId = CustAgingList.InInvoiId
WHERE CustAgingList.InvoiDate <= ?1
      AND (InvOutstandingAtDate.InInvoiId IS NOT NULL OR CustAgingList.ExInvoiId = 0)
      AND CustAgingList.Balance <> 0
ORDER BY WorldCurrency.CurrencyCode, (Cust.Name || CustAgingList.ExCustId) COLLATE QUOR,
         CustAgingList.DocOrderDate, CustAgingList.DocOrderId, CustAgingList.InvoiType,
         CustAgingList.InvoiDate)sql";
}

std::string supplierAgingByHand(const std::string& supplierColumns) {
  return R"sql(
SELECT SuppAgingList_View.PurcDate, SuppAgingList_View.ExchangeRate, SuppAgingList_View.PurcType,
       coalesce(SuppAgingList_View.DocCredit, 0) AS DocCredit,
       coalesce(SuppAgingList_View.PurcCredit, 0) AS PurcCredit, SuppAgingList_View.InPurcId,
       SuppAgingList_View.Balance, SuppAgingList_View.DocOrderId, SuppAgingList_View.DocOrderDate,
       SuppAgingList_View.PaymentCreditApplication, SuppAgingList_View.DocNo, )sql" +
         supplierColumns + R"sql(,
       SuppAgingList_View.ExSuppId, PurcPaidAmntAll_View.TotalPaid,
       Supp.Name || Supp.InSuppId AS SuppNameID, SuppAgingList_View.ExCurrencyId,
       WorldCurrency.CurrencyCode, WorldCurrency.Descr, WorldCurrency.UseCustomRate
FROM (SELECT DocOrderDate, DocOrderID AS DocOrderId, ExSrcId AS InPurcId, DocNo AS PurcId,
             DetDate AS PurcDate, DetType AS PurcType, PurcCredit, ExSuppId, DocNo, DetAmnt, TaxAmnt,
             TotAmnt, Balance, PaidAmnt, ExchangeRate, ExCurrencyId, Balance AS TotalToPay,
             DocOrderID AS ExPurcId, DocCredit, ExSegmentId, PaymentCreditApplication
      FROM SuppAgingDet
      UNION ALL
      SELECT SuppPmtHdr.ChqDate, SuppPmtHdr.InPmtId, SuppPmtHdr.InPmtId, SuppPmtHdr.ChqNo,
             SuppPmtHdr.ChqDate, 99, 0, SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqNo,
             -OpenLeftCredits.CreditBalance, 0, -OpenLeftCredits.CreditBalance,
             -OpenLeftCredits.CreditBalance, 0, SuppPmtHdr.ExchangeRate, SuppPmtHdr.ExCurrencyId,
             -OpenLeftCredits.CreditBalance, 0, 0, SuppPmtHdr.ExSegmentId, 0
      FROM SuppPmtHdr
      LEFT JOIN (SELECT InPmtId,
                        TotalPaymentAmount - coalesce(TotalAppliedAmountDirect, 0) +
                            coalesce(TotalAppliedAmountIndirect, 0) AS CreditBalance
                 FROM (SELECT SuppPmtHdr.InPmtId, SuppPmtHdr.PmtTotAmnt AS TotalPaymentAmount,
                              Direct.TotalAppliedAmountDirect, Indirect.TotalAppliedAmountIndirect
                       FROM SuppPmtHdr
                       LEFT JOIN (SELECT ExPmtId, sum(PmtAmnt) AS TotalAppliedAmountDirect
                                  FROM SuppPmtDet
                                  GROUP BY ExPmtId) AS Direct
                              ON SuppPmtHdr.InPmtId = Direct.ExPmtId
                       LEFT JOIN (SELECT ExPmtRefId, sum(SuppPmtDet.PmtAmnt) AS TotalAppliedAmountIndirect
                                  FROM SuppPmtDet
                                  INNER JOIN SuppPmtHdr ON SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId
                                  WHERE SuppPmtHdr.ChqDate <= ?1 AND ExPmtRefId IS NOT NULL
                                  GROUP BY ExPmtRefId) AS Indirect
                              ON SuppPmtHdr.InPmtId = Indirect.ExPmtRefId)) AS OpenLeftCredits
             ON SuppPmtHdr.InPmtId = OpenLeftCredits.InPmtId
      WHERE OpenLeftCredits.CreditBalance <> 0) AS SuppAgingList_View
INNER JOIN Supp ON SuppAgingList_View.ExSuppId = Supp.InSuppId
LEFT JOIN WorldCurrency ON Supp.ExCurrencyId = WorldCurrency.InCurrencyId
LEFT JOIN (SELECT PurcHdr.InPurcId AS PurcOutstandingAtDateInPurcId
           FROM PurcHdr
           LEFT JOIN (SELECT SuppPmtDet.ExPurcId,
                             coalesce(sum(PmtAmnt), 0) + coalesce(sum(PmtDisc), 0) AS TotalPayments
                      FROM SuppPmtHdr
                      INNER JOIN SuppPmtDet ON SuppPmtHdr.InPmtId = SuppPmtDet.ExPmtId
                      INNER JOIN PurcHdr ON SuppPmtDet.ExPurcId = PurcHdr.InPurcId
                      WHERE ExPurcId IS NOT NULL AND PurcHdr.PurcDate <= ?1
                            AND SuppPmtHdr.ChqDate <= ?1
                      GROUP BY ExPurcId) AS TotalPaymentsAtDate
                ON PurcHdr.InPurcId = TotalPaymentsAtDate.ExPurcId
           WHERE TotalPaymentsAtDate.ExPurcId IS NULL
                 OR PurcHdr.Balance - TotalPaymentsAtDate.TotalPayments <> 0)
          AS PurcOutstandingAtDate
       ON SuppAgingList_View.ExPurcId = PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId
LEFT JOIN PurcPaidAmntAll_View ON PurcPaidAmntAll_View.InPurcId = SuppAgingList_View.InPurcId
WHERE SuppAgingList_View.PurcDate <= ?1 AND SuppAgingList_View.DocOrderDate <= ?1
      AND (PurcOutstandingAtDate.PurcOutstandingAtDateInPurcId IS NOT NULL
           OR SuppAgingList_View.ExPurcId = 0)
      AND SuppAgingList_View.Balance <> 0
ORDER BY WorldCurrency.CurrencyCode, (Supp.Name || SuppAgingList_View.ExSuppId) COLLATE QUOR,
         SuppAgingList_View.DocOrderDate, SuppAgingList_View.DocOrderId, SuppAgingList_View.PurcType,
         SuppAgingList_View.PurcDate)sql";
}

}  // namespace QuorBench
