// Opening company files, and what people read when that fails.
#include "host/engines/sqlite/file/opening.h"

#include <gmock/gmock.h>
#include <sqlite3.h>
#include <unistd.h>

#include <fstream>

#include "host/raw_sql.h"
#include "host/small_company.h"

namespace QuorHost::Testing {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr std::int32_t kPathFileAccess = 75;

void writeFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

std::vector<std::string> filesIn(const TemporaryFolder& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder.path())) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

/// Takes the rights of a user who owns nothing here, as long as it lives.
class WithoutRights {
 public:
  WithoutRights() : user_(geteuid()) {
    constexpr uid_t kNobody = 65534;
    if (user_ == 0) taken_ = seteuid(kNobody) == 0;
  }
  ~WithoutRights() {
    if (taken_ && seteuid(user_) != 0) std::abort();
  }
  WithoutRights(const WithoutRights&) = delete;
  WithoutRights& operator=(const WithoutRights&) = delete;

 private:
  uid_t user_;
  bool taken_ = false;
};

class Opening : public testing::Test {
 protected:
  [[nodiscard]] std::string path() const { return folder.file("company.quor"); }

  void makeCompany() const {
    const auto store = createCompanyFile(path(), Durability::Full);
    defineSmallSchema(*store);
    addEntries(*store, 1000);
  }

  /// The message of an opening that fails; it names the file.
  [[nodiscard]] static std::string refusal(const std::string& file, Access access = Access::Read) {
    std::string message = raised(kPathFileAccess, [&] { (void)openCompanyFile(file, access); });
    EXPECT_THAT(message, HasSubstr("'" + file + "'"));
    return message;
  }

  TemporaryFolder folder;
};

TEST_F(Opening, FilesThatAreNoCompanySayWhatTheyAre) {
  EXPECT_THAT(refusal(path()), HasSubstr("does not exist"));
  EXPECT_FALSE(fs::exists(path())) << "looking for a file must not make one";
  EXPECT_THAT(refusal(folder.path().string()), HasSubstr("is a folder"));
  writeFile(folder.file("empty"), "");
  EXPECT_THAT(refusal(folder.file("empty")), HasSubstr("not a company file"));
  writeFile(folder.file("letter.txt"), "Dear customer, please find enclosed our invoice.");
  EXPECT_THAT(refusal(folder.file("letter.txt"), Access::Write), HasSubstr("not a company file"));
  runRaw(folder.file("other.db"), "CREATE TABLE Photo (Name TEXT)");
  EXPECT_THAT(refusal(folder.file("other.db")), HasSubstr("another program"));
}

