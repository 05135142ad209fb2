// Every member of every class, with a platform whose n-th call fails, for every n and every answer
// of the error service. The members come from the member tables, so a new one is covered as it is
// added.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/fake_platform.h"
#include "core/member_table.h"
#include "core/sweep_outcome.h"

namespace {

using namespace QuorAccQueries;
using namespace QuorDataLib;
using namespace sweep;

/// Whether an error may be reported under this class and method: a member, or one of the procedures
/// and private methods that have a trap of their own.
bool isTrapped(const std::string& className, const std::string& method) {
  static const std::set<std::string> kOthers{
      "CQueries.CurrentConnection",
      "CCustomerQueries.GetCustomerAgingTrxSQL",
      "MUtils.PutRecordsetInCache",
      "MUtils.GetRecordsetFromCache",
      "MUtils.QuorCastriaFoundation",
      "CInventoryHelper.GetAvgCostRangeForItem",
      "CInventoryHelper.CalculateAverageCostForRS",
      "CInventoryHelper.GetLastCostItem",
      "CGeneralLedgerHelper.GetAccountCount",
  };
  if (kOthers.contains(className + "." + method)) return true;
  const ClassInfo* info = findClass(className);
  return info != nullptr && std::ranges::any_of(info->members, [&](const Member& member) {
           return member.name == method;
         });
}

bool letsErrorsPass(const ClassInfo& info, const Member& member) {
  return info.name == "CQueries" && member.name.starts_with("GetNew");
}

class FailureSweep : public testing::TestWithParam<std::tuple<const ClassInfo*, bool, bool>> {
 protected:
  const ClassInfo& info() const { return *std::get<0>(GetParam()); }
  bool allArguments() const { return std::get<1>(GetParam()); }
  bool caching() const { return std::get<2>(GetParam()); }

  Ref<ComponentObject> create() const {
    Ref<ComponentObject> object = info().create();
    const Member* cache = info().find("CacheRecordsets", Member::Kind::Put);
    std::vector<Value> on{Value(true)};
    if (caching() && cache != nullptr) cache->invoke(*object, on);
    return object;
  }

  /// Runs `check(member, sound, outcome)` for every member and every n up to its number of platform
  /// calls.
  template <class Check>
  void sweep(fake::Platform& platform, Check check) const {
    // Terms of a fixed date, or of a day of the month.
    platform->row = {{"LastPmt", Value(Date::of(2025, 1, 2))},
                     {"TermMode", Value(std::int32_t{allArguments() ? 2 : 1})}};
    platform->rowCount = 2;
    platform->columns = {"First", "Second", "Third"};
    platform->otherFields = allArguments() ? 0 : 1;
    for (const Member& member : info().members) {
      const Ref<ComponentObject> object = create();
      holdFoundationHelper(nullptr);
      platform->calls = 0;
      const Outcome sound = call(platform, *object, member, allArguments());
      ASSERT_FALSE(sound.thrown) << sound.thrown->description();
      for (const int n : failing(platform->calls)) {
        SCOPED_TRACE(std::string(info().name) + "." + std::string(member.name) + ", call " +
                     std::to_string(n));
        const Ref<ComponentObject> other = create();
        holdFoundationHelper(nullptr);
        platform->reports.clear();
        platform->retriesEnded = 0;
        platform->calls = 0;
        platform->failAt = n;
        platform->serviceRaises = raises_;
        const Outcome outcome = call(platform, *other, member, allArguments());
        platform->failAt = 0;
        platform->serviceRaises.reset();
        check(member, sound, outcome);

        // The same object works again, with nothing kept of the failed call.
        const Outcome again = call(platform, *other, member, allArguments());
        EXPECT_FALSE(again.thrown);
        EXPECT_TRUE(alike(again.result, sound.result));
        if (HasFatalFailure()) return;
      }
    }
    EXPECT_EQ(platform->openRecordsets, 0) << "a recordset outlived its holders";
  }

