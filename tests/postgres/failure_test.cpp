// Bad days of a server: connections that break off anywhere, restarts, limits, a full disk.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <future>
#include <limits>

#include "company/company_file.h"
#include "host/company/company.h"
#include "host/small_company.h"
#include "postgres/cluster.h"
#include "postgres/proxy.h"

namespace QuorHost::Testing {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::int32_t kPathFileAccess = 75;
/// Rows of the company: more than a first batch has.
constexpr int kRows = 70;

#ifdef __SANITIZE_ADDRESS__
constexpr int kStep = 13;
#else
constexpr int kStep = 5;
#endif

class PostgresFailures : public testing::Test {
 protected:
  void SetUp() override {
    if (cluster == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed";
  }

  /// A small company in the schema `name`, open for writing.
  [[nodiscard]] std::shared_ptr<Store> make(const std::string& name, int entries,
                                            const std::vector<std::string>& readers = {}) const {
    auto store = createCompanyFile(cluster->company(name), Durability::Full, {.readers = readers});
    {
      const auto transaction = store->begin();
      defineSmallSchema(*store);
      transaction->commit();
    }
    addEntries(*store, entries);
    return store;
  }

  Cluster* cluster = Cluster::instance();
  TemporaryFolder folder;
};

/// A story in steps of which one at the most may fail, and then by a connection that is lost.
struct Story {
  int failed = 0;

