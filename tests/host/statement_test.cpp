// Statements in both dialects: markers, conversions, overflow, and what is refused.
#include <gmock/gmock.h>

#include <limits>

#include "host/small_company.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::AllOf;
using testing::HasSubstr;

class Statements : public SmallCompany {
 protected:
  void addAccount(const std::string& number, const Value& balance) const {
    execute(connection, "INSERT INTO Account (AcctNo, Balance) VALUES (?, ?)", {number, balance});
  }
};

TEST_F(Statements, EachDialectRunsItsOwnWordsAndRefusesTheOthers) {
  addAccount("1000", Currency::fromInteger(5));
  const std::string server =
      "SELECT COALESCE(Descr, 'none') AS D, CASE WHEN Balance > 1 THEN 1 ELSE 2 END AS C"
      " FROM Account";
  const std::string desk =
      "SELECT IIf(IsNull(Descr), 'none', Descr) AS D, SWITCH(Balance > 1, 1, TRUE, 2) AS C"
      " FROM Account";
  for (const auto& [right, wrong, sql] :
       {std::tuple{connection, desktop, server}, std::tuple{desktop, connection, desk}}) {
    const Ref<Recordset> rows = open(right, sql);
    EXPECT_EQ(rows->Field("D").toText(), "none");
    EXPECT_EQ(rows->Field("C").toLong(), 1);
    EXPECT_THAT(
        raised(kStatementRefused, [&, refused = wrong, text = sql] { open(refused, text); }),
        HasSubstr("line 1"));
  }
}

TEST_F(Statements, MarkerAndValueCountsMustAgree) {
  const std::string sql = "SELECT EntryNo FROM Entry WHERE EntryNo = ? OR EntryNo = ?";
  EXPECT_THAT(raised(kStatementRefused, [&] { open(connection, sql, {std::int32_t{1}}); }),
              AllOf(HasSubstr("2"), HasSubstr("1")));
  raised(kStatementRefused,
         [&] { open(connection, sql, {std::int32_t{1}, std::int32_t{2}, std::int32_t{3}}); });
  raised(kStatementRefused, [&] { connection->OpenRecordset(sql, 4, 0, {}, 0); });
  raised(kStatementRefused, [&] { execute(connection, "DELETE FROM Entry WHERE EntryNo = ?"); });
  addEntries(*store, 3);
  const Ref<Recordset> bare = connection->OpenRecordset(
      "SELECT EntryNo FROM Entry WHERE EntryNo = ?", 4, 0, Parameters::single(std::int32_t{3}), -1);
  EXPECT_EQ(rest(bare), "3");
  EXPECT_EQ(only(connection,
                 "SELECT COUNT(*) FROM (SELECT EntryNo, ? AS Unread FROM Entry) AS A "
                 "WHERE EntryNo > ? AND EntryNo < ?",
                 {std::int32_t{1}, std::int32_t{1}, std::int32_t{9}})
                .toLong(),
            2);
  EXPECT_EQ(
      only(connection, "SELECT COUNT(*) FROM (SELECT ? AS Unread FROM Entry) AS A", {"x"}).toLong(),
      3);
}

