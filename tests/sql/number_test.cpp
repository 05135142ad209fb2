// Numbers: exact money, division, rounding, and the types that come out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kAmounts = R"(
  CREATE TABLE Amount (Id INT PRIMARY KEY, Paid MONEY, Rate FLOAT, Qty SMALLINT, Flag BIT);
  INSERT INTO Amount VALUES (1, 0.10, 0.5, 3, 1);
  INSERT INTO Amount VALUES (2, 0.20, 0.333333, 2, 0);
  INSERT INTO Amount VALUES (3, -0.30, NULL, NULL, NULL);
)";

/// An expression and its value in each dialect; null where the dialect does not have it.
struct Case {
  const char* expression;
  const char* server;
  const char* desktop;
};

void expectValues(std::initializer_list<Case> cases) {
  Database database;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.expression);
    if (c.server != nullptr) {
      EXPECT_EQ(database.value(c.expression, kServer), c.server);
    }
    if (c.desktop != nullptr) {
      EXPECT_EQ(database.value(c.expression, kDesktop), c.desktop);
    }
  }
}

TEST(Numbers, Division) {
  expectValues({{"7 / 2", "3", "3.5"},
                {"-7 / 2", "-3", "-3.5"},
                {"7.0 / 2", "3.5", "3.5"},
                {"10.0 / 3", "3.3333", "3.3333333333333335"},
                {"-10.0 / 3", "-3.3333", nullptr},
                {"0.3 / 0.1", "3", "3"},
                {"7e0 / 2", "3.5", "3.5"},
                {"-7 % 4", "-3", nullptr},
                {"7.5 % 2", "1.5", nullptr},
                {"7.5 \\ 2", nullptr, "4"},
                {"-7 \\ 2", nullptr, "-3"},
                {"7.5 Mod 3", nullptr, "2"},
                // Precedence: Mod below \ below * and /, all above + and -.
                {"2 + 19 Mod 12 \\ 5 * 1", nullptr, "3"}});
}

TEST(Numbers, Exactness) {
  expectValues({{"0.1 + 0.2 - 0.3", "0", "0"},
                {"1.2345 * 1.2345", "1.524", "1.524"},
                {"0.0001 * 0.5", "0", "0"},
                {"0.0003 * 0.5", "0.0002", "0.0002"},
                {"0.12345 * 2", "0.2469", "0.2469"},
                {"1.5 * 2e0", "3", "3"},
                {"3000000000 + 1", "3000000001", "3000000001"},
                {"922337203685477.5807", "922337203685477.5807", nullptr},
                {"1000000000000000000 * 10", "1e+19", nullptr}});
}

TEST(Numbers, Rounding) {
  expectValues({{"CAST(2.9 AS int)", "2", nullptr},
                {"CAST(-2.9 AS int)", "-2", nullptr},
                {"CAST(-2.9e0 AS int)", "-2", nullptr},
                {"CONVERT(int, '12')", "12", nullptr},
                {"CAST(1.255 AS DECIMAL(10,2))", "1.26", nullptr},
                {"ROUND(2.5, 0)", "3", nullptr},
                {"ROUND(-2.5, 0)", "-3", nullptr},
                {"ROUND(2.675e0, 2)", "2.68", nullptr},
                {"ROUND(1250, -2)", "1300", nullptr},
                {"ROUND(1.23456e0, 9)", "1.23456", nullptr},
                {"FLOOR(-2.5)", "-3", nullptr},
                {"CEILING(2.1e0)", "3", nullptr},
                {"ABS(-2.5)", "2.5", "2.5"},
                {"Int(-2.5)", nullptr, "-3"},
                {"Int(-2.5e0)", nullptr, "-3"},
                {"Fix(-2.5)", nullptr, "-2"},
                {"CLng(2.5)", nullptr, "2"},
                {"CLng(3.5e0)", nullptr, "4"},
                {"CInt('2.5')", nullptr, "2"},
                {"Round(2.5)", nullptr, "2"},
                {"Round(2.675e0, 2)", nullptr, "2.68"},
                {"Round(1.225, 2)", nullptr, "1.22"},
                {"CCur(0.12345e0)", nullptr, "0.1235"},
                {"CDbl('1e3')", nullptr, "1000"},
                {"CStr(1.50)", nullptr, "1.5"},
                {"CStr(True)", nullptr, "-1"}});
}

