// Errors, transactions and snapshots through a driver.
#include <gmock/gmock.h>

#include "odbc/scripted.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::kStatementRefused;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

TEST_F(Scripted, ErrorsHaveTheNumbersOfAFile) {
  connect();
  connection->SetCommandTimeout(3);
  struct Case {
    const char* state;
    std::int32_t number;
    const char* says;
  };
  for (const Case& each :
       std::initializer_list<Case>{{"23000", kStatementRefused, "breaks a rule"},
                                   {"23505", kStatementRefused, "breaks a rule"},
                                   {"42S02", kStatementRefused, "no table"},
                                   {"40001", kStatementRefused, "another program"},
                                   {"HYT00", kStatementRefused, "timeout of 3 seconds"},
                                   {"57014", kStatementRefused, "timeout of 3 seconds"},
                                   {"53100", kStatementRefused, "disk"},
                                   {"22003", 6, "no table"},
                                   {"HY001", 7, "memory"},
                                   {"08S01", kConnectionLost, "look before"}}) {
    answer = {.state = each.state, .message = "no table"};
    EXPECT_THAT(raised(each.number, [&] { execute(connection, "DELETE FROM T"); }),
                HasSubstr(each.says))
        << each.state;
  }
  EXPECT_THAT(driver.events, IsSupersetOf({"timeout 3"}));
  driver.received.clear();
  EXPECT_THAT(raised(kConnectionLost, [&] { open(connection, "SELECT 2"); }),
              HasSubstr("open again"));
  EXPECT_EQ(driver.received.size(), 2U) << "a query connects anew, once";
}

TEST_F(Scripted, ATransactionIsKeptWhenItIsCommittedAndNothingGoesOnInAFailedOne) {
  connect();
  {
    const auto transaction = store->begin();
    raised(ErrorNumber::InvalidArgument, [&] { (void)store->begin(); });
    execute(connection, "DELETE FROM T");
    transaction->commit();
    raised(ErrorNumber::InvalidArgument, [&] { transaction->commit(); });
  }
  {
    const auto dropped = store->begin();
  }
  EXPECT_EQ(driver.events.front().substr(0, 7), "connect");
  driver.events.erase(driver.events.begin());
  EXPECT_THAT(driver.events, ElementsAre("autocommit off", "commit", "autocommit on",
                                         "autocommit off", "rollback", "autocommit on"));
  driver.events.clear();
  answerNumbers(1000);
  Ref<Recordset> rows;
  {
    const auto transaction = store->begin();
    rows = open(connection, "SELECT N, T FROM Numbers");
    driver.failIn = "SQLExecDirectW";
    raised(kStatementRefused, [&] { execute(connection, "DELETE FROM T"); });
    driver.failIn.clear();
    driver.received.clear();
    const auto ended = [&](const auto& action) {
      EXPECT_THAT(raised(kStatementRefused, action), HasSubstr("drop it and begin anew"));
    };
    ended([&] { execute(connection, "DELETE FROM T"); });
    ended([&] { open(connection, "SELECT 2"); });
    EXPECT_THAT(raised(kStatementRefused, [&] { transaction->commit(); }), HasSubstr("undone"));
    EXPECT_TRUE(driver.received.empty());
  }
  EXPECT_THAT(driver.events, ElementsAre("autocommit off", "rollback", "autocommit on"));
  execute(connection, "DELETE FROM T");
}

TEST_F(Scripted, ASnapshotIsARepeatableReadWhereTheDriverHasOne) {
  connect(Access::Read);
  answerNumbers(1000);
  Ref<Recordset> rows;
  {
    const auto moment = store->hold();
    raised(ErrorNumber::InvalidArgument, [&] { (void)store->hold(); });
    rows = open(connection, "SELECT N, T FROM Numbers");
    (void)open(connection, "SELECT N, T FROM Numbers");
  }
  EXPECT_THAT(driver.events, ElementsAre("isolation 4", "autocommit off", "rollback",
                                         "autocommit on", "isolation 2"));
  EXPECT_TRUE(rows->Find("N = 1000")) << "its rows were taken into memory";
  {
    const auto moment = store->hold();
    driver.failIn = "SQLExecDirectW";
    raised(kStatementRefused, [&] { open(connection, "SELECT 2"); });
    driver.failIn.clear();
    raised(kStatementRefused, [&] { open(connection, "SELECT 2"); });
  }
  (void)open(connection, "SELECT 2");
  driver.isolations = SQL_TXN_READ_COMMITTED;
  EXPECT_THAT(raised(ErrorNumber::InvalidArgument, [&] { (void)store->hold(); }),
              HasSubstr("one moment"));
}

}  // namespace
}  // namespace QuorHost::Testing
