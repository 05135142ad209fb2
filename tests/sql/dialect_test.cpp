// The strictness of the dialects, and the errors of grammar.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/data_library.h"
#include "platform/error.h"
#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kTables = R"(
  CREATE TABLE A (Id INT PRIMARY KEY, Name VARCHAR(20), Paid MONEY, Flag BIT, At DATETIME);
  CREATE TABLE B (Id INT PRIMARY KEY, AId INT, Qty INT);
  CREATE TABLE C (Id INT PRIMARY KEY, BId INT);
  INSERT INTO A VALUES (1, 'x', 1, 1, '2024-01-01');
)";

struct Case {
  const char* text;
  const char* message;
};

void expectRefusals(Dialect dialect, std::initializer_list<Case> cases) {
  Database database(kTables);
  for (const Case& c : cases) {
    EXPECT_THAT(database.refusal(c.text, dialect), HasSubstr(c.message)) << c.text;
  }
}

TEST(Dialects, RefuseEachOthersWords) {
  expectRefusals(
      kServer,
      {{"SELECT IIf(1=1, 2, 3)", "'IIf' belongs to the desktop dialect"},
       {"SELECT Id,\r\n  Nz(Paid, 0) FROM A", "(line 2, column 3, near 'Nz')"},
       {"SELECT Id FROM A WHERE At > #2024-01-01#", "(line 1, column 29, near '#')"},
       {"SELECT 'é' & Name FROM A",
        "'&' belongs to the desktop dialect, and this statement is read "
        "in the server dialect (line 1, column 12, near '&')"},
       {"SELECT 7 \\ 2", "'\\' belongs to the desktop"},
       {"SELECT 7 Mod 2", "'Mod' belongs to the desktop"},
       {"SELECT True", "'True' belongs to the desktop"},
       {"SELECT ISNULL(Paid) FROM A", "'ISNULL' takes 2, not 1"},
       {"SELECT Id FROM A WHERE Flag", "A condition is expected here, not a value"},
       {"SELECT Id FROM A WHERE (Paid > 1) = (Id > 1)", "a condition cannot stand for a value"},
       {"SELECT Paid + 1 AS X, X + 1 AS Y FROM A", "Unknown column 'X'"},
       {"SELECT X.Id FROM (SELECT Id FROM A ORDER BY Id) AS X", "no ORDER BY unless it has TOP"}});
  expectRefusals(
      kDesktop,
      {{"SELECT COALESCE(Paid, 0) FROM A", "'COALESCE' belongs to the server dialect"},
       {"SELECT CASE WHEN Id = 1 THEN 2 END FROM A", "(line 1, column 8, near 'CASE')"},
       {"SELECT CAST(Id AS int) FROM A", "'CAST' belongs to the server"},
       {"SELECT CONVERT(int, Id) FROM A", "'CONVERT' belongs to the server"},
       {"SELECT Id FROM A WHERE Id != 1", "'!=' belongs to the server"},
       {"SELECT 7 % 2", "'%' belongs to the server"},
       {"SELECT ISNULL(Paid, 0) FROM A", "'ISNULL' takes 1, not 2"},
       {"CREATE TABLE D (Id INT)", "'CREATE' belongs to the server"},
       {"SELECT Id Nr FROM A", "an alias needs AS before it (line 1, column 11, near 'Nr')"},
       {"SELECT DateAdd(month, 1, At) FROM A", "A unit of dates is expected, such as 'm'"},
       {"SELECT First(Name) FROM A", "depends on an order of rows that nothing defines"},
       {"SELECT A.Id FROM A INNER JOIN B ON A.Id = B.AId INNER JOIN C ON C.BId = B.Id",
        "must stand in parentheses (line 1, column 49, near 'INNER')"},
       {"SELECT Id FROM A WHERE Name = 1", "do not go together in a comparison"}});
}