TEST(Numbers, Choices) {
  expectValues({{"COALESCE(NULL, 1, 2.5)", "1", nullptr},
                {"NULLIF(2, 2)", "-", nullptr},
                {"NULLIF(2, 2.5)", "2", nullptr},
                {"ISNULL(NULL, 2.5)", "2.5", nullptr},
                {"CASE 2 WHEN 1 THEN 'a' WHEN 2 THEN 'b' END", "b", nullptr},
                {"CASE WHEN 1 = 2 THEN 1 END", "-", nullptr},
                {"IIf(1 > 2, 1, 2.5)", nullptr, "2.5"},
                {"Nz(NULL, 3)", nullptr, "3"},
                {"Switch(1 > 2, 1, True, 2)", nullptr, "2"},
                {"True + True", nullptr, "-2"},
                {"1 = 1", nullptr, "1"},
                {"ISNUMERIC('1e5')", "1", "1"},
                {"ISNUMERIC('A1')", "0", "0"},
                {"ISNUMERIC(NULL)", "0", "0"},
                {"ISNUMERIC(5)", "1", "1"}});
}

TEST(Money, SumsAndComparesExactly) {
  Database database(kAmounts);
  for (const Dialect dialect : kBoth) {
    EXPECT_TRUE(
        database.rows("SELECT Id FROM Amount WHERE 0.10 + 0.20 - 0.30 <> 0", dialect).empty());
    EXPECT_THAT(database.rows("SELECT SUM(Paid), MIN(Paid), SUM(-Paid * 3) FROM Amount", dialect),
                ElementsAre("0|-0.3|0"));
    EXPECT_THAT(database.rows("SELECT Id FROM Amount WHERE Paid = ? OR Paid < 0", dialect,
                              {Value(Currency::fromUnits(1000))}),
                ElementsAre("1", "3"));
    EXPECT_THAT(database.rows("SELECT Paid * Rate, Paid + Qty, Qty * Rate FROM Amount WHERE Id = 1",
                              dialect),
                ElementsAre("0.05|3.1|1.5"));
    EXPECT_THAT(database.rows("SELECT SUM(Paid) FROM Amount WHERE Id > 9", dialect),
                ElementsAre("-"));
  }
  const std::vector<Type> types{Type::Currency, Type::Double, Type::Currency, Type::Long};
  const Translation translation = database.translate(
      "SELECT Paid * Qty, Paid * Rate, CASE WHEN Id = 1 THEN 0 ELSE Paid END, Id + Qty FROM Amount",
      kServer);
  for (std::size_t i = 0; i < types.size(); ++i) EXPECT_EQ(translation.columns[i].type, types[i]);
}

TEST(Money, AveragesStayMoney) {
  Database database(kAmounts);
  // 0.40 / 3 and 2 / 3: cut on the server, where the desktop takes the nearest or a double.
  const char* const text =
      "SELECT AVG(Paid + 0.1333), AVG(Qty), AVG(Rate) FROM Amount WHERE Id < 3 OR Qty IS NULL";
  EXPECT_THAT(database.rows(text, kServer), ElementsAre("0.1333|2|0.4166665"));
  EXPECT_THAT(database.rows(text, kDesktop), ElementsAre("0.1333|2.5|0.4166665"));
  EXPECT_THAT(database.rows("SELECT AVG(Paid + 0.2) FROM Amount WHERE Id > 1", kServer),
              ElementsAre("0.15"));
}

