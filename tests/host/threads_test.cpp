// Hosts on threads of their own, and hosts that live longer than what they stand on.
#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "core/queries.h"
#include "host/application/host.h"
#include "host/company/company.h"
#include "host/small_company.h"
#include "platform/current_application.h"
#include "receivables/customer_queries.h"

namespace QuorHost::Testing {
namespace {

std::unique_ptr<Host> hostOf(const std::string& path, Sql::Dialect dialect = {}) {
  auto host = std::make_unique<Host>(
      HostOptions{.store = openCompany(path, Access::Read), .dialect = dialect});
  host->install();
  return host;
}

/// Asks for the aging of all customers through the component; the number of rows.
int ask(const Host& host) {
  const auto queries = QuorDataLib::make<QuorAccQueries::CQueries>();
  queries->SetCustomConnection(host.connection());
  const Ref<Recordset> rows =
      queries->Customer()->OpenCustAgingTransactions(false, 0, {}, "", "", "", "", false, false);
  int count = 0;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    for (std::int32_t i = 0; i < rows->FieldCount(); ++i) static_cast<void>(rows->Field(i));
    ++count;
  }
  return count;
}

std::unique_ptr<Host> ofProcess;
thread_local std::unique_ptr<Host> ofThread;

class Threads : public testing::Test {
 protected:
  Threads() { createCompany(path, {.sample = true}); }

  TemporaryFolder folder;
  const std::string path = folder.file("company.quor");
};

TEST_F(Threads, EachHasItsHostOfTheSameFile) {
  constexpr int kRounds = 3;
  std::atomic<int> answers = 0;
  const auto work = [&](Sql::Dialect dialect) {
    for (int round = 0; round < kRounds; ++round) {
      const std::unique_ptr<Host> host = hostOf(path, dialect);
      answers += ask(*host) > 0 ? 1 : 0;
      const auto writer = openCompany(path, Access::Write);
      const std::string name = "Thread " + std::to_string(static_cast<int>(dialect));
      answers += execute(writer->connect(dialect), "UPDATE Cust SET Contact = ? WHERE InCustId = 1",
                         {name});
      raised(QuorDataLib::kStatementRefused, [&] { open(host->connection(), "SELECT x"); });
      createCompany(folder.file(name + std::to_string(round)), {});
    }
  };
  std::thread desktop(work, Sql::Dialect::Desktop);
  work(Sql::Dialect::Server);
  desktop.join();
  EXPECT_EQ(answers, 2 * 2 * kRounds);
}

TEST_F(Threads, AHostMayOutliveItsThread) {
  std::unique_ptr<Host> host;
  std::thread([&] {
    host = hostOf(path);
    EXPECT_GT(ask(*host), 0);
  }).join();
  EXPECT_GT(rest(open(host->connection(), "SELECT InCustId FROM Cust")).size(), 0U);
  // It is not this thread's, and takes nothing from it.
  const std::unique_ptr<Host> own = hostOf(path);
  host.reset();
  EXPECT_GT(ask(*own), 0);
}

TEST_F(Threads, AHostMayBeGlobalOrOfItsThread) {
  EXPECT_EXIT(
      {
        ofProcess = hostOf(path);
        int rows = ask(*ofProcess);
        std::thread([&] {
          ofThread = hostOf(path);
          rows += ask(*ofThread);
        }).join();
        ofThread = hostOf(path);
        rows += ask(*ofThread);
        std::exit(rows > 0 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace QuorHost::Testing
