// Statements that are changed for speed, against the same statements as they are, on tables whose
// rows keep no rule: nulls, orphans, payments of nothing, amounts that cancel out.
#include <gtest/gtest.h>

#include "sql/both_forms.h"
#include "sql/database.h"
#include "sql/untidy.h"

namespace QuorHost::Sql::Testing {
namespace {

/// Rows found, to see that there was something to compare.
std::size_t compare(Database& database, const std::string& statement, Dialect dialect) {
  const Values values = markerValues(database.translate(statement, dialect));
  const BothForms forms = runBoth(database, statement, dialect, values);
  // A text that is compared with a number is none.
  if (!forms.error.empty()) return 0;
  EXPECT_EQ(forms.errorFaster + forms.difference, "") << statement << "\n" << forms.faster;
  return forms.rows;
}

class FasterForm : public testing::TestWithParam<unsigned> {};

// One statement for each condition of a pass, where the pass must do its part or keep away.
constexpr const char* kFragments[] = {
    "SELECT COUNT(*) AS N FROM (SELECT Balance, DetType FROM CustAgingDet) AS A",
    "SELECT DISTINCT ExCustId FROM CustAgingDet",
    "SELECT ExCustId FROM PmtHdr UNION SELECT ExCustId FROM CustAgingDet",
    "SELECT A.X FROM (SELECT ExCustId AS X, Balance AS Y FROM CustAgingDet WHERE Balance > 0.1 "
    "UNION ALL SELECT ExCustId, PmtTotAmnt FROM PmtHdr) AS A WHERE A.Y < 0.3",
    "SELECT A.X FROM (SELECT ExCustId AS X, Balance AS Y FROM CustAgingDet "
    "UNION SELECT ExCustId, PmtTotAmnt FROM PmtHdr) AS A",
    "SELECT A.X FROM (SELECT DISTINCT ExCustId AS X, Balance AS Y FROM InvoiHdr) AS A",
    "SELECT A.X FROM (SELECT DISTINCT ExCustId AS X, Balance AS Y FROM InvoiHdr "
    "UNION ALL SELECT ExCustId, SUM(PmtTotAmnt) FROM PmtHdr GROUP BY ExCustId) AS A WHERE A.Y > 0",
    "SELECT A.N FROM (SELECT COUNT(*) AS N, SUM(Balance) AS B FROM InvoiHdr) AS A",
    "SELECT A.One FROM (SELECT 1 AS One, SUM(Balance) AS B FROM InvoiHdr) AS A",
    "SELECT A.X FROM (SELECT TOP 5 InInvoiId AS X, Balance AS Y FROM InvoiHdr ORDER BY Balance, "
    "InInvoiId) AS A",
    "SELECT A.X FROM (SELECT InInvoiId AS X, (SELECT SUM(PmtAmnt) FROM PmtDet WHERE "
    "PmtDet.ExInvoiId = InvoiHdr.InInvoiId) AS Y FROM InvoiHdr) AS A WHERE A.Y > 0",
    "SELECT A.DocOrderID FROM CustAgingDet AS A WHERE A.DocOrderID IN (SELECT ExInvoiId FROM "
    "PmtDet WHERE PmtDet.ExPmtId = A.ExSrcId)",
    "SELECT H.InInvoiId, G.T, G.N, G.M FROM InvoiHdr AS H LEFT JOIN (SELECT ExInvoiId AS K, "
    "SUM(PmtAmnt) AS T, COUNT(*) AS N, MAX(PmtDisc) + 1 AS M FROM PmtDet GROUP BY ExInvoiId) AS G "
    "ON G.K = H.InInvoiId WHERE H.ExCustId = 42 ORDER BY G.T, H.InInvoiId",
    "SELECT H.InInvoiId, G.K FROM InvoiHdr AS H LEFT JOIN (SELECT ExInvoiId AS K, SUM(PmtAmnt) AS "
    "T FROM PmtDet WHERE PmtDisc <> 0 GROUP BY ExInvoiId HAVING SUM(PmtAmnt) > 0) AS G "
    "ON H.InInvoiId = G.K WHERE H.ExCustId = 42 AND (G.K IS NULL OR G.T > 0.2)",
    "SELECT PmtDet.InPmtDetId, G.T FROM PmtDet LEFT JOIN (SELECT ExInvoiId, SUM(PmtAmnt) AS T FROM "
    "PmtDet GROUP BY ExInvoiId) AS G ON G.ExInvoiId = PmtDet.ExPmtId WHERE PmtDet.ExInvoiId = 42",
    "SELECT SUM(G.T) AS S FROM InvoiHdr AS H LEFT JOIN (SELECT ExInvoiId, SUM(PmtAmnt) AS T FROM "
    "PmtDet GROUP BY ExInvoiId) AS G ON G.ExInvoiId = H.InInvoiId WHERE H.ExCustId = 42",
    "SELECT A.DocOrderID, Cust.Name, H.InvoiId FROM (CustAgingDet AS A INNER JOIN Cust ON "
    "Cust.InCustId = A.ExCustId) LEFT JOIN InvoiHdr AS H ON H.InInvoiId = A.ExSrcId "
    "WHERE (NOT H.InInvoiId IS NULL OR A.DetType = 99) AND Cust.InCustId > 3",
    "SELECT A.DocOrderID, Cust.Name, H.InvoiId FROM (CustAgingDet AS A INNER JOIN Cust ON "
    "Cust.InCustId = A.ExCustId) LEFT JOIN InvoiHdr AS H ON H.InInvoiId = A.ExSrcId AND "
    "H.ExCustId = Cust.InCustId WHERE NOT H.InInvoiId IS NULL OR A.DetType = 99",
    "SELECT A.DocOrderID, C.Name, H.InvoiId FROM ((CustAgingDet AS A INNER JOIN PmtHdr AS P ON "
    "P.InPmtId = A.ExSrcId) RIGHT JOIN Cust AS C ON C.InCustId = A.ExCustId) LEFT JOIN InvoiHdr AS "
    "H ON H.InInvoiId = A.ExSrcId OR H.ExOrderId = 7 WHERE H.InInvoiId IS NULL OR H.Balance > 0",
    "SELECT C.InCustId, G.T FROM (InvoiHdr AS H LEFT JOIN (SELECT ExInvoiId AS K, SUM(PmtAmnt) AS "
    "T FROM PmtDet GROUP BY ExInvoiId) AS G ON G.K = 7) RIGHT JOIN Cust AS C ON C.InCustId = "
    "H.ExCustId",
    "SELECT InvoiHdr.InInvoiId FROM InvoiHdr LEFT JOIN (SELECT ExInvoiId AS K, SUM(PmtAmnt) AS T "
    "FROM PmtDet GROUP BY ExInvoiId) AS G ON G.K = InvoiHdr.InInvoiId WHERE EXISTS (SELECT "
    "InvoiHdr.InInvoiId FROM InvoiHdr WHERE InvoiHdr.Balance = G.T)",
    "SELECT InvoiHdr.InInvoiId FROM InvoiHdr WHERE EXISTS (SELECT A.DocNo FROM CustAgingDet AS A "
    "WHERE A.ExCustId = InvoiHdr.ExCustId AND A.Balance < 0)",
    "SELECT H.InInvoiId, G.T FROM InvoiHdr AS H LEFT JOIN (SELECT PmtDet.ExInvoiId AS K, "
    "SUM(PmtAmnt) AS T FROM PmtDet INNER JOIN PmtHdr ON PmtHdr.InPmtId = PmtDet.ExPmtId GROUP BY "
    "PmtDet.ExInvoiId) AS G ON G.K = H.InInvoiId WHERE H.ExCustId IN (5, 42) ORDER BY H.InInvoiId",
    "SELECT H.InInvoiId, G.T FROM (InvoiHdr AS H INNER JOIN Cust ON Cust.InCustId = H.ExCustId) "
    "LEFT JOIN (SELECT ExInvoiId AS K, SUM(PmtAmnt) AS T FROM PmtDet GROUP BY ExInvoiId) AS G "
    "ON G.K = H.InInvoiId ORDER BY H.InInvoiId",
    "SELECT C.InCustId, I.N, P.T, P.K FROM (Cust AS C LEFT JOIN (SELECT ExCustId AS K, COUNT(*) AS "
    "N FROM InvoiHdr WHERE Balance > 0 GROUP BY ExCustId) AS I ON I.K = C.InCustId) LEFT JOIN "
    "(SELECT ExCustId AS K, SUM(PmtTotAmnt) AS T FROM PmtHdr GROUP BY ExCustId) AS P "
    "ON P.K = C.InCustId WHERE P.K IS NULL OR I.K > 3",
};

TEST_P(FasterForm, KeepsAwayWhereItWouldChangeTheRows) {
  Database database(companySchema());
  fillUntidily(database, GetParam());
  std::size_t rows = 0;
  for (const char* statement : kFragments) {
    for (const Dialect dialect : kBoth) rows += compare(database, statement, dialect);
  }
  EXPECT_GT(rows, 300U);
}

INSTANTIATE_TEST_SUITE_P(Random, FasterForm, testing::Range(1U, 9U));

// Totals are looked up row by row where that is no more work than adding all of them up once.
TEST(FasterFormPrice, LooksUpWhereNoKeyComesTwice) {
  const Database database(companySchema());
  const auto looksUp = [&](const std::string& from, const std::string& key) {
    return database
               .translate("SELECT G.T FROM " + from +
                              " LEFT JOIN (SELECT ExCustId AS K, SUM(PmtTotAmnt) AS T FROM PmtHdr "
                              "GROUP BY ExCustId) AS G ON G.K = " +
                              key,
                          kServer)
               .sql.find("LEFT JOIN (") == std::string::npos;
  };
  EXPECT_TRUE(looksUp("Cust AS C", "C.InCustId"));
  EXPECT_TRUE(looksUp("Cust AS C LEFT JOIN Supp AS S ON S.InSuppId = C.ExTermId", "C.InCustId"));
  EXPECT_TRUE(looksUp("(SELECT InCustId AS X FROM Cust WHERE Name > 'M') AS C", "C.X"));
  EXPECT_TRUE(looksUp("(SELECT ExCustId AS X FROM InvoiHdr GROUP BY ExCustId) AS C", "C.X"));
  EXPECT_FALSE(looksUp("InvoiHdr AS H", "H.ExCustId"));
  EXPECT_FALSE(
      looksUp("InvoiHdr AS H INNER JOIN Cust AS C ON C.InCustId = H.ExCustId", "C.InCustId"));
  EXPECT_FALSE(
      looksUp("Cust AS C LEFT JOIN InvoiHdr AS H ON H.ExCustId = C.InCustId", "C.InCustId"));
  EXPECT_FALSE(looksUp("Supp AS S, Cust AS C", "C.InCustId"));
}

// A statement that is as deep as the engine's parser goes has no room for a view's select.
TEST(FasterFormLimits, FallsBackToTheStatementAsItIs) {
  Database database(
      "CREATE TABLE T (Id INT); CREATE VIEW V AS SELECT Id FROM (SELECT Id FROM T) AS U");
  int accepted = 0;
  for (int depth = 1; depth < 60; ++depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "SELECT Id FROM (";
    text += "SELECT Id FROM V";
    for (int i = 0; i < depth; ++i) text += ") AS D";
    if (database.refusal(text, kServer).empty()) ++accepted;
  }
  EXPECT_GT(accepted, 5);
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
