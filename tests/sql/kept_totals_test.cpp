// Sums over the ledger that are read off kept totals, against the same sums over its lines, while
// lines come, change and go.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

constexpr const char* kSources[] = {
    "GLDet",
    "GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId",
    "GLAcct LEFT JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId",
    "(GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId) LEFT JOIN AccountType ON "
    "AccountType.ID = GLAcct.AcctType",
    "GLDet INNER JOIN Proj ON Proj.InProjId = GLDet.ExProjId",
    "(SELECT * FROM GLDet) AS GLDet",
    // Lines that come more than once, or only once for several.
    "GLDet LEFT JOIN Proj ON Proj.InProjId >= GLDet.ExProjId",
    "GLAcct LEFT JOIN GLDet ON GLAcct.AcctType = GLDet.ExProjId AND GLDet.ExSegmentId > 1",
    "GLAcct LEFT JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId AND GLDet.DetAmnt > 0",
    "GLDet LEFT JOIN GLDet AS Other ON Other.SeqNo = GLDet.ExAcctId AND Other.DetDate = "
    "GLDet.DetDate",
    "(SELECT DISTINCT ExAcctId, DetDate, ExProjId, ExSegmentId, Source, DetAmnt, ForeignAmnt, "
    "SeqNo "
    "FROM GLDet) AS GLDet",
};

constexpr const char* kTotals[] = {
    "SUM(GLDet.DetAmnt)",
    "-SUM(GLDet.DetAmnt)",
    "COUNT(*)",
    "COALESCE(SUM(GLDet.ForeignAmnt), 0)",
    "SUM(CASE WHEN GLDet.DetAmnt IS NULL THEN 0 ELSE GLDet.DetAmnt END)",
    "SUM(GLDet.DetAmnt - GLDet.ForeignAmnt) + COUNT(*)",
    "SUM(CASE WHEN GLDet.DetDate < '2024-01-05' THEN GLDet.DetAmnt ELSE 0 END)",
    "SUM(CASE WHEN GLDet.ExProjId = 1 OR GLDet.ExSegmentId IS NULL THEN -GLDet.DetAmnt END)",
    "MIN(GLDet.DetDate)",
    "COUNT(DISTINCT GLDet.ExProjId)",
    // From here on the lines themselves are asked for.
    "SUM(CASE WHEN GLDet.DetAmnt > 0 THEN GLDet.DetAmnt ELSE 0 END)",
    "SUM(CASE WHEN GLDet.ExProjId = 1 THEN GLDet.DetAmnt ELSE 1 END)",
    "SUM(CASE WHEN GLDet.Source = 'INV' THEN GLDet.DetAmnt END)",
    "SUM(ABS(GLDet.DetAmnt))",
    "SUM(GLDet.DetAmnt * 2)",
    "SUM(GLDet.DetAmnt * GLDet.ForeignAmnt)",
    "MAX(GLDet.DetAmnt)",
    "SUM(DISTINCT GLDet.DetAmnt)",
    "COUNT(GLDet.ExSegmentId)",
    "COUNT(GLDet.DetAmnt)",
    "COUNT(DISTINCT GLDet.Source)",
    "AVG(GLDet.DetAmnt)",
    "SUM(GLDet.ExAcctId)",
};
/// Those of them that can be had from the totals.
constexpr int kKept = 10;

constexpr const char* kConditions[] = {
    "GLDet.ExAcctId = 3",
    "GLDet.ExAcctId IN (1, 3, 5)",
    "GLDet.DetDate <= '2024-01-06'",
    "GLDet.DetDate BETWEEN '2024-01-03' AND '2024-01-08'",
    "GLDet.DetDate >= '2024-01-02' AND GLDet.DetDate < '2024-01-05'",
    "GLDet.ExProjId = 2",
    "GLDet.ExProjId IS NULL",
    "GLDet.ExProjId IN (1, 2)",
    "GLDet.ExSegmentId IS NULL",
    "(GLDet.ExSegmentId = 3 OR GLDet.ExProjId = 1)",
    "(GLDet.ExAcctId = 2 OR GLDet.DetDate > '2024-01-07')",
    "NOT (GLDet.ExAcctId = 2 AND GLDet.ExProjId = 1)",
    "MONTH(GLDet.DetDate) = 1",
    "GLDet.ExAcctId IN (SELECT InGLAcctId FROM GLAcct AS A, AccountType WHERE ID = AcctType)",
    "EXISTS (SELECT InProjId FROM Proj AS P WHERE P.InProjId = GLDet.ExSegmentId)",
    "EXISTS (SELECT L.SeqNo FROM GLDet AS L WHERE L.SeqNo = GLDet.SeqNo AND L.DetAmnt < 0)",
    "(SELECT SUM(L.DetAmnt) FROM GLDet AS L WHERE L.ExAcctId = GLDet.ExAcctId) > 0",
    "GLDet.DetAmnt > 0",
    "(GLDet.ExProjId = 1 OR GLDet.DetAmnt > 0)",
    "GLDet.Source = 'INV'",
};

