// Statements that are changed for speed, against the same statements as they are, on tables whose
// rows keep no rule: nulls, orphans, payments of nothing, amounts that cancel out.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "sql/both_forms.h"
#include "sql/database.h"
#include "sql/untidy.h"

namespace QuorHost::Sql::Testing {
namespace {

/// Rows found, to see that there was something to compare.
std::size_t compare(Database& database, const std::string& statement, Dialect dialect) {
  const Translation translation = database.translate(statement, dialect);
  const BothForms forms = runBoth(database, statement, dialect, markerValues(translation));
  // A text that is compared with a number is none.
  if (!forms.plainError.empty()) return 0;
  EXPECT_EQ(forms.fasterError + difference(forms, statement, translation), "") << statement << "\n"
                                                                               << forms.fasterSql;
  return forms.plain.size();
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
    "SELECT ExCustId, SUM(CustBalance) AS B, COUNT(*) AS N, MIN(BalanceDate) AS D, "
    "-MAX(CustBalance "
    "+ CustBalanceHome) AS M FROM CustBalance_View WHERE BalanceDate <= ? AND NOT "
    "ExSegmentID IS NULL GROUP BY ExCustId HAVING COUNT(*) > 1 ORDER BY ExCustId",
    "SELECT SUM(TotalToPay) AS T, COUNT(*) AS N FROM CustHistoryList_View WHERE ExCustId = 42",
    "SELECT COUNT(*) AS N, SUM(TotalToPay) + 1 AS T FROM CustHistoryList_View WHERE ExCustId = -1",
    "SELECT ExCustId, ExSegmentID, SUM(CustBalance) AS B FROM CustBalance_View GROUP BY ExCustId, "
    "ExSegmentID",
    "SELECT ExCustId, COUNT(DISTINCT ExSegmentID) AS N, SUM(DISTINCT CustBalance) AS B FROM "
    "CustBalance_View GROUP BY ExCustId",
    "SELECT ExCustId, AVG(CustBalance) AS A FROM CustBalance_View GROUP BY ExCustId",
    "SELECT ExCustId, SUM(ExchangeRate) AS S, MAX(DocNo) AS M FROM CustAgingDet GROUP BY ExCustId",
    "SELECT DocNo, SUM(Balance) AS S FROM CustAgingDet GROUP BY DocNo",
    "SELECT DocOrderID, SUM(Balance) AS S FROM CustAgingDet GROUP BY DocOrderID",
    "SELECT A.ExCustId, SUM(A.Balance) AS S FROM CustAgingDet AS A WHERE A.ExCustId IN (SELECT "
    "InCustId FROM Cust WHERE CustInactive = 0) GROUP BY A.ExCustId",
    "SELECT A.ExCustId, (SELECT MAX(Name) FROM Cust WHERE Cust.InCustId = A.ExCustId) AS M, "
    "SUM(A.Balance) AS S FROM CustAgingDet AS A GROUP BY A.ExCustId",
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

/// A piece of a statement, and whether branches may begin with keys where it stands.
struct Piece {
  const char* text;
  bool fits;
};

constexpr Piece kUnions[] = {
    {"(SELECT InInvoiId AS X, Balance AS A, InvoiDate AS D FROM InvoiHdr UNION ALL SELECT "
     "ExInvoiId, PmtAmnt, NULL FROM PmtDet UNION ALL SELECT 0, PmtTotAmnt, PmtDate FROM PmtHdr)",
     true},
    {"(SELECT DocOrderID AS X, Balance AS A, DetDate AS D FROM CustAgingDet UNION ALL SELECT 7, "
     "PmtTotAmnt, PmtDate FROM PmtHdr)",
     true},
    {"(SELECT L.ExInvoiId AS X, L.PmtAmnt AS A, PmtDate AS D FROM PmtHdr LEFT JOIN PmtDet AS L ON "
     "L.ExPmtId = InPmtId WHERE InPmtId <> 3 UNION ALL SELECT InPmtId, NULL, NULL FROM PmtHdr)",
     true},
    {"(SELECT ExInvoiId AS X, SUM(PmtAmnt) AS A, NULL AS D FROM PmtDet GROUP BY ExInvoiId UNION "
     "ALL SELECT InInvoiId, Balance, InvoiDate FROM InvoiHdr)",
     false},
    {"(SELECT InInvoiId AS X, Balance AS A, InvoiDate AS D FROM InvoiHdr UNION SELECT ExInvoiId, "
     "PmtAmnt, NULL FROM PmtDet)",
     false},
    {"(SELECT InInvoiId + 0 AS X, Balance AS A, InvoiDate AS D FROM InvoiHdr UNION ALL SELECT "
     "ExTermId, CreditLim, CredOfficeDate FROM Cust)",
     false},
    {"(SELECT InInvoiId AS X, Balance AS A, InvoiDate AS D FROM InvoiHdr)", false}};

constexpr Piece kKeyTables[] = {
    {"(SELECT InInvoiId AS K, P.T FROM InvoiHdr LEFT JOIN (SELECT ExInvoiId, SUM(PmtAmnt) AS T "
     "FROM PmtDet GROUP BY ExInvoiId) AS P ON P.ExInvoiId = InInvoiId WHERE P.ExInvoiId IS NULL OR "
     "Balance - P.T > 0.1)",
     true},
    {"(SELECT L.ExInvoiId AS K, PmtTotAmnt AS T FROM PmtDet AS L INNER JOIN PmtHdr ON InPmtId = "
     "L.ExPmtId WHERE PmtDate <= ?)",
     true},
    {"(SELECT ExInvoiId AS K, SUM(PmtAmnt) AS T FROM PmtDet GROUP BY ExInvoiId HAVING "
     "SUM(PmtAmnt) > 0)",
     true},
    {"(SELECT ExInvoiId AS K, PmtAmnt AS T FROM PmtDet UNION SELECT 9, 1 FROM Cust)", true},
    {"(SELECT InInvoiId AS K, Balance AS T FROM InvoiHdr WHERE Balance > 0)", false}};

// %U and %G stand for a union and a table of keys.
constexpr Piece kJoins[] = {
    {"%U AS U LEFT JOIN %G AS G ON U.X = G.K", true},
    {"(%U AS U INNER JOIN Cust AS C ON C.InCustId = U.X) LEFT JOIN %G AS G ON G.K = U.X", true},
    {"(%U AS U LEFT JOIN %G AS G ON U.X = G.K) LEFT JOIN Supp AS S ON S.InSuppId = G.K", true},
    {"%G AS G RIGHT JOIN %U AS U ON U.X = G.K", true},
    {"%U AS U LEFT JOIN %G AS G ON U.X = G.K AND G.T > 0", false},
    {"%U AS U LEFT JOIN %G AS G ON U.X = G.K + 1", false},
    {"(Cust AS C LEFT JOIN %U AS U ON U.X = C.InCustId) LEFT JOIN %G AS G ON G.K = U.X", false}};

constexpr Piece kConditions[] = {{"G.K IS NOT NULL", true},
                                 {"(NOT G.K IS NULL OR U.X = 0 OR 7 = U.X) AND U.A <> 0", true},
                                 {"U.D <= ? AND (U.X = 7 OR NOT G.K IS NULL)", true},
                                 {"U.A > 0 AND NOT (G.K) IS NULL AND (G.T > 0 OR U.A > 0.2)", true},
                                 {"(G.K IS NOT NULL OR U.A > 0)", false},
                                 {"(G.K IS NULL OR U.X = 7)", false},
                                 {"(G.T IS NOT NULL OR U.X = 7)", false},
                                 {"(G.K IS NOT NULL OR U.X = 7.5)", false},
                                 {"(G.K IS NOT NULL OR U.X = 7) AND U.X >= 40", false},
                                 {"G.K IS NOT NULL AND U.X IN (5, 7, 42)", false}};

constexpr Piece kSelects[] = {
    {"SELECT U.X, U.A, G.K, G.T FROM %F", true},
    {"SELECT U.X, COUNT(*) AS N, SUM(U.A) AS S FROM %F GROUP BY U.X ORDER BY U.X", true},
    {"SELECT InSuppId, O.X FROM Supp LEFT JOIN (SELECT DISTINCT U.X FROM %F) AS O ON O.X = "
     "InSuppId",
     true},
    {"SELECT U.A, G.K FROM %F UNION ALL SELECT PmtAmnt, ExInvoiId FROM PmtDet", true},
    {"SELECT InSuppId FROM Supp WHERE InSuppId IN (SELECT U.X FROM %F)", false},
    {"SELECT O.X FROM (SELECT U.X FROM %F) AS O INNER JOIN InvoiHdr AS H ON H.InInvoiId = O.X "
     "WHERE H.ExCustId = 42",
     false}};

std::string put(std::string text, std::string_view place, const std::string& instead) {
  return text.replace(text.find(place), place.size(), instead);
}

TEST_P(FasterForm, BeginsBranchesWithKeysOrKeepsAway) {
  Database database(companySchema());
  fillUntidily(database, GetParam());
  std::mt19937 random(GetParam());
  std::size_t rows = 0;
  int begun = 0;
  for (int turn = 0; turn < 200; ++turn) {
    bool fits = true;
    const auto any = [&](const auto& pieces) {
      // Mostly what fits, so that not everything fails on one of five pieces.
      const Piece* piece = nullptr;
      do {
        piece = &pieces[random() % std::size(pieces)];
      } while (!piece->fits && random() % 4 != 0);
      fits = fits && piece->fits;
      return std::string(piece->text);
    };
    const std::string from = put(put(any(kJoins), "%U", any(kUnions)), "%G", any(kKeyTables));
    const std::string text = put(any(kSelects), "%F", from + " WHERE " + any(kConditions));
    const std::string sql = database.translate(text, kServer).sql;
    EXPECT_EQ(sql.find("WITH \":keys ") != std::string::npos, fits) << text << "\n" << sql;
    if (fits) ++begun;
    rows += compare(database, text, kServer);
  }
  EXPECT_GT(rows, 300U);
  EXPECT_GT(begun, 20);
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
