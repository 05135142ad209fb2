// What suppliers are owed.
#include <array>

#include "host/company/checks/check.h"

namespace QuorHost {
namespace {

constexpr std::array kPayablesChecks{
    Check{.rule = "suppliers' documents are of known types",
          .query = "SELECT InPurcId, PurcType FROM PurcHdr "
                   "WHERE PurcType NOT IN (1, 2, 3, 4, 51, 52) ORDER BY InPurcId",
          .finding = "Document {0} of PurcHdr is of type {1}, which is unknown"},
    Check{.rule = "the balances of suppliers' documents are right",
          .query = "SELECT InPurcId, Balance, TotAmnt - PaidAmnt FROM PurcHdr "
                   "WHERE Balance <> TotAmnt - PaidAmnt ORDER BY InPurcId",
          .finding = "Document {0} of PurcHdr has a Balance of {1}, but TotAmnt less PaidAmnt "
                     "is {2}"},
    Check{.rule = "payment lines to suppliers say what they pay",
          .query = "SELECT InPmtDetId, ExPmtId FROM SuppPmtDet "
                   "WHERE (ExPurcId IS NULL AND ExPmtRefId IS NULL) "
                   "OR (NOT ExPurcId IS NULL AND NOT ExPmtRefId IS NULL) ORDER BY InPmtDetId",
          .finding = "Row {0} of SuppPmtDet (payment {1}) must name either a document or an "
                     "earlier payment"},
    Check{.rule = "payments go to the supplier of the document",
          .query = "SELECT SuppPmtDet.InPmtDetId, SuppPmtDet.ExPurcId FROM SuppPmtDet "
                   "INNER JOIN SuppPmtHdr ON SuppPmtHdr.InPmtId = SuppPmtDet.ExPmtId "
                   "INNER JOIN PurcHdr ON PurcHdr.InPurcId = SuppPmtDet.ExPurcId "
                   "WHERE SuppPmtHdr.ExSuppId <> PurcHdr.ExSuppId ORDER BY SuppPmtDet.InPmtDetId",
          .finding = "Row {0} of SuppPmtDet pays document {1} of PurcHdr, which is another "
                     "supplier's"},
    Check{.rule = "orders and receptions are not paid",
          .query = "SELECT SuppPmtDet.InPmtDetId, SuppPmtDet.ExPurcId FROM SuppPmtDet "
                   "INNER JOIN PurcHdr ON PurcHdr.InPurcId = SuppPmtDet.ExPurcId "
                   "WHERE PurcHdr.PurcType IN (51, 52) ORDER BY SuppPmtDet.InPmtDetId",
          .finding = "Row {0} of SuppPmtDet pays document {1} of PurcHdr, which is an order or a "
                     "reception"},
    Check{.rule = "no payment to a supplier is applied beyond its amount",
          .query = "SELECT InPmtId, PmtTotAmnt, UnapplAmnt FROM SuppPmtUnappl_View "
                   "WHERE (PmtTotAmnt >= 0 AND UnapplAmnt < 0) "
                   "OR (PmtTotAmnt < 0 AND UnapplAmnt > 0) ORDER BY InPmtId",
          .finding = "Payment {0} of SuppPmtHdr is applied beyond its amount: of {1}, {2} are "
                     "left"},
    Check{.rule = "the ledger's control accounts agree with what suppliers are owed",
          .query = "SELECT Moves.Account, MIN(Moves.MoveDate), SUM(Moves.Amnt) FROM "
                   "(SELECT WorldCurrency.ExSuppAcctId AS Account, Owed.BalanceDate AS MoveDate, "
                   "Owed.SuppBalanceHome AS Amnt FROM SuppBalance_View AS Owed "
                   "INNER JOIN WorldCurrency ON WorldCurrency.InCurrencyId = "
                   "COALESCE(Owed.ExCurrencyId, 1) WHERE NOT WorldCurrency.ExSuppAcctId IS NULL "
                   "UNION ALL SELECT GLDet.ExAcctId, GLDet.DetDate, GLDet.DetAmnt FROM GLDet "
                   "WHERE GLDet.ExAcctId IN (SELECT ExSuppAcctId FROM WorldCurrency)) AS Moves "
                   "GROUP BY Moves.Account, YEAR(Moves.MoveDate), MONTH(Moves.MoveDate), "
                   "DAY(Moves.MoveDate) HAVING SUM(Moves.Amnt) <> 0 ORDER BY 1, 2",
          .finding = "Control account {0}: on {1} the documents and payments of its suppliers "
                     "come to {2} more than the ledger"},
};

}  // namespace

std::span<const Check> payablesChecks() { return kPayablesChecks; }

}  // namespace QuorHost
