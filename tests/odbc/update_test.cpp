// Recordsets opened for update through a driver.
#include <gmock/gmock.h>

#include "host/small_company.h"
#include "odbc/driven.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::ElementsAre;
using testing::HasSubstr;

/// A driver in front of a small company.
class Updating : public SmallCompany {
 protected:
  Updating() {
    driver = {};
    driver.answer = [this](const Received& received) {
      return answerOf(*store, Sql::Dialect::Server, received);
    };
    served = openCompanyFile(driven(Sql::Dialect::Server), Access::Write);
    connection = served->connect(Sql::Dialect::Server);
  }

  Recording& driver = recording();
  std::shared_ptr<Store> served;
};

TEST_F(Updating, RowsOfATableAreAddedAndChanged) {
  const auto rows = open(connection, "SELECT * FROM Account ORDER BY InAcctId", {}, 1);
  rows->AddNew();
  rows->SetField("AcctNo", "1000");
  rows->SetField("Opened", Date::of(2024, 1, 2));
  rows->Update();
  EXPECT_EQ(rows->Field("InAcctId"), Value(std::int32_t{1}));
  EXPECT_EQ(rows->Field("Active"), Value(true)) << "what the database gave it";
  rows->MoveFirst();
  rows->SetField("Balance", Currency::fromUnits(15'000));
  rows->Update();
  EXPECT_EQ(rows->Field("Balance"), Value(Currency::fromUnits(15'000)));
  EXPECT_EQ(only(connection, "SELECT Balance FROM Account").toText(), "1.5");

  driver.events.clear();
  rows->AddNew();
  rows->SetField("Descr", "no number");
  raised(kStatementRefused, [&] { rows->Update(); });
  EXPECT_THAT(driver.events, ElementsAre("autocommit off", "rollback", "autocommit on"));

  const auto entries = open(connection, "SELECT EntryNo, Amnt FROM Entry", {}, 1);
  entries->AddNew();
  entries->SetField("EntryNo", std::int32_t{5});
  entries->Update();
  EXPECT_TRUE(entries->Field("Amnt").isNull());
  entries->SetField("EntryNo", std::int32_t{6});
  entries->Update();
  EXPECT_EQ(rest(open(connection, "SELECT EntryNo FROM Entry")), "6");
  execute(connection, "DELETE FROM Entry");
  entries->SetField("Amnt", Currency());
  EXPECT_THAT(raised(kStatementRefused, [&] { entries->Update(); }), HasSubstr("removed"));
}

TEST_F(Updating, OtherResultsAreReadOnly) {
  execute(connection, "INSERT INTO Entry (EntryNo) VALUES (1)");
  for (const char* const text :
       {"SELECT EntryNo, Amnt AS Other FROM Entry", "SELECT COUNT(*) AS N FROM Entry",
        "SELECT DISTINCT EntryNo FROM Entry", "SELECT EntryNo FROM Entry UNION SELECT 1",
        "SELECT a.EntryNo FROM Entry a, Entry b", "SELECT EntryNo FROM Entry GROUP BY EntryNo"}) {
    raised(ErrorNumber::InvalidArgument, [&] { open(connection, text, {}, 1)->AddNew(); });
  }
  const auto withoutKey = open(connection, "SELECT Amnt FROM Entry", {}, 1);
  EXPECT_THAT(
      raised(ErrorNumber::InvalidArgument, [&] { withoutKey->SetField("Amnt", Currency()); }),
      HasSubstr("EntryNo"));
}

}  // namespace
}  // namespace QuorHost::Testing
