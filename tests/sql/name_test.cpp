// Names, groups and result columns.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kTables = R"(
  CREATE TABLE Head (InHeadId INT PRIMARY KEY, Code VARCHAR(10), Total MONEY, ExParent INT);
  CREATE TABLE Line (InLineId INT PRIMARY KEY, ExHeadId INT, Code VARCHAR(10), Amnt MONEY);
  CREATE VIEW Totals AS SELECT ExHeadId, SUM(Amnt) AS Total FROM Line GROUP BY ExHeadId;
  INSERT INTO Head VALUES (1, 'a', 10, NULL);
  INSERT INTO Head VALUES (2, 'b', 20, 1);
  INSERT INTO Line VALUES (1, 1, 'x', 4);
  INSERT INTO Line VALUES (2, 1, 'y', 6);
  INSERT INTO Line VALUES (3, 2, 'x', 5);
)";

TEST(Names, AreRefusedWhenTheyLeadNowhereOrToTwoPlaces) {
  Database database(kTables);
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT * FROM Heads", "Unknown table or view 'Heads' (line 1, column 15, near 'Heads')"},
      {"SELECT Nr FROM Head", "Unknown column 'Nr' (line 1, column 8, near 'Nr')"},
      {"SELECT Head.Nr FROM Head",
       "Unknown column 'Nr' of 'Head' (line 1, column 8, near 'Head.Nr')"},
      {"SELECT H.Code FROM Head", "Unknown table or alias 'H'"},
      {"SELECT Head.Code FROM Head AS H", "Unknown table or alias 'Head'"},
      {"SELECT X.* FROM Head", "Unknown table or alias 'X'"},
      {"SELECT Aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\xC3\xA9\xC3\xA9 FROM Head",
       "near 'Aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...')"},
      {"SELECT Code FROM Head, Line", "Ambiguous column 'Code': 'Head' and 'Line' have one"},
      {"SELECT 1 FROM Head, Head", "FROM has two tables called 'Head'"},
      {"SELECT Head.Code, Line.Code FROM Head, Line ORDER BY Code", "Ambiguous column 'Code'"},
      {"SELECT X.Code FROM (SELECT Code, Code FROM Head) AS X",
       "'X' has two columns called 'Code'"},
      {"SELECT 1 FROM (SELECT * FROM Head INNER JOIN Line ON ExHeadId = InHeadId) AS X",
       "'X' has two columns called 'Code'"},
      {"SELECT 1 FROM Head INNER JOIN Line ON ExHeadId = X.Id, Totals AS X",
       "Unknown table or alias 'X'"},
      {"SELECT Code FROM Head WHERE SUM(Total) > 1", "An aggregate cannot stand in WHERE"},
      {"SELECT SUM(SUM(Total)) FROM Head", "inside another"},
      {"SELECT Code, SUM(Total) FROM Head", "Column 'Code' is neither in GROUP BY nor inside"},
      {"SELECT * FROM Head GROUP BY Code", "Column 'InHeadId' is neither"},
      {"SELECT Code FROM Head GROUP BY Code ORDER BY Total", "Column 'Total' is neither"},
      {"SELECT Code FROM Head GROUP BY Code HAVING Total > 1", "Column 'Total' is neither"},
      {"SELECT Code, (SELECT SUM(Amnt) FROM Line WHERE ExHeadId = InHeadId) FROM Head GROUP BY "
       "Code",
       "Column 'InHeadId' is neither"},
      {"SELECT Code FROM Head HAVING Code = 'a'", "HAVING needs GROUP BY or an aggregate"},
      {"SELECT 1 FROM Head GROUP BY 1", "GROUP BY takes expressions that name a column"},
      {"SELECT (SELECT SUM(Total) FROM Line) FROM Head", "needs a column of its own select"},
      {"SELECT Code FROM Head ORDER BY 2", "ORDER BY takes the number of a column, from 1 to 1"},
      {"SELECT DISTINCT Code FROM Head ORDER BY Total", "With DISTINCT, ORDER BY takes only"},
      {"SELECT Code FROM Head UNION SELECT Code FROM Line ORDER BY Code + ''", "order of a union"},
      {"SELECT Code, Total FROM Head UNION SELECT Code FROM Line",
       "different numbers of columns: 2 and 1 (line 1, column 36, near 'SELECT')"},
      {"SELECT Code FROM Head UNION SELECT Amnt FROM Line",
       "Column 1 of the union, 'Code', is of type text above and of currency here"},
      {"SELECT Code FROM Head WHERE Total IN (SELECT ExHeadId, Amnt FROM Line)",
       "one column, not 2"},
      {"SELECT Code + Total FROM Head",
       "Values of type text and of type currency do not go together in '+' (line 1, column 13, "
       "near '+')"},
      {"SELECT Code * 2 FROM Head", "do not go together in arithmetic"},
      {"SELECT SUM(Code) FROM Head", "SUM takes a number, not a value of type text"},
      {"SELECT -Code FROM Head", "A minus sign takes a number"},
  };
  for (const auto& [text, message] : cases) {
    for (const Dialect dialect : kBoth) {
      EXPECT_THAT(database.refusal(text, dialect), HasSubstr(message)) << text;
    }
  }
  EXPECT_THAT(
      database.refusal("SELECT X.Code FROM (SELECT Code, COUNT(*) FROM Head GROUP BY Code) AS X",
                       kServer),
      HasSubstr("Column 2 of 'X' needs a name"));
  EXPECT_THAT(
      database.refusal("SELECT CASE WHEN 1 = 1 THEN Code ELSE Total END FROM Head", kServer),
      HasSubstr("text and of type currency do not go together in the branches of CASE"));
}

