// Companies of an older schema.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <array>

#include "company/company_file.h"
#include "host/another_process.h"
#include "host/engines/store.h"

namespace {

using companytest::Folder;
using QuorHost::Access;
using testing::HasSubstr;
using testing::IsEmpty;

void runRaw(const std::string& path, const char* sql) {
  sqlite3* handle = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &handle), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(handle);
  sqlite3_close(handle);
}

/// The sample as version 1 of the schema had it.
void makeVersion1(const std::string& path) {
  QuorHost::createCompany(path, {.sample = true});
  std::string back = "PRAGMA user_version=1;";
  for (const char* const added :
       {"InvoiHdrById", "InvoiHdrByType", "PurcHdrById", "PurcHdrByStatus"}) {
    back.append("DROP INDEX ").append(added).append("; DELETE FROM QuorCatalogue WHERE Name = '");
    back.append(added).append("';");
  }
  runRaw(path, back.c_str());
}

bool isUpToDate(const std::string& path) {
  return QuorHost::openCompany(path, Access::Read)->schemaVersion() == QuorHost::kSchemaVersion;
}

TEST(OlderSchema, IsBroughtUpToDateWhenTheCompanyIsOpened) {
  const Folder folder;
  const std::string path = folder.file("company");
  const std::string fresh = folder.file("fresh");
  makeVersion1(path);
  QuorHost::createCompany(fresh, {.sample = true});
  EXPECT_TRUE(isUpToDate(path));
  const auto store = QuorHost::openCompany(path, Access::Write);
  EXPECT_THAT(QuorHost::checkCompany(*store), IsEmpty());
  // Whatever the schema has is there now, whichever way the file came to it.
  runRaw(path,
         ("ATTACH '" + fresh +
          "' AS Fresh; CREATE TEMP TABLE Difference (N INT CHECK (N = 0));"
          "INSERT INTO Difference SELECT count(*) FROM (SELECT Name, Sql FROM Fresh.QuorCatalogue "
          "EXCEPT SELECT Name, Sql FROM main.QuorCatalogue);"
          "INSERT INTO Difference SELECT count(*) FROM (SELECT name, sql FROM Fresh.sqlite_schema "
          "EXCEPT SELECT name, sql FROM main.sqlite_schema)")
             .c_str());
}

TEST(OlderSchema, IsBroughtUpToDateByOneOfSeveralProcesses) {
  const Folder folder;
  const std::string path = folder.file("company");
  makeVersion1(path);
  std::array<pid_t, 4> children{};
  for (pid_t& child : children) {
    child = QuorHost::Testing::inAnotherProcess([&] { return isUpToDate(path); });
  }
  for (const pid_t child : children) EXPECT_EQ(QuorHost::Testing::statusOf(child), 0);
}

TEST(OlderSchema, StaysAsItIsWhereItCannotBeChanged) {
  const Folder folder;
  const std::string path = folder.file("company");
  makeVersion1(path);
  // A view in the way of the new index.
  runRaw(path, "CREATE VIEW PurcHdrByStatus AS SELECT 1 AS X");
  try {
    static_cast<void>(QuorHost::openCompany(path, Access::Read));
    ADD_FAILURE() << "it was opened";
  } catch (const companytest::Error& error) {
    EXPECT_THAT(error.description(), HasSubstr("older schema (1, here 2)"));
  }
  EXPECT_EQ(QuorHost::openCompanyFile(path, Access::Read)->schemaVersion(), 1);
}

}  // namespace
