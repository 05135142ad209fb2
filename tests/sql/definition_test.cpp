// The schema language.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kSchema = R"(
  -- Customers; a semicolon in a comment ends nothing.
  CREATE TABLE Cust (
    InCustId INT IDENTITY(1,1) PRIMARY KEY,
    [Cust Code] NVARCHAR(4) NOT NULL UNIQUE,
    Rate DECIMAL(9,4) DEFAULT 1.5,
    Since DATE DEFAULT ('20240131'),
    Active BIT NOT NULL DEFAULT 1,
    Notes NTEXT NULL DEFAULT 'none; really'
  );
  CREATE TABLE Part (ExCustId INT REFERENCES Cust (InCustId), No SMALLINT, Up INT,
    CONSTRAINT PartKey PRIMARY KEY (ExCustId, No), FOREIGN KEY (Up) REFERENCES Cust (InCustId));
  CREATE UNIQUE INDEX PartNo ON Part (No DESC) INCLUDE (Up);
)";

TEST(Tables, KeepWhatTheyDeclare) {
  Database database(kSchema);
  EXPECT_EQ(database.refusal("INSERT INTO Cust ([Cust Code]) VALUES ('éàüö')", kServer), "");
  EXPECT_THAT(database.rows("SELECT * FROM Cust", kServer),
              ElementsAre("1|éàüö|1.5|2024-01-31|1|none; really"));
  const std::pair<const char*, const char*> cases[] = {
      {"INSERT INTO Cust ([Cust Code]) VALUES ('abcde')",
       "cannot hold 'abcde', which is longer than 4 characters"},
      {"INSERT INTO Cust ([Cust Code]) VALUES ('ÉÀÜÖ')", "UNIQUE constraint failed"},
      {"INSERT INTO Cust (Rate) VALUES (1)", "NOT NULL constraint failed"},
      {"INSERT INTO Part (No) VALUES (1)", "NOT NULL constraint failed: Part.ExCustId"},
  };
  for (const auto& [text, message] : cases) {
    EXPECT_THAT(database.refusal(text, kServer), HasSubstr(message)) << text;
  }
  EXPECT_EQ(database.refusal("INSERT INTO Part VALUES (1, 1, NULL)", kServer), "");
  // The included column takes no part in what must be unique.
  EXPECT_THAT(database.refusal("INSERT INTO Part VALUES (2, 1, 7)", kServer),
              HasSubstr("UNIQUE constraint failed: Part.No"));
}

TEST(Tables, AreDescribedForTheCatalogue) {
  const Translation translation = Database().translate(
      "CREATE TABLE T (Id INT PRIMARY KEY IDENTITY, Name VARCHAR(10) NOT NULL, Pay MONEY)",
      kServer);
  EXPECT_EQ(translation.kind, StatementKind::CreateTable);
  ASSERT_EQ(translation.created.columns.size(), 3U);
  const Column& id = translation.created.columns[0];
  EXPECT_TRUE(id.primaryKey && id.identity && !id.nullable && id.type == Type::Long);
  const Column& name = translation.created.columns[1];
  EXPECT_TRUE(name.size == 10 && !name.nullable && name.type == Type::Text && !name.primaryKey);
  EXPECT_TRUE(translation.created.columns[2].nullable);
}

TEST(Views, HaveTypedColumns) {
  Database database(kSchema);
  database.rows("INSERT INTO Cust ([Cust Code]) VALUES ('a')", kServer);
  const Translation view = database.translate(
      "CREATE VIEW V AS SELECT [Cust Code] AS Code, Rate * 2 AS R FROM Cust UNION ALL SELECT 'x', "
      "1e0 FROM Cust",
      kServer);
  EXPECT_EQ(view.created.kind, Relation::Kind::View);
  EXPECT_EQ(view.created.columns.at(1).type, Type::Double);
  database.rows("CREATE VIEW W AS SELECT TOP 1 [Cust Code] AS Code FROM Cust ORDER BY Rate",
                kServer);
  EXPECT_THAT(database.rows("SELECT code FROM w WHERE Code = 'A'", kDesktop), ElementsAre("a"));
}

TEST(Definitions, RefuseWhatCannotBe) {
  Database database(kSchema);
  const std::pair<const char*, const char*> cases[] = {
      {"CREATE TABLE cust (Id INT)", "There is a table or view called 'cust' already"},
      {"CREATE TABLE T (Id INT, ID MONEY)", "two columns called 'ID'"},
      {"CREATE TABLE T (Id INT PRIMARY KEY, PRIMARY KEY (Id))", "A table has one PRIMARY KEY"},
      {"CREATE TABLE T (Id VARCHAR(5) IDENTITY PRIMARY KEY)",
       "An IDENTITY column is a whole number"},
      {"CREATE TABLE T (Id INT IDENTITY)", "An IDENTITY column is a whole number"},
      {"CREATE TABLE T (Id INT IDENTITY(5,1) PRIMARY KEY)", "Only IDENTITY(1,1) is kept"},
      {"CREATE TABLE T (Name VARCHAR)", "The length of the column is missing"},
      {"CREATE TABLE T (Pay DECIMAL(18,6))", "at most four decimals"},
      {"CREATE TABLE T (Pay BLOB)", "Unknown type 'BLOB'"},
      {"CREATE TABLE T (At DATETIME DEFAULT 'soon')", "'soon' is no date"},
      {"CREATE TABLE T (Id INT DEFAULT 'x')", "The default is no value of type long"},
      {"CREATE TABLE T (Id SMALLINT DEFAULT 99999)", "does not fit into a value of type integer"},
      {"CREATE TABLE T (Id INT CHECK (Id > 0))", "',' or ')' is expected"},
      {"CREATE TABLE T (Id INT REFERENCES Nowhere (Id))", "Unknown table or view 'Nowhere'"},
      {"CREATE TABLE T (Id INT REFERENCES Cust (Id))", "Unknown column 'Id' of 'Cust'"},
      {"CREATE TABLE T (Id MONEY REFERENCES Cust (InCustId))",
       "the type of the column that it points at"},
      {"CREATE TABLE sqlite_t (Id INT)", "kept for the storage engine"},
      {"CREATE INDEX I ON Nowhere (Id)", "Unknown table or view 'Nowhere'"},
      {"CREATE INDEX I ON Part (Nr)", "Unknown column 'Nr' of 'Part'"},
      {"CREATE INDEX I ON Part (No) INCLUDE (No)", "has column 'No' twice"},
      {"CREATE VIEW V AS SELECT 1", "Column 1 of 'V' needs a name"},
      {"CREATE VIEW V AS SELECT Up FROM Part WHERE Up = ?", "A view takes no markers"},
      {"CREATE VIEW V AS SELECT Up FROM Part ORDER BY Up", "no ORDER BY unless it has TOP"},
      {"CREATE PROCEDURE P", "TABLE, VIEW or INDEX is expected"},
  };
  for (const auto& [text, message] : cases) {
    EXPECT_THAT(database.refusal(text, kServer), HasSubstr(message)) << text;
  }
}

TEST(Splitting, EndsStatementsAtTheirSemicolons) {
  EXPECT_THAT(splitStatements(" ; -- a; b\nSELECT ';' ; /* c;d */ SELECT [x;y]\r\n ;; -- the end"),
              ElementsAre("-- a; b\nSELECT ';'", "/* c;d */ SELECT [x;y]"));
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
