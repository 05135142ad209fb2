// Joins and unions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kTables = R"(
  CREATE TABLE A (AId INT PRIMARY KEY, Val INT);
  CREATE TABLE B (BId INT PRIMARY KEY, ExA INT);
  CREATE TABLE C (CId INT PRIMARY KEY, ExB INT, Price MONEY, Rate FLOAT, Nr SMALLINT, Txt VARCHAR(9));
  INSERT INTO A VALUES (1, 10);
  INSERT INTO A VALUES (2, 20);
  INSERT INTO B VALUES (11, 1);
  INSERT INTO B VALUES (12, 9);
  INSERT INTO C VALUES (21, 11, 1.5, 2.5, 3, 'b');
  INSERT INTO C VALUES (22, 99, 1, 1, 1, 'a');
)";

class Joins : public testing::Test {
 protected:
  void expect(const char* text, const testing::Matcher<std::vector<std::string>>& rows) {
    for (const Dialect dialect : kBoth) EXPECT_THAT(database_.rows(text, dialect), rows) << text;
  }
  Database database_{kTables};
};

TEST_F(Joins, KeepTheirMeaning) {
  expect("SELECT AId, BId FROM A INNER JOIN B ON ExA = AId", ElementsAre("1|11"));
  expect("SELECT AId, BId FROM A LEFT JOIN B ON ExA = AId ORDER BY 1", ElementsAre("1|11", "2|-"));
  expect("SELECT AId, BId FROM A RIGHT OUTER JOIN B ON ExA = AId ORDER BY 2",
         ElementsAre("1|11", "-|12"));
  expect("SELECT * FROM A, B WHERE AId = ExA", ElementsAre("1|10|11|1"));
  expect("SELECT B.*, AId FROM A RIGHT JOIN B ON ExA = AId WHERE BId = 12", ElementsAre("12|9|-"));
}

// What stands in parentheses on the right is joined first.
TEST_F(Joins, GroupByParentheses) {
  expect("SELECT AId, CId FROM (A LEFT JOIN B ON ExA = AId) INNER JOIN C ON ExB = BId ORDER BY 1",
         ElementsAre("1|21"));
  expect("SELECT AId, CId FROM A LEFT JOIN (B INNER JOIN C ON ExB = BId) ON ExA = AId ORDER BY 1",
         ElementsAre("1|21", "2|-"));
  expect(
      "SELECT AId, BId, CId FROM (A RIGHT JOIN B ON ExA = AId) RIGHT JOIN C ON ExB = BId ORDER BY "
      "3",
      ElementsAre("1|11|21", "-|-|22"));
  expect("SELECT AId, BId, CId FROM A, B RIGHT JOIN C ON ExB = BId WHERE AId = 1 ORDER BY 3",
         ElementsAre("1|11|21", "1|-|22"));
  expect(
      "SELECT AId, X.Top1 FROM A LEFT JOIN (SELECT TOP 1 ExA, BId AS Top1 FROM B ORDER BY BId "
      "DESC) AS X "
      "ON X.ExA = AId + 8 WHERE AId = 1",
      ElementsAre("1|12"));
}

TEST_F(Joins, ReadALongServerChain) {
  EXPECT_THAT(database_.rows("SELECT AId, CId FROM A JOIN B ON ExA = AId LEFT JOIN C ON ExB = BId",
                             kServer),
              ElementsAre("1|21"));
}

TEST_F(Joins, UnionsTakeTheWiderType) {
  const char* const text =
      "SELECT Nr AS V FROM C UNION ALL SELECT Price FROM C UNION ALL SELECT NULL FROM C WHERE CId "
      "= 21 ORDER BY V";
  expect(text, ElementsAre("-", "1", "1", "1.5", "3"));
  EXPECT_EQ(database_.translate(text, kServer).columns.at(0).type, Type::Currency);
  expect("SELECT Price AS V FROM C UNION SELECT Rate FROM C UNION SELECT AId FROM A ORDER BY V",
         ElementsAre("1", "1.5", "2", "2.5"));
  expect("SELECT V FROM (SELECT Nr AS V FROM C UNION ALL SELECT Price FROM C) AS U WHERE V = 1.5",
         ElementsAre("1.5"));
  expect("SELECT Nr FROM C WHERE Price IN (SELECT Nr FROM C UNION SELECT Rate FROM C)",
         ElementsAre("1"));
}

TEST_F(Joins, UnionsNest) {
  expect("SELECT AId FROM A UNION ALL (SELECT AId FROM A UNION SELECT AId FROM A) ORDER BY 1",
         ElementsAre("1", "1", "2", "2"));
  expect("SELECT AId FROM A UNION ALL SELECT AId FROM A UNION SELECT AId FROM A",
         ElementsAre("1", "2"));
  expect("SELECT TOP 1 AId FROM A WHERE AId > 1 UNION ALL SELECT TOP 1 BId FROM B WHERE BId > 11",
         ElementsAre("2", "12"));
  expect("SELECT TOP 0 AId FROM A", IsEmpty());
  expect(
      "(SELECT TOP 1 AId FROM A ORDER BY Val DESC) UNION ALL (SELECT TOP 1 BId FROM B ORDER BY "
      "BId)",
      ElementsAre("2", "11"));
}

TEST_F(Joins, ConvertWhatIsCompared) {
  expect("SELECT CId FROM C WHERE Price = Rate / 1 OR Rate > 2", ElementsAre("21", "22"));
  expect("SELECT CId FROM C WHERE Nr BETWEEN 0.5 AND 1.5", ElementsAre("22"));
  expect("SELECT CId FROM C WHERE Price IN (1, 2.5, 15e-1)", ElementsAre("21", "22"));
  EXPECT_THAT(database_.rows("SELECT CId FROM C WHERE '3' = Nr", kServer), ElementsAre("21"));
  EXPECT_THAT(database_.rows("SELECT CId FROM C WHERE Price < '1.2'", kServer), ElementsAre("22"));
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