TEST(Dialects, ReadTheirOwnForms) {
  Database database(kTables);
  EXPECT_THAT(
      database.rows("SELECT Total = Paid + 1, Paid Again, [Name] \"The Name\" FROM A", kServer),
      ElementsAre("2|1|x"));
  // An alias may come before its expression; a column hides an alias of its name.
  EXPECT_THAT(database.rows(
                  "SELECT Twice + 1 AS More, Paid * 2 AS Twice, Id AS Paid, \"a\"\"b\" AS T FROM A",
                  kDesktop),
              ElementsAre("3|2|1|a\"b"));
  EXPECT_THAT(database.refusal("SELECT X + 1 AS Y, Y + 1 AS X FROM A", kDesktop),
              HasSubstr("leads to itself"));
  EXPECT_THAT(database.rows(
                  "SELECT A.Id FROM (A INNER JOIN B ON A.Id = B.AId) INNER JOIN C ON C.BId = B.Id",
                  kDesktop),
              ElementsAre());
  EXPECT_THAT(database.rows("SELECT Id > 0, IsNull(Id), NOT Flag FROM A", kDesktop),
              ElementsAre("1|0|0"));
}

TEST(Grammar, NamesWhatItDoesNotExpect) {
  expectRefusals(
      kServer,
      {{"", "SELECT, INSERT, UPDATE or DELETE is expected (line 1, column 1, at the end)"},
       {"DROP TABLE A", "is expected (line 1, column 1, near 'DROP')"},
       {"SELECT Id FROM A WHERE", "an expression is expected (line 1, column 23, at the end)"},
       {"SELECT Id FROM A; SELECT 1", "several statements; send one at a time (line 1, column 19"},
       {"SELECT Id FROM A GROUP Id", "BY is expected"},
       {"SELECT (Id FROM A", "A parenthesis is not closed (line 1, column 8, near '(')"},
       {"SELECT Id) FROM A", "A parenthesis was never opened"},
       {"SELECT 'abc FROM A", "A text is not closed (line 1, column 8"},
       {"SELECT /* Id FROM A", "A comment is not closed"},
       {"SELECT [Id FROM A", "A name in brackets is not closed"},
       {"SELECT 1a", "A number is followed by something else"},
       {"SELECT @x", "The character '@' has no meaning here"},
       {"SELECT \xE9", "is no character of UTF-8 (line 1, column 8"},
       {"SELECT Id FROM A LIMIT 5", "'LIMIT' is SQL outside of what is read here"},
       {"SELECT Id FROM A EXCEPT SELECT Id FROM B", "'EXCEPT' is SQL outside"},
       {"SELECT SUM(Id) OVER (ORDER BY Id) FROM A", "'OVER' is SQL outside"},
       {"SELECT TOP 5 PERCENT Id FROM A", "TOP takes a number of rows and nothing else"},
       {"SELECT Id FROM dbo.A", "Tables and views have plain names"},
       {"SELECT X.Id FROM (SELECT Id FROM A)", "A select in FROM needs a name"},
       {"SELECT FOO(Id) FROM A", "Unknown function 'FOO'"},
       {"SELECT LEFT(Name) FROM A", "'LEFT' takes 2, not 1"},
       {"SELECT Id FROM A WHERE Name LIKE 'a' ESCAPE 'b'", "LIKE takes no ESCAPE"},
       {"SELECT Id INTO D FROM A", "SELECT cannot make a table"},
       {"SELECT CAST(Id AS BIGINT) FROM A", "Unknown type 'BIGINT'"}});
}

