// Every member of every class through dispatch, on a host's objects that dispatch, too: each call
// of the host fails once, for each answer of the error service. What happens must be what happens
// in C++.
#include <gtest/gtest.h>

#include "com/objects/live.h"
#include "core/fake_platform.h"
#include "core/sweep_outcome.h"

// After the rest, whose names the system's headers would meet.
#include "tests/com/client.h"

namespace {

using namespace QuorDataLib;
using client::ComPtr;
using QuorAccQueries::ComponentObject;

class DispatchSweep : public testing::TestWithParam<const ClassInfo*> {
 protected:
  void SetUp() override {
    platform_->row = {{"LastPmt", Value(Date::of(2025, 1, 2))}};
    platform_->rowCount = 2;
    platform_->columns = {"First", "Second", "Third"};
    platform_->otherFields = 0;
    host_ = dll_.create("CThreadHost");
    renewApplication();
  }
  void TearDown() override {
    client::assignApplication(*host_.get(), nullptr);
    host_ = {};
    EXPECT_TRUE(dll_.mayUnload());
    EXPECT_EQ(QuorCom::liveObjects(), 0) << "the DLL has kept an object of the host's";
    EXPECT_EQ(platform_->openRecordsets, 0);
  }

  /// Has both sides look up the foundation once more.
  void renewApplication() {
    holdFoundationHelper(nullptr);
    client::assignApplication(*host_.get(), client::served(currentApplication()).get());
  }

  void prepare(int failAt, std::int32_t answer) {
    platform_->reports.clear();
    platform_->log.clear();
    platform_->opened.clear();
    platform_->retriesEnded = 0;
    platform_->calls = 0;
    platform_->failAt = failAt;
    platform_->answer = answer;
  }

  sweep::Outcome direct(const Member& member, int failAt, std::int32_t answer) {
    platform_->failAt = 0;
    const Ref<ComponentObject> object = GetParam()->create();
    renewApplication();
    prepare(failAt, answer);
    return sweep::call(platform_, *object, member, true);
  }

  sweep::Outcome dispatched(const Member& member, int failAt, std::int32_t answer) {
    platform_->failAt = 0;
    QuorCom::LateBound object(dll_.create(GetParam()->name), *GetParam());
    renewApplication();
    sweep::Outcome outcome;
    outcome.outputs = sweep::arguments(member, true);
    prepare(failAt, answer);
    try {
      outcome.result = object.invoke(member, outcome.outputs, member.result.value_or(TypeInfo{}));
    } catch (const Error& error) {
      outcome.thrown = error;
    }
    outcome.log = platform_->log;
    outcome.opened = platform_->opened;
    return outcome;
  }

  void expectAlike(const sweep::Outcome& wanted, const std::vector<fake::Report>& wantedReports,
                   const sweep::Outcome& met) {
    EXPECT_EQ(met.thrown.has_value(), wanted.thrown.has_value());
    if (met.thrown && wanted.thrown) {
      EXPECT_EQ(met.thrown->number(), wanted.thrown->number());
      EXPECT_EQ(met.thrown->description(), wanted.thrown->description());
    }
    EXPECT_EQ(sweep::names(met.log), sweep::names(wanted.log));
    EXPECT_EQ(sweep::sent(met), sweep::sent(wanted));
    EXPECT_TRUE(sweep::alike(met.result, wanted.result));
    ASSERT_EQ(met.outputs.size(), wanted.outputs.size());
    for (std::size_t i = 0; i < met.outputs.size(); ++i) {
      EXPECT_TRUE(sweep::alike(met.outputs[i], wanted.outputs[i])) << "argument " << i;
    }
    ASSERT_EQ(platform_->reports.size(), wantedReports.size());
    for (std::size_t i = 0; i < wantedReports.size(); ++i) {
      EXPECT_EQ(platform_->reports[i].number, wantedReports[i].number);
      EXPECT_EQ(platform_->reports[i].description, wantedReports[i].description);
      EXPECT_EQ(platform_->reports[i].method, wantedReports[i].method);
      EXPECT_EQ(platform_->reports[i].line, wantedReports[i].line);
    }
  }

  client::Dll dll_{L"QuorAccQueries.dll"};
  fake::Platform platform_;
  ComPtr<IDispatch> host_;
};

TEST_P(DispatchSweep, IsAsInCpp) {
  for (const Member& member : GetParam()->members) {
    direct(member, 0, kLeaveMethod);
    const int calls = platform_->calls;
    for (int n = 0; n <= calls; n += 1 + n / 12) {
      for (const std::int32_t answer : {kRetryStep, kContinueAfterStep, kLeaveMethod}) {
        SCOPED_TRACE(std::string(GetParam()->name) + "." + std::string(member.name) + ", call " +
                     std::to_string(n) + ", answer " + std::to_string(answer));
        const sweep::Outcome wanted = direct(member, n, answer);
        const std::vector<fake::Report> reports = platform_->reports;
        const int retriesEnded = platform_->retriesEnded;
        expectAlike(wanted, reports, dispatched(member, n, answer));
        EXPECT_EQ(platform_->retriesEnded, retriesEnded);
        if (HasFailure() || n == 0) break;
      }
      if (HasFailure()) return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, DispatchSweep, testing::ValuesIn(QuorAccQueries::allClasses()),
                         [](const auto& of) { return std::string(of.param->name); });

}  // namespace
