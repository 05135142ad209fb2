// Recordsets opened for update.
#include <gmock/gmock.h>

#include "host/small_company.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::HasSubstr;

class Updating : public SmallCompany {
 protected:
  [[nodiscard]] Ref<Recordset> accounts(const std::string& order = "") const {
    return open(connection, "SELECT * FROM Account" + order, {}, 1);
  }
  [[nodiscard]] std::string numbers() const {
    return rest(open(connection, "SELECT AcctNo FROM Account ORDER BY InAcctId"));
  }
};

TEST_F(Updating, ANewRowComesBackWithWhatTheDatabaseGaveIt) {
  const Ref<Recordset> rows = accounts();
  for (std::int32_t id = 1; id <= 2; ++id) {
    rows->AddNew();
    EXPECT_FALSE(rows->AtEnd());
    EXPECT_TRUE(rows->Field("Balance").isNull()) << "null until it is set";
    rows->SetField("acctno", std::int32_t{1000} + id);
    rows->SetField("Opened", Date::of(2024, 1, 2));
    EXPECT_EQ(rows->Field("AcctNo"), Value(std::to_string(1000 + id)));
    rows->Update();
    EXPECT_EQ(rows->Field("InAcctId"), Value(id));
    EXPECT_EQ(rows->Field("Balance"), Value(Currency()));
    EXPECT_EQ(rows->Field("Active"), Value(true));
    EXPECT_EQ(rows->Field("Opened"), Value(Date::of(2024, 1, 2)));
  }
  rows->MoveNext();
  EXPECT_TRUE(rows->AtEnd());
  rows->MoveFirst();
  EXPECT_EQ(rest(rows), "1 2");
}

TEST_F(Updating, ARowThatCannotBeStoredIsNotStoredAtAll) {
  const Ref<Recordset> rows = accounts();
  rows->AddNew();
  rows->SetField("Descr", "no number");
  EXPECT_THAT(raised(kStatementRefused, [&] { rows->Update(); }), HasSubstr("AcctNo"));
  EXPECT_EQ(numbers(), "");
  rows->SetField("AcctNo", "1000");
  rows->Update();
  EXPECT_EQ(numbers(), "1000") << "what was set stays for another try";

  rows->AddNew();
  EXPECT_THAT(raised(ErrorNumber::TypeMismatch, [&] { rows->SetField("Balance", "much"); }),
              HasSubstr("Balance"));
  raised(ErrorNumber::Overflow, [&] { rows->SetField("Kind", std::int32_t{40'000}); });
  raised(ErrorNumber::UnknownItem, [&] { rows->SetField("Nowhere", "x"); });
  rows->MoveFirst();
  raised(ErrorNumber::InvalidArgument, [&] { rows->Update(); });
  EXPECT_EQ(numbers(), "1000") << "moving away drops the row";
}

TEST_F(Updating, RowsAreChangedInTheMiddleOfAScan) {
  for (const char* number : {"1", "2", "3"}) {
    execute(connection, "INSERT INTO Account (AcctNo, Descr) VALUES (?, 'old')", {number});
  }
  const Ref<Recordset> rows = accounts(" ORDER BY AcctNo");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    rows->SetField("AcctNo", rows->Field("AcctNo").text() + "0");
    if (rows->Field("InAcctId").toLong() == 2) rows->SetField("Descr", Value::null());
    rows->Update();
    EXPECT_EQ(rows->Field("Balance"), Value(Currency()));
  }
  EXPECT_EQ(numbers(), "10 20 30");
  rows->MoveFirst();
  EXPECT_TRUE(rows->Find("AcctNo = '20'"));
  EXPECT_TRUE(rows->Field("Descr").isNull());
  rows->SetField("Descr", "new");
  rows->Update();
  EXPECT_TRUE(rows->Find("Descr = 'new'"));
  EXPECT_EQ(rows->Field("AcctNo"), Value("20"));

  execute(connection, "DELETE FROM Account WHERE AcctNo = '20'");
  rows->SetField("Descr", "late");
  EXPECT_THAT(raised(kStatementRefused, [&] { rows->Update(); }), HasSubstr("no longer there"));
}

TEST_F(Updating, OnlyRowsOfOneTableWithTheirKey) {
  execute(connection, "INSERT INTO Account (AcctNo) VALUES ('1')");
  for (const char* sql :
       {"SELECT a.AcctNo FROM Account a, Entry", "SELECT COUNT(*) AS N FROM Account",
        "SELECT DISTINCT AcctNo FROM Account", "SELECT AcctNo AS Number FROM Account",
        "SELECT AcctNo FROM OpenAccount"}) {
    raised(ErrorNumber::InvalidArgument, [&] { open(connection, sql, {}, 1)->AddNew(); });
  }
  raised(ErrorNumber::InvalidArgument,
         [&] { open(connection, "SELECT * FROM Account")->AddNew(); });
  const Ref<Recordset> withoutKey = open(connection, "SELECT AcctNo, Descr FROM Account", {}, 1);
  EXPECT_THAT(raised(ErrorNumber::InvalidArgument, [&] { withoutKey->SetField("Descr", "x"); }),
              HasSubstr("InAcctId"));
  withoutKey->AddNew();
  withoutKey->SetField("AcctNo", "2");
  withoutKey->Update();
  EXPECT_EQ(numbers(), "1 2");
  EXPECT_THAT(
      raised(ErrorNumber::NoCurrentRow,
             [&] { open(connection, "SELECT * FROM Entry", {}, 1)->SetField("Amnt", 1.0); }),
      HasSubstr("AddNew"));
}

}  // namespace
}  // namespace QuorHost::Testing
