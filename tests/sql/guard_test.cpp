// What can end a statement is tried only where the conditions before it are true.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kSchema = R"(
  CREATE TABLE T (Id INT PRIMARY KEY, Kind INT, X MONEY, Y MONEY, Txt VARCHAR(9));
  CREATE TABLE K (KeyId INT PRIMARY KEY, Z INT, Word VARCHAR(9));
  CREATE INDEX ByKind ON T (Kind);
  CREATE VIEW Both AS SELECT Id, Kind, X, Y, Txt FROM T WHERE Id < 4
    UNION ALL SELECT Id, Kind, X, Y, Txt FROM T WHERE Id >= 4;
  CREATE VIEW Ratios AS SELECT Id, Kind, X, Y / X AS Q FROM T;
  CREATE VIEW BothRatios AS SELECT Id, Kind, X, Q FROM Ratios WHERE Id < 4
    UNION ALL SELECT Id, Kind, X, Y / X FROM T WHERE Id >= 4;
  INSERT INTO T VALUES (1, 1, 0, 8, 'abc');
  INSERT INTO T VALUES (2, 1, 2, 8, '12');
  INSERT INTO T VALUES (3, 2, NULL, 1, '');
  INSERT INTO T VALUES (4, 2, 1, 3, '9');
  INSERT INTO T VALUES (5, 3, 0, 0, NULL);
  INSERT INTO T VALUES (6, NULL, 5, 1, 'x1');
  INSERT INTO T VALUES (7, 9, 0, 1, '7');
  INSERT INTO K VALUES (1, 0, 'w');
  INSERT INTO K VALUES (2, 3, '4');
  INSERT INTO K VALUES (4, 0, '5');
)";

/// What rows are read from; every one has the columns of T as those of A.
constexpr const char* kSources[] = {
    "T AS A",
    "Both AS A",
    "(SELECT * FROM T) AS A",
    "(SELECT Id, Kind, X, Y, Txt FROM T UNION ALL SELECT Id, Kind, X, Y, Txt FROM Both) AS A",
    "T AS A INNER JOIN K AS B ON B.KeyId = A.Kind",
    "K AS B INNER JOIN Both AS A ON B.KeyId = A.Kind AND B.Z = 3",
    "T AS A LEFT JOIN K AS B ON B.KeyId = A.Kind",
    "K AS B RIGHT JOIN T AS A ON B.KeyId = A.Kind",
    "K AS B, T AS A",
    "(T AS A INNER JOIN K AS B ON B.KeyId = A.Kind) LEFT JOIN Both AS C ON C.Id = B.KeyId",
};

struct Guarded {
  const char* guard;
  const char* value;   // raises in some row where the guard is not true
  const char* beyond;  // what it is compared with
};
constexpr Guarded kGuarded[] = {
    {"A.X <> 0", "A.Y / A.X", " > 1"},
    {"A.X = 1", "6 / (A.Id * (A.X - 0))", " > 1"},
    {"ISNUMERIC(A.Txt) <> 0", "CAST(A.Txt AS INT)", " > 8"},
    {"(A.X > 0 OR A.Y > 2 * A.X AND A.X <> 0)", "A.Id / A.X", " >= 1"},
    {"A.X IN (SELECT Y FROM T WHERE Y > 0)", "1 / A.X", " > 0"},
    {"EXISTS (SELECT 1 AS One FROM T AS E WHERE E.X = A.X AND E.X > 0)", "1 / A.X", " > 0"},
};

/// The rows of both forms of a statement, which are the same.
std::vector<std::string> rowsOf(Database& database, const std::string& text) {
  std::vector<std::string> plain =
      database.rows(database.translate(text, kServer, Rewriting::None), {});
  std::vector<std::string> faster = database.rows(database.translate(text, kServer), {});
  std::ranges::sort(plain);
  std::ranges::sort(faster);
  EXPECT_EQ(plain, faster) << text;
  return plain;
}

TEST(Guards, ComeBeforeWhatTheyGuard) {
  Database database(kSchema);
  std::size_t found = 0;
  for (const char* const source : kSources) {
    for (const auto& [guard, value, beyond] : kGuarded) {
      const std::string from = std::string(" FROM ") + source;
      const std::string tried = std::string(value) + beyond;
      const std::string choice =
          std::string("CASE WHEN ") + guard + " THEN " + value + " END" + beyond;
      for (const char* const list :
           {"SELECT A.Id, A.Kind", "SELECT COUNT(*)", "SELECT A.Txt, A.X"}) {
        const auto rows = [&](const std::string& condition) {
          SCOPED_TRACE(condition);
          return rowsOf(database,
                        std::string(list).append(from).append(" WHERE ").append(condition));
        };
        const std::vector<std::string> expected = rows(choice);
        found += expected.size();
        EXPECT_EQ(rows(guard + (" AND " + tried)), expected) << source;
        EXPECT_EQ(rows(std::string("A.Id > 0 AND ") + guard + " AND A.Id < 99 AND " + tried),
                  expected);
        EXPECT_EQ(rows(std::string("A.Id = -1 OR ") + guard + " AND " + tried), expected);
        EXPECT_EQ(rows(std::string("NOT (NOT ") + guard + " OR NOT " + tried + ")"), expected);
        EXPECT_EQ(rows(std::string("CASE WHEN ") + guard + " AND " + tried + " THEN 1 END = 1"),
                  expected);
      }
    }
  }
  EXPECT_GT(found, 200U);
}

