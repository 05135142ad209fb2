// Statements that share a translation because they differ in pasted numbers alone, against the same
// statements translated each by itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "platform/error.h"
#include "sql/both_forms.h"
#include "sql/database.h"
#include "sql/untidy.h"

namespace QuorHost::Sql::Testing {
namespace {

// %c stands for a column, %n for a number, %f for tables and %w for a condition. Some numbers must
// not be shared: two keys of a group would become one, or a number a value of another type.
constexpr const char* kStatements[] = {
    "SELECT COUNT(*) AS N FROM %f WHERE %w",
    "SELECT H.InInvoiId, %c AS X FROM %f WHERE %w ORDER BY H.InInvoiId",
    "SELECT %c AS X, SUM(L.PmtAmnt) AS S FROM %f WHERE %w GROUP BY %c",
    "SELECT L.InPmtDetId FROM %f WHERE %w AND L.PmtAmnt <= ? AND %w UNION ALL SELECT H.InInvoiId "
    "FROM %f WHERE %w AND H.InvoiDate <= ?",
    "SELECT CASE WHEN %c = %n THEN 1 ELSE 2 END AS X, COUNT(*) AS N FROM %f WHERE %w GROUP BY CASE "
    "WHEN %c = %n THEN 1 ELSE 2 END",
    "SELECT CASE WHEN 1 = %n OR %c = %n THEN 1 ELSE 2 END AS X, COUNT(*) AS N FROM %f WHERE %w "
    "GROUP BY CASE WHEN 1 = %n OR %c = %n THEN 1 ELSE 2 END",
    "SELECT H.InInvoiId FROM %f WHERE H.InInvoiId <> ? AND H.ExCustId = %n",
    "SELECT H.ExCustId, COUNT(*) AS N FROM %f WHERE %w GROUP BY H.ExCustId HAVING COUNT(*) = %n",
    "SELECT H.InInvoiId, (SELECT MAX(C.Name) FROM Cust AS C WHERE C.InCustId = %n) AS X FROM %f "
    "WHERE %w",
    "SELECT A.X FROM (SELECT H.InInvoiId AS X, %n AS Y FROM %f WHERE %w) AS A WHERE A.Y = %n",
    "SELECT A.Amnt FROM CustBalance_View AS A WHERE A.ExCustId = %n",
    "SELECT Balance FROM CustAgingDet WHERE ExCustId = %n AND DetType = %n",
    "SELECT TOP 3 H.InInvoiId FROM %f WHERE %w ORDER BY H.InInvoiId",
    "SELECT %c = %n AS X FROM %f WHERE %w",
};
constexpr const char* kSources[] = {
    "(InvoiHdr AS H LEFT JOIN PmtDet AS L ON L.ExInvoiId = H.InInvoiId) LEFT JOIN Cust AS C ON "
    "C.InCustId = H.ExCustId",
    "(InvoiHdr AS H INNER JOIN Cust AS C ON C.InCustId = H.ExCustId AND %c = %n) LEFT JOIN "
    "PmtDet AS L ON L.ExInvoiId = H.InInvoiId",
};
constexpr const char* kConditions[] = {
    "%c = %n",
    "%c = %n",
    "(%c=%n OR %c = %n) AND %c <> %n",
    "NOT %c = %n",
    "%c = 40000",
    "%c = -%n",
    "%c = %n.5",
    "%c + 1 = %n",
    "%c = %n + 1",
    "%n = %c",
    "%c = 99999999999",
    "CASE WHEN %c = %n THEN 1 ELSE 2 END = %n",
    "H.ExCustId IN (SELECT P.ExCustId FROM PmtHdr AS P WHERE P.InPmtId = %n AND %c = %n)",
    "EXISTS (SELECT P.InPmtId FROM PmtHdr AS P WHERE P.ExCustId = H.ExCustId AND P.InPmtId = %n)",
    "'it = 5' <> C.Name /* = 6 */",
};
// One of each type.
constexpr const char* kColumns[] = {"H.InInvoiId",  "H.ExCustId",    "L.ExInvoiId",    "H.Balance",
                                    "H.InvoiDate",  "C.Name",        "C.CustInactive", "H.ExTermId",
                                    "C.MarginType", "H.ExchangeRate"};

template <std::size_t kSize>
const char* any(const char* const (&texts)[kSize], std::mt19937& random) {
  return texts[random() % kSize];
}

void putAll(std::string& text, std::string_view place, const auto& instead) {
  for (std::size_t at = 0; (at = text.find(place, at)) != std::string::npos;) {
    text.replace(at, place.size(), instead());
  }
}

/// A statement whose numbers are still open.
std::string anyStatement(std::mt19937& random) {
  std::string text = any(kStatements, random);
  putAll(text, "%f", [&] { return any(kSources, random); });
  putAll(text, "%w", [&] { return any(kConditions, random); });
  putAll(text, "%c", [&] { return any(kColumns, random); });
  return text;
}

std::string withNumbers(std::string text, std::mt19937& random) {
  putAll(text, "%n", [&] { return std::to_string(random() % 12); });
  return text;
}

class SharedTranslations : public testing::TestWithParam<Dialect> {};

TEST_P(SharedTranslations, GiveTheRowsOfEachStatementsOwn) {
  Database database(companySchema());
  fillUntidily(database, 3);
  std::mt19937 random(static_cast<unsigned>(GetParam()) + 7);
  const Sqlite::SqlWriter writer;
  TranslationCache cache;
  int shared = 0;
  int alone = 0;
  std::size_t rows = 0;
  // The rows, or how the statement is refused.
  const auto answer = [](const auto& run) {
    try {
      return run();
    } catch (const QuorDataLib::Error& error) {
      return std::vector<std::string>{error.description()};
    }
  };
  for (int turn = 0; turn < 1'500; ++turn) {
    const std::string open = anyStatement(random);
    for (int i = 0; i < 3; ++i) {
      const std::string text = withNumbers(open, random);
      Translation own;
      const std::vector<std::string> expected = answer([&] {
        own = database.translate(text, GetParam());
        return database.rows(own, markerValues(own));
      });
      const std::vector<std::string> found = answer([&] {
        const auto source = cache.take(text, GetParam(), database.catalogue(), writer).source;
        ++(source->shape != nullptr ? shared : alone);
        EXPECT_EQ(source->translation().updatableTable, own.updatableTable) << text;
        const auto same = [](const ResultColumn& a, const ResultColumn& b) {
          return a.name == b.name && a.type == b.type;
        };
        EXPECT_TRUE(std::ranges::equal(source->translation().columns, own.columns, same)) << text;
        return database.rows(*source, markerValues(own));
      });
      ASSERT_EQ(found, expected) << text;
      rows += expected.size();
    }
  }
  EXPECT_GT(shared, 300);
  EXPECT_GT(alone, 300);
  EXPECT_GT(rows, 3'000U);
}

INSTANTIATE_TEST_SUITE_P(Dialects, SharedTranslations, testing::ValuesIn(kBoth),
                         [](const auto& dialect) {
                           return dialect.param == kServer ? "Server" : "Desktop";
                         });

}  // namespace
}  // namespace QuorHost::Sql::Testing
