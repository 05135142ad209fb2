// What customers owe.
#include <array>

#include "host/company/checks/check.h"

namespace QuorHost {
namespace {

constexpr std::array kReceivablesChecks{
    Check{.rule = "customers' documents are of known types",
          .query = "SELECT InInvoiId, InvoiType FROM InvoiHdr "
                   "WHERE InvoiType NOT IN (1, 2, 3, 4, 51) ORDER BY InInvoiId",
          .finding = "Document {0} of InvoiHdr is of type {1}, which is unknown"},
    Check{.rule = "the balances of customers' documents are right",
          .query = "SELECT InInvoiId, Balance, TotAmnt - RecAmnt FROM InvoiHdr "
                   "WHERE Balance <> TotAmnt - RecAmnt ORDER BY InInvoiId",
          .finding = "Document {0} of InvoiHdr has a Balance of {1}, but TotAmnt less RecAmnt "
                     "is {2}"},
    Check{.rule = "customers' payment lines say what they pay",
          .query = "SELECT InPmtDetId, ExPmtId FROM PmtDet "
                   "WHERE (ExInvoiId IS NULL AND ExPmtRefId IS NULL) "
                   "OR (NOT ExInvoiId IS NULL AND NOT ExPmtRefId IS NULL) ORDER BY InPmtDetId",
          .finding = "Row {0} of PmtDet (payment {1}) must name either a document or an earlier "
                     "payment"},
    Check{.rule = "customers pay their own documents",
          .query = "SELECT PmtDet.InPmtDetId, PmtDet.ExInvoiId FROM PmtDet "
                   "INNER JOIN PmtHdr ON PmtHdr.InPmtId = PmtDet.ExPmtId "
                   "INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExInvoiId "
                   "WHERE PmtHdr.ExCustId <> InvoiHdr.ExCustId ORDER BY PmtDet.InPmtDetId",
          .finding = "Row {0} of PmtDet pays document {1} of InvoiHdr, which is another "
                     "customer's"},
    Check{.rule = "no customer's payment is applied beyond its amount",
          .query = "SELECT InPmtId, PmtTotAmnt, UnapplAmnt FROM CustPmtUnappl_View "
                   "WHERE (PmtTotAmnt >= 0 AND UnapplAmnt < 0) "
                   "OR (PmtTotAmnt < 0 AND UnapplAmnt > 0) ORDER BY InPmtId",
          .finding = "Payment {0} of PmtHdr is applied beyond its amount: of {1}, {2} are left"},
    Check{.rule = "the ledger's control accounts agree with what customers owe",
          .query = "SELECT Moves.Account, MIN(Moves.MoveDate), SUM(Moves.Amnt) FROM "
                   "(SELECT WorldCurrency.ExCustAcctId AS Account, Owed.BalanceDate AS MoveDate, "
                   "Owed.CustBalanceHome AS Amnt FROM CustBalance_View AS Owed "
                   "INNER JOIN WorldCurrency ON WorldCurrency.InCurrencyId = "
                   "COALESCE(Owed.ExCurrencyId, 1) WHERE NOT WorldCurrency.ExCustAcctId IS NULL "
                   "UNION ALL SELECT GLDet.ExAcctId, GLDet.DetDate, -GLDet.DetAmnt FROM GLDet "
                   "WHERE GLDet.ExAcctId IN (SELECT ExCustAcctId FROM WorldCurrency)) AS Moves "
                   "GROUP BY Moves.Account, YEAR(Moves.MoveDate), MONTH(Moves.MoveDate), "
                   "DAY(Moves.MoveDate) HAVING SUM(Moves.Amnt) <> 0 ORDER BY 1, 2",
          .finding = "Control account {0}: on {1} the documents and payments of its customers "
                     "come to {2} more than the ledger"},
};

}  // namespace

std::span<const Check> receivablesChecks() { return kReceivablesChecks; }

}  // namespace QuorHost
