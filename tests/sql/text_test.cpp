// Texts: their order, their comparison, LIKE, and the functions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/coll.h>

#include <random>

#include "host/engines/sqlite/functions/collation.h"
#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kNames = R"(
  CREATE TABLE Person (Id INT PRIMARY KEY, Name VARCHAR(40), City VARCHAR(40));
  INSERT INTO Person VALUES (1, 'Zoé', 'Laval');
  INSERT INTO Person VALUES (2, 'eric', 'Québec');
  INSERT INTO Person VALUES (3, 'Éric', 'LAVAL');
  INSERT INTO Person VALUES (4, 'Eric', 'Toronto');
  INSERT INTO Person VALUES (5, 'Erica', 'quebec');
  INSERT INTO Person VALUES (6, 'Côté', NULL);
  INSERT INTO Person VALUES (7, 'cote', 'Laval');
  INSERT INTO Person VALUES (8, 'Cotes', 'Laval');
  INSERT INTO Person VALUES (9, 'St. John''s', 'Gander');
)";

TEST(TextOrder, PutsAccentsBesideTheirLetters) {
  Database database(kNames);
  for (const Dialect dialect : kBoth) {
    EXPECT_THAT(database.rows("SELECT Id FROM Person ORDER BY Name, Id", dialect),
                ElementsAre("7", "6", "8", "2", "4", "3", "5", "9", "1"));
  }
}

// The short way for plain characters must give the order that the library gives.
TEST(TextOrder, AgreesWithTheLibraryOnAnyText) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::Collator> library(
      icu::Collator::createInstance(icu::Locale::getRoot(), status));
  library->setStrength(icu::Collator::SECONDARY);
  library->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
  std::mt19937 random(7);
  const std::vector<std::string> pieces{"a", "A", "b",  "l",    "·", "é", "e", "\u0301",
                                        "-", "'", " ",  "ß",    "s", "S", "z", "Z",
                                        "9", "1", "\t", "\x01", "_", "œ"};
  const auto text = [&] {
    std::string made;
    for (auto n = random() % 6; n > 0; --n) {
      made += random() % 3 == 0 ? std::string(1, static_cast<char>(' ' + random() % 95))
                                : pieces[random() % pieces.size()];
    }
    return made;
  };
  const auto trimmed = [](const std::string& whole) {
    return whole.substr(0, whole.find_last_not_of(' ') + 1);
  };
  const auto sign = [](int order) { return (order > 0) - (order < 0); };
  for (int i = 0; i < 100'000; ++i) {
    const std::string a = text();
    const std::string b = text();
    // Blanks at the end count for nothing.
    ASSERT_EQ(sign(Sqlite::compareTexts(a + std::string(random() % 2, ' '), b)),
              static_cast<int>(library->compareUTF8(trimmed(a), trimmed(b), status)))
        << a << " / " << b;
  }
}

