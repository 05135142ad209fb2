// What stands between a program and its server, or beside it: a session pooler, a hot standby.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include "host/small_company.h"
#include "postgres/cluster.h"

namespace QuorHost::Testing {
namespace {

using testing::HasSubstr;

constexpr const char* kPooler = "/usr/sbin/pgbouncer";

/// A program beside the server, while the test lasts.
class Running {
 public:
  Running(const Cluster& cluster, std::vector<std::string> words)
      : process_(cluster.launch(std::move(words))) {}
  ~Running() {
    ::kill(process_, SIGQUIT);
    ::waitpid(process_, nullptr, 0);
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  pid_t process_;
};

class PostgresBeside : public testing::Test {
 protected:
  void SetUp() override {
    if (cluster == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed";
  }

  /// Makes a small company with so many entries.
  void make(const std::string& name, int entries) const {
    const auto store = createCompanyFile(cluster->company(name), Durability::Full);
    defineSmallSchema(*store);
    addEntries(*store, entries);
  }

  /// Opens the company when it can be had, within some seconds.
  static std::shared_ptr<Store> openSoon(const std::string& address, Access access) {
    for (int i = 0;; ++i) {
      try {
        return openCompanyFile(address, access);
      } catch (const Error&) {
        if (i == 300) throw;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
      }
    }
  }

  Cluster* cluster = Cluster::instance();
};

TEST_F(PostgresBeside, SessionPoolerServes) {
  if (!std::filesystem::exists(kPooler)) GTEST_SKIP() << "no pooler (pgbouncer) is installed";
  make("pooled", 5'000);
  const std::string folder = cluster->folder();
  const std::string settings = folder + "/pooler.ini";
  // Whoever is let in is the owner.
  std::ofstream(settings) << "[databases]\npostgres = host=" << folder
                          << " port=5432 user=quor\n[pgbouncer]\nunix_socket_dir = " << folder
                          << "\nlisten_port = 6432\nauth_type = any\npool_mode = session\n"
                             "default_pool_size = 3\n";
  const Running pooler(*cluster, {kPooler, "-q", settings});
  const std::string address = cluster->company("pooled") + "&port=6432";
  // Connections go from hand to hand: what one was told holds for it alone.
  for (int turn = 0; turn < 6; ++turn) {
    const auto reader = openSoon(address, Access::Read);
    const auto reading = reader->connect(Sql::Dialect::Server);
    reading->SetCommandTimeout(1 + turn);
    const auto rows = open(reading, "SELECT EntryNo FROM Entry ORDER BY EntryNo");
    {
      const auto writer = openCompanyFile(address, Access::Write);
      const auto connection = writer->connect(Sql::Dialect::Server);
      EXPECT_EQ(execute(connection, "UPDATE Entry SET Amnt = Amnt + 1 WHERE EntryNo = 1"), 1);
      EXPECT_EQ(only(connection, "SELECT Amnt FROM Entry WHERE EntryNo = 1").toLong(), turn + 2);
    }
    const auto moment = reader->hold();
    EXPECT_EQ(only(reading, "SELECT COUNT(*) FROM Entry").toLong(), 5'000);
    int count = 0;
    for (; !rows->AtEnd(); rows->MoveNext()) ++count;
    EXPECT_EQ(count, 5'000);
  }
}

TEST_F(PostgresBeside, StandbyReads) {
  make("twice", 500);
  const std::string folder = cluster->folder();
  const std::string data = folder + "/standby";
  int status = -1;
  ::waitpid(cluster->launch({"pg_basebackup", "-D", data, "-h", folder, "-U", "quor", "-R", "-X",
                             "stream", "-c", "fast", "--no-sync"}),
            &status, 0);
  ASSERT_EQ(status, 0);
  const Running standby(*cluster, {"postgres", "-D", data, "-k", folder, "-p", "5433", "-c",
                                   "listen_addresses=", "-c", "fsync=off"});
  const auto address = [&](const std::string& which) {
    return "postgresql://quor@/postgres?host=" + folder + "," + folder +
           "&port=5432,5433&schema=twice&target_session_attrs=" + which;
  };
  const auto writer = openCompanyFile(address("read-write"), Access::Write);
  execute(writer->connect(Sql::Dialect::Server), "DELETE FROM Entry WHERE EntryNo > 100");
  for (const char* const which : {"standby", "prefer-standby"}) {
    const auto store = openSoon(address(which), Access::Read);
    const auto connection = store->connect(Sql::Dialect::Server);
    // What was changed comes a little later.
    for (int i = 0; i < 300 && only(connection, "SELECT COUNT(*) FROM Entry").toLong() != 100;
         ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    const auto moment = store->hold();
    EXPECT_EQ(only(connection, "SELECT SUM(Amnt) FROM Entry").toLong(), 5050);
  }
  const auto mistaken = openCompanyFile(address("standby"), Access::Write);
  EXPECT_THAT(
      raised(QuorDataLib::kStatementRefused,
             [&] { execute(mistaken->connect(Sql::Dialect::Server), "DELETE FROM Entry"); }),
      HasSubstr("server takes no changes"));
  raised(QuorDataLib::kStatementRefused, [&] { addEntries(*mistaken, 1); });
}

}  // namespace
}  // namespace QuorHost::Testing
