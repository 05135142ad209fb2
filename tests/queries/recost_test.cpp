// Running costs that are computed again are those of a replay from the first movement.
#include "host/company/stock/recost.h"

#include <gtest/gtest.h>

#include <random>

#include "inventory/inventory_helper.h"
#include "queries/company_fixture.h"

namespace {

using fixture::Dialect;
using fixture::Ref;
using QuorAccQueries::CInventoryHelper;
using QuorDataLib::Currency;
using QuorDataLib::Date;

constexpr int kItems = 3;

/// Movements of any kind on a few days: of no quantity, below zero, purchases of lines that adjust
/// receptions (odd ones) and of lines that do not.
std::string randomMovements(std::mt19937& random, int count) {
  const auto below = [&](unsigned bound) { return static_cast<int>(random() % bound); };
  constexpr int kTypes[] = {0, 1, 1, 1, 2, 2, 4, 6, 7, 7};
  std::string csv = "ExItemId,DetDate,Type,SeqNo,ExSrcKeyVal,ExDetId,Qty,Cost,Invoiced\n";
  for (int i = 0; i < count; ++i) {
    const Date day = Date::of(2025, 1, 1).addDays(below(25));
    csv += std::to_string(1 + below(kItems)) + "," + day.toText() + "," +
           std::to_string(kTypes[below(std::size(kTypes))]) + "," + std::to_string(below(9)) +
           ",1," + std::to_string(1 + below(6)) + "," +
           Currency::fromUnits(std::int64_t{2'500} * (below(90) - 45)).toText() + "," +
           Currency::fromUnits(below(1'000'000)).toText() + "," +
           (below(2) == 0 ? "true" : "false") + "\n";
  }
  return csv;
}

/// Replays every item with the component's own members, and expects every stored cost to be what
/// that comes to, and no mark to be left.
void expectReplayed(QuorHost::Store& store) {
  CInventoryHelper helper;
  for (int item = 1; item <= kItems; ++item) {
    const Ref<fixture::Recordset> rows =
        store.connect(Dialect::Server)
            ->OpenRecordset("SELECT * FROM InvenDet WHERE ExItemId = " + std::to_string(item) +
                                " ORDER BY DetDate, Type, SeqNo, InTrxId",
                            4, 0, {}, 0);
    Currency quantity;
    Currency average;
    Currency last;
    for (; !rows->AtEnd(); rows->MoveNext()) {
      const Currency moved = rows->Field("Qty").toCurrency();
      bool movesAverage = false;
      bool movesLast = false;
      helper.InvenDetAdjustCost(rows->Field("Type").toLong(), rows->Field("ExSrcKeyVal").toText(),
                                rows->Field("ExDetId").toLong(), moved,
                                rows->Field("Invoiced").toBoolean(), movesAverage, movesLast);
      const Currency cost = rows->Field("Cost").toCurrency();
      if (movesAverage) average = helper.CalculateAverageCost(average, quantity, moved, cost);
      if (movesLast) last = cost;
      quantity += moved;
      ASSERT_EQ(rows->Field("RunningAvgCost").toCurrency(), average)
          << fixture::line(rows, {"InTrxId", "ExItemId", "DetDate"});
      ASSERT_EQ(rows->Field("RunningLastCost").toCurrency(), last);
      ASSERT_EQ(rows->Field("RunningValuesDirty").toLong(), 0);
    }
    EXPECT_EQ(helper.GetAvgCostRange(item, {}, 0, "", "", false), average);
    EXPECT_EQ(helper.GetLastCost(item, {}, 0, "", "", false), last);
  }
}

class Recost : public testing::Test {
 protected:
  Recost() : host_(company_.host(Dialect::Server)) {
    company_.load("Supp", "InSuppId\n1\n");
    company_.load("PurcHdr", "InPurcId,PurcType,ExSuppId,PurcDate\n1,1,1,2025-01-01\n");
    company_.load("PurcDet",
                  "InPurcDetId,ExPurcId,ExRecDetId\n1,1,7\n2,1,\n3,1,7\n4,1,\n5,1,7\n6,1,0\n");
  }

  std::int64_t count(const std::string& condition) {
    return company_.store()
        .connect(Dialect::Server)
        ->OpenRecordset("SELECT COUNT(*) FROM InvenDet WHERE " + condition, 4, 0, {}, 0)
        ->Field(0)
        .toLong();
  }

  fixture::CompanyFile company_;
  std::unique_ptr<QuorHost::Host> host_;
};

TEST_F(Recost, GivesTheCostsOfAReplayFromTheFirstMovement) {
  std::mt19937 random(20'261);
  for (int turn = 0; turn < 12; ++turn) {
    SCOPED_TRACE("turn " + std::to_string(turn));
    // Behind, between and before the movements that are there already.
    company_.load("InvenDet", randomMovements(random, turn % 2 == 0 ? 60 : 2));
    if (turn % 3 == 1) {
      CInventoryHelper().FlagInventoryDirty(true, Date::of(2025, 1, 12), 1, 4);
    }
    if (turn % 4 == 3) {
      const auto transaction = company_.store().begin();
      QuorHost::CostWatch watch(company_.store());
      std::int32_t affected = 0;
      company_.store()
          .connect(Dialect::Server)
          ->Execute("UPDATE InvenDet SET Qty = Qty + 1, Type = 2 WHERE DetDate = '2025-01-15'",
                    affected, -1, {});
      company_.store()
          .connect(Dialect::Server)
          ->Execute("DELETE FROM InvenDet WHERE DetDate = '2025-01-11'", affected, -1, {});
      watch.markStale();
      transaction->commit();
    }
    QuorHost::recostStock(company_.store());
    expectReplayed(company_.store());
  }
  EXPECT_TRUE(QuorHost::recostStock(company_.store()).empty()) << "nothing is left to compute";
}

TEST_F(Recost, MarksAndComputesWhatAChangeTouchesAlone) {
  std::mt19937 random(7);
  company_.load("InvenDet", randomMovements(random, 120));
  EXPECT_EQ(count("RunningValuesDirty <> 2"), 0);
  EXPECT_EQ(QuorHost::recostStock(company_.store(), 2).size(), 1U);
  EXPECT_EQ(count("RunningValuesDirty = 0 AND ExItemId <> 2"), 0);
  EXPECT_EQ(QuorHost::recostStock(company_.store()).size(), 2U);
  company_.load("InvenDet",
                "InTrxId,ExItemId,DetDate,Type,SeqNo,Qty,Cost,Invoiced,RunningValuesDirty\n"
                "900,1,2025-01-10,1,5,4,12.5,true,0\n");
  EXPECT_EQ(count("RunningValuesDirty = 2 AND (ExItemId <> 1 OR DetDate < '2025-01-10')"), 0);
  EXPECT_EQ(count("RunningValuesDirty = 0 AND ExItemId = 1 AND DetDate >= '2025-01-10'"), 0);
  const auto items = QuorHost::recostStock(company_.store());
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(items[0].item, 1);
  EXPECT_EQ(items[0].computed, count("ExItemId = 1 AND DetDate >= '2025-01-10'"));
  expectReplayed(company_.store());
}

// Which receptions adjust others is what the lines of purchases say.
TEST_F(Recost, FollowsTheLinesOfPurchases) {
  std::mt19937 random(11);
  company_.load("InvenDet", randomMovements(random, 150));
  QuorHost::recostStock(company_.store());
  company_.load("PurcDet", "InPurcDetId,ExPurcId,ExRecDetId\n7,1,\n8,1,7\n");
  EXPECT_EQ(count("RunningValuesDirty <> 0"), 0) << "nothing was received by them";
  company_.load("PurcDet",
                "InPurcDetId,ExPurcId,ExRecDetId\n1,1,\n2,1,7\n3,1,7\n4,1,\n5,1,\n6,1,3\n", true);
  EXPECT_GT(QuorHost::recostStock(company_.store()).size(), 0U);
  expectReplayed(company_.store());
}

TEST_F(Recost, ChangesNothingWhereAnItemCannotBeComputed) {
  company_.load("InvenDet",
                "InTrxId,ExItemId,DetDate,Type,SeqNo,Qty,Cost,Invoiced\n"
                "1,1,2025-01-01,1,1,4,5,true\n2,2,2025-01-01,1,1,900000000000000,1,true\n"
                "3,2,2025-01-02,1,2,900000000000000,1,true\n");
  try {
    QuorHost::recostStock(company_.store());
    ADD_FAILURE() << "it was computed";
  } catch (const QuorDataLib::Error& error) {
    EXPECT_EQ(error.description().rfind("The costs of item 2 cannot be computed: ", 0), 0U)
        << error.description();
  }
  EXPECT_EQ(count("RunningValuesDirty = 2"), 3);
}

}  // namespace
