// What is left when the process is killed at any moment, or the disk is full.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "company/company_file.h"
#include "host/another_process.h"
#include "host/engines/store.h"

namespace {

using companytest::Folder;
using QuorDataLib::Value;
using QuorHost::Access;
using QuorHost::Sql::Dialect;
using QuorHost::Testing::inAnotherProcess;
using QuorHost::Testing::statusOf;
using QuorHost::Testing::turnsUntilKilled;
using testing::IsEmpty;

// Odd times, so that the processes are caught at different places.
constexpr int kMilliseconds[] = {0, 1, 2, 3, 5, 7, 11, 17, 23, 31};
constexpr int kRows = 300;

std::string customers(int rows) {
  std::string csv = "Name\n";
  for (int i = 0; i < rows; ++i) csv += "Customer " + std::to_string(i) + "\n";
  return csv;
}

void importCustomers(QuorHost::Store& store, int rows) {
  std::istringstream csv(customers(rows));
  QuorHost::importCsv(store, "Cust", csv, false);
}

/// The number of customers in a company that must be whole.
int customersOf(const std::string& path) {
  const auto store = QuorHost::openCompanyFile(path, Access::Read);
  EXPECT_THAT(QuorHost::checkCompany(*store), IsEmpty());
  return store->connect(Dialect::Server)
      ->OpenRecordset("SELECT COUNT(*) AS N FROM Cust", 4, 0, {}, -1)
      ->Field(0)
      .toLong();
}

/// Does `work`, which adds `rows` customers, turn after turn in processes that are killed. What
/// they had confirmed is there, and at most one turn more.
template <class Work>
void expectWholeTurns(int rows, Work&& work) {
  const Folder folder;
  const std::string path = folder.file("company");
  QuorHost::createCompany(path, {});
  for (const int milliseconds : kMilliseconds) {
    const int before = customersOf(path);
    std::shared_ptr<QuorHost::Store> store;
    const int turns = turnsUntilKilled(milliseconds, [&](int turn) {
      if (!store) store = QuorHost::openCompanyFile(path, Access::Write);
      work(*store, turn);
    });
    EXPECT_GT(turns, 0);
    const int added = customersOf(path) - before;
    EXPECT_TRUE(added == turns * rows || added == (turns + 1) * rows)
        << added << " rows of " << turns << " turns";
  }
}

TEST(Killed, WhatWasStoredThroughRecordsetsIsThere) {
  expectWholeTurns(1, [](QuorHost::Store& store, int turn) {
    const auto rows = store.connect(Dialect::Server)
                          ->OpenRecordset("SELECT * FROM Cust WHERE InCustId = 0", 1, 0, {}, -1);
    rows->AddNew();
    rows->SetField("Name", Value("Customer " + std::to_string(turn)));
    rows->Update();
  });
}

TEST(Killed, AnImportIsThereInWholeOrNotAtAll) {
  expectWholeTurns(kRows, [](QuorHost::Store& store, int) { importCustomers(store, kRows); });
}

TEST(Killed, ACompanyThatIsMadeAnewOrCopiedIsTheOldOneOrTheNewOne) {
  const Folder folder;
  const std::string source = folder.file("source");
  const std::string path = folder.file("company");
  QuorHost::createCompany(source, {.sample = true});
  QuorHost::createCompany(path, {});
  importCustomers(*QuorHost::openCompanyFile(path, Access::Write), kRows);
  const int customers = customersOf(source);
  const auto create = [&](int) { QuorHost::createCompany(path, {.sample = true, .force = true}); };
  const auto backup = [&](int) { QuorHost::backupCompany(source, path, true); };
  for (const int milliseconds : {0, 20, 50, 90, 140}) {
    turnsUntilKilled(milliseconds, create);
    turnsUntilKilled(milliseconds, backup);
    EXPECT_EQ(customersOf(path), customers);
  }
  QuorHost::createCompany(path, {.force = true});
  EXPECT_EQ(customersOf(source), customers);
  EXPECT_THAT(folder.content(), testing::UnorderedElementsAre("company", "source"));
}

/// Lets files of this process grow to `bytes` only. The engine meets what a full disk gives it.
void limitFiles(rlim_t bytes) {
  signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  setrlimit(RLIMIT_FSIZE, &limit);
}

/// Whether `work` raises an error that speaks of the disk.
template <class Work>
bool failsForTheDisk(Work&& work) {
  try {
    work();
  } catch (const companytest::Error& error) {
    return error.description().find("disk") != std::string::npos;
  }
  return false;
}

TEST(FullDisk, NothingIsLostAndNothingIsLeftHalfDone) {
  const Folder folder;
  const std::string path = folder.file("company");
  QuorHost::createCompany(path, {});
  importCustomers(*QuorHost::openCompanyFile(path, Access::Write), kRows);
  const auto size = std::filesystem::file_size(path);
  EXPECT_EQ(statusOf(inAnotherProcess([&] {
              const auto store = QuorHost::openCompanyFile(path, Access::Write);
              limitFiles(size + 50'000);
              return failsForTheDisk([&] { importCustomers(*store, 100 * kRows); });
            })),
            0);
  EXPECT_EQ(customersOf(path), kRows);
  EXPECT_EQ(statusOf(inAnotherProcess([&] {
              limitFiles(500'000);
              return failsForTheDisk(
                  [&] { QuorHost::createCompany(folder.file("other"), {.sample = true}); });
            })),
            0);
  EXPECT_EQ(
      statusOf(inAnotherProcess([&] {
        limitFiles(size / 2);
        return failsForTheDisk([&] { QuorHost::backupCompany(path, folder.file("copy"), false); });
      })),
      0);
  EXPECT_THAT(folder.content(), testing::ElementsAre("company"));
}

}  // namespace