TEST_F(Opening, DamagedFilesAreRecognised) {
  makeCompany();
  const std::uintmax_t size = fs::file_size(path());
  for (const std::uintmax_t length : {size / 2, std::uintmax_t{5000}, std::uintmax_t{300}}) {
    const std::string cut = folder.file("cut-" + std::to_string(length));
    fs::copy_file(path(), cut);
    fs::resize_file(cut, length);
    EXPECT_THAT(refusal(cut), HasSubstr("damaged or cut short")) << length;
  }
  // A page in the middle is overwritten: opening cannot see that, the integrity check does.
  {
    std::fstream file(path(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(size) - 4096);
    file << std::string(4096, 'x');
  }
  const auto store = openCompanyFile(path(), Access::Read);
  EXPECT_FALSE(store->integrityFindings().empty());
}

TEST_F(Opening, AFileThatShrinksOrIsReplacedWhileItIsReadIsAnError) {
  constexpr int kMany = 100'000;
  constexpr std::uintmax_t kLittle = 8192;
  makeCompany();
  const std::string other = folder.file("other");
  fs::copy_file(path(), other);
  for (const bool shrinks : {true, false}) {
    fs::copy_file(other, path(), fs::copy_options::overwrite_existing);
    {
      const auto store = openCompanyFile(path(), Access::Write);
      execute(store->connect(Sql::Dialect::Server), "DELETE FROM Entry");
      addEntries(*store, kMany);
    }
    const auto reader = openCompanyFile(path(), Access::Read);
    const Ref<Connection> reading = reader->connect(Sql::Dialect::Server);
    const Ref<Recordset> rows = open(reading, "SELECT EntryNo, Amnt FROM Entry ORDER BY EntryNo");
    if (shrinks) {
      fs::resize_file(path(), kLittle);
    } else {
      fs::rename(other, path());
    }
    const std::string message = raised(QuorDataLib::kStatementRefused, [&] {
      int count = 0;
      for (; !rows->AtEnd(); rows->MoveNext()) count += rows->Field(0).toLong() > 0 ? 1 : 0;
      EXPECT_EQ(count, kMany) << "the rows of the file that was opened, all of them";
      open(reading, "SELECT SUM(Amnt) AS S FROM Entry");
    });
    EXPECT_THAT(message, HasSubstr(shrinks ? "damaged" : "replaced"));
  }
}

TEST_F(Opening, ObjectsThatSomebodyElseHasPutThereAreRefusedByName) {
  const std::pair<const char*, const char*> plants[] = {
      {"CREATE TRIGGER Evil AFTER INSERT ON Entry BEGIN DELETE FROM Entry; END", "trigger Evil"},
      {"CREATE VIEW Evil AS WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n)"
       " SELECT i FROM n",
       "view Evil"},
      {"DROP VIEW OpenAccount; CREATE VIEW OpenAccount AS WITH RECURSIVE n (i) AS (SELECT 1 UNION"
       " ALL SELECT i FROM n) SELECT i AS AcctNo, i AS Balance FROM n",
       "view OpenAccount"},
      {"CREATE TRIGGER Evil AFTER UPDATE ON Entry BEGIN SELECT 1; END; INSERT INTO QuorCatalogue "
       "VALUES (99, 'Evil', 'trigger', '')",
       "trigger Evil"},
      {"INSERT INTO QuorCatalogue VALUES (99, 'Evil', 'trigger', ''); CREATE TRIGGER Evil AFTER "
       "INSERT ON QuorCatalogue BEGIN DELETE FROM Entry; END; UPDATE QuorCatalogue SET Sql = '1.0' "
       "WHERE Position = 0",
       "trigger Evil"},
      {"CREATE VIRTUAL TABLE Evil USING rtree (Id, Low, High)", "virtual table Evil"},
      {"CREATE TABLE \"Ev\nil\" (A)", "table Ev il"},
      {"CREATE INDEX Evil ON Entry (Amnt + 1)", "index Evil"},
      {"DROP INDEX AccountByDescr; CREATE INDEX AccountByDescr ON Account (Kind) WHERE Kind = 1",
       "index AccountByDescr"},
      {"ALTER TABLE Entry ADD COLUMN Evil INT AS (Amnt * 2)", "table Entry"},
      {"DROP TABLE QuorCatalogue; CREATE VIEW QuorCatalogue AS WITH RECURSIVE n (i)"
       " AS (SELECT 0 UNION ALL SELECT i + 1 FROM n) SELECT i AS Position, 'A' AS Name, 'table' AS"
       " Kind, 'x' AS Sql FROM n",
       "QuorCatalogue"},
  };
  makeCompany();
  for (const auto& [plant, named] : plants) {
    const std::string file = folder.file("planted");
    fs::copy_file(path(), file, fs::copy_options::overwrite_existing);
    runRaw(file, plant);
    for (const Access access : {Access::Read, Access::Write}) {
      EXPECT_THAT(refusal(file, access),
                  HasSubstr(std::string("holds the ") +
                            (named[0] == 'Q' ? "list of definitions " : "") + named + ","));
    }
  }
  runRaw(path(), "ANALYZE Entry");
  EXPECT_EQ(openCompanyFile(path(), Access::Write)->catalogue().relations().size(), 4U);
}

TEST_F(Opening, ATableOfAnOlderBuildGetsItsChecksWhenItIsOpenedForWriting) {
  makeCompany();
  runRaw(path(),
         "PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql = 'CREATE TABLE \"Entry\" ("
         "\"EntryNo\" INTEGER PRIMARY KEY, \"Amnt\" INTEGER) STRICT' WHERE name = 'Entry'");
  runRaw(path(), "INSERT INTO Entry (EntryNo) VALUES (9999999999)");
  const std::string wide = "SELECT EntryNo FROM Entry ORDER BY EntryNo DESC";
  const auto reading = openCompanyFile(path(), Access::Read);
  EXPECT_THAT(
      raised(ErrorNumber::Overflow, [&] { only(reading->connect(Sql::Dialect::Server), wide); }),
      HasSubstr("EntryNo"));
  const auto store = openCompanyFile(path(), Access::Write);
  const Ref<Connection> connection = store->connect(Sql::Dialect::Server);
  raised(QuorDataLib::kStatementRefused,
         [&] { execute(connection, "UPDATE Entry SET EntryNo = EntryNo + 2147483647"); });
  EXPECT_EQ(execute(connection, "DELETE FROM Entry WHERE EntryNo > 2147483647"), 1);
  EXPECT_EQ(only(connection, wide).toLong(), 1000);
  EXPECT_TRUE(store->integrityFindings().empty());
}

TEST_F(Opening, ANewerSchemaIsRefusedAndAnOlderProgramToldToBeUpdated) {
  {
    const auto store = createCompanyFile(path(), Durability::Full);
    store->setSchemaVersion(kNewestSchemaVersion);
    EXPECT_EQ(store->schemaVersion(), kNewestSchemaVersion);
  }
  EXPECT_EQ(openCompanyFile(path(), Access::Read)->schemaVersion(), kNewestSchemaVersion);
  openCompanyFile(path(), Access::Write)->setSchemaVersion(kNewestSchemaVersion + 1);
  EXPECT_THAT(refusal(path()), HasSubstr("newer version"));
}

TEST_F(Opening, ALockedFileIsNamed) {
  makeCompany();
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(path().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr,
                         nullptr),
            SQLITE_OK);
  EXPECT_THAT(raised(kPathFileAccess,
                     [&] { (void)Sqlite::openDatabase(path(), Access::Read, /*busyTimeout=*/10); }),
              HasSubstr("locked by another program"));
  sqlite3_close(other);
}

