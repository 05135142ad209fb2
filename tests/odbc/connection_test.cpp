// What names a company behind a driver, who may read it, and what cannot be done with it.
#include <gmock/gmock.h>

#include "host/application/host.h"
#include "host/company/company.h"
#include "host/engines/odbc/driver/address.h"
#include "host/engines/odbc/driver/api.h"
#include "host/small_company.h"
#include "odbc/driven.h"

namespace QuorHost::Testing {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr std::int32_t kCannotOpen = 75;

TEST(OdbcAddress, GoesOutAsItStandsWithoutOurKey) {
  const auto connection = [](const std::string& text) {
    return Odbc::readAddress("odbc:" + text).connection;
  };
  EXPECT_EQ(connection("DSN=books;dialect=server"), "DSN=books;");
  EXPECT_EQ(connection("dialect=server;DSN=books"), "DSN=books");
  EXPECT_EQ(connection(" Driver = {A;b}}; dialect=server};; Dialect = {Desktop} ;UID=é;"),
            " Driver = {A;b}}; dialect=server};;UID=é;");
  EXPECT_EQ(Odbc::readAddress("odbc:DSN=a;DIALECT=Desktop").dialect, Sql::Dialect::Desktop);
  for (const char* const wrong :
       {"odbc:DSN=a;PWD=geheim", "odbc:DSN=a;PWD=geheim;dialect=oracle", "odbc:dialect=server",
        "odbc:DSN=a;dialect=server;dialect=server;PWD=geheim", "odbc:", "odbc:dialect=server; ;",
        "odbc:DSN=a;dialect=server;PWD={geheim}};x"}) {
    EXPECT_THAT(raised(ErrorNumber::InvalidArgument, [&] { (void)Odbc::readAddress(wrong); }),
                AllOf(HasSubstr("dialect="), Not(HasSubstr("geheim"))))
        << wrong;
  }
  raised(ErrorNumber::InvalidArgument, [] {
    (void)Odbc::readAddress("odbc:DSN=a;dialect=server;X=" + std::string(40'000, 'x'));
  });
}

TEST(OdbcAddress, ShowsNoSecret) {
  for (const char* const text :
       {"odbc:DSN=a;PWD=geheim;dialect=server", "odbc:pwd={ge;heim};DSN=a;dialect=server",
        "odbc:DSN=a;Password = geheim ; dialect=server", "odbc:DSN=a;dialect=server;sslPwd=geheim",
        "odbc:DSN=a;PWD={geheim", "odbc:DSN=a;PWD=a;geheim;dialect=server",
        "odbc:DSN=a;AccessToken=geheim"}) {
    EXPECT_THAT(shownCompany(text), AllOf(HasSubstr("DSN=a"), Not(HasSubstr("heim")))) << text;
  }
}

class Driven : public testing::Test {
 protected:
  Driven() { driver = {}; }
  void TearDown() override { EXPECT_EQ(driver.handles, 0); }

  Recording& driver = recording();
};

TEST_F(Driven, ADriversWordsAreCleaned) {
  driver.failMessage = "no entry for ann with ge}heim";
  driver.failIn = "SQLDriverConnectW";
  EXPECT_THAT(
      raised(
          kCannotOpen,
          [] { (void)openCompany(driven(Sql::Dialect::Server, "PWD={ge}}heim};"), Access::Read); }),
      AllOf(HasSubstr("no entry for ann"), HasSubstr("Driver="), Not(HasSubstr("heim"))));
  driver.failIn.clear();
  const auto store = openCompany(driven(Sql::Dialect::Server, "PWD=geheim;"), Access::Read);
  driver.answer = [](const Received&) { return Answer{.state = "42000", .message = "geheim?"}; };
  EXPECT_THAT(raised(QuorDataLib::kStatementRefused,
                     [&] { open(store->connect(Sql::Dialect::Server), "SELECT 1"); }),
              AllOf(HasSubstr("***?"), Not(HasSubstr("geheim"))));
}

TEST_F(Driven, WhatIsNotThereIsSaidWithWhatToDo) {
  const auto opened = [](const std::string& text) {
    return raised(kCannotOpen, [&] { (void)openCompany("odbc:" + text, Access::Read); });
  };
  EXPECT_THAT(opened("DSN=quor no such source;PWD=geheim;dialect=server"),
              AllOf(HasSubstr("odbcinst"), Not(HasSubstr("geheim"))));
  EXPECT_THAT(opened("Driver=/no/such/driver.so;dialect=server"), HasSubstr("library"));
  driver.failIn = "SQLDriverConnectW";
  driver.failState = "28000";
  EXPECT_THAT(
      raised(kCannotOpen, [] { (void)openCompany(driven(Sql::Dialect::Server), Access::Read); }),
      HasSubstr("PWD"));
}

TEST_F(Driven, TheDialectIsTheConnections) {
  for (const Sql::Dialect dialect : {Sql::Dialect::Server, Sql::Dialect::Desktop}) {
    const auto store = openCompany(driven(dialect), Access::Read);
    const Host host({.store = store});
    EXPECT_EQ(host.application()->Context()->DataServices()->EngineType(),
              static_cast<std::int16_t>(dialect));
    const auto other =
        dialect == Sql::Dialect::Server ? Sql::Dialect::Desktop : Sql::Dialect::Server;
    EXPECT_THAT(raised(ErrorNumber::InvalidArgument, [&] { const Host wrong({store, other}); }),
                HasSubstr("dialect alone"));
  }
}

TEST_F(Driven, WhatNeedsDefinitionsSaysSo) {
  driver.isolations = SQL_TXN_REPEATABLE_READ;
  const std::string company = driven(Sql::Dialect::Server);
  const auto refused = [](const auto& action) {
    EXPECT_THAT(raised(ErrorNumber::InvalidArgument, action), HasSubstr("own tools"));
  };
  std::stringstream text;
  refused([&] { createCompany(company, {}); });
  refused([&] { (void)checkCompany(company, [](const std::string&) {}); });
  refused([&] { copyCompany(company, "/tmp/x", false); });
  refused([&] { backupCompany(company, "/tmp/x", false); });
  const auto store = openCompany(company, Access::Write);
  refused([&] { (void)importCsv(*store, "Cust", text, false); });
  refused([&] { (void)exportCsv(*store, "Cust", text); });
  refused([&] { (void)describeCompany(*store); });
  refused([&] { store->define("CREATE TABLE A (B INT)"); });
  refused([&] { (void)store->watch({.table = "InvenDet"}); });
}

}  // namespace
}  // namespace QuorHost::Testing
