// INSERT, UPDATE and DELETE.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using QuorDataLib::Date;
using QuorDataLib::Value;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kTables = R"(
  CREATE TABLE T (Id INT PRIMARY KEY, Pay MONEY, Nr SMALLINT, Rate FLOAT, At DATETIME, Flag BIT, Txt VARCHAR(10));
  CREATE VIEW V AS SELECT Id FROM T;
)";

TEST(Changes, ConvertToTheColumnsType) {
  for (const Dialect dialect : kBoth) {
    Database database(kTables);
    const bool server = dialect == kServer;
    database.rows("INSERT INTO T VALUES (1, '12.5', 2.5, 3, '2024-01-31 00:00', 5, 7.50)", dialect);
    EXPECT_THAT(database.rows("SELECT * FROM T", dialect),
                ElementsAre("1|12.5|2|3|2024-01-31|1|7.5"));
    database.rows("UPDATE T SET T.Nr = Rate / 2 + 2, Pay = Nr, Flag = 0, Txt = At WHERE Id = ?",
                  dialect, {Value(1)});
    EXPECT_THAT(database.rows("SELECT Nr, Pay, Flag, Txt FROM T", dialect),
                ElementsAre(server ? "3|2|0|2024-01-31" : "4|2|0|2024-01-31"));
  }
}

TEST(Changes, TakeMarkersAndSelects) {
  Database database(kTables);
  for (const Dialect dialect : kBoth) {
    database.rows("DELETE FROM T", dialect);
    database.rows("INSERT INTO T (Id, At, Pay) VALUES (?, ?, ?)", dialect,
                  {Value(1), Value(Date::of(2024, 1, 31)), Value(12.34565)});
    database.rows("INSERT INTO T (Id, Pay, Rate) SELECT Id + 1, Rate, Pay FROM T", dialect);
    database.rows(
        "UPDATE T SET Rate = (SELECT SUM(X.Pay) FROM T AS X), At = NULL WHERE Pay IS NULL",
        dialect);
    EXPECT_THAT(database.rows("SELECT Id, Pay, Rate, At FROM T", dialect),
                ElementsAre("1|12.3456|-|2024-01-31", "2|-|12.3456|-"));
    database.rows("DELETE FROM T WHERE NOT At IS NULL", dialect);
    EXPECT_THAT(database.rows("SELECT Id FROM T", dialect), ElementsAre("2"));
  }
}

TEST(Changes, RefuseWhatDoesNotFit) {
  Database database(kTables);
  const std::pair<const char*, const char*> cases[] = {
      {"INSERT INTO V (Id) VALUES (1)", "'V' is a view; only tables can be changed"},
      {"INSERT INTO T (Id, Nope) VALUES (1, 2)", "Unknown column 'Nope' of 'T'"},
      {"INSERT INTO T (Id, ID) VALUES (1, 2)", "Column 'ID' is set twice"},
      {"INSERT INTO T (Id, Pay) VALUES (1)", "INSERT has 2 columns and 1 values"},
      {"INSERT INTO T (Id) VALUES (1), (2)", "INSERT takes one row of values"},
      {"INSERT INTO T (Id, At) VALUES (1, 5)", "no conversion from long to date"},
      {"INSERT INTO T (Id, Nr) VALUES (1, 40000)", "does not fit into a value of type integer"},
      {"UPDATE T SET Pay = 1, Pay = 2", "Column 'Pay' is set twice"},
      {"UPDATE T SET Pay = SUM(Pay)", "An aggregate cannot stand in UPDATE"},
      {"UPDATE T SET X.Pay = 1", "Only columns of the table that is updated"},
      {"UPDATE T SET Pay = 1 FROM T", "UPDATE takes one table and no FROM"},
      {"DELETE T WHERE Id = 1", "FROM is expected"},
  };
  for (const auto& [text, message] : cases) {
    for (const Dialect dialect : kBoth) {
      EXPECT_THAT(database.refusal(text, dialect), HasSubstr(message)) << text;
    }
  }
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