constexpr const char* kHavings[] = {"SUM(GLDet.DetAmnt) >= 0", "COUNT(*) > 3",
                                    "SUM(GLDet.DetAmnt) < MAX(GLDet.DetAmnt)"};

constexpr const char* kKeys[] = {"GLDet.ExAcctId", "GLDet.DetDate", "GLDet.ExProjId",
                                 "GLDet.ExSegmentId", "GLDet.Source"};

class KeptTotals : public testing::TestWithParam<unsigned> {
 protected:
  KeptTotals() : database_(companySchema()), random_(GetParam()) {
    for (int i = 1; i <= 5; ++i) {
      const std::string id = std::to_string(i);
      run("INSERT INTO AccountType (ID, ExAcctTypeDefId) VALUES (" + id + ", 1)");
      database_.rows("INSERT INTO GLAcct (InGLAcctId, GLAcctId, AcctType) VALUES (?, ?, ?)",
                     kServer, {i, id, i % 3});
      run("INSERT INTO Proj (InProjId) VALUES (" + id + ")");
    }
    for (int i = 0; i < 150; ++i) addLine();
  }

  void run(const std::string& statement) { database_.rows(statement, kServer); }
  int below(int count) { return std::uniform_int_distribution<>(0, count - 1)(random_); }
  template <std::size_t Count>
  const char* one(const char* const (&of)[Count]) {
    return of[below(Count)];
  }
  std::string key() { return below(3) == 0 ? "NULL" : std::to_string(below(4)); }
  std::string amount() { return std::to_string(below(7) - 3); }
  std::string day() {
    return "'2024-01-0" + std::to_string(1 + below(9)) + (below(9) == 0 ? " 08:30:00'" : "'");
  }

  void addLine() {
    run("INSERT INTO GLDet (SeqNo, DetDate, Source, ExAcctId, DetAmnt, ForeignAmnt, ExProjId, "
        "ExSegmentId) VALUES (" +
        std::to_string(below(9)) + ", " + day() + ", " + (below(2) == 0 ? "'INV'" : "'PMT'") +
        ", " + std::to_string(1 + below(6)) + ", " + amount() + ", " + amount() + ", " + key() +
        ", " + key() + ")");
  }

  void change() {
    const std::string some = " WHERE InGLDetId % 9 = " + std::to_string(below(9));
    switch (below(6)) {
      case 0:
        return run("UPDATE GLDet SET DetAmnt = " + amount() + some);
      case 1:
        return run("UPDATE GLDet SET ExProjId = " + key() + ", ExAcctId = 3, DetDate = " + day() +
                   some);
      case 2:
        return run("UPDATE GLDet SET Conciliated = 1, ExSegmentId = " + key() + some);
      case 3:
        return run("DELETE FROM GLDet" + some + " AND ExAcctId = " + std::to_string(below(6)));
      default:
        for (int i = 0; i < 10; ++i) addLine();
    }
  }

  std::string statement() {
    std::string keys;
    for (int i = below(3); i > 0; --i) {
      const std::string key = one(kKeys);
      if (keys.find(key) == std::string::npos) keys += (keys.empty() ? "" : ", ") + key;
    }
    std::string text =
        (below(6) == 0 ? "SELECT DISTINCT " : "SELECT ") + keys + (keys.empty() ? "" : ", ");
    for (int i = 0, count = 1 + below(2); i < count; ++i) {
      // What every statement asks for is asked for most.
      const char* const total = below(2) == 0 ? kTotals[below(kKept)] : one(kTotals);
      text += std::string(i == 0 ? "" : ", ") + total + " AS T" + std::to_string(i);
    }
    text += std::string(" FROM ") + one(kSources);
    const int conditions = below(3);
    for (int n = 0; n < conditions; ++n) {
      text += (n == 0 ? " WHERE " : " AND ") + std::string(one(kConditions));
    }
    if (!keys.empty()) text += " GROUP BY " + keys;
    if (below(4) == 0) text += std::string(" HAVING ") + one(kHavings);
    return text;
  }