  /// Whether the step was done.
  template <class Step>
  bool step(Step&& step) {
    try {
      step();
      return true;
    } catch (const Error& error) {
      ++failed;
      const bool atOpening = error.number() == kPathFileAccess &&
                             error.description().find("cannot be opened") != std::string::npos;
      EXPECT_TRUE(error.number() == kConnectionLost || atOpening) << error.description();
      return false;
    }
  }
};

/// Tells `story` once for every message that can be the last one, some left out, and once with
/// none.
template <class Tell>
void sweep(Proxy& proxy, const Tell& story) {
  proxy.cutAfter(-1);
  story();
  const int messages = proxy.passed();
  EXPECT_GT(messages, 30);
  for (int message = 0; message < messages; message += kStep) {
    SCOPED_TRACE("cut after message " + std::to_string(message) + " of " +
                 std::to_string(messages));
    proxy.cutAfter(message);
    const Story told = story();
    EXPECT_LE(told.failed, 1);
  }
}

TEST_F(PostgresFailures, ChangeIsMadeOnceOrNotAtAllAndRowsComeOnceEach) {
  make("cut", kRows).reset();
  const std::string address = Proxy::through(cluster->company("cut"));
  Proxy proxy(cluster->folder());
  const auto amount = [&](int entry) {
    return std::stoi(
        cluster->run("SELECT amnt::int FROM cut.entry WHERE entryno = " + std::to_string(entry)));
  };
  const auto more = [](int entry) {
    return "UPDATE Entry SET Amnt = Amnt + 1 WHERE EntryNo = " + std::to_string(entry);
  };
  int added = kRows;
  sweep(proxy, [&] {
    Story story;
    std::shared_ptr<Store> store;
    if (!story.step([&] { store = openCompanyFile(address, Access::Write); })) return story;
    const auto connection = store->connect(Sql::Dialect::Server);
    int count = 0;
    const bool read = story.step([&] {
      const auto rows =
          open(connection, "SELECT EntryNo FROM Entry WHERE EntryNo <= 70 ORDER BY EntryNo");
      for (; !rows->AtEnd(); rows->MoveNext()) EXPECT_EQ(rows->Field(0).toLong(), ++count);
    });
    EXPECT_TRUE(read ? count == kRows : count <= kRows) << count;

    // Alone, in a transaction with rows that are copied, and as a row of a recordset.
    int before = amount(1);
    const bool changed = story.step([&] { execute(connection, more(1)); });
    EXPECT_TRUE(amount(1) == before + 1 || (!changed && amount(1) == before));
    before = amount(2);
    ++added;
    const bool committed = story.step([&] {
      const auto transaction = store->begin();
      execute(connection, more(2));
      store->writer("Entry", {"EntryNo", "Amnt"})->add(std::vector<Value>{added, before + 1});
      execute(connection, more(3));
      transaction->commit();
    });
    const int now = amount(2);
    EXPECT_TRUE(now == before + 1 || (!committed && now == before));
    EXPECT_EQ(amount(3), now + 1);
    EXPECT_EQ(
        cluster->run("SELECT count(*) FROM cut.entry WHERE entryno = " + std::to_string(added)),
        now == before ? "0" : "1");
    before = amount(4);
    const bool stored = story.step([&] {
      const auto rows =
          open(connection, "SELECT EntryNo, Amnt FROM Entry WHERE EntryNo = 4", {}, 1);
      rows->SetField("Amnt", before + 1);
      rows->Update();
    });
    EXPECT_TRUE(amount(4) == before + 1 || (!stored && amount(4) == before));

    story.step([&] {
      const auto reader = openCompanyFile(address, Access::Read);
      const auto reading = reader->connect(Sql::Dialect::Server);
      const auto moment = reader->hold();
      const std::string entries = rest(open(reading, "SELECT Amnt FROM Entry ORDER BY EntryNo"));
      cluster->run("UPDATE cut.entry SET amnt = amnt + 1 WHERE entryno = 5");
      EXPECT_EQ(rest(open(reading, "SELECT Amnt FROM Entry ORDER BY EntryNo")), entries);
    });
    return story;
  });
}

TEST_F(PostgresFailures, CopyIsWholeOrNotThere) {
  make("copied", kRows)->setSchemaVersion(kNewestSchemaVersion);
  const std::string there = cluster->company("copied");
  const std::string file = folder.file("company");
  const std::string rows = companytest::exported(*openCompany(there, Access::Read), "Entry");
  copyCompany(there, file, false);
  copyCompany(file, cluster->company("swept"), false);
  Proxy proxy(cluster->folder());
  sweep(proxy, [&] {
    Story story;
    story.step([&] { copyCompany(file, Proxy::through(cluster->company("swept")), true); });
    EXPECT_EQ(cluster->run("SELECT sum(amnt)::int FROM swept.entry"), "2485");
    return story;
  });
  sweep(proxy, [&] {
    Story story;
    const std::string back = folder.file("back");
    const bool copied = story.step([&] { copyCompany(Proxy::through(there), back, false); });
    EXPECT_EQ(std::filesystem::exists(back), copied);
    if (copied) {
      EXPECT_EQ(companytest::exported(*openCompany(back, Access::Read), "Entry"), rows);
    }
    std::filesystem::remove(back);
    return story;
  });
}

TEST_F(PostgresFailures, RestartOfTheServerIsOneErrorEach) {
  const auto store = make("restart", 20'000);
  const auto connection = store->connect(Sql::Dialect::Server);
  const auto reader = openCompanyFile(cluster->company("restart"), Access::Read);
  const auto moment = reader->hold();
  const auto reading = reader->connect(Sql::Dialect::Server);
  (void)open(reading, "SELECT EntryNo FROM Entry");
  const auto lying = open(connection, "SELECT EntryNo FROM Entry ORDER BY EntryNo");
  execute(connection, "UPDATE Entry SET Amnt = 0 WHERE EntryNo = 1");
  cluster->stop();
  // No new connection is to be had.
  EXPECT_THAT(
      raised(kConnectionLost, [&] { (void)only(connection, "SELECT COUNT(*) FROM Entry"); }),
      HasSubstr("no new one"));
  cluster->start();
  raised(kConnectionLost, [&] { (void)rest(lying); });
  EXPECT_EQ(only(connection, "SELECT COUNT(*) FROM Entry").toLong(), 20'000);
  for (int i = 0; i < 2; ++i) {
    EXPECT_THAT(raised(kConnectionLost, [&] { (void)only(reading, "SELECT COUNT(*) FROM Entry"); }),
                Not(HasSubstr("change")));
  }
  const std::string more = "UPDATE Entry SET Amnt = Amnt + 1 WHERE EntryNo = 1";
  EXPECT_THAT(raised(kConnectionLost, [&] { execute(connection, more); }), HasSubstr("not known"));
  EXPECT_EQ(execute(connection, more), 1);
  EXPECT_EQ(only(connection, "SELECT Amnt FROM Entry WHERE EntryNo = 1").toLong(), 1);
}

TEST_F(PostgresFailures, RolesMayHaveLimits) {
  ASSERT_EQ(cluster->run("CREATE ROLE few LOGIN CONNECTION LIMIT 1"), "");
  const auto owner = make("few", 20'000, {"few"});
  const std::string address = cluster->companyAs("few", "few");
  {
    const auto store = openCompanyFile(address, Access::Read);
    const auto connection = store->connect(Sql::Dialect::Server);
    // Two large ones at once over the only connection.
    const auto one = open(connection, "SELECT EntryNo FROM Entry ORDER BY EntryNo");
    const auto other = open(connection, "SELECT EntryNo FROM Entry ORDER BY EntryNo");
    EXPECT_EQ(rest(one), rest(other));
    EXPECT_THAT(raised(kPathFileAccess, [&] { (void)openCompanyFile(address, Access::Read); }),
                HasSubstr("too many connections"));
  }
  cluster->run("ALTER ROLE few SET statement_timeout = '400ms'; ALTER ROLE few CONNECTION LIMIT 9");
  const auto store = openCompanyFile(address, Access::Read);
  const auto connection = store->connect(Sql::Dialect::Server);
  connection->SetCommandTimeout(60);
  EXPECT_EQ(only(connection, "SELECT COUNT(*) FROM Entry").toLong(), 20'000);
  // Without a limit of its own the role's holds, also after one that had one.
  connection->SetCommandTimeout(0);
  EXPECT_THAT(raised(QuorDataLib::kStatementRefused,
                     [&] {
                       (void)only(connection,
                                  "SELECT COUNT(*) FROM Entry A, Entry B WHERE A.Amnt + "
                                  "B.Amnt = -1");
                     }),
              HasSubstr("time limit that is set there"));
}

TEST_F(PostgresFailures, TwoThatWaitForEachOtherAreParted) {
  cluster->run("ALTER ROLE quor SET deadlock_timeout = '20ms'");
  const auto one = make("crosswise", 2);
  const auto other = openCompanyFile(cluster->company("crosswise"), Access::Write);
  const auto change = [](Store& store, int entry) {
    execute(store.connect(Sql::Dialect::Server), "UPDATE Entry SET Amnt = 0 WHERE EntryNo = ?",
            {Value(entry)});
  };
  std::string refused;
  {
    const auto first = one->begin();
    const auto second = other->begin();
    change(*one, 1);
    change(*other, 2);
    const auto attempt = [&](Store& store, int entry) -> std::string {
      try {
        change(store, entry);
        return {};
      } catch (const Error& error) {
        EXPECT_EQ(error.number(), QuorDataLib::kStatementRefused);
        return error.description();
      }
    };
    auto waiting = std::async(std::launch::async, [&] { return attempt(*one, 2); });
    refused = attempt(*other, 1);
    refused += waiting.get();
  }
  EXPECT_THAT(refused, HasSubstr("by another program at the same time"));
  cluster->run("ALTER ROLE quor RESET deadlock_timeout");
}

/// A file system of its own with little room, where one can be mounted.
struct TinyDisk {
  explicit TinyDisk(std::string folder) : place(std::move(folder)) {
    std::filesystem::create_directory(place);
    mounted = ::mount("none", place.c_str(), "tmpfs", 0, "size=300k,uid=65534,gid=65534") == 0;
  }
  ~TinyDisk() {
    if (mounted) ::umount2(place.c_str(), MNT_DETACH);
  }
  TinyDisk(const TinyDisk&) = delete;
  TinyDisk& operator=(const TinyDisk&) = delete;

  std::string place;
  bool mounted = false;
};

TEST_F(PostgresFailures, FullDiskKeepsNothing) {
  const TinyDisk disk(cluster->folder() / "tiny");
  if (!disk.mounted) GTEST_SKIP() << "no file system can be mounted here";
  {
    const auto store = make("full", 3);
    EXPECT_EQ(cluster->run("CREATE TABLESPACE tiny LOCATION '" + disk.place + "'"), "");
    EXPECT_EQ(cluster->run("ALTER TABLE \"full\".entry SET TABLESPACE tiny"), "");
    const auto transaction = store->begin();
    EXPECT_THAT(raised(QuorDataLib::kStatementRefused,
                       [&] {
                         const auto writer = store->writer("Entry", {"EntryNo", "Amnt"});
                         for (int i = 10; i < 50'000; ++i) writer->add(std::vector<Value>{i, i});
                         transaction->commit();
                       }),
                HasSubstr("disk of the server is full"));
  }
  EXPECT_EQ(cluster->run("SELECT count(*) FROM \"full\".entry"), "3");
  EXPECT_EQ(cluster->run("DROP SCHEMA \"full\" CASCADE"), "");
  cluster->run("CHECKPOINT");
  EXPECT_EQ(cluster->run("DROP TABLESPACE tiny"), "");
}

TEST_F(PostgresFailures, WhatNoCompanyCanHoldNamesTableAndColumn) {
  const auto store = make("misfits", 1);
  const auto connection = store->connect(Sql::Dialect::Server);
  execute(connection, "INSERT INTO Account (AcctNo) VALUES ('1')");
  // Another program.
  for (const auto& [column, value] : {std::pair{"Rate", "'NaN'"},
                                      {"Rate", "'-infinity'"},
                                      {"Balance", "'NaN'"},
                                      {"Opened", "'infinity'"},
                                      {"Opened", "'0099-01-01'"},
                                      {"Descr", "'longer than ten'"}}) {
    const std::string said =
        cluster->run(std::string("UPDATE misfits.account SET ") + column + " = " + value);
    EXPECT_THAT(said, testing::AllOf(HasSubstr(column), HasSubstr("table Account"))) << value;
  }
  // This one.
  const std::string zero("a\0b", 3);
  const double endless = std::numeric_limits<double>::infinity();
  const auto refused = [&](const char* column, const Value& value, const auto& store_) {
    try {
      store_(column, value);
    } catch (const Error& error) {
      return error.description();
    }
    return std::string("nothing was raised");
  };
  const auto byWriter = [&](const char* column, const Value& value) {
    const auto transaction = store->begin();
    store->writer("Account", {"AcctNo", column})->add(std::vector<Value>{"2", value});
    transaction->commit();
  };
  const auto byRecordset = [&](const char* column, const Value& value) {
    const auto rows = open(connection, "SELECT * FROM Account", {}, 1);
    rows->SetField(column, value);
    rows->Update();
  };
  for (const auto& [column, value] : {std::pair{"Descr", Value(zero)}, {"Rate", Value(endless)}}) {
    EXPECT_THAT(refused(column, value, byWriter),
                testing::AllOf(HasSubstr(column), HasSubstr("table Account")));
    EXPECT_THAT(refused(column, value, byRecordset), HasSubstr(column));
    const auto byMarker = [&](const char* name, const Value& each) {
      execute(connection, std::string("UPDATE Account SET ") + name + " = ?", {each});
    };
    EXPECT_THAT(refused(column, value, byMarker), HasSubstr("marker 1"));
  }
  raised(QuorDataLib::kStatementRefused,
         [&] { execute(connection, "UPDATE Account SET Descr = '" + zero + "'"); });
  EXPECT_TRUE(only(connection, "SELECT Descr FROM Account").isNull());
}

}  // namespace
}  // namespace QuorHost::Testing
