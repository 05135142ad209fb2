// The root, the shared module and the frame, on a fake platform.
#include <gtest/gtest.h>

#include "core/fake_platform.h"
#include "core/mutils.h"
#include "core/queries.h"
#include "core/statement.h"
#include "core/value_records.h"
#include "inventory/inventory_helper.h"
#include "inventory/inventory_queries.h"
#include "ledger/general_ledger_helper.h"
#include "ledger/general_ledger_queries.h"
#include "payables/supplier_helper.h"
#include "payables/supplier_queries.h"
#include "payroll/employee_queries.h"
#include "projects/project_helper.h"
#include "receivables/customer_helper.h"
#include "receivables/customer_queries.h"

namespace {

using namespace QuorAccQueries;
using QuorDataLib::Error;
using QuorDataLib::Parameters;

TEST(Root, KeepsQueryObjectsAndHandsOutFreshHelpers) {
  const fake::Platform platform;
  CQueries root;
  const auto first = root.Customer();
  EXPECT_TRUE(first == root.Customer());
  EXPECT_FALSE(root.GetNewCustomerHelper() == root.GetNewCustomerHelper());
}

TEST(Root, HandsItsConnectionOnAtEveryRead) {
  const fake::Platform platform;
  CQueries root;
  const auto inventory = root.Inventory();
  const auto one = platform.connection("one");
  root.SetCustomConnection(one);
  EXPECT_FALSE(inventory->CustomConnection() == one);  // still the application's own
  EXPECT_TRUE(root.Inventory()->CustomConnection() == one);
  EXPECT_TRUE(root.GetNewProjectHelper()->CustomConnection() == one);
}

TEST(Frame, CustomerHelperAnswersFromTheDefaultConnection) {
  const fake::Platform platform;
  platform->row = {{"CustBalance", Value(Currency::fromUnits(125'000))}};
  CCustomerHelper helper;
  helper.SetCustomConnection(platform.connection("custom"));
  EXPECT_EQ(helper.GetCustBalance(42, Date::of(2025, 1, 31)), Currency::fromUnits(125'000));
  ASSERT_EQ(platform->opened.size(), 1U);
  EXPECT_EQ(platform->opened[0].connection, "default");
  EXPECT_EQ(platform->openRecordsets, 0);
}

TEST(Frame, CachingNeedsTheApplicationsLeaveAndKeepsOneRecordsetForAKey) {
  fake::Platform platform;
  platform->row = {{"CustBalance", Value(std::int32_t{3})}};
  platform->cacheAllowed = false;
  CCustomerHelper without;
  without.SetCacheRecordsets(true);
  EXPECT_FALSE(without.CacheRecordsets());

  platform->cacheAllowed = true;
  CCustomerHelper helper;
  EXPECT_FALSE(helper.CacheRecordsets());
  helper.SetCacheRecordsets(true);
  const auto ask = [&](std::int32_t customer, Date date) {
    const auto before = platform->opened.size();
    EXPECT_EQ(helper.GetCustBalance(customer, date), Currency::fromInteger(3));
    return platform->opened.size() - before;
  };
  EXPECT_EQ(ask(1, Date::of(2025, 1, 31)), 1U);
  EXPECT_EQ(ask(1, Date::of(2025, 1, 31)), 0U);
  EXPECT_EQ(ask(2, Date::of(2025, 1, 31)), 1U);
  EXPECT_EQ(ask(1, Date::of(2025, 2, 28)), 1U);
  EXPECT_EQ(platform->openRecordsets, 3);
  helper.SetCacheRecordsets(false);
  EXPECT_EQ(ask(1, Date::of(2025, 1, 31)), 1U);
}

TEST(Frame, CachesOfDifferentQuestionsDoNotMix) {
  const fake::Platform platform;
  platform->row = {{"LastPmt", Value(Date::of(2025, 1, 2))},
                   {"LastSale", Value(Date::of(2025, 3, 4))}};
  CCustomerHelper helper;
  helper.SetCacheRecordsets(true);
  (void)helper.GetLastPmtInfo(7);
  EXPECT_EQ(helper.GetLastSaleInfo(7)->LastSaleDate(), Date::of(2025, 3, 4));
  EXPECT_EQ(platform->opened.size(), 2U);
}

TEST(Frame, NoDocumentGivesAnEmptyRecord) {
  const fake::Platform platform;
  CSupplierHelper helper;
  const auto info = helper.GetLastPurcInfo(9);
  ASSERT_TRUE(info);
  EXPECT_TRUE(info->LastPurcDate().empty());
  EXPECT_TRUE(info->LastPurcAmnt().isZero());
  EXPECT_EQ(info->LastPurcCode(), 0);
  EXPECT_EQ(info->LastPurcType(), 0);
}

TEST(Utils, PickTheLedgerColumn) {
  EXPECT_EQ(MUtils::GLAcctQueryFieldToUse(true, 5, 5), "DetAmnt");
  EXPECT_EQ(MUtils::GLAcctQueryFieldToUse(true, 5, 7), "ForeignAmnt");
  EXPECT_EQ(MUtils::GLAcctQueryFieldToUse(false, 5, 7), "DetAmnt");
}

TEST(Utils, WidenEmptyDatesOnly) {
  Date from;
  Date to = Date::fromSerial(0.5);  // a bare time of day, noon: rounds to day 0
  MUtils::NormalizeDateRange(from, to);
  EXPECT_EQ(from, Date::of(1900, 1, 1));
  EXPECT_EQ(to, Date::of(9999, 12, 31));
  from = Date::fromSerial(0.75);
  to = Date::of(2025, 6, 30);
  MUtils::NormalizeDateRange(from, to);
  EXPECT_EQ(from, Date::fromSerial(0.75));
  EXPECT_EQ(to, Date::of(2025, 6, 30));
}

TEST(Utils, SafeExternalIdKeepsOnlyKeys) {
  const fake::Platform platform;
  EXPECT_EQ(MUtils::SafeExternalId("12"), Value(std::int32_t{12}));
  EXPECT_EQ(MUtils::SafeExternalId(7.0), Value(std::int32_t{7}));
  for (const Value& none :
       {Value(), Value("x"), Value(""), Value(std::int32_t{0}), Value::null()}) {
    EXPECT_TRUE(MUtils::SafeExternalId(none).isNull());
  }
  MUtils::SafeExternalId(1e12);  // no Long: reported, not raised
  EXPECT_EQ(platform->reports.at(0).method, "SafeExternalId");
  EXPECT_EQ(platform->reports.at(0).number, 6);
}

TEST(Utils, CacheKeysKeepTheirParts) {
  const fake::Platform platform;
  RecordsetCache cache;
  const Ref<Recordset> rows = platform.connection("c")->OpenRecordset("", 4, 0, {}, 0);
  MUtils::PutRecordsetInCache(cache, rows, {std::int32_t{1}, std::int32_t{23}});
  EXPECT_TRUE(MUtils::GetRecordsetFromCache(cache, {std::int32_t{1}, std::int32_t{23}}) == rows);
  EXPECT_FALSE(MUtils::GetRecordsetFromCache(cache, {std::int32_t{12}, std::int32_t{3}}));
  MUtils::PutRecordsetInCache(cache, nullptr, {std::int32_t{1}, std::int32_t{23}});
  EXPECT_TRUE(MUtils::GetRecordsetFromCache(cache, {std::int32_t{1}, std::int32_t{23}}) == rows);
}

TEST(Utils, FiscalYearStartIsAskedOncePerDate) {
  const fake::Platform platform;
  ValueCache cache;
  const Date day = Date::of(2025, 5, 5);
  EXPECT_EQ(MUtils::GetFiscalYearStartDateCached(cache, day), Date::of(2025, 1, 1));
  const int calls = platform->calls;
  EXPECT_EQ(MUtils::GetFiscalYearStartDateCached(cache, day), Date::of(2025, 1, 1));
  EXPECT_EQ(platform->calls, calls);
}

TEST(StatementText, MarkersAndValuesMustAgree) {
  Statement statement("SELECT * FROM T WHERE A=?");
  EXPECT_THROW(statement.checkComplete(), Error);
  statement.bind(std::int32_t{1}).fragment(" AND B=?").number(-3);
  statement.checkComplete();
  EXPECT_EQ(statement.sql(), "SELECT * FROM T WHERE A=? AND B=?-3");
}

// How many values each query passes, and in which form.
TEST(Passing, EveryQueryKeepsItsOwnWay) {
  fake::Platform platform;
  CCustomerQueries customers;
  CSupplierQueries suppliers;
  const Date day = Date::of(2025, 1, 31);
  const auto passed = [&](const auto& open) -> const fake::Opened& {
    platform->opened.clear();
    open();
    return platform->opened.back();
  };
  const auto expectArray = [](const fake::Opened& call, const std::vector<Value>& values) {
    EXPECT_EQ(call.parameters.form(), Parameters::Form::Array);
    EXPECT_EQ(call.parameters.values(), values);
  };
  expectArray(passed([&] {
                customers.OpenCustAgingTransactions(false, 9, {}, "", "", "*", "", false, false);
              }),
              {Date::of(9999, 12, 31), Date::of(9999, 12, 31), Date::of(9999, 12, 31),
               Date::of(9999, 12, 31)});
  EXPECT_EQ(platform->opened.back().flag, 0);
  expectArray(
      passed([&] { suppliers.OpenSuppAgingTransactions(false, 9, day, "", "", false, "*", ""); }),
      {day, day, day, std::int32_t{9}, day, day, std::int32_t{9}});
  expectArray(
      passed([&] { suppliers.OpenSuppAgingTransactions(false, 0, day, "", "", false, "*", ""); }),
      {day, day, day, day, day});
  expectArray(passed([&] { customers.OpenCustBalance(0, {}, 0, ""); }), {});
  EXPECT_EQ(passed([&] { suppliers.OpenSuppBalance(0, {}, 0, ""); }).parameters.form(),
            Parameters::Form::None);
  expectArray(passed([&] { customers.OpenCustBalance(5, day, 7, ""); }),
              {std::int32_t{5}, day, std::int32_t{7}});
  EXPECT_EQ(passed([&] { customers.OpenCustOpenCredits(5); }).parameters.form(),
            Parameters::Form::Single);
  EXPECT_EQ(passed([&] { customers.OpenCustLastPmt(-5); }).parameters.form(),
            Parameters::Form::None);
  expectArray(passed([&] { customers.OpenCustCostByProject(0, {}, 4, 0, ""); }),
              {std::int32_t{0}, std::int32_t{0}});
  expectArray(
      passed([&] { suppliers.OpenSuppCostByProject(1, day, 4, 2, ""); }),
      {std::int32_t{0}, std::int32_t{0}, std::int32_t{1}, day, std::int32_t{4}, std::int32_t{2}});
  expectArray(passed([&] { suppliers.OpenSuppHistoryList(3, {}, {}); }),
              {Date::of(1900, 1, 1), Date::of(9999, 12, 31), std::int32_t{3}});
  expectArray(passed([&] { customers.OpenCustHistoryList({}, {}, 3); }),
              {Date(), Date(), std::int32_t{3}});
}

TEST(ColumnLists, FollowTheTableWithoutTheNamesExcluded) {
  const fake::Platform platform;
  platform->columns = {"InCustId", "Name", "ExCurrencyId", "New"};
  CCustomerQueries customers;
  EXPECT_EQ(customers.GetAgingCustFieldsList("ExCurrencyId, InCustID"),
            "Cust.InCustId, Cust.Name, Cust.New");
  EXPECT_EQ(platform->opened[0].mode, 2);
  EXPECT_EQ(platform->opened[0].flag, -1);
  EXPECT_EQ(platform->openRecordsets, 0);
  CSupplierQueries suppliers;
  EXPECT_EQ(suppliers.GetAgingCurrencyFieldsList(), customers.GetAgingCurrencyFieldsList());
}

}  // namespace
