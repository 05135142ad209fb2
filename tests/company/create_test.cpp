// Making company files: the same bytes for the same sample, and nothing left of what failed.
#include <gmock/gmock.h>

#include <fstream>
#include <stdexcept>

#include "company/company_file.h"

namespace companytest {
namespace {

using QuorHost::createCompany;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

void writeFile(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

TEST(Create, TheSameScaleAndSeedGiveTheSameBytes) {
  const Folder folder;
  createCompany(folder.file("a"), {.sample = true, .scale = 2, .seed = 7});
  createCompany(folder.file("b"), {.sample = true, .scale = 2, .seed = 7});
  createCompany(folder.file("c"), {.sample = true, .scale = 2, .seed = 8});
  EXPECT_TRUE(bytesOf(folder.file("a")) == bytesOf(folder.file("b")));
  EXPECT_FALSE(bytesOf(folder.file("a")) == bytesOf(folder.file("c")));
}

TEST(Create, AnInterruptedCreateLeavesNothing) {
  const Folder folder;
  for (const std::string_view stage : {"writing the sample", "building the indexes"}) {
    const auto interrupt = [stage](std::string_view what, std::int64_t done, std::int64_t total) {
      EXPECT_LE(done, total);
      if (what == stage && done > total / 2) throw std::runtime_error("interrupted");
    };
    EXPECT_THROW(createCompany(folder.file("new"), {.sample = true}, interrupt),
                 std::runtime_error);
    EXPECT_THAT(folder.content(), IsEmpty());
    writeFile(folder.file("old"), "what was there");
    EXPECT_THROW(createCompany(folder.file("old"), {.sample = true, .force = true}, interrupt),
                 std::runtime_error);
    EXPECT_THAT(folder.content(), ElementsAre("old"));
    EXPECT_EQ(bytesOf(folder.file("old")), "what was there");
    std::filesystem::remove(folder.file("old"));
  }
}

TEST(Create, AnExistingFileIsReplacedOnlyByForce) {
  const Folder folder;
  const std::string path = folder.file("company");
  writeFile(path, "what was there");
  writeFile(path + "-wal", "what an old company left behind");
  EXPECT_THAT(failure([&] { createCompany(path, {}); }),
              AllOf(HasSubstr(path), HasSubstr("exists already")));
  // A log that may hold somebody's work is not thrown away, and would spoil the new company.
  EXPECT_THAT(failure([&] { createCompany(path, {.force = true}); }),
              AllOf(HasSubstr(path + "-wal"), HasSubstr("move it away")));
  EXPECT_EQ(bytesOf(path), "what was there");
  EXPECT_EQ(bytesOf(path + "-wal"), "what an old company left behind");
  std::filesystem::remove(path + "-wal");
  createCompany(path, {.force = true});
  EXPECT_THAT(folder.content(), ElementsAre("company"));
  const auto store = QuorHost::openCompanyFile(path, QuorHost::Access::Read);
  EXPECT_EQ(rows(*store, "SELECT ParamValue FROM QuorAcctParams WHERE ParamName = 'GLCurntEarn'"),
            std::vector<std::string>{"3100"});
}

TEST(Create, RefusesAPlaceOrAScaleThatCannotBe) {
  const Folder folder;
  EXPECT_THAT(failure([&] { createCompany(folder.file("no/such/company"), {}); }),
              HasSubstr("There is no folder"));
  EXPECT_THAT(failure([&] { createCompany(folder.file(""), {.force = true}); }),
              HasSubstr("is a folder"));
  EXPECT_THAT(failure([&] { createCompany(folder.file("c"), {.sample = true, .scale = 0}); }),
              HasSubstr("scale"));
  EXPECT_THAT(folder.content(), IsEmpty());
}

TEST(Create, DescribesWhatItMade) {
  const Folder folder;
  createCompany(folder.file("sample"), {.sample = true});
  const auto store = QuorHost::openCompanyFile(folder.file("sample"), QuorHost::Access::Read);
  const QuorHost::CompanyInfo info = QuorHost::describeCompany(*store);
  EXPECT_EQ(info.schemaVersion, QuorHost::kNewestSchemaVersion);
  EXPECT_EQ(info.lastDocument, QuorDataLib::Date::of(2025, 3, 31));
  EXPECT_LT(info.firstDocument, QuorDataLib::Date::of(2022, 4, 15));
  EXPECT_EQ(info.sizeInBytes,
            static_cast<std::int64_t>(std::filesystem::file_size(folder.file("sample"))));
  for (const auto& relation : info.relations) {
    EXPECT_GT(relation.rows, 0) << relation.name << " is empty in the sample";
  }
  createCompany(folder.file("bare"), {});
  const auto bare = QuorHost::openCompanyFile(folder.file("bare"), QuorHost::Access::Read);
  EXPECT_TRUE(QuorHost::describeCompany(*bare).firstDocument.empty());
}

}  // namespace
}  // namespace companytest
