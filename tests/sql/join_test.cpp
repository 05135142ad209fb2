// Joins and unions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>

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

/// Joins drawn at random, their text beside their rows, which are put together here by the book:
/// each row with each, those that ON takes, and what an outer join adds.
class RandomJoin {
 public:
  using Row = std::vector<std::optional<int>>;

  explicit RandomJoin(unsigned seed) : random_(seed) {}

  struct Table {
    std::string text;
    std::vector<std::string> columns;
    std::vector<Row> rows;
  };

  /// A join of `count` tables, and the statements that make them.
  Table join(int count) {
    if (count == 1) return table();
    const int onTheLeft = 1 + below(count - 1);
    const Table left = join(onTheLeft);
    const Table right = join(count - onTheLeft);
    constexpr const char* kWords[] = {" INNER JOIN ", " LEFT JOIN ", " RIGHT JOIN "};
    const int kind = below(3);
    Table both;
    both.columns = left.columns;
    both.columns.insert(both.columns.end(), right.columns.begin(), right.columns.end());
    std::vector<Term> on{term(both.columns.size())};
    if (below(2) == 0) on.push_back(term(both.columns.size()));
    both.text = "(" + left.text + kWords[kind] + right.text + " ON " + said(on, both.columns) + ")";
    std::vector<bool> met(right.rows.size());
    for (const Row& a : left.rows) {
      bool alone = true;
      for (std::size_t i = 0; i < right.rows.size(); ++i) {
        const Row pair = joined(a, right.rows[i]);
        if (!holds(on, pair)) continue;
        both.rows.push_back(pair);
        alone = false;
        met[i] = true;
      }
      if (alone && kind == 1) both.rows.push_back(joined(a, Row(right.columns.size())));
    }
    for (std::size_t i = 0; kind == 2 && i < right.rows.size(); ++i) {
      if (!met[i]) both.rows.push_back(joined(Row(left.columns.size()), right.rows[i]));
    }
    return both;
  }

  /// Keeps the rows that a condition takes, which it returns.
  std::string filter(Table& table) {
    const std::vector<Term> where{term(table.columns.size()), term(table.columns.size())};
    std::erase_if(table.rows, [&](const Row& row) { return !holds(where, row); });
    return said(where, table.columns);
  }

  [[nodiscard]] const std::string& schema() const noexcept { return schema_; }

 private:
  /// `left` = `right`, or a constant, or NULL; or a term that is never true.
  struct Term {
    enum class Kind : std::uint8_t { Columns, Number, Null, Never } kind;
    std::size_t left;
    std::size_t right;
  };

  Term term(std::size_t columns) {
    const auto count = static_cast<int>(columns);
    constexpr int kKinds = 8;  // of which most compare two columns
    const int kind = std::max(below(kKinds) - 4, 0);
    return {static_cast<Term::Kind>(kind), static_cast<std::size_t>(below(count)),
            static_cast<std::size_t>(below(kind == 1 ? 3 : count))};
  }

  static bool holds(const std::vector<Term>& terms, const Row& row) {
    return std::ranges::all_of(terms, [&](const Term& term) {
      const std::optional<int> value = row[term.left];
      if (term.kind == Term::Kind::Null) return !value;
      if (term.kind == Term::Kind::Never || !value) return false;
      return value ==
             (term.kind == Term::Kind::Number ? static_cast<int>(term.right) : row[term.right]);
    });
  }

  static std::string said(const std::vector<Term>& terms, const std::vector<std::string>& columns) {
    std::string text;
    for (const Term& term : terms) {
      if (!text.empty()) text += " AND ";
      if (term.kind == Term::Kind::Never) {
        text += "1 = 0";
        continue;
      }
      text += columns[term.left];
      text += term.kind == Term::Kind::Null     ? " IS NULL"
              : term.kind == Term::Kind::Number ? " = " + std::to_string(term.right)
                                                : " = " + columns[term.right];
    }
    return text;
  }

  static Row joined(Row a, const Row& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
  }

  /// A table of a few rows; some are said as a union of it with itself.
  Table table() {
    const std::string name = "T" + std::to_string(++tables_);
    schema_ += "CREATE TABLE " + name + " (K INT PRIMARY KEY, V INT);";
    Table table{.text = name, .columns = {name + ".K", name + ".V"}, .rows = {}};
    for (int key = 0; key < 3; ++key) {
      if (below(4) == 0) continue;
      const std::optional<int> value = below(4) == 0 ? std::nullopt : std::optional(below(3));
      schema_ += "INSERT INTO " + name + " VALUES (" + std::to_string(key) + ", " +
                 (value ? std::to_string(*value) : "NULL") + ");";
      table.rows.push_back({key, value});
    }
    if (below(4) == 0) {
      table.text =
          "(SELECT K, V FROM " + name + " UNION ALL SELECT K, V FROM " + name + ") AS " + name;
      const std::vector<Row> again = table.rows;
      table.rows.insert(table.rows.end(), again.begin(), again.end());
    }
    return table;
  }

  int below(int count) { return std::uniform_int_distribution<>(0, count - 1)(random_); }

  std::mt19937 random_;
  std::string schema_;
  int tables_ = 0;
};

TEST(RandomJoins, GiveTheRowsOfTheBook) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    RandomJoin random(seed);
    RandomJoin::Table table = random.join(2 + static_cast<int>(seed % 3));
    const std::string text = "SELECT * FROM " + table.text.substr(1, table.text.size() - 2) +
                             (seed % 2 == 0 ? "" : " WHERE " + random.filter(table));
    std::vector<std::string> expected;
    for (const RandomJoin::Row& row : table.rows) {
      std::string line;
      for (const std::optional<int>& value : row) {
        line += (line.empty() ? "" : "|") + (value ? std::to_string(*value) : "-");
      }
      expected.push_back(line);
    }
    Database database(random.schema());
    for (const Rewriting form : {Rewriting::None, Rewriting::Faster}) {
      const Translation translation = database.translate(text, kDesktop, form);
      EXPECT_THAT(database.rows(translation, {}), testing::UnorderedElementsAreArray(expected))
          << text << "\n"
          << translation.sql << "\n"
          << random.schema();
    }
  }
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