TEST(Grammar, AllowsWhatSqlAllows) {
  Database database(kTables);
  const auto value = [&](const char* text) { return database.rows(text, kServer).at(0); };
  EXPECT_EQ(value("-- a comment\r\n/* and\n another */ SELECT 1 -- at the end"), "1");
  EXPECT_EQ(value("((SELECT 1) UNION ALL (SELECT 2) ) ORDER BY 1 DESC;"), "2");
  EXPECT_EQ(value("SELECT ((SELECT 2)) + (((1)))"), "3");
  EXPECT_EQ(value("SELECT X.Id FROM (((SELECT 5 AS Id) AS X INNER JOIN A ON A.Id < X.Id))"), "5");
  EXPECT_EQ(value("SELECT - - 1 + + 2 * -3"), "-5");
  EXPECT_EQ(value("SELECT 1 WHERE NOT 1 = 2 AND NOT NULL IS NOT NULL AND 2 NOT IN (1, 3)"), "1");
  EXPECT_EQ(value("SELECT 1 WHERE 1 = 1 OR 1 = 1 AND 1 = 2"), "1");
  EXPECT_EQ(value("SELECT 3 - 2 - 1, 8 / 4 / 2, 'it''s'"), "0|1|it's");
  EXPECT_EQ(value("SELECT TOP (1) ALL_A.Id FROM A AS ALL_A"), "1");
}

// Nesting and length end in a message or a result, never in a crash of this program or the engine.
TEST(Grammar, LimitsNestingAndNotLength) {
  Database database(kTables);
  const auto repeated = [](const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
  };
  const auto nested = [&](const char* open, const char* inner, const char* close, int levels) {
    return "SELECT " + repeated(open, levels) + inner + repeated(close, levels);
  };
  EXPECT_EQ(database.refusal(nested("(", "1", ")", 80), kServer), "");
  EXPECT_EQ(database.refusal(nested("(1 + ", "1", ")", 20), kServer), "");
  EXPECT_THAT(database.refusal(nested("(", "1", ")", 5000), kServer), HasSubstr("200 levels"));
  EXPECT_THAT(database.refusal(nested("(SELECT ", "1", ")", 60), kServer),
              HasSubstr("engine reads"));
  EXPECT_THAT(database.refusal(nested("ABS(", "1", ")", 150), kServer), HasSubstr("engine reads"));
  EXPECT_THAT(database.refusal("SELECT 1" + repeated(" + 1", 5000), kServer),
              HasSubstr("200 levels"));
  EXPECT_EQ(database.refusal("SELECT 1 WHERE 1 = 2" + repeated(" OR 1 = 1", 5000), kServer), "");
  EXPECT_EQ(database.refusal("SELECT 1 WHERE 1 IN (0" + repeated(", 1", 50000) + ")", kServer), "");
  EXPECT_THAT(database.rows("SELECT Id FROM A WHERE Paid < 0" + repeated(" OR Id = 7", 30000) +
                                " OR Flag = 0 OR Id = 1",
                            kServer),
              ElementsAre("1"));
  EXPECT_THAT(database.rows("SELECT Id FROM A WHERE Id <> 9" + repeated(" AND Id <> 7", 30000) +
                                " AND NOT (Id = 8" + repeated(" OR Id = 6", 20) + ")",
                            kDesktop),
              ElementsAre("1"));
  EXPECT_THAT(database.refusal("SELECT 1 WHERE 1 = 1" + repeated(" OR 1 = 1", 11000), kServer),
              HasSubstr("at most 10000 conditions"));
  EXPECT_THAT(
      database.refusal("SELECT Id FROM A WHERE Id IN (?" + repeated(", ?", 10000) + ")", kServer),
      HasSubstr("at most 10000 markers"));
  EXPECT_EQ(database.refusal("SELECT 1" + repeated(" UNION ALL SELECT 1", 400), kServer), "");
  EXPECT_THAT(database.refusal("SELECT 1" + repeated(" UNION ALL SELECT 1", 600), kServer),
              HasSubstr("at most 500"));
  // Each alias doubles what is written.
  std::string doubling = "SELECT Id AS A0";
  for (int i = 1; i < 40; ++i) {
    const std::string last = "A" + std::to_string(i - 1);
    doubling.append(", ").append(last).append(" + ").append(last);
    doubling.append(" AS A").append(std::to_string(i));
  }
  EXPECT_THAT(database.refusal(doubling + " FROM A", kDesktop), HasSubstr("grows too large"));
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
