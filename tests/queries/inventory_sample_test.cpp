// What must hold for the stock of the sample company: it is worth what a replay and the ledger say,
// and running costs survive being thrown away.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "host/company/stock/recost.h"
#include "inventory/inventory_helper.h"
#include "queries/company_fixture.h"

namespace {

using fixture::Dialect;
using fixture::lines;
using fixture::Ref;
using QuorAccQueries::CInventoryHelper;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

class SampleStock : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>(QuorHost::CreateOptions{.sample = true});
  }
  static void TearDownTestSuite() { company_.reset(); }

  static Lines query(const std::string& sql) {
    return lines(company_->store().connect(Dialect::Server)->OpenRecordset(sql, 4, 0, {}, 0));
  }

  static inline std::unique_ptr<fixture::CompanyFile> company_;
};

TEST_F(SampleStock, IsWorthWhatAReplayAndTheLedgerSayOnAnyDay) {
  const Lines keys = query("SELECT DISTINCT ExItemId FROM InvenDet ORDER BY ExItemId");
  ASSERT_GT(keys.size(), 30U);
  for (Date day = Date::of(2022, 4, 1); day <= Date::of(2025, 3, 31); day = day.addDays(91)) {
    SCOPED_TRACE(day.toText());
    const auto host = company_->host(
        day.civil().month % 2 == 0 ? Dialect::Server : Dialect::Desktop,
        {{"Company.Param.QtyCostAtSessionDate", "1"}, {"Company.SessionDate", day.toText()}});
    CInventoryHelper helper;
    helper.SetCacheRecordsets(day.civil().month % 3 == 0);
    Currency sum;
    for (const std::string& key : keys) {
      Currency quantity;
      Currency average;
      const Ref<fixture::Recordset> rows =
          company_->store()
              .connect(Dialect::Server)
              ->OpenRecordset("SELECT Qty, RunningAvgCost FROM InvenDet WHERE ExItemId = " + key +
                                  " AND DetDate <= '" + day.toText() +
                                  "' ORDER BY DetDate, Type, SeqNo, InTrxId",
                              4, 0, {}, 0);
      for (; !rows->AtEnd(); rows->MoveNext()) {
        quantity += rows->Field(0).toCurrency();
        average = rows->Field(1).toCurrency();
      }
      const Currency value = helper.GetInventValue(std::stoi(key), true);
      // To the cent, halves away from zero.
      const double exact = quantity.toDouble() * average.toDouble();
      ASSERT_NEAR(value.toDouble(), exact, 0.00501) << key;
      ASSERT_EQ(value.units() % 100, 0) << key;
      sum += value;
    }
    EXPECT_EQ(query("SELECT SUM(DetAmnt) FROM GLDet WHERE ExAcctId = 1200 AND DetDate <= '" +
                    day.toText() + "'"),
              Lines{QuorDataLib::Value(sum).toText()});
  }
}

TEST_F(SampleStock, ShowsWhatAStockHas) {
  const char* const kCases[] = {
      "InvenDet WHERE Type = 0 AND Qty < 0 AND ExProjId > 0",
      "InvenDet WHERE Type = 1 AND Invoiced = 0 AND Qty > 0",
      "InvenDet INNER JOIN PurcDet ON PurcDet.InPurcDetId = InvenDet.ExDetId WHERE Type = 1 AND "
      "Invoiced = 0 AND InvenDet.Qty < 0 AND PurcDet.ExRecDetId > 0",
      "InvenDet WHERE Type = 2 AND Qty = 0",
      "InvenDet WHERE Type = 7 AND Qty > 0",
      "InvoiDet INNER JOIN InvenDet ON InvenDet.ExDetId = InvoiDet.InInvoiDetId WHERE "
      "InvenDet.Type = 7 AND InvoiDet.ExItemId = 73 AND InvenDet.Qty * 100 = InvoiDet.Qty * -75",
      "ItemReservedInvoi_View WHERE Qty > 0",
      "ItemReservedAssembly_View",
      "ItemToRecAssembly_View",
      "ItemToRecExpPurch_View WHERE QtyExpected > 0",
      "InvoiDet AS Part INNER JOIN InvoiDet AS Rest ON Rest.ExOrderDetId = Part.ExOrderDetId WHERE "
      "Rest.InInvoiDetId > Part.InInvoiDetId"};
  for (const char* const each : kCases) {
    EXPECT_NE(query(std::string("SELECT COUNT(*) FROM ") + each), Lines{"0"}) << each;
  }
  // Below zero for months, and above it in the end.
  EXPECT_NE(
      query("SELECT COUNT(*) FROM (SELECT SUM(Qty) AS Stock FROM InvenDet WHERE ExItemId = 16 "
            "AND DetDate <= '2022-11-15') AS Early WHERE Stock < 0"),
      Lines{"0"});
  EXPECT_THAT(QuorHost::checkCompany(company_->store()), IsEmpty());
}

TEST_F(SampleStock, GetsItsRunningCostsBack) {
  const std::string costs =
      "SELECT RunningAvgCost, RunningLastCost, RunningValuesDirty FROM InvenDet ORDER BY InTrxId";
  const Lines before = query(costs);
  std::int32_t affected = 0;
  company_->store()
      .connect(Dialect::Server)
      ->Execute(
          "UPDATE InvenDet SET RunningAvgCost = 1, RunningLastCost = 1, "
          "RunningValuesDirty = 2 WHERE DetDate >= '2022-12-24'",
          affected, -1, {});
  QuorHost::recostStock(company_->store());
  EXPECT_EQ(query(costs), before);
}

}  // namespace