  static void expectReported(const fake::Platform& platform) {
    ASSERT_FALSE(platform->reports.empty());
    const fake::Report& first = platform->reports.front();
    EXPECT_EQ(first.number, fake::kFailure);
    EXPECT_TRUE(first.description.ends_with(" failed"));
    for (const fake::Report& report : platform->reports) {
      EXPECT_EQ(report.component, "QuorAccQueries");
      EXPECT_GT(report.line, 0);
      EXPECT_TRUE(isTrapped(report.className, report.method))
          << report.className << "." << report.method;
    }
  }

  /// Raised by the error service in place of an answer.
  std::optional<Error> raises_;
};

TEST_P(FailureSweep, RetryRepeatsTheFailedCallAndNothingElse) {
  fake::Platform platform;
  platform->answer = kRetryStep;
  sweep(platform, [&](const Member& member, const Outcome& sound, const Outcome& outcome) {
    if (letsErrorsPass(info(), member) && platform->reports.empty()) {
      EXPECT_EQ(outcome.thrown->number(), fake::kFailure);
      return;
    }
    expectReported(platform);
    EXPECT_EQ(platform->reports.size(), 1U);
    EXPECT_EQ(platform->retriesEnded, 1);
    ASSERT_FALSE(outcome.thrown);
    EXPECT_TRUE(alike(outcome.result, sound.result));
    EXPECT_EQ(names(outcome.log), names(sound.log));
  });
}

TEST_P(FailureSweep, ContinueKeepsWhatEveryOtherCallGives) {
  fake::Platform platform;
  platform->answer = kContinueAfterStep;
  sweep(platform, [&](const Member& member, const Outcome& sound, const Outcome& outcome) {
    if (letsErrorsPass(info(), member)) return;
    expectReported(platform);
    ASSERT_FALSE(outcome.thrown);
    // Where a single value could not be had, no other one is missing.
    if (!kGivesAValue.contains(platform->failed)) return;
    EXPECT_LE(missing(sound.log, answered(sound), answered(outcome)), 1);
    if (outcome.opened.size() == sound.opened.size()) {
      EXPECT_LE(missing(sound.log, sent(sound), sent(outcome)), 1);
    }
  });
}

TEST_P(FailureSweep, LeaveReturnsWhatTheResultHolds) {
  fake::Platform platform;
  platform->answer = kLeaveMethod;
  sweep(platform, [&](const Member& member, const Outcome&, const Outcome& outcome) {
    if (letsErrorsPass(info(), member)) return;
    expectReported(platform);
    EXPECT_FALSE(outcome.thrown);
  });
}

TEST_P(FailureSweep, WhatTheServiceRaisesReachesTheCaller) {
  fake::Platform platform;
  raises_ = Error(1234, "Service", "raised by the service");
  sweep(platform, [&](const Member& member, const Outcome&, const Outcome& outcome) {
    if (platform->reports.empty()) {
      EXPECT_TRUE(letsErrorsPass(info(), member));
      return;
    }
    ASSERT_TRUE(outcome.thrown);
    EXPECT_EQ(outcome.thrown->description(), "raised by the service");
  });
}

TEST_P(FailureSweep, APlatformThatStaysBrokenRaises) {
  fake::Platform platform;
  platform->failures = std::numeric_limits<int>::max() / 2;
  sweep(platform, [&](const Member&, const Outcome&, const Outcome& outcome) {
    ASSERT_TRUE(outcome.thrown);
    EXPECT_EQ(outcome.thrown->number(), fake::kFailure);
  });
}

INSTANTIATE_TEST_SUITE_P(AllClasses, FailureSweep,
                         testing::Combine(testing::ValuesIn(allClasses().begin(),
                                                            allClasses().end()),
                                          testing::Bool(), testing::Bool()),
                         [](const auto& test) {
                           return std::string(std::get<0>(test.param)->name) +
                                  (std::get<1>(test.param) ? "AllArguments" : "NoArguments") +
                                  (std::get<2>(test.param) ? "Caching" : "");
                         });

}  // namespace