  Database database_;
  std::mt19937 random_;
};

TEST_P(KeptTotals, GiveTheSumsOfTheLines) {
  int kept = 0;
  for (int round = 0; round < 40; ++round) {
    change();
    for (int i = 0; i < 8; ++i) {
      const std::string text = statement();
      const Translation plain = database_.translate(text, kServer, Rewriting::None);
      const Translation faster = database_.translate(text, kServer);
      ASSERT_EQ(plain.sql.find("GLDetTotals"), std::string::npos);
      if (faster.sql.find("GLDetTotals") != std::string::npos) ++kept;
      std::vector<std::string> expected = database_.rows(plain, {});
      std::vector<std::string> found = database_.rows(faster, {});
      std::ranges::sort(expected);
      std::ranges::sort(found);
      ASSERT_EQ(found, expected) << text << "\n" << faster.sql;
    }
  }
  EXPECT_GT(kept, 35);
  EXPECT_FALSE(database_.rows("SELECT ExProjId, LineCount FROM GLDetTotals", kServer).empty());
}

INSTANTIATE_TEST_SUITE_P(Random, KeptTotals, testing::Range(1U, 7U));

// Where another table's amounts are added up, or the lines are found by an index of their own, the
// lines are read.
TEST(KeptTotalsPrice, ReadsTheLinesWhereTheyAreFoundFaster) {
  const Database database(companySchema());
  const auto reads = [&](const std::string& where) {
    const std::string text = "SELECT SUM(DetAmnt) AS S FROM GLDet WHERE " + where;
    return database.translate(text, kServer).sql.find("GLDetTotals") != std::string::npos;
  };
  EXPECT_TRUE(reads("ExAcctId = ? AND DetDate <= ?"));
  EXPECT_TRUE(reads("ExAcctId = 5 AND ExProjId IN (1, 2)"));
  EXPECT_TRUE(reads("ExProjId IS NULL"));
  EXPECT_FALSE(reads("ExProjId = 3 AND DetDate <= ?"));
  EXPECT_FALSE(reads("(ExProjId = 3 OR ExProjId = 4)"));
  EXPECT_FALSE(reads("DetAmnt <> 0"));
  // The engine moves the condition into the groups.
  const std::string ofProject =
      "SELECT S FROM (SELECT ExProjId, SUM(DetAmnt) AS S FROM GLDet GROUP BY ExProjId) AS P WHERE "
      "ExProjId = 3";
  EXPECT_EQ(database.translate(ofProject, kServer).sql.find("GLDetTotals"), std::string::npos);
}

TEST(KeptTotalsLanguage, RefusesWhatCannotBeKept) {
  const char* const kBad[] = {
      "SELECT A, COUNT(*) AS N FROM dbo.T WHERE A > 1 GROUP BY A",
      "SELECT A, SUM(B) AS S FROM dbo.T GROUP BY A",
      "SELECT A, SUM(C) AS S, COUNT(*) AS N FROM dbo.T GROUP BY A",
      "SELECT A, SUM(D) AS S, COUNT(*) AS N FROM dbo.T GROUP BY A",
      "SELECT A, SUM(A) AS S, COUNT(*) AS N FROM dbo.T GROUP BY A",
      "SELECT A, MAX(B) AS S, COUNT(*) AS N FROM dbo.T GROUP BY A",
      "SELECT E, COUNT(*) AS N FROM dbo.T GROUP BY E",
      "SELECT C, COUNT(*) AS N FROM dbo.T GROUP BY C",
      "SELECT A, COUNT(*) AS N FROM dbo.T GROUP BY A, B",
      "SELECT T.A, COUNT(*) AS N FROM dbo.T, dbo.T AS U GROUP BY T.A",
      "SELECT A FROM dbo.T",
  };
  const std::string table =
      "CREATE TABLE T (A INT NOT NULL, B INT NOT NULL, C INT, D FLOAT NOT NULL, E VARCHAR(3) NOT "
      "NULL)";
  for (const char* select : kBad) {
    Database database(table);
    EXPECT_NE(
        database.refusal("CREATE VIEW V WITH SCHEMABINDING AS " + std::string(select), kServer)
            .find("are kept"),
        std::string::npos)
        << select;
  }
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
