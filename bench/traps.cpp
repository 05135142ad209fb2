#include <array>
#include <memory>
#include <string>

#include "bench/by_hand.h"
#include "bench/cases.h"
#include "host/engines/sqlite/write/sql_writer.h"
#include "host/sql/front_end.h"

namespace QuorBench {
namespace {

struct Trap {
  const char* name;
  const char* statement;
};

constexpr std::array kTraps{
    Trap{"one month's ledger lines with totals by account",
         "SELECT GLDet.InGLDetId, G.T FROM GLDet LEFT JOIN (SELECT ExAcctId AS K, SUM(DetAmnt) AS "
         "T FROM GLDet GROUP BY ExAcctId) AS G ON G.K = GLDet.ExAcctId "
         "WHERE GLDet.DetDate BETWEEN '2024-03-01' AND '2024-03-31'"},
    Trap{"one day's ledger lines with totals by account",
         "SELECT GLDet.InGLDetId, G.T FROM GLDet LEFT JOIN (SELECT ExAcctId AS K, SUM(DetAmnt) AS "
         "T FROM GLDet GROUP BY ExAcctId) AS G ON G.K = GLDet.ExAcctId "
         "WHERE GLDet.DetDate = '2024-03-04'"},
    Trap{"document lines with totals by item",
         "SELECT InvoiDet.InInvoiDetId, G.T FROM InvoiDet LEFT JOIN (SELECT ExItemId AS K, "
         "SUM(LineAmnt) AS T FROM InvoiDet GROUP BY ExItemId) AS G ON G.K = InvoiDet.ExItemId "
         "WHERE InvoiDet.InInvoiDetId < 2000"},
    Trap{"documents with payments by party",
         "SELECT H.InInvoiId, G.T FROM InvoiHdr AS H LEFT JOIN (SELECT ExCustId AS K, "
         "SUM(PmtTotAmnt) AS T FROM PmtHdr GROUP BY ExCustId) AS G ON G.K = H.ExCustId"},
    Trap{"accounts with several filtered totals",
         "SELECT GLAcctId, D.T, C.T, P.T FROM GLAcct LEFT JOIN (SELECT ExAcctId AS K, SUM(DetAmnt) "
         "AS T FROM GLDet WHERE DetAmnt > 0 GROUP BY ExAcctId) AS D ON D.K = InGLAcctId LEFT JOIN "
         "(SELECT ExAcctId AS K, SUM(DetAmnt) AS T FROM GLDet WHERE Source = 'INV' "
         "GROUP BY ExAcctId) AS C ON C.K = InGLAcctId LEFT JOIN (SELECT ExAcctId AS K, "
         "SUM(DetAmnt) AS T FROM GLDet WHERE ExProjId = 3 GROUP BY ExAcctId) AS P "
         "ON P.K = InGLAcctId"},
    Trap{"documents of most types with payments",
         "SELECT H.InInvoiId, G.T FROM InvoiHdr AS H LEFT JOIN (SELECT PmtDet.ExInvoiId AS K, "
         "SUM(PmtAmnt) AS T FROM PmtDet INNER JOIN PmtHdr ON PmtHdr.InPmtId = PmtDet.ExPmtId "
         "GROUP BY PmtDet.ExInvoiId) AS G ON G.K = H.InInvoiId WHERE H.InvoiType IN (1, 2, 3, 4)"},
    Trap{"documents open on an early day",
         "SELECT A.DocOrderID, A.Balance FROM CustAgingDet AS A LEFT JOIN (SELECT InInvoiId AS K "
         "FROM InvoiHdr LEFT JOIN (SELECT PmtDet.ExInvoiId, SUM(PmtAmnt) AS T FROM PmtDet INNER "
         "JOIN PmtHdr ON PmtHdr.InPmtId = PmtDet.ExPmtId WHERE PmtDate <= '2022-04-05' GROUP BY "
         "PmtDet.ExInvoiId) AS P ON P.ExInvoiId = InInvoiId WHERE P.ExInvoiId IS NULL OR "
         "InvoiHdr.Balance <> P.T) AS G ON G.K = A.DocOrderID WHERE A.DetDate <= '2022-04-05' AND "
         "G.K IS NOT NULL"},
    Trap{"lines of documents that have any",
         "SELECT A.DocOrderID, A.Balance FROM CustAgingDet AS A LEFT JOIN (SELECT ExInvoiId AS K, "
         "COUNT(*) AS N FROM InvoiDet GROUP BY ExInvoiId) AS G ON G.K = A.DocOrderID WHERE "
         "G.K IS NOT NULL"}};

/// Both forms of a statement, run by the engine alone.
Pair bothForms(const std::shared_ptr<Company>& company, const char* statement) {
  const auto query = [&](QuorHost::Sql::Rewriting rewriting) {
    return std::make_shared<Query>(
        company->byHand(), QuorHost::Sql::translate(statement, QuorHost::Sql::Dialect::Server,
                                                    company->store().catalogue(),
                                                    QuorHost::Sqlite::SqlWriter(), rewriting)
                               .sql);
  };
  const auto faster = query(QuorHost::Sql::Rewriting::Faster);
  const auto plain = query(QuorHost::Sql::Rewriting::None);
  requireSame(faster->read(), plain->read());
  return {[faster] { faster->read(); }, [plain] { plain->read(); }};
}

}  // namespace

void addTraps(Suite& suite, Companies& companies, int scale) {
  for (const Trap& trap : kTraps) {
    suite.compare(std::string(trap.name) + " / not rewritten", 1.50,
                  [&companies, scale, statement = trap.statement] {
                    return bothForms(companies.open(scale), statement);
                  });
  }
}

}  // namespace QuorBench