TEST(Names, AreFoundFromTheInsideOut) {
  Database database(kTables);
  for (const Dialect dialect : kBoth) {
    const auto expect = [&](const char* text, const auto& rows) {
      EXPECT_THAT(database.rows(text, dialect), rows) << text;
    };
    expect("SELECT head.CODE, (SELECT SUM(amnt) FROM Line WHERE ExHeadId = InHeadId) FROM Head",
           ElementsAre("a|10", "b|5"));
    expect(
        "SELECT Code FROM Head WHERE EXISTS (SELECT * FROM Line WHERE ExHeadId = InHeadId AND Code "
        "= 'y')",
        ElementsAre("a"));
    expect(
        "SELECT Code FROM Head AS H WHERE Total > (SELECT Total FROM Totals WHERE ExHeadId = "
        "H.InHeadId)",
        ElementsAre("b"));
    expect(
        "SELECT Code FROM Head WHERE InHeadId NOT IN (SELECT ExHeadId FROM Line WHERE Code = 'y')",
        ElementsAre("b"));
    expect(
        "SELECT T.Code FROM Head AS T WHERE 1 = (SELECT COUNT(*) FROM Line AS T WHERE T.ExHeadId = "
        "InHeadId)",
        ElementsAre("b"));
  }
}

TEST(Groups, AreKeyedByColumnsAndExpressions) {
  Database database(kTables);
  for (const Dialect dialect : kBoth) {
    const auto expect = [&](const char* text, const auto& rows) {
      EXPECT_THAT(database.rows(text, dialect), rows) << text;
    };
    expect(
        "SELECT Code + '!', SUM(Amnt), COUNT(*) FROM Line GROUP BY Code + '!' ORDER BY SUM(Amnt)",
        ElementsAre("y!|6|1", "x!|9|2"));
    expect("SELECT Code FROM Line GROUP BY Line.Code HAVING COUNT(*) > 1 AND SUM(Amnt) > ?",
           ElementsAre());
    expect("SELECT COUNT(DISTINCT Code), COUNT(Code), COUNT(*), SUM(DISTINCT ExHeadId) FROM Line",
           ElementsAre("2|3|3|3"));
    expect("SELECT SUM(Total) AS Total FROM Head WHERE InHeadId > 5", ElementsAre("-"));
    expect("SELECT COUNT(*) FROM Head WHERE InHeadId > 5", ElementsAre("0"));
    expect("SELECT COUNT(*) FROM Head GROUP BY ExParent ORDER BY ExParent DESC",
           ElementsAre("1", "1"));
    // A column of a single row is no key, unless it is missing beside some rows, or the only key.
    const std::string top = "(SELECT TOP 1 ExHeadId, Code FROM Line ORDER BY InLineId DESC) AS T";
    expect(("SELECT COUNT(*), T.Code, Head.Code FROM " + top +
            ", Head GROUP BY Head.Code, T.Code ORDER BY Head.Code")
               .c_str(),
           ElementsAre("1|x|a", "1|x|b"));
    expect(("SELECT COUNT(*), T.Code, ExHeadId FROM Head LEFT JOIN " + top +
            " ON T.ExHeadId = InHeadId GROUP BY T.Code, ExHeadId")
               .c_str(),
           ElementsAre("1|-|-", "1|x|2"));
    expect(("SELECT T.Code FROM " + top + " WHERE T.Code = 'y' GROUP BY T.Code").c_str(),
           ElementsAre());
  }
}

