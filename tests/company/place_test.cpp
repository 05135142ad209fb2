// Where company files are put, by `create` and by `backup`: whole, private, and in nobody's way.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "company/company_file.h"
#include "host/another_process.h"
#include "host/raw_sql.h"

namespace companytest {
namespace {

namespace fs = std::filesystem;
using QuorHost::Access;
using QuorHost::backupCompany;
using QuorHost::createCompany;
using QuorHost::Testing::inAnotherProcess;
using QuorHost::Testing::statusOf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

void importCustomers(const std::string& path, int count) {
  std::string csv = "Name\n";
  for (int i = 0; i < count; ++i) csv += "Customer\n";
  import(*QuorHost::openCompanyFile(path, Access::Write), "Cust", csv);
}

int customersOf(const std::string& path) {
  const auto store = QuorHost::openCompanyFile(path, Access::Read);
  return std::stoi(rows(*store, "SELECT COUNT(*) AS N FROM Cust").at(0));
}

/// Adds customers in a process that ends before it can put its log back.
void importAndDie(const std::string& path, int count) {
  ASSERT_EQ(statusOf(inAnotherProcess([&] {
              const auto store = QuorHost::openCompanyFile(path, Access::Write);
              std::string csv = "Name\n";
              for (int i = 0; i < count; ++i) csv += "Customer\n";
              import(*store, "Cust", csv);
              _exit(0);
              return true;
            })),
            0);
  ASSERT_GT(fs::file_size(path + "-wal"), 0U);
}

mode_t modeOf(const std::string& path) {
  struct stat file{};
  EXPECT_EQ(::stat(path.c_str(), &file), 0);
  return file.st_mode & 0777U;
}

class Place : public testing::Test {
 protected:
  void SetUp() override { createCompany(path_, {}); }