TEST(Guards, MayBeConditionsOfJoins) {
  Database database(kSchema);
  EXPECT_THAT(rowsOf(database,
                     "SELECT A.Id FROM T AS A INNER JOIN (SELECT * FROM T WHERE "
                     "ISNUMERIC(Txt) <> 0) AS N ON N.Id = A.Id WHERE CAST(A.Txt AS INT) > 8"),
              ElementsAre("2", "4"));
  EXPECT_THAT(rowsOf(database,
                     "SELECT A.Id FROM T AS A INNER JOIN K AS B ON B.KeyId = A.Kind AND "
                     "B.Z <> 0 AND A.Id / B.Z >= 1"),
              ElementsAre("3", "4"));
  EXPECT_THAT(rowsOf(database,
                     "SELECT A.Id, B.Z FROM T AS A LEFT JOIN K AS B ON B.KeyId = A.Kind "
                     "AND B.Z <> 0 AND A.Id / B.Z > 0 WHERE A.Id < 5"),
              ElementsAre("1|-", "2|-", "3|3", "4|3"));
  EXPECT_THAT(rowsOf(database,
                     "SELECT A.Id, C.Id FROM T AS A INNER JOIN K AS B ON B.KeyId = A.Kind "
                     "AND B.Z > 0 INNER JOIN T AS C ON C.Id = CAST(B.Word AS INT)"),
              ElementsAre("3|4", "4|4"));
  EXPECT_THAT(rowsOf(database,
                     "SELECT T.Id FROM K, T WHERE K.Z > 0 AND T.Id = CAST(K.Word AS INT) "
                     "AND X <> 0 AND Y / X > 1"),
              ElementsAre("4"));
  EXPECT_THAT(rowsOf(database,
                     "SELECT Kind FROM T WHERE Kind IS NOT NULL GROUP BY Kind HAVING "
                     "MIN(X) > 0 AND 4 / MIN(X) > 1"),
              ElementsAre("2"));
  EXPECT_THAT(rowsOf(database,
                     "SELECT Id FROM T WHERE X > 0 AND EXISTS (SELECT 1 AS One FROM Both "
                     "WHERE 2 / T.X > 1)"),
              ElementsAre("4"));
}

// What a derived table or a view computes row by row is guarded where it is read.
TEST(Guards, StandOutsideOfWhatIsComputedInside) {
  Database database(kSchema);
  constexpr const char* kDerived[] = {
      "(SELECT Id, Kind, X, Y / X AS Q FROM T)",
      "(SELECT Id, X, Y / X AS Q FROM T UNION ALL SELECT 9, 0, 1 / Z FROM K WHERE Z > 3)",
      "(SELECT Id, MIN(X) AS X, MAX(Y) / MIN(X) AS Q FROM T GROUP BY Id)",
      "(SELECT Id, X, Q FROM (SELECT Id, X, Y / X AS Q FROM T) AS B)"};
  const auto select = [](const char* from) {
    return "SELECT A.Id FROM " + std::string(from) + " AS A WHERE A.X <> 0 AND A.Q > 2";
  };
  for (const char* const from : kDerived) {
    EXPECT_THAT(rowsOf(database, select(from)), ElementsAre("2", "4"));
    const std::string joined = std::string("K AS B RIGHT JOIN ") + from + " AS A ON B.KeyId = A.Id";
    EXPECT_THAT(rowsOf(database, "SELECT A.Id FROM " + joined + " WHERE A.X <> 0 AND A.Q > 2"),
                ElementsAre("2", "4"));
  }
  for (const char* const view : {"Ratios", "BothRatios"}) {
    EXPECT_THAT(rowsOf(database, select(view)), ElementsAre("2", "4"));
  }
}

