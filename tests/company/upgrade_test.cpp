// Companies of an older schema.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "company/company_file.h"
#include "company/version_1.h"
#include "host/another_process.h"
#include "host/engines/store.h"
#include "host/raw_sql.h"

namespace {

using companytest::Folder;
using companytest::makeVersion1;
using QuorHost::Access;
using QuorHost::Testing::runRaw;
using testing::HasSubstr;
using testing::IsEmpty;

bool isUpToDate(const std::string& path, Access access) {
  return QuorHost::openCompany(path, access)->schemaVersion() == QuorHost::kNewestSchemaVersion;
}

TEST(OlderSchema, IsBroughtUpToDateWhenTheCompanyIsOpened) {
  const Folder folder;
  const std::string path = folder.file("company");
  const std::string fresh = folder.file("fresh");
  makeVersion1(path);
  QuorHost::createCompany(fresh, {.sample = true});
  // Whoever only reads has a company of the new schema, and the file stays as it is.
  const std::string before = companytest::bytesOf(path);
  {
    const auto store = QuorHost::openCompany(path, Access::Read);
    EXPECT_EQ(store->schemaVersion(), QuorHost::kNewestSchemaVersion);
    EXPECT_FALSE(store->writable());
    EXPECT_THAT(QuorHost::checkCompany(*store), IsEmpty());
  }
  EXPECT_TRUE(companytest::bytesOf(path) == before);
  EXPECT_TRUE(isUpToDate(path, Access::Write));
  EXPECT_EQ(QuorHost::openCompanyFile(path, Access::Read)->schemaVersion(),
            QuorHost::kNewestSchemaVersion);
  // Whatever the schema has is there now, whichever way the file came to it.
  runRaw(
      path,
      "ATTACH '" + fresh +
          "' AS Fresh; CREATE TEMP TABLE Difference (N INT CHECK (N = 0));"
          "INSERT INTO Difference SELECT count(*) FROM (SELECT Name, Sql FROM Fresh.QuorCatalogue "
          "EXCEPT SELECT Name, Sql FROM main.QuorCatalogue);"
          "INSERT INTO Difference SELECT count(*) FROM (SELECT name, sql FROM Fresh.sqlite_schema "
          "EXCEPT SELECT name, sql FROM main.sqlite_schema)");
}

TEST(OlderSchema, IsBroughtUpToDateByOneOfSeveralProcesses) {
  const Folder folder;
  const std::string path = folder.file("company");
  makeVersion1(path);
  std::array<pid_t, 4> children{};
  for (pid_t& child : children) {
    child = QuorHost::Testing::inAnotherProcess([&] { return isUpToDate(path, Access::Write); });
  }
  for (const pid_t child : children) EXPECT_EQ(QuorHost::Testing::statusOf(child), 0);
}

TEST(OlderSchema, IsOpenedAlthoughAccountsShareANumber) {
  const Folder folder;
  const std::string path = folder.file("company");
  makeVersion1(path);
  runRaw(path, "INSERT INTO GLAcct (GLAcctId, AcctType) VALUES ('6050', 6)");
  const auto store = QuorHost::openCompany(path, Access::Write);
  EXPECT_THAT(QuorHost::checkCompany(*store),
              testing::ElementsAre("The account number 6050 is that of 2 accounts of GLAcct"));
}

TEST(OlderSchema, StaysAsItIsWhereItCannotBeChanged) {
  const Folder folder;
  const std::string path = folder.file("company");
  makeVersion1(path);
  // An index of the same name in the way of the new one.
  QuorHost::openCompanyFile(path, Access::Write)
      ->define("CREATE INDEX PurcHdrByStatus ON PurcHdr (PurcType)");
  try {
    static_cast<void>(QuorHost::openCompany(path, Access::Write));
    ADD_FAILURE() << "it was opened";
  } catch (const companytest::Error& error) {
    EXPECT_THAT(error.description(), HasSubstr("older schema (1, here 7)"));
  }
  EXPECT_EQ(QuorHost::openCompanyFile(path, Access::Read)->schemaVersion(), 1);
}

}  // namespace