TEST(Money, OverflowsInsteadOfRounding) {
  Database database(kAmounts);
  for (const char* const id : {"4", "5"}) {
    database.rows("INSERT INTO Amount (Id, Paid) VALUES (" + std::string(id) + ", 900000000000000)",
                  kServer);
  }
  for (const char* const text :
       {"SELECT Paid * 2.5 FROM Amount", "SELECT SUM(Paid) FROM Amount",
        "SELECT Paid / 0.01 FROM Amount", "SELECT CAST(Paid AS int) FROM Amount",
        "UPDATE Amount SET Qty = Id * 40000"}) {
    EXPECT_THAT(database.refusal(text, kServer), HasSubstr("integer overflow")) << text;
  }
  // The engine itself leaves the integers when its own sum of two is too large, and says so by the
  // kind of the value.
  EXPECT_THAT(database.rows("SELECT Paid + 100000000000000 FROM Amount WHERE Id = 4", kServer),
              ElementsAre(HasSubstr("(currency!)")));
}

TEST(Numbers, EndWithWhatIsWrong) {
  Database database(kAmounts);
  for (const char* const text : {"SELECT Qty / Flag FROM Amount",
                                 "SELECT Paid / (Paid - Paid) FROM Amount", "SELECT 1e0 / 0"}) {
    for (const Dialect dialect : kBoth) {
      EXPECT_THAT(database.refusal(text, dialect), HasSubstr("division by zero")) << text;
    }
  }
  EXPECT_THAT(database.refusal("SELECT CAST('A1' AS int)", kServer),
              HasSubstr("'A1' is not a number"));
  EXPECT_THAT(database.refusal("SELECT CAST('1.5' AS int)", kServer),
              HasSubstr("'1.5' is not a whole number"));
  EXPECT_THAT(
      database.refusal("SELECT CAST(70000 AS SMALLINT)", kServer),
      HasSubstr("does not fit into a value of type integer (line 1, column 13, near '70000')"));
  EXPECT_THAT(database.refusal("SELECT 1e999", kServer), HasSubstr("too large"));
}

// A branch that is not taken is not computed.
TEST(Numbers, ChooseBeforeTheyCompute) {
  Database database(kAmounts);
  EXPECT_THAT(database.rows("SELECT CASE WHEN Id < 9 THEN 1 ELSE 1 / 0 END, "
                            "COALESCE(Id, CAST('x' AS int)) FROM Amount WHERE Id = 1",
                            kServer),
              ElementsAre("1|1"));
  EXPECT_THAT(
      database.rows("SELECT Id FROM Amount WHERE IIf(Flag <> 0, 6 / Flag, 0) < 0", kDesktop),
      ElementsAre("1"));
}

TEST(Booleans, AreMinusOneOnlyAsNumbersOfTheDesktop) {
  Database database(kAmounts);
  for (const Dialect dialect : kBoth) {
    const char* const one = dialect == kServer ? "1" : "-1";
    EXPECT_THAT(database.rows("SELECT Id FROM Amount WHERE Flag <> 0", dialect), ElementsAre("1"));
    EXPECT_THAT(database.rows("SELECT Id FROM Amount WHERE Flag = " + std::string(one), dialect),
                ElementsAre("1"));
    EXPECT_THAT(
        database.rows("SELECT SUM(Flag), Flag + 0 FROM Amount WHERE Id = 1 GROUP BY Flag", dialect),
        ElementsAre(std::string(one) + "|" + one));
    EXPECT_THAT(database.rows("SELECT Id FROM Amount WHERE Flag = ?", dialect, {Value(true)}),
                ElementsAre("1"));
    EXPECT_THAT(
        database.rows("SELECT Flag FROM Amount UNION SELECT Qty FROM Amount WHERE Id = 1 "
                      "ORDER BY 1 DESC",
                      dialect),
        ElementsAre("3", dialect == kServer ? "1" : "0", dialect == kServer ? "0" : "-1", "-"));
  }
  EXPECT_THAT(database.rows("SELECT Id FROM Amount WHERE Flag = 2", kServer), ElementsAre());
  EXPECT_THAT(database.rows("SELECT Id FROM Amount WHERE Flag OR Qty - 3", kDesktop),
              ElementsAre("1", "2"));
  EXPECT_THAT(database.rows("SELECT Id FROM Amount ORDER BY Flag", kServer),
              ElementsAre("3", "2", "1"));
  EXPECT_THAT(database.rows("SELECT Id FROM Amount ORDER BY Flag", kDesktop),
              ElementsAre("3", "1", "2"));
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