// A key stays what it is where a choice around it goes on with it.
TEST(Groups, AreFoundWithinChoices) {
  Database database(kTables);
  const auto expect = [&](std::string text, const std::string& key, Dialect dialect) {
    while (text.find('@') != std::string::npos) text.replace(text.find('@'), 1, key);
    EXPECT_THAT(database.rows(text, dialect), ElementsAre("0|1", "7|2")) << text;
  };
  const std::string choice = "CASE WHEN Code = 'y' THEN 3 ELSE CASE WHEN Amnt > 0 THEN 7 END END";
  expect("SELECT CASE WHEN @ = 3 THEN 0 ELSE @ END, COUNT(*) FROM Line GROUP BY @ ORDER BY 1",
         choice, kServer);
  expect("SELECT COALESCE(NULLIF(@, 3), 0), COUNT(*) FROM Line GROUP BY @ ORDER BY 1", choice,
         kServer);
  expect("SELECT IIf(@ = 3, 0, @), COUNT(*) FROM Line GROUP BY @ ORDER BY 1",
         "IIf(Code = 'y', 3, IIf(Amnt > 0, 7, Null))", kDesktop);
}

TEST(Results, NameTheirColumns) {
  const Database database(kTables);
  const auto names = [&](const char* text, Dialect dialect) {
    std::string all;
    for (const ResultColumn& column : database.translate(text, dialect).columns)
      all += column.name + ",";
    return all;
  };
  const char* const text =
      "SELECT head.*, CODE, Total AS Sum1, Total + 1, COUNT FROM "
      "(SELECT COUNT(*) AS COUNT FROM Line) AS N, Head";
  EXPECT_EQ(names(text, kServer), "InHeadId,Code,Total,ExParent,CODE,Sum1,,COUNT,");
  EXPECT_EQ(names(text, kDesktop), "InHeadId,Code,Total,ExParent,CODE,Sum1,Expr1006,COUNT,");
  EXPECT_EQ(names("SELECT Code AS First1 FROM Head UNION SELECT Code FROM Line", kServer),
            "First1,");
}

TEST(Results, TellWhetherTheirRowsAreThoseOfATable) {
  const Database database(kTables);
  const auto table = [&](const char* text) {
    return database.translate(text, kServer).updatableTable;
  };
  EXPECT_EQ(table("SELECT * FROM head"), "Head");
  EXPECT_EQ(table("SELECT TOP 1 h.Code, Total FROM Head AS h WHERE Total > 1 ORDER BY Total + 1"),
            "Head");
  for (const char* const text :
       {"SELECT * FROM Totals", "SELECT DISTINCT Code FROM Head",
        "SELECT Code FROM Head GROUP BY Code", "SELECT Total + 1 AS T FROM Head",
        "SELECT Head.* FROM Head, Line", "SELECT COUNT(*) FROM Head",
        "SELECT * FROM Head UNION ALL SELECT * FROM Head", "SELECT 1"}) {
    EXPECT_EQ(table(text), "") << text;
  }
}

TEST(Markers, TakeTheTypeOfWhatTheyMeet) {
  const Database database(kTables);
  using Types = std::vector<Type>;
  const auto markers = [&](const char* text) { return database.translate(text, kServer).markers; };
  EXPECT_EQ(markers("SELECT 1 FROM Head WHERE Code = ? AND ? < Total AND InHeadId BETWEEN ? AND 5"),
            (Types{Type::Text, Type::Currency, Type::Long}));
  EXPECT_EQ(markers("SELECT 1 FROM Head WHERE Total IN (?, 2) AND Code LIKE ? AND ? IN (SELECT "
                    "Code FROM Line)"),
            (Types{Type::Currency, Type::Text, Type::Text}));
  EXPECT_EQ(
      markers("SELECT COALESCE(?, Total), CASE WHEN Total > ? THEN ? ELSE Code END, ? FROM Head"),
      (Types{Type::Currency, Type::Currency, Type::Text, Type::Unknown}));
  EXPECT_EQ(
      markers(
          "SELECT Total + ?, Code + ?, LEFT(?, ?), CAST(? AS datetime), ISNULL(?, 5) FROM Head"),
      (Types{Type::Currency, Type::Text, Type::Text, Type::Long, Type::Date, Type::Long}));
  EXPECT_EQ(markers("UPDATE Head SET Total = ?, Code = COALESCE(?, ?) WHERE ExParent = ?"),
            (Types{Type::Currency, Type::Text, Type::Text, Type::Long}));
  EXPECT_EQ(markers("INSERT INTO Line (Amnt, Code) SELECT ?, ? FROM Head"),
            (Types{Type::Currency, Type::Text}));
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