// Whatever a view or a derived table could compute, what the statement does not read ends nothing.
TEST(Guards, AreNotNeededForWhatNobodyReads) {
  Database database(kSchema);
  constexpr const char* kSeven[] = {
      "BothRatios", "(SELECT Q, Id, X FROM BothRatios WHERE Id > 0)",
      "(SELECT Y / X AS Q, Id, X FROM T UNION ALL SELECT 1 / Z, KeyId, 0 FROM K WHERE Z > 9)",
      "(SELECT MAX(Y) / MIN(X) AS Q, Id, MIN(X) AS X FROM T GROUP BY Id)"};
  for (const std::string from : kSeven) {
    for (const char* const join : {" AS A", " AS A LEFT JOIN Both AS B ON B.Id = A.Id",
                                   " AS A INNER JOIN (SELECT DISTINCT Id FROM BothRatios) AS B"
                                   " ON B.Id = A.Id"}) {
      const std::string read = " FROM " + from + join;
      EXPECT_THAT(rowsOf(database, "SELECT COUNT(*), SUM(A.Id)" + read), ElementsAre("7|28"));
      EXPECT_THAT(rowsOf(database, "SELECT COUNT(*)" + read), ElementsAre("7"));
    }
    database.rows("UPDATE K SET Z = (SELECT COUNT(*) FROM " + from + " AS A WHERE A.Id > KeyId)",
                  kServer);
    EXPECT_THAT(database.rows("SELECT Z FROM K", kServer), ElementsAre("6", "5", "3"));
    database.rows("INSERT INTO K SELECT A.Id + 10, Both.Id, 'new' FROM " + from +
                      " AS A INNER JOIN Both ON Both.Id = A.Id",
                  kServer);
    database.rows(
        "DELETE FROM K WHERE KeyId > 10 OR KeyId > (SELECT COUNT(*) FROM " + from + " AS A)",
        kServer);
    EXPECT_THAT(database.rows("SELECT COUNT(*) FROM K", kServer), ElementsAre("3"));
  }
  for (const char* const total : {"MAX(1 / X) AS Q, COUNT(*) AS N FROM T", "MAX(1 / X) AS Q FROM T",
                                  "'a' AS N, MAX(1 / X) AS Q FROM T HAVING COUNT(*) > 6"}) {
    EXPECT_THAT(rowsOf(database, std::string("SELECT COUNT(*) FROM (SELECT ") + total + ") AS A"),
                ElementsAre("1"));
  }
}

// An account is looked up by the greatest number among those that are numbers.
TEST(Guards, FindTheAccountBefore) {
  Database database(R"(
    CREATE TABLE GLAcct (InGLAcctId INT PRIMARY KEY, GLAcctId VARCHAR(20), GroupType INT);
    INSERT INTO GLAcct VALUES (1, '1000', 1);
    INSERT INTO GLAcct VALUES (2, '1050', 7);
    INSERT INTO GLAcct VALUES (3, '2000', 5);
    INSERT INTO GLAcct VALUES (4, 'X8000', 2);
    INSERT INTO GLAcct VALUES (5, '', 3);
  )");
  for (const Dialect dialect : kBoth) {
    const auto number = [&](const std::string& text) {
      return dialect == kServer ? "CAST(" + text + " AS integer)" : "CLng(" + text + ")";
    };
    const std::string text =
        "SELECT GroupType FROM GLAcct WHERE GLAcctId = (SELECT MAX(" + number("GLAcct.GLAcctId") +
        ") FROM GLAcct INNER JOIN (SELECT * FROM GLAcct WHERE ISNUMERIC(GLAcctId) <> 0) AS X ON "
        "GLAcct.InGLAcctId = X.InGLAcctId WHERE " +
        number("GLAcct.GLAcctId") + " < ?)";
    EXPECT_THAT(database.rows(text, dialect, {QuorDataLib::Value(2000)}), ElementsAre("7"));
    EXPECT_THAT(database.rows(text, dialect, {QuorDataLib::Value(1000)}), ElementsAre());
  }
}

// What reads no column is computed once, whatever rows there are, unless what stands before it
// reads none either.
TEST(Guards, OfConstantsAreConstants) {
  Database database(kSchema);
  const auto rows = [&](const char* text, int divisor) {
    return database.rows(text, kServer, {QuorDataLib::Value(divisor), QuorDataLib::Value(divisor)});
  };
  const char* const guarded = "SELECT Id FROM T WHERE ? <> 0 AND Id = 8 / ?";
  EXPECT_THAT(rows(guarded, 0), ElementsAre());
  EXPECT_THAT(rows(guarded, 4), ElementsAre("2"));
  EXPECT_THAT(database.refusal("SELECT Id FROM T WHERE Id = 7 AND X = 1 / X", kServer),
              HasSubstr("ivision by zero"));
}

// Of conditions that can raise, those that cannot keep their indexes, and so does the other side of
// a comparison.
TEST(Guards, LeaveIndexesInUse) {
  Database database(kSchema);
  for (const char* const text :
       {"SELECT Id FROM T WHERE Kind = 2 AND X <> 0 AND Y / X > 1",
        "UPDATE T SET Y = 0 WHERE Kind = 2 AND X <> 0 AND Y / X > 1",
        "SELECT T.Id FROM K INNER JOIN T ON K.Z > 0 AND T.Kind = CAST(K.Word AS INT)",
        "SELECT T.Id FROM K, T WHERE K.Z > 0 AND T.Kind = CAST(K.Word AS INT) AND X <> 0 AND "
        "Y / X > 1",
        "SELECT A.Id FROM Both AS A INNER JOIN K ON K.KeyId = A.Kind WHERE A.Kind = 2 AND A.X <> 0 "
        "AND A.Y / A.X > 1"}) {
    Translation plan;
    plan.sql = "EXPLAIN QUERY PLAN " + database.translate(text, kServer).sql;
    plan.columns.resize(4);
    EXPECT_THAT(database.rows(plan, {}), Contains(HasSubstr("INDEX ByKind (Kind=?"))) << plan.sql;
  }
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
