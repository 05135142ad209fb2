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

namespace {

using namespace QuorAccQueries;
using namespace QuorDataLib;

/// Arguments that lead a member as deep as it goes: every filter and option set, or none.
std::vector<Value> arguments(const Member& member, bool all) {
  std::vector<Value> values;
  for (const Argument& argument : member.arguments) {
    switch (argument.type.type) {
      case ValueType::Boolean:
        values.emplace_back(all);
        break;
      case ValueType::Date:
        values.emplace_back(all ? Date::of(2025, 3, 31) : Date());
        break;
      case ValueType::Text:
        values.emplace_back(all ? "A" : "");
        break;
      case ValueType::Object:
        values.emplace_back(Ref<Object>());
        break;
      default:
        values.emplace_back(std::int32_t{all ? 1 : 0});
        break;
    }
  }
  return values;
}

/// What one call did.
struct Outcome {
  Value result;
  std::optional<Error> thrown;
};

Outcome call(ComponentObject& object, const Member& member, bool all) {
  std::vector<Value> values = arguments(member, all);
  try {
    return {member.invoke(object, values), {}};
  } catch (const Error& error) {
    return {{}, error};
  }
}

/// Objects are equal when they are of one kind: a retried call makes another recordset.
bool alike(const Value& a, const Value& b) {
  if (a.type() != ValueType::Object || b.type() != ValueType::Object) return a == b;
  return static_cast<bool>(a.toObject()) == static_cast<bool>(b.toObject());
}

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

  /// Runs `check(member, failAt)` for every member and every n up to its number of platform calls.
  template <class Check>
  void sweep(fake::Platform& platform, Check check) const {
    for (const Member& member : info().members) {
      for (int n = 1;; ++n) {
        SCOPED_TRACE(std::string(info().name) + "." + std::string(member.name) + ", call " +
                     std::to_string(n));
        const Ref<ComponentObject> object = create();
        currentFoundationHelper() = nullptr;
        platform->row = {{"LastPmt", Value(Date::of(2025, 1, 2))}};
        platform->calls = 0;
        platform->reports.clear();
        const Outcome sound = call(*object, member, allArguments());
        ASSERT_FALSE(sound.thrown) << sound.thrown->description();
        if (n > platform->calls) break;

        const Ref<ComponentObject> other = create();
        currentFoundationHelper() = nullptr;
        platform->calls = 0;
        platform->failAt = n;
        platform->serviceRaises = raises_;
        const Outcome outcome = call(*other, member, allArguments());
        platform->failAt = 0;
        platform->serviceRaises.reset();
        check(member, sound, outcome);

        // The same object works again, with nothing kept of the failed call.
        const Outcome again = call(*other, member, allArguments());
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

TEST_P(FailureSweep, RetryDoesTheStepAgain) {
  fake::Platform platform;
  platform->answer = kRetryStep;
  sweep(platform, [&](const Member& member, const Outcome& sound, const Outcome& outcome) {
    if (letsErrorsPass(info(), member) && platform->reports.empty()) {
      EXPECT_EQ(outcome.thrown->number(), fake::kFailure);
      return;
    }
    expectReported(platform);
    EXPECT_EQ(platform->reports.size(), 1U);
    ASSERT_FALSE(outcome.thrown);
    EXPECT_TRUE(alike(outcome.result, sound.result));
  });
}

TEST_P(FailureSweep, ContinueGoesOnWithoutACrash) {
  fake::Platform platform;
  platform->answer = kContinueAfterStep;
  sweep(platform, [&](const Member& member, const Outcome&, const Outcome& outcome) {
    if (letsErrorsPass(info(), member)) return;
    expectReported(platform);
    EXPECT_FALSE(outcome.thrown);
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