TEST_F(Opening, AnExistingFileIsNeverOverwritten) {
  writeFile(path(), "precious");
  EXPECT_THAT(raised(kPathFileAccess, [&] { (void)createCompanyFile(path(), Durability::Bulk); }),
              HasSubstr("exists already"));
  EXPECT_EQ(fs::file_size(path()), 8U);
  EXPECT_THAT(
      raised(kPathFileAccess,
             [&] { (void)createCompanyFile(folder.file("no/such/folder"), Durability::Full); }),
      HasSubstr("cannot be created"));
}

TEST_F(Opening, NamesThatMeanSomethingToTheEngineAreFilesLikeAnyOther) {
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  for (const std::string name : {":memory:", "file:x?mode=memory", "100% sure#1"}) {
    defineSmallSchema(*createCompanyFile(name, Durability::Full));
    EXPECT_TRUE(fs::exists(folder.path() / name)) << name;
    EXPECT_EQ(openCompanyFile(name, Access::Read)->catalogue().relations().size(), 4U) << name;
  }
  fs::current_path(before);
}

TEST_F(Opening, NothingIsLeftBesideTheFile) {
  makeCompany();
  EXPECT_THAT(filesIn(folder), testing::ElementsAre("company.quor"));
  {
    const auto store = openCompanyFile(path(), Access::Read);
    EXPECT_EQ(rest(open(store->connect(Sql::Dialect::Server), "SELECT COUNT(*) AS N FROM Entry")),
              "1000");
  }
  EXPECT_THAT(filesIn(folder), testing::ElementsAre("company.quor"));
}

TEST_F(Opening, AReaderLeavesAWritersFilesAlone) {
  makeCompany();
  const auto writer = openCompanyFile(path(), Access::Write);
  const Ref<Connection> connection = writer->connect(Sql::Dialect::Server);
  execute(connection, "DELETE FROM Entry WHERE EntryNo > 10");
  const auto count = [&] {
    return only(openCompanyFile(path(), Access::Read)->connect(Sql::Dialect::Server),
                "SELECT COUNT(*) AS N FROM Entry")
        .toLong();
  };
  EXPECT_EQ(count(), 10);
  EXPECT_EQ(execute(connection, "DELETE FROM Entry WHERE EntryNo > 5"), 5);
  EXPECT_EQ(count(), 5);
}

TEST_F(Opening, WriteProtectedFolders) {
  constexpr fs::perms kReadFile{0444};
  constexpr fs::perms kReadFolder{0555};
  constexpr fs::perms kWriteFolder{0755};
  makeCompany();
  fs::permissions(path(), kReadFile);
  fs::permissions(folder.path(), kReadFolder);
  {
    const WithoutRights nobody;
    const auto store = openCompanyFile(path(), Access::Read);
    EXPECT_EQ(rest(open(store->connect(Sql::Dialect::Server), "SELECT COUNT(*) AS N FROM Entry")),
              "1000");
    EXPECT_THAT(refusal(path(), Access::Write), HasSubstr("cannot be written"));
  }
  // Changes that are not merged yet would be missed by reading the file alone.
  fs::permissions(folder.path(), kWriteFolder);
  writeFile(path() + "-wal", std::string(100, 'w'));
  fs::permissions(folder.path(), kReadFolder);
  {
    const WithoutRights nobody;
    EXPECT_THAT(refusal(path()), HasSubstr("-wal"));
  }
  fs::permissions(path(), fs::perms::none);
  const WithoutRights nobody;
  EXPECT_THAT(refusal(path()), HasSubstr("permission to read"));
}

TEST_F(Opening, DefinitionsThatCannotBeReadNameTheFile) {
  makeCompany();
  runRaw(path(), "UPDATE QuorCatalogue SET Sql = 'CREATE TABLE Currency' WHERE Name = 'Currency'");
  EXPECT_THAT(
      raised(QuorDataLib::kStatementRefused, [&] { (void)openCompanyFile(path(), Access::Read); }),
      HasSubstr("The definitions in the company file '" + path() + "'"));
}

TEST_F(Opening, AnotherOrderOfTextsIsRenewed) {
  makeCompany();
  runRaw(path(), "UPDATE QuorCatalogue SET Sql = '1.0' WHERE Position = 0");
  const auto reader = openCompanyFile(path(), Access::Read);
  EXPECT_TRUE(reader->integrityFindings().empty());
  EXPECT_THAT(rest(open(openCompanyFile(path(), Access::Read)->connect(Sql::Dialect::Server),
                        "SELECT EntryNo FROM Entry WHERE EntryNo < 3")),
              "1 2");
}

}  // namespace
}  // namespace QuorHost::Testing
