// A driver whose n-th call fails, for every n.
#include <gmock/gmock.h>

#include <set>

#include "host/engines/odbc/driver/api.h"
#include "host/small_company.h"
#include "odbc/driven.h"

namespace QuorHost::Testing {
namespace {

using testing::AnyOf;
using testing::HasSubstr;

/// Reads, changes, adds, and does so in a transaction and in a snapshot. Gives what was read.
std::string work(int& errors) {
  const std::string company = driven(Sql::Dialect::Server);
  std::string read;
  {
    const auto store = openCompanyFile(company, Access::Write);
    const auto connection = store->connect(Sql::Dialect::Server);
    if (store->hasTable("Entry")) read += "Entry ";
    const auto lying = open(connection, "SELECT EntryNo, Amnt FROM Entry ORDER BY EntryNo");
    execute(connection, "UPDATE Entry SET Amnt = ? WHERE EntryNo = ?", {Currency(), 1});
    const auto entries =
        open(connection, "SELECT EntryNo, Amnt FROM Entry ORDER BY EntryNo", {}, 1);
    entries->SetField("Amnt", Currency::fromInteger(7));
    entries->Update();
    {
      const auto transaction = store->begin();
      execute(connection, "UPDATE Entry SET Amnt = ? WHERE EntryNo = 2", {Currency()});
      try {
        read += only(connection, "SELECT Amnt FROM Entry WHERE EntryNo = 2").toText() + " ";
        transaction->commit();
      } catch (const Error&) {
        // One error, and then nothing goes on.
        EXPECT_THAT(raised(QuorDataLib::kStatementRefused,
                           [&] { execute(connection, "DELETE FROM Entry"); }),
                    HasSubstr("begin anew"));
        ++errors;
        throw;
      }
    }
    while (!lying->AtEnd()) lying->MoveNext();
  }
  const auto store = openCompanyFile(company, Access::Read);
  const auto moment = store->hold();
  const auto connection = store->connect(Sql::Dialect::Server);
  return read + rest(open(connection, "SELECT Descr FROM Account")) + " " +
         only(connection, "SELECT SUM(Amnt) AS Total FROM Entry").toText();
}

class Sweep : public SmallCompany {};

TEST_F(Sweep, EveryCallOfADriverMayFail) {
  execute(connection, "INSERT INTO Account (AcctNo, Descr) VALUES ('1', 'long text')");
  addEntries(*store, 600);
  Recording& driver = recording();
  driver = {};
  driver.isolations = SQL_TXN_REPEATABLE_READ;
  driver.getDataExtensions = SQL_GD_BLOCK | SQL_GD_BOUND;
  driver.answer = [&](const Received& received) {
    return answerOf(*store, Sql::Dialect::Server, received);
  };
  int errors = 0;
  const std::string sound = work(errors);
  EXPECT_EQ(driver.handles, 0);
  const int calls = driver.calls;
  EXPECT_GT(calls, 100);

  std::set<std::string> passedOver;
  for (int n = 1; n <= calls && !HasFailure(); ++n) {
    driver.calls = 0;
    driver.failAt = n;
    driver.failed.clear();
    SCOPED_TRACE(n);
    try {
      EXPECT_EQ(work(errors), sound) << driver.failed;
      passedOver.insert(driver.failed);
    } catch (const Error& error) {
      EXPECT_THAT(error.description(),
                  AnyOf(HasSubstr("failed on purpose"), HasSubstr("does not say why"),
                        HasSubstr("Out of memory"), HasSubstr("Driver's")))
          << driver.failed;
    }
    EXPECT_EQ(driver.handles, 0) << driver.failed;
    driver.failAt = 0;
  }
  EXPECT_EQ(work(errors), sound);
  EXPECT_GT(errors, 3) << "some failed in the transaction";
  // What may fail without a word: it is tried again, or nothing depends on it, or it is asked by
  // the driver manager, which goes on.
  const std::set<std::string> unimportant{"SQLFreeHandle",      "SQLFreeStmt",     "SQLDisconnect",
                                          "SQLSetConnectAttrW", "SQLGetFunctions", "SQLGetInfoW",
                                          "SQLGetStmtAttrW",    "SQLSetEnvAttr",   "rollback"};
  for (const std::string& name : passedOver) EXPECT_TRUE(unimportant.contains(name)) << name;
}

}  // namespace
}  // namespace QuorHost::Testing