// Each of these compares texts in another way that the engine would do byte by byte by itself.
TEST(TextOrder, HoldsWhereverTextsMeet) {
  Database database(kNames);
  const auto expect = [&](const char* text, const auto& rows) {
    for (const Dialect dialect : kBoth) EXPECT_THAT(database.rows(text, dialect), rows) << text;
  };
  expect("SELECT COUNT(*) FROM Person WHERE City = 'laval'", ElementsAre("4"));
  expect("SELECT COUNT(*) FROM Person WHERE 'laval' = City + ''", ElementsAre("4"));
  expect("SELECT COUNT(*) FROM Person WHERE City + '' IN ('LAVAL', 'TORONTO')", ElementsAre("5"));
  expect("SELECT COUNT(*) FROM Person WHERE City + '' BETWEEN 'g' AND 'lb'", ElementsAre("5"));
  expect("SELECT COUNT(*) FROM Person WHERE City IN (SELECT City + '' FROM Person WHERE Id = 3)",
         ElementsAre("4"));
  expect("SELECT COUNT(*) FROM Person WHERE City + 'x' IN (SELECT City + 'X' FROM Person)",
         ElementsAre("8"));
  expect("SELECT COUNT(DISTINCT City + '') FROM Person", ElementsAre("5"));
  expect("SELECT MIN(Name + ''), MAX('' + Name) FROM Person WHERE Name LIKE '%ric'",
         ElementsAre("eric|Éric"));
  expect("SELECT COUNT(*) FROM Person GROUP BY City + '' ORDER BY City + ''",
         ElementsAre("1", "1", "4", "1", "1", "1"));
  expect("SELECT DISTINCT LEFT(City, 2) FROM Person WHERE Id IN (1, 3)", ElementsAre("La"));
  expect(
      "SELECT COUNT(*) FROM (SELECT City + '' AS C FROM Person UNION SELECT LEFT(City, 40) FROM "
      "Person)"
      " AS X",
      ElementsAre("6"));
  expect("SELECT COUNT(*) FROM (SELECT City + '' AS C FROM Person) AS X WHERE C = 'LAVAL'",
         ElementsAre("4"));
  expect(
      "SELECT A.Id FROM Person AS A INNER JOIN (SELECT LEFT(City, 9) AS C FROM Person WHERE Id = 2)"
      " AS B ON A.City = B.C",
      ElementsAre("2"));
  expect("SELECT Id FROM Person WHERE Id < 4 ORDER BY Name + ''", ElementsAre("2", "3", "1"));
  expect("SELECT Name + '' AS N FROM Person WHERE Id < 4 ORDER BY N DESC",
         ElementsAre("Zoé", "Éric", "eric"));
  expect(
      "SELECT 'b' AS C FROM Person WHERE Id = 1 UNION ALL SELECT 'A' FROM Person WHERE Id = 1"
      " UNION ALL SELECT 'B' FROM Person WHERE Id = 1 ORDER BY C, 1",
      ElementsAre("A", "b", "B"));
  database.rows("CREATE VIEW Places AS SELECT LEFT(City, 40) AS Place FROM Person", kServer);
  expect("SELECT COUNT(*) FROM Places WHERE Place = 'LAVAL'", ElementsAre("4"));
  expect("SELECT COUNT(DISTINCT Place) FROM Places", ElementsAre("5"));
}

// As on the server: what is equal is found, joined, grouped and told apart without them.
TEST(TextOrder, IgnoresBlanksAtTheEnd) {
  Database database(R"(
    CREATE TABLE P (Id INT PRIMARY KEY, Code VARCHAR(9));
    CREATE INDEX ByCode ON P (Code);
    INSERT INTO P VALUES (1, 'A1');
    INSERT INTO P VALUES (2, 'a1  ');
    INSERT INTO P VALUES (3, ' A1');
    INSERT INTO P VALUES (4, 'A1 B');
    INSERT INTO P VALUES (5, '');
    INSERT INTO P VALUES (6, '  ');
  )");
  const auto expect = [&](const char* text, const auto& rows) {
    for (const Dialect dialect : kBoth) EXPECT_THAT(database.rows(text, dialect), rows) << text;
  };
  expect("SELECT Id FROM P WHERE Code = 'A1 ' ORDER BY Id", ElementsAre("1", "2"));
  expect("SELECT Id FROM P WHERE Code IN ('a1', 'x') ORDER BY Id", ElementsAre("1", "2"));
  expect("SELECT Id FROM P WHERE Code LIKE 'a1' ORDER BY Id", ElementsAre("1", "2"));
  expect("SELECT COUNT(*) FROM P AS X INNER JOIN P AS Y ON X.Code = Y.Code", ElementsAre("10"));
  expect("SELECT COUNT(DISTINCT Code), MAX(Code) FROM P WHERE Id <> 2", ElementsAre("4|A1 B"));
  expect("SELECT COUNT(*) FROM P GROUP BY Code ORDER BY Code", ElementsAre("2", "1", "2", "1"));
}

