#include "bench/aging_by_hand.h"

namespace QuorBench {

std::string agingByHand(const std::string& customerColumns) {
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

}  // namespace QuorBench