  Folder folder_;
  std::string path_ = folder_.file("company");
};

TEST_F(Place, NewFilesArePrivateAndReplacedOnesKeepTheirModeAndOwner) {
  EXPECT_EQ(modeOf(path_), 0600U);
  ASSERT_EQ(::chmod(path_.c_str(), 0640), 0);
  const bool root = ::geteuid() == 0;
  if (root) {
    ASSERT_EQ(::chown(path_.c_str(), 1, 2), 0);
  }
  createCompany(path_, {.force = true});
  EXPECT_EQ(modeOf(path_), 0640U);
  struct stat file{};
  ASSERT_EQ(::stat(path_.c_str(), &file), 0);
  if (root) {
    EXPECT_EQ(std::pair(file.st_uid, file.st_gid), std::pair(uid_t{1}, gid_t{2}));
  }
}

TEST_F(Place, LinksAreFollowedAndWhatIsNoFileIsRefused) {
  const std::string link = folder_.file("link");
  fs::create_symlink("company", link);
  importCustomers(path_, 1);
  createCompany(link, {.force = true});
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(customersOf(path_), 0);

  const std::string dangling = folder_.file("dangling");
  fs::create_symlink("nowhere", dangling);
  const std::string pipe = folder_.file("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  for (const auto& [target, what] : {std::pair{dangling, "leads nowhere"}, {pipe, "a pipe"}}) {
    for (const bool force : {false, true}) {
      EXPECT_THAT(failure([&] { createCompany(target, {.force = force}); }),
                  AllOf(HasSubstr(target), HasSubstr(what)));
      EXPECT_THAT(failure([&] { backupCompany(path_, target, force); }), HasSubstr(what));
    }
  }
  EXPECT_THAT(folder_.content(), UnorderedElementsAre("company", "link", "dangling", "pipe"));
  EXPECT_THAT(failure([&] { backupCompany(path_, link, true); }),
              HasSubstr("is the company itself"));
}

TEST_F(Place, AnOldCompanyStaysWithItsLogUntilTheNewOneIsThere) {
  importAndDie(path_, 7);
  const auto interrupt = [](std::string_view, std::int64_t, std::int64_t) {
    throw std::runtime_error("interrupted");
  };
  EXPECT_THROW(createCompany(path_, {.force = true}, interrupt), std::runtime_error);
  EXPECT_EQ(customersOf(path_), 7);
  importAndDie(path_, 7);
  createCompany(path_, {.force = true});
  EXPECT_EQ(customersOf(path_), 0);
  EXPECT_THAT(folder_.content(), ElementsAre("company"));
}

TEST_F(Place, ACompanyInUseIsNotReplaced) {
  const auto user = QuorHost::openCompanyFile(path_, Access::Write);
  EXPECT_THAT(failure([&] { createCompany(path_, {.force = true}); }),
              AllOf(HasSubstr(path_), HasSubstr("locked by another program")));
  EXPECT_EQ(import(*user, "Cust", "Name\nAubé\n"), 1);
  EXPECT_EQ(customersOf(path_), 1);
}

TEST_F(Place, MakersOfOneFileAreNotInEachOthersWay) {
  bool made = false;
  const auto another = [&](std::string_view, std::int64_t, std::int64_t) {
    if (std::exchange(made, true)) return;
    createCompany(path_, {.force = true});
    importCustomers(path_, 3);
  };
  createCompany(path_, {.force = true}, another);
  EXPECT_TRUE(made);
  EXPECT_EQ(customersOf(path_), 0);
  EXPECT_THAT(folder_.content(), ElementsAre("company"));

  // Nobody asked for a replacement here: the second comes too late.
  made = false;
  const std::string other = folder_.file("other");
  EXPECT_THAT(failure([&] {
                createCompany(other, {}, [&](std::string_view, std::int64_t, std::int64_t) {
                  if (!std::exchange(made, true)) createCompany(other, {});
                });
              }),
              HasSubstr("exists already"));
  EXPECT_THAT(folder_.content(), UnorderedElementsAre("company", "other"));
}

TEST_F(Place, OnlyFilesOfThisProgramAreClearedAway) {
  const std::string start = path_ + ".unfinished-";
  const std::string digits = "0123456789abcdef0123456789abcdef";
  const std::string abandoned = start + digits;
  const std::string letter = start + "f" + digits.substr(1);
  const std::string named = start + "draft";
  QuorHost::createCompanyFile(abandoned, QuorHost::Durability::Full).reset();
  std::ofstream(abandoned + "-journal") << "left behind";
  for (const std::string& mine : {letter, named}) std::ofstream(mine) << "my own notes";
  createCompany(path_, {.force = true});
  EXPECT_THAT(folder_.content(),
              UnorderedElementsAre("company", fs::path(letter).filename().string(),
                                   fs::path(named).filename().string()));
}

TEST_F(Place, ABackupIsOfOneMomentWhileOthersWrite) {
  constexpr int kAtOnce = 50;
  const pid_t writer = inAnotherProcess([&] {
    for (;;) importCustomers(path_, kAtOnce);
    return true;
  });
  const std::string copy = folder_.file("copy");
  for (int turn = 0; turn < 5; ++turn) {
    backupCompany(path_, copy, turn > 0);
    EXPECT_EQ(customersOf(copy) % kAtOnce, 0);
    const auto store = QuorHost::openCompanyFile(copy, Access::Read);
    EXPECT_THAT(QuorHost::checkCompany(*store), testing::IsEmpty());
  }
  kill(writer, SIGKILL);
  statusOf(writer);
  EXPECT_EQ(modeOf(copy), 0600U);
  EXPECT_THAT(failure([&] { backupCompany(path_, copy, false); }), HasSubstr("exists already"));
}

TEST_F(Place, WhoeverClosesLastLeavesOneFile) {
  importAndDie(path_, 7);
  EXPECT_EQ(customersOf(path_), 7);
  EXPECT_THAT(folder_.content(), ElementsAre("company"));
  // The same where the file is kept with a journal, as on disks that cannot keep a log.
  importCustomers(path_, 5000);
  QuorHost::Testing::runRaw(path_, "PRAGMA journal_mode=DELETE");
  const pid_t child = inAnotherProcess([&] {
    sqlite3* const handle = QuorHost::Testing::openRaw(path_);
    const bool begun =
        handle != nullptr &&
        sqlite3_exec(handle, "PRAGMA cache_size=1; BEGIN; UPDATE Cust SET City = 'Laval'", nullptr,
                     nullptr, nullptr) == SQLITE_OK;
    _exit(begun ? 0 : 3);
    return begun;
  });
  ASSERT_EQ(statusOf(child), 0);
  ASSERT_GT(fs::file_size(path_ + "-journal"), 512U);
  const auto store = QuorHost::openCompanyFile(path_, Access::Read);
  EXPECT_EQ(rows(*store, "SELECT COUNT(*) AS N FROM Cust WHERE City IS NULL"),
            std::vector<std::string>{"5007"});
  EXPECT_THAT(folder_.content(), ElementsAre("company"));
}

}  // namespace
}  // namespace companytest