TEST(Like, KnowsTheWildcardsOfTheDialect) {
  Database database;
  const auto matches = [&](Dialect dialect, const char* text, const char* pattern) {
    const std::string condition = "'" + std::string(text) + "' LIKE '" + pattern + "'";
    return !database.rows("SELECT 1 WHERE " + condition, dialect).empty();
  };
  for (const Dialect dialect : kBoth) {
    EXPECT_TRUE(matches(dialect, "Québec", "QUÉ%"));
    EXPECT_FALSE(matches(dialect, "Québec", "que%"));
    EXPECT_TRUE(matches(dialect, "é", "_"));
    EXPECT_TRUE(matches(dialect, "aaab", "%a_b"));
    EXPECT_FALSE(matches(dialect, "ab", "a"));
    EXPECT_TRUE(matches(dialect, "x4", "[w-y]4"));
    EXPECT_TRUE(matches(dialect, "[4", "[4"));
    EXPECT_TRUE(matches(dialect, "", "%"));
    EXPECT_TRUE(matches(dialect, "ab ", "a_"));
    EXPECT_TRUE(matches(dialect, "ab ", "ab "));
    EXPECT_FALSE(matches(dialect, "ab", "ab "));
    const bool desktop = dialect == kDesktop;
    EXPECT_EQ(matches(dialect, "abc", "a*"), desktop);
    EXPECT_EQ(matches(dialect, "abc", "a?c"), desktop);
    EXPECT_EQ(matches(dialect, "a1", "a#"), desktop);
    EXPECT_EQ(matches(dialect, "b", "[!a]"), desktop);
    EXPECT_EQ(matches(dialect, "b", "[^a]"), !desktop);
    EXPECT_EQ(matches(dialect, "a*", "a*"), true);
  }
}

TEST(TextFunctions, CountCharactersAndIgnoreCase) {
  Database database;
  const auto server = [&](const char* expression) { return database.value(expression, kServer); };
  const auto desktop = [&](const char* expression) { return database.value(expression, kDesktop); };
  EXPECT_EQ(server("LEFT('Élan', 2) + RIGHT('Élan', 1) + SUBSTRING('Élan', 0, 3)"), "ÉlnÉl");
  EXPECT_EQ(server("LEFT(12345, 3) + LEFT(1.50, 9) + LEFT(CAST('2024-01-31' AS datetime), 4)"),
            "1231.52024");
  EXPECT_EQ(server("RIGHT('ab', 9) + SUBSTRING('ab', 5, 1)"), "ab");
  EXPECT_EQ(server("LEN('é  ')"), "1");
  EXPECT_EQ(desktop("Len('é  ')"), "3");
  EXPECT_EQ(server("LTRIM('  a ') + '.' + RTRIM(' b  ') + '.'"), "a . b.");
  EXPECT_EQ(desktop("Trim('  a b ') & \".\""), "a b.");
  EXPECT_EQ(server("UPPER('straße été') + LOWER('ÉTÉ X')"), "STRASSE ÉTÉété x");
  EXPECT_EQ(desktop("UCase('a') & LCase('B') & 1.5 & Null & True & #2024-01-31#"),
            "Ab1.5-12024-01-31");
  EXPECT_EQ(server("CHARINDEX('É', 'québec é')"), "3");
  EXPECT_EQ(server("CHARINDEX('é', 'québec é', 4)"), "8");
  EXPECT_EQ(desktop("InStr('québec', 'BEC') + InStr(5, 'québec', 'é')"), "4");
  EXPECT_EQ(desktop("InStr('abc', '') & InStr(3, 'abc', '') & InStr(4, 'abc', '') & InStr('', '')"),
            "1300");
  EXPECT_EQ(server("CHARINDEX('', 'abc')"), "0");
  EXPECT_EQ(desktop("Mid('québec', 3) & Mid('québec', 1, 2)"), "ébecqu");
  EXPECT_EQ(server("CAST('abc' AS VARCHAR(2)) + CAST(5 AS CHAR(3))"), "ab5");
  EXPECT_EQ(server("LEFT(NULL, 2)"), "-");
  EXPECT_THAT(database.refusal("SELECT LEFT('a', -1)", kServer), HasSubstr("length of -1"));
  EXPECT_THAT(database.refusal("SELECT Mid('a', 0)", kDesktop), HasSubstr("no character 0"));
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
