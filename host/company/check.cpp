#include <array>

#include "host/company/check_ledger.h"
#include "host/company/company.h"

namespace QuorHost {

namespace {

using QuorDataLib::Recordset;
using QuorDataLib::Ref;

/// A rule of the books. `query` yields the rows that break it: their key, and the value that is
/// wrong. References that the schema declares are the engine's to check.
struct Rule {
  const char* query;
  /// The finding's text, its parts around the key and the value.
  const char* before;
  const char* between;
  const char* after;
};

constexpr std::array kRules = {
    Rule{"SELECT SeqNo, SUM(DetAmnt) FROM GLDet GROUP BY SeqNo HAVING SUM(DetAmnt) <> 0 "
         "ORDER BY SeqNo",
         "Ledger transaction ", " of GLDet does not balance: its lines add up to ", ""},
    Rule{"SELECT GLDet.InGLDetId, GLDet.ExAcctId FROM GLDet "
         "LEFT JOIN GLAcct ON GLAcct.InGLAcctId = GLDet.ExAcctId "
         "WHERE GLAcct.InGLAcctId IS NULL ORDER BY GLDet.InGLDetId",
         "Row ", " of GLDet is posted to account ", ", which is missing in GLAcct"},
    Rule{"SELECT InPmtDetId, ExPmtId FROM PmtDet "
         "WHERE (ExInvoiId IS NULL AND ExPmtRefId IS NULL) "
         "OR (NOT ExInvoiId IS NULL AND NOT ExPmtRefId IS NULL) ORDER BY InPmtDetId",
         "Row ", " of PmtDet (payment ", ") must name either a document or an earlier payment"},
    Rule{"SELECT InPmtDetId, ExPmtId FROM SuppPmtDet "
         "WHERE (ExPurcId IS NULL AND ExPmtRefId IS NULL) "
         "OR (NOT ExPurcId IS NULL AND NOT ExPmtRefId IS NULL) ORDER BY InPmtDetId",
         "Row ", " of SuppPmtDet (payment ", ") must name either a document or an earlier payment"},
    Rule{"SELECT PmtDet.InPmtDetId, PmtDet.ExInvoiId FROM PmtDet "
         "INNER JOIN PmtHdr ON PmtHdr.InPmtId = PmtDet.ExPmtId "
         "INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExInvoiId "
         "WHERE PmtHdr.ExCustId <> InvoiHdr.ExCustId ORDER BY PmtDet.InPmtDetId",
         "Row ", " of PmtDet pays document ", " of InvoiHdr, which is another customer's"},
    Rule{"SELECT SuppPmtDet.InPmtDetId, SuppPmtDet.ExPurcId FROM SuppPmtDet "
         "INNER JOIN SuppPmtHdr ON SuppPmtHdr.InPmtId = SuppPmtDet.ExPmtId "
         "INNER JOIN PurcHdr ON PurcHdr.InPurcId = SuppPmtDet.ExPurcId "
         "WHERE SuppPmtHdr.ExSuppId <> PurcHdr.ExSuppId ORDER BY SuppPmtDet.InPmtDetId",
         "Row ", " of SuppPmtDet pays document ", " of PurcHdr, which is another supplier's"},
    Rule{"SELECT SuppPmtDet.InPmtDetId, SuppPmtDet.ExPurcId FROM SuppPmtDet "
         "INNER JOIN PurcHdr ON PurcHdr.InPurcId = SuppPmtDet.ExPurcId "
         "WHERE PurcHdr.PurcType IN (51, 52) ORDER BY SuppPmtDet.InPmtDetId",
         "Row ", " of SuppPmtDet pays document ", " of PurcHdr, which is an order or a reception"},
};

}  // namespace

std::vector<std::string> checkCompany(Store& store) {
  std::vector<std::string> findings = store.integrityFindings();
  const QuorDataLib::Ref<QuorDataLib::Connection> connection = store.connect(Sql::Dialect::Server);
  for (const Rule& rule : kRules) {
    const Ref<Recordset> broken = connection->OpenRecordset(rule.query, 4, 0, {}, 0);
    for (; !broken->AtEnd(); broken->MoveNext()) {
      findings.push_back(rule.before + broken->Field(0).toText() + rule.between +
                         broken->Field(1).toText() + rule.after);
    }
  }
  const auto report = [&](const std::string& finding) { findings.push_back(finding); };
  checkLedgerDocuments(store, report);
  checkBalanceSheets(store, report);
  return findings;
}

}  // namespace QuorHost
