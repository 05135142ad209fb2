// The error trap, on a fake platform.
#include <gtest/gtest.h>

#include <new>
#include <string>

#include "core/error_trap.h"
#include "core/fake_platform.h"
#include "core/row_steps.h"
#include "payables/supplier_queries.h"
#include "receivables/customer_helper.h"

namespace {

using namespace QuorAccQueries;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;

TEST(Trap, ReportsTheLineOfTheStepThatFailed) {
  const fake::Platform platform;
  std::int32_t line = 0;
  trap("CTest", "Method", [&](Steps& step) {
    step([] {});
    line = __LINE__ + 1;
    step([] { QuorDataLib::raise(ErrorNumber::TypeMismatch, "no"); });
  });
  ASSERT_EQ(platform->reports.size(), 1U);
  EXPECT_EQ(platform->reports[0].line, line);
  EXPECT_EQ(platform->reports[0].number, 13);
  EXPECT_EQ(platform->reports[0].className, "CTest");
  EXPECT_EQ(platform->reports[0].method, "Method");
}

TEST(Trap, AnEmptyObjectAfterAContinuedErrorRaises91) {
  const fake::Platform platform;
  platform->answer = QuorDataLib::kContinueAfterStep;
  CCustomerHelper helper;
  platform->calls = 0;
  platform->failAt = 1;  // inside OpenCustBalance, which then has no recordset to return
  EXPECT_TRUE(helper.GetCustBalance(1, {}).isZero());
  ASSERT_GE(platform->reports.size(), 2U);
  EXPECT_EQ(platform->reports[0].number, fake::kFailure);
  EXPECT_EQ(platform->reports[1].number, 91);
}

TEST(Trap, WithoutAnErrorServiceTheErrorReachesTheCaller) {
  QuorDataLib::installApplication({});
  try {
    CSupplierQueries().CustomConnection();
    FAIL();
  } catch (const Error& error) {
    EXPECT_TRUE(error.is(ErrorNumber::ObjectNotSet));
  }
}

TEST(Trap, WhateverIsThrownIsReported) {
  const fake::Platform platform;
  trap("CTest", "Method", [&](Steps& step) {
    step([] { throw 42; });  // NOLINT(hicpp-exception-baseclass): some host's callback does
  });
  trap("CTest", "Method", [&](Steps& step) {
    platform->answer = QuorDataLib::kRetryStep;  // nothing to retry: the method is left
    step([] {});
    throw std::bad_alloc();
  });
  ASSERT_EQ(platform->reports.size(), 2U);
  EXPECT_EQ(platform->reports[0].number, 51);
  EXPECT_EQ(platform->reports[1].number, 7);
  EXPECT_GT(platform->reports[1].line, platform->reports[0].line) << "the last one reached";
}

TEST(Trap, APartIsRetriedAloneAndSkippedWithItsStatement) {
  const fake::Platform platform;
  int first = 0;
  int second = 0;
  const auto statement = [&](std::int32_t answer) {
    platform->answer = answer;
    return trap("CTest", "Method", [&](Steps& step, int& result) {
      result = step([&] {
        const int one = step([&] { return ++first; });
        const int two = step([&] {
          if (++second == 1) throw Error(6, "", "Overflow");
          return 20;
        });
        return one + two;
      });
      step([&] { ++result; });
    });
  };
  EXPECT_EQ(statement(QuorDataLib::kRetryStep), 22);
  EXPECT_EQ(first, 1);
  second = 0;
  EXPECT_EQ(statement(QuorDataLib::kContinueAfterStep), 1);
  second = 0;
  EXPECT_EQ(statement(QuorDataLib::kLeaveMethod), 0);
  EXPECT_EQ(platform->reports[1].line, platform->reports[0].line) << "the statement's";
}

TEST(Trap, ALoopWhoseTestFailsEnds) {
  const fake::Platform platform;
  platform->row = {{"A", Value("a")}};
  platform->rowCount = 3;
  platform->answer = QuorDataLib::kContinueAfterStep;
  const Ref<Recordset> rows = platform.connection("c")->OpenRecordset("", 4, 0, {}, 0);
  platform->calls = 0;
  platform->failAt = 4;
  std::string read;
  trap("CTest", "Method", [&](Steps& step) {
    for (bool more = moreRows(step, rows); more; more = moveOn(step, rows)) {
      std::string value;
      readField(step, rows, "A", value);
      read += value;
    }
  });
  EXPECT_EQ(read, "a");
  EXPECT_EQ(platform->reports.size(), 1U);
}

TEST(Trap, RaisingAgainAddsThePlaceAndDropsTheSource) {
  std::uint_least32_t line = 0;
  try {
    line = __LINE__ + 1;
    raisingAgain("MUtils", "GLAcctQueryFieldToUse",
                 [] { throw Error(6, "somewhere", "Overflow"); });
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.number(), 6);
    EXPECT_EQ(error.source(), "");
    EXPECT_EQ(error.description(),
              "Overflow (QuorAccQueries.MUtils.GLAcctQueryFieldToUse component failure at line:" +
                  std::to_string(line) + ")");
  }
}

}  // namespace