TEST_F(Statements, ValuesBecomeTheTypeOfTheirMarker) {
  addAccount("1000", "12.34");
  execute(connection,
          "UPDATE Account SET Opened = ?, Active = ?, Kind = ?, Rate = ? WHERE AcctNo = ?",
          {Date::of(2024, 5, 6), true, "7", std::int32_t{2}, std::int32_t{1000}});
  const Ref<Recordset> rows = open(connection, "SELECT * FROM Account");
  EXPECT_EQ(rows->Field("Balance"), Value(Currency::fromUnits(123'400)));
  EXPECT_EQ(rows->Field("Opened"), Value(Date::of(2024, 5, 6)));
  EXPECT_EQ(rows->Field("Active"), Value(true));
  EXPECT_EQ(rows->Field("Kind"), Value(std::int16_t{7}));
  EXPECT_EQ(rows->Field("Rate"), Value(2.0));
  EXPECT_TRUE(rows->Field("Descr").isNull());

  for (const Ref<Connection>& each : {connection, desktop}) {
    const auto count = [&](const std::string& condition, const Value& value) {
      return only(each, "SELECT COUNT(*) AS N FROM Account WHERE " + condition, {value}).toLong();
    };
    EXPECT_EQ(count("Balance = ?", 12.34), 1) << "money never passes through a double";
    EXPECT_EQ(count("Opened >= ?", Date::of(2024, 5, 6)), 1);
    EXPECT_EQ(count("Opened > ?", Date::of(2024, 5, 6)), 0);
    EXPECT_EQ(count("Opened < ?", Date::of(2024, 5, 6, 0, 0, 1)), 1);
    EXPECT_EQ(count("Opened <= ?", Date::of(9999, 12, 31)), 1);
    EXPECT_EQ(count("AcctNo = ?", std::int32_t{1000}), 1);
    EXPECT_EQ(count("Balance = ?", Value::null()), 0);
  }

  const auto refusal = [&](ErrorNumber number, const Value& value) {
    return raised(number, [&] {
      open(connection, "SELECT AcctNo FROM Account WHERE AcctNo <> ? AND InAcctId = ?",
           {"x", value});
    });
  };
  EXPECT_THAT(refusal(ErrorNumber::TypeMismatch, "many"), HasSubstr("marker 2"));
  EXPECT_THAT(refusal(ErrorNumber::Overflow, 1e10), HasSubstr("marker 2"));
  EXPECT_THAT(refusal(ErrorNumber::TypeMismatch, Value(Ref<QuorDataLib::Object>(connection))),
              HasSubstr("marker 2"));
  raised(ErrorNumber::Overflow, [&] {
    execute(connection, "UPDATE Account SET Rate = ?", {std::numeric_limits<double>::infinity()});
  });
}

TEST_F(Statements, MoneyIsExactUpToTheLargestAmount) {
  const Currency largest = Currency::fromUnits(std::numeric_limits<std::int64_t>::max());
  const Currency smallest = Currency::fromUnits(std::numeric_limits<std::int64_t>::min());
  const Currency unit = Currency::fromUnits(1);
  addAccount("L", largest);
  addAccount("S", smallest);
  EXPECT_EQ(only(connection, "SELECT Balance FROM Account WHERE AcctNo = 'L'"), Value(largest));
  EXPECT_EQ(only(connection, "SELECT SUM(Balance) AS S FROM Account WHERE AcctNo = 'L'"),
            Value(largest));
  EXPECT_EQ(only(connection, "SELECT SUM(Balance) AS S FROM Account"), Value(-unit));

  addAccount("U", unit);
  for (const Ref<Connection>& each : {connection, desktop}) {
    raised(ErrorNumber::Overflow,
           [&] { (void)only(each, "SELECT SUM(Balance) AS S FROM Account WHERE AcctNo <> 'S'"); });
    raised(ErrorNumber::Overflow, [&] {
      (void)only(each, "SELECT Balance + ? AS S FROM Account WHERE AcctNo = 'L'", {unit});
    });
    raised(ErrorNumber::Overflow, [&] {
      (void)only(each, "SELECT Balance - 0.0001 AS S FROM Account WHERE AcctNo = 'S'");
    });
  }
  EXPECT_EQ(only(connection, "SELECT COUNT(*) AS N FROM Account WHERE Balance <> 0.1 + 0.2 - 0.3"),
            Value(std::int32_t{3}));
}

TEST_F(Statements, AnOverflowInALaterRowIsRaisedThere) {
  addAccount("1", Currency::fromInteger(1));
  addAccount("2", Currency::fromUnits(std::numeric_limits<std::int64_t>::max()));
  addAccount("3", Currency::fromInteger(3));
  const Ref<Recordset> rows =
      open(connection, "SELECT Balance + Balance AS Twice FROM Account ORDER BY AcctNo");
  EXPECT_EQ(rows->Field(0), Value(Currency::fromInteger(2)));
  EXPECT_FALSE(rows->Find("Twice = 7"));
  rows->MoveFirst();
  rows->MoveNext();
  raised(ErrorNumber::Overflow, [&] { (void)rows->Field(0); });
  rows->MoveNext();
  EXPECT_EQ(rows->Field(0), Value(Currency::fromInteger(6)));
}

TEST_F(Statements, ExecuteCountsRowsAndChangesAllOrNothing) {
  addEntries(*store, 5);
  EXPECT_EQ(
      execute(desktop, "UPDATE Entry SET Amnt = Amnt * 2 WHERE EntryNo > ?", {std::int32_t{2}}), 3);
  EXPECT_EQ(execute(connection, "DELETE FROM Entry WHERE EntryNo = 99"), 0);
  // The third of five rows breaks the key; the first two must not stay changed.
  execute(connection, "INSERT INTO Entry (EntryNo, Amnt) VALUES (103, 0)");
  raised(kStatementRefused, [&] {
    execute(connection, "UPDATE Entry SET EntryNo = EntryNo + 100 WHERE EntryNo < 10");
  });
  EXPECT_EQ(rest(open(connection, "SELECT EntryNo FROM Entry ORDER BY EntryNo")), "1 2 3 4 5 103");
}

TEST_F(Statements, BrokenConstraintsNameTableAndColumn) {
  addAccount("1000", Currency());
  addEntries(*store, 2);
  const auto refusal = [&](const std::string& sql) {
    return raised(kStatementRefused, [&] { execute(connection, sql); });
  };
  EXPECT_THAT(refusal("INSERT INTO Account (AcctNo) VALUES ('1000')"),
              HasSubstr("Another row already has '1000' in AcctNo of table Account"));
  EXPECT_THAT(refusal("INSERT INTO Account (Descr) VALUES ('x')"),
              AllOf(HasSubstr("AcctNo"), HasSubstr("Account"), HasSubstr("missing")));
  EXPECT_THAT(refusal("UPDATE Account SET ExCurrencyId = 99"),
              AllOf(HasSubstr("Column ExCurrencyId of table Account would hold 99, but table "
                              "Currency has no row with that InCurrencyId (a foreign key)"),
                    HasSubstr("UPDATE Account")));
  {
    // The second of two rows, in a transaction that goes on afterwards; and the row referred to.
    const auto transaction = store->begin();
    execute(connection, "INSERT INTO Currency (InCurrencyId, Code) VALUES (3, 'CAD')");
    const auto writer = store->writer("Account", {"AcctNo", "ExCurrencyId"});
    writer->add(std::vector<Value>{"2000", 3});
    EXPECT_THAT(raised(kStatementRefused, [&] { writer->add(std::vector<Value>{"3000", 4}); }),
                HasSubstr("would hold 4"));
    EXPECT_THAT(raised(kStatementRefused, [&] { writer->add(std::vector<Value>{"2000", 3}); }),
                HasSubstr("has '2000' in AcctNo"));
    EXPECT_THAT(refusal("DELETE FROM Currency"), HasSubstr("would hold 3"));
    EXPECT_THAT(refusal("UPDATE Entry SET EntryNo = 7"), HasSubstr("has 7 in EntryNo"));
    transaction->commit();
  }
  EXPECT_THAT(refusal("UPDATE Account SET Descr = 'eleven char'"), HasSubstr("Descr"));
  EXPECT_EQ(execute(connection, "UPDATE Account SET Descr = 'dix unités'"), 2)
      << "a length counts characters";
}

TEST_F(Statements, NothingIsStoredThatItsColumnCannotHold) {
  addEntries(*store, 3);
  addAccount("1000", Currency());
  // Every way in: computed, from a sub-select, by a generated key, in either dialect.
  const std::tuple<const char*, const char*, const char*> changes[] = {
      {"INSERT INTO Entry (EntryNo) VALUES (2147483647 + 1)", "EntryNo of table Entry",
       "2147483648"},
      {"UPDATE Entry SET EntryNo = -2147483647 - EntryNo", "EntryNo of table Entry", "-2147483649"},
      {"INSERT INTO Entry (EntryNo) SELECT SUM(EntryNo) * 1000000000 FROM Entry",
       "EntryNo of table Entry", "6000000000"},
      {"UPDATE Account SET ExCurrencyId = 2147483647 + 5", "ExCurrencyId of table Account",
       "2147483652"},
      {"UPDATE Account SET Rate = 1e308 * 10", "Rate of table Account", "infinity"},
      {"UPDATE Account SET Rate = -1e308 - 1e308", "Rate of table Account", "minus infinity"},
      {"UPDATE Account SET Descr = 'eleven' + ' char'", "Descr of table Account", "'eleven char'"},
  };
  for (const Ref<Connection>& each : {connection, desktop}) {
    for (const auto& [change, column, value] : changes) {
      EXPECT_THAT(raised(kStatementRefused, [&, sql = change] { execute(each, sql); }),
                  AllOf(HasSubstr(column), HasSubstr(std::string("cannot hold ") + value)));
    }
  }
  raised(ErrorNumber::Overflow,
         [&] { execute(connection, "UPDATE Account SET Kind = 32767 + 1"); });
  execute(connection, "INSERT INTO Account (InAcctId, AcctNo) VALUES (2147483647, 'last')");
  EXPECT_THAT(raised(kStatementRefused, [&] { addAccount("one more", Currency()); }),
              HasSubstr("InAcctId of table Account cannot hold 2147483648"));
  for (const char* table : {"Entry", "Account"}) {
    const Ref<Recordset> rows = open(connection, std::string("SELECT * FROM ") + table);
    for (; !rows->AtEnd(); rows->MoveNext()) {
      for (std::int32_t i = 0; i < rows->FieldCount(); ++i) (void)rows->Field(i);
    }
  }
}

TEST_F(Statements, TextsAreUtf8WithoutZeros) {
  using namespace std::string_literals;
  const std::string sql = "INSERT INTO Account (AcctNo, Descr) VALUES (?, ?)";
  for (const std::string& wrong : {"a\0b"s, "\0"s, "caf\xE9"s, "\xED\xA0\x80"s, "\xC3"s}) {
    EXPECT_THAT(
        raised(ErrorNumber::InvalidArgument, [&] { execute(connection, sql, {"1", wrong}); }),
        HasSubstr("marker 2"));
    const auto transaction = store->begin();
    const auto writer = store->writer("Account", {"AcctNo"});
    EXPECT_THAT(
        raised(ErrorNumber::InvalidArgument, [&] { writer->add(std::vector<Value>{wrong}); }),
        HasSubstr("AcctNo"));
    const Ref<Recordset> rows = open(connection, "SELECT * FROM Account", {}, 1);
    rows->AddNew();
    rows->SetField("AcctNo", wrong);
    EXPECT_THAT(raised(ErrorNumber::InvalidArgument, [&] { rows->Update(); }), HasSubstr("AcctNo"));
  }
  execute(connection, sql, {"1", "\xF0\x9F\x98\x80\x01"});
}

TEST_F(Statements, MessagesAreShortAndOnOneLine) {
  const std::string text = "x\n\x1B[31m\t\xC2\x9B" + std::string(1'000'000, '7') + "y";
  addAccount("1", Currency());
  const auto check = [](const std::string& message) {
    EXPECT_LT(message.size(), 1'100U);
    EXPECT_EQ(message.find_first_of("\n\r\t\x1B"), std::string::npos) << message;
    EXPECT_EQ(message.find("\xC2\x9B"), std::string::npos) << message;
  };
  const auto failure = [&](const std::string& sql, const std::vector<Value>& values) {
    try {
      execute(connection, sql, values);
      ADD_FAILURE() << sql;
    } catch (const Error& error) {
      check(error.description());
    }
  };
  failure("UPDATE Account SET Descr = ?", {text});
  failure("UPDATE Account SET Balance = ?", {text});
  failure("UPDATE Account SET Kind = CAST(? AS INT)", {text});
  failure("UPDATE Account SET Opened = ?", {text});
  failure("UPDATE Account SET ExCurrencyId = 9 WHERE AcctNo <> '" + text + "'", {});
  const Ref<Recordset> rows = open(connection, "SELECT * FROM Account");
  check(raised(ErrorNumber::InvalidArgument, [&] { rows->Find("Kind = " + text); }));
  check(raised(ErrorNumber::InvalidArgument, [&] { rows->Find("Kind = '" + text + "'"); }));
}

TEST_F(Statements, EachStatementHasItsOperation) {
  raised(kStatementRefused, [&] { open(connection, "DELETE FROM Entry"); });
  raised(kStatementRefused, [&] { execute(connection, "SELECT EntryNo FROM Entry"); });
  for (const char* sql : {"CREATE TABLE T (A INT)", "CREATE VIEW V AS SELECT EntryNo FROM Entry",
                          "CREATE INDEX I ON Entry (Amnt)"}) {
    raised(kStatementRefused, [&] { execute(connection, sql); });
    raised(kStatementRefused, [&] { open(connection, sql); });
  }
  for (const char* sql :
       {"PRAGMA foreign_keys=OFF", "ATTACH DATABASE 'x' AS y", "VACUUM INTO 'x'", "BEGIN",
        "DROP TABLE Entry", "SELECT load_extension('x') AS X", "SELECT 1 AS A; DELETE FROM Entry",
        "SELECT Sql FROM QuorCatalogue", "SELECT name FROM sqlite_schema", ""}) {
    raised(kStatementRefused, [&] { execute(connection, sql); });
    raised(kStatementRefused, [&] { open(connection, sql); });
  }
  for (const std::int32_t mode : {0, 1, 2, 4, 6}) {
    EXPECT_TRUE(open(connection, "SELECT EntryNo FROM Entry", {}, mode)->AtEnd());
  }
  for (const std::int32_t mode : {-1, 3, 5, 7}) {
    EXPECT_THAT(raised(ErrorNumber::InvalidArgument,
                       [&] { open(connection, "SELECT EntryNo FROM Entry", {}, mode); }),
                HasSubstr(std::to_string(mode)));
  }
}

TEST_F(Statements, ACommandTimeoutStopsAStatement) {
  addEntries(*store, 100);
  const std::string endless =
      "SELECT SUM(a.EntryNo) AS S FROM Entry a, Entry b, Entry c, Entry d, Entry e, Entry f";
  EXPECT_EQ(connection->CommandTimeout(), 0);
  connection->SetCommandTimeout(1);
  EXPECT_EQ(connection->CommandTimeout(), 1);
  EXPECT_THAT(raised(kStatementRefused, [&] { open(connection, endless); }),
              HasSubstr("timeout of 1 s"));
  EXPECT_EQ(only(connection, "SELECT COUNT(*) AS N FROM Entry").toLong(), 100);
  raised(ErrorNumber::InvalidArgument, [&] { connection->SetCommandTimeout(-1); });
}

TEST_F(Statements, ACompanyOpenForReadingIsNotChanged) {
  addEntries(*store, 2);
  const auto reader = openCompanyFile(path(), Access::Read);
  EXPECT_FALSE(reader->writable());
  const Ref<Connection> reading = reader->connect(Sql::Dialect::Server);
  EXPECT_THAT(raised(kStatementRefused, [&] { execute(reading, "DELETE FROM Entry"); }),
              HasSubstr("opened for reading only"));
  raised(kStatementRefused, [&] { reader->define("CREATE TABLE T (A INT)"); });
  raised(kStatementRefused, [&] { (void)reader->begin(); });
  raised(kStatementRefused, [&] { (void)reader->writer("Entry", {"EntryNo"}); });
  raised(kStatementRefused, [&] { reader->setSchemaVersion(1); });
  const Ref<Recordset> rows = open(reading, "SELECT * FROM Entry ORDER BY EntryNo", {}, 1);
  raised(ErrorNumber::InvalidArgument, [&] { rows->AddNew(); });
  EXPECT_EQ(rest(rows), "1 2");
}

}  // namespace
}  // namespace QuorHost::Testing
