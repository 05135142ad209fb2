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
#include "platform/collection.h"

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
        // Lists of account types are read; all other texts go where they go.
        values.emplace_back(!all ? "" : argument.name == "AcctTypeIds" ? "1" : "A");
        break;
      case ValueType::Object:
        if (argument.type.className == Collection::kClassName) {
          values.emplace_back(make<Collection>(std::vector<Value>{std::int32_t{1}}));
        } else {
          values.emplace_back(Ref<Object>());
        }
        break;
      default:
        values.emplace_back(std::int32_t{all ? 1 : 0});
        break;
    }
  }
  return values;
}

/// What one call did, and what the platform saw of it.
struct Outcome {
  Value result;
  std::vector<Value> outputs;
  std::optional<Error> thrown;
  std::vector<fake::Call> log;
  std::vector<fake::Opened> opened;
};

Outcome call(fake::Platform& platform, ComponentObject& object, const Member& member, bool all) {
  Outcome outcome;
  outcome.outputs = arguments(member, all);
  platform->log.clear();
  platform->opened.clear();
  try {
    outcome.result = member.invoke(object, outcome.outputs);
  } catch (const Error& error) {
    outcome.thrown = error;
  }
  outcome.log = platform->log;
  outcome.opened = platform->opened;
  return outcome;
}

/// The single values that an outcome holds: of the result, the properties or items of objects in
/// it, the arguments after the call.
void collect(const Value& value, std::vector<Value>& all) {
  if (value.type() != ValueType::Object) {
    all.push_back(value);
  } else if (const auto items = value.toObject().as<Collection>()) {
    for (const Value& item : items->values()) collect(item, all);
  } else if (const auto record = value.toObject().as<ComponentObject>()) {
    for (const Member& member : record->classInfo().members) {
      if (member.kind == Member::Kind::Get && member.result->type != ValueType::Object) {
        all.push_back(member.invoke(*record, {}));
      }
    }
  }
}

std::vector<Value> answered(const Outcome& outcome) {
  std::vector<Value> all = outcome.outputs;
  collect(outcome.result, all);
  return all;
}

/// The texts and values that went to the database.
std::vector<Value> sent(const Outcome& outcome) {
  std::vector<Value> all;
  for (const fake::Opened& each : outcome.opened) {
    all.emplace_back(each.sql);
    for (const Value& value : each.parameters.values()) all.push_back(value);
  }
  return all;
}

/// Whether `given` is one of `values`, as one of their types, or a part of a text among them. A
/// boolean tells nothing.
bool holds(const std::vector<Value>& values, const Value& given) {
  return std::ranges::any_of(values, [&](const Value& value) {
    if (value.type() == ValueType::Boolean) return false;
    if (value.type() == ValueType::Text) {
      return value.text().find(given.toText()) != std::string::npos;
    }
    try {
      return given.convertedTo(value.type()) == value;
    } catch (const Error&) {
      return false;
    }
  });
}

/// How many of the values that calls gave are in `before`, and not in `after`.
std::ptrdiff_t missing(const std::vector<fake::Call>& log, const std::vector<Value>& before,
                       const std::vector<Value>& after) {
  std::set<std::string> met;
  return std::ranges::count_if(log, [&](const fake::Call& each) {
    return !each.given.isEmpty() && met.insert(each.given.toText()).second &&
           holds(before, each.given) && !holds(after, each.given);
  });
}

/// The calls that give a value and no object.
const std::set<std::string> kGivesAValue{"Field", "FieldName", "GetParameter", "NullSafe"};

std::vector<std::string> names(const std::vector<fake::Call>& log) {
  std::vector<std::string> all;
  for (const fake::Call& each : log) all.push_back(each.name);
  return all;
}

/// Which of a member's calls fail, one after the other: all of them, or a selection of very many.
std::vector<int> failing(int calls) {
  constexpr int kAll = 60;
  std::vector<int> chosen;
  for (int n = 1; n <= calls; n += n < kAll ? 1 : 1 + calls / kAll) chosen.push_back(n);
  return chosen;
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
    platform->row = {{"LastPmt", Value(Date::of(2025, 1, 2))}};
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
