// The inventory on a small company whose answers are worked out by hand, in both dialects.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/company/stock/recost.h"
#include "inventory/inventory_helper.h"
#include "inventory/inventory_queries.h"
#include "queries/company_fixture.h"

namespace {

using fixture::Dialect;
using fixture::lines;
using QuorAccQueries::CInventoryHelper;
using QuorAccQueries::CInventoryQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Lines = std::vector<std::string>;

Currency amount(const char* text) { return Currency::parse(text).value(); }

/// A movement: item, day, type, sequence, document and line, quantity, cost, invoiced, warehouse,
/// project, segment.
const char* const kMovements =
    "InTrxId,ExItemId,DetDate,Type,SeqNo,ExSrcKeyVal,ExDetId,Qty,Cost,Invoiced,ExWarehouseId,"
    "ExProjId,ExSegmentId\n"
    // Components of the kit, in two warehouses, for no project and for one, in three segments.
    "1,1,2025-01-05,2,1,1,1,10,3,false,1,,1\n"
    "2,1,2025-01-05,2,1,1,1,7,3,false,1,1,1\n"
    "3,1,2025-01-05,2,1,1,1,3,3,false,2,,2\n"
    "4,2,2025-01-05,2,1,1,1,9,2,false,1,,1\n"
    "5,2,2025-01-05,2,1,1,1,4,2,false,1,1,1\n"
    "6,2,2025-01-05,2,1,1,1,5,2,false,2,,2\n"
    "7,3,2025-01-05,2,1,1,1,2,1.25,false,1,,1\n"
    "8,3,2025-01-05,2,1,1,1,1,1.25,false,1,1,1\n"
    "9,3,2025-01-05,2,1,1,1,4,1.25,false,2,,3\n"
    "10,1,2025-06-01,7,90,7,1,-25,3,false,1,,1\n"
    // Received, taken back and invoiced at another cost; sold; sent back; counted; revalued.
    "20,5,2025-01-10,1,2,1,1,10,5,false,1,,1\n"
    "21,5,2025-01-20,1,3,2,2,-10,5,false,1,,1\n"
    "22,5,2025-01-20,1,3,2,2,10,6,true,1,,1\n"
    "23,5,2025-01-25,7,4,7,1,-4,6,false,1,,1\n"
    "24,5,2025-02-01,1,5,1,1,-1,99,false,1,,1\n"
    "25,5,2025-02-05,2,6,1,1,5,8,false,1,,1\n"
    "26,5,2025-02-06,2,8,1,1,0,9,false,1,,1\n"
    // A day with four types of one sequence number, after a day with the same one.
    "30,6,2025-03-08,1,6,3,3,4,10,true,1,,1\n"
    "31,6,2025-03-09,1,7,3,3,100,12,true,1,,2\n"
    "32,6,2025-03-10,0,7,4,4,-1,0,false,1,2,1\n"
    "33,6,2025-03-10,1,7,3,3,6,14,true,1,,1\n"
    "34,6,2025-03-10,2,7,1,1,2,11,false,1,,2\n"
    "35,6,2025-03-10,7,7,7,1,-3,0,false,1,,1\n";

class Inventory : public testing::TestWithParam<Dialect> {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>();
    company_->load("CieInfo", "InCieId,HomeCurrencyId,SessionDate\n1,1,2025-12-31\n");
    company_->load("Item",
                   "InItemId,ItemId,Descr1,Servc,IsKit,IsAssembly,FacSales,StockUnit,SaleUnit,"
                   "Price1,ChkQtyWithBarCode,ExPurcAcctId,ExDiscSalesAcctId,ExInvAcctId\n"
                   "1,A100,Rope,false,false,false,0,m,coil,9.5,true,5100,4100,1210\n"
                   "2,B200,Hook,false,false,false,2,pc,pair,3,false,,,\n"
                   "3,C300,Glue,false,false,false,1,kg,kg,4,,,,1200\n"
                   "4,D400,Never there,false,false,false,1,,,,false,,,1210\n"
                   "5,E500,Sand,false,false,false,1,t,t,,false,,,\n"
                   "6,F600,Lime,false,false,false,1,t,t,,false,,,\n"
                   "8,H800,Work,true,false,false,1,h,h,,false,,,\n"
                   "9,K900,Kit,false,true,false,1,kit,kit,,false,,,\n"
                   "10,K910,Kit without,false,true,false,1,kit,kit,,false,,,\n"
                   "11,L1,Loop one,false,false,true,1,,,,false,,,\n"
                   "12,L2,Loop two,false,false,true,1,,,,false,,,\n"
                   "13,L3,Frame,false,false,true,1,,,,false,,,\n"
                   "14,L4,Of nothing,false,false,true,1,,,,false,,,\n");
    company_->load("ItemKitDet",
                   "ExItemKitId,ExItemId,Qty\n9,1,2\n9,2,1\n9,3,0.5\n9,8,1\n9,5,0\n10,1,2\n10,4,1\n"
                   "11,12,1\n12,11,3\n13,1,4\n13,2,2\n");
    company_->load("ItemReplacement", "ExId,ExItemId\n1,2\n2,1\n1,3\n");
    company_->load("Supp", "InSuppId,Name\n1,Acier\n");
    company_->load("PurcHdr",
                   "InPurcId,DocNo,PurcType,ExSuppId,PurcDate,POrderStatus,ReqDate,OriginalRefNo\n"
                   "1,R1,52,1,2025-01-10,2,,\n2,P2,1,1,2025-01-20,,,\n3,P3,1,1,2025-03-08,,,\n"
                   "4,O4,51,1,2025-04-01,1,2025-05-01,X4\n5,O5,51,1,2025-04-02,,,\n"
                   "6,O6,51,1,2025-04-03,3,,\n");
    company_->load("PurcDet",
                   "InPurcDetId,ExPurcId,ExItemId,Qty,ExRecId,ExRecDetId,ExPODetId,ExWarehouseId\n"
                   "1,1,5,10,,,,1\n2,2,5,10,1,1,,1\n3,3,6,110,,,,1\n5,4,5,20,,,,1\n"
                   "6,5,5,12,,,,2\n7,6,5,99,,,,1\n8,1,5,3,,,5,1\n");
    company_->load("Cust", "InCustId,Name\n1,Baker\n");
    company_->load("InvoiHdr",
                   "InInvoiId,InvoiId,InvoiType,ExCustId,InvoiDate\n7,F7,1,1,2025-01-25\n"
                   "8,C8,51,1,2025-04-04\n");
    company_->load("InvoiDet",
                   "InInvoiDetId,ExInvoiId,ExItemId,Qty,ExOrderDetId,ExWarehouseId\n"
                   "1,7,5,4,,1\n2,7,2,1,4,1\n3,8,9,3,,1\n4,8,2,5,,1\n");
    company_->load(
        "AssemblyHdr",
        "InAssemblyId,AssemblyId,AssemblyDate,AssemblyStatus,ExItemId,Qty,ExWarehouseId\n"
        "1,F1,2025-04-05,1,13,2,1\n2,F2,2025-04-05,2,13,7,1\n");
    company_->load("AssemblyDet", "ExAssemblyId,ExItemId,Qty\n1,1,8\n1,2,4\n2,1,28\n");
    company_->load("WarehouseTransHdr",
                   "InWarehouseTransId,TransDate,ExFromWarehouseId,ExToWarehouseId\n"
                   "1,2025-02-01,1,2\n");
    company_->load("WarehouseTransDet", "ExWarehouseTransId,ExItemId,Qty\n1,4,1\n");
    company_->load("InvenDet", kMovements);
    QuorHost::recostStock(company_->store());
  }
  static void TearDownTestSuite() { company_.reset(); }

  void use(std::map<std::string, std::string> foundation = {}) {
    host_ = company_->host(GetParam(), std::move(foundation));
  }

  static inline std::unique_ptr<fixture::CompanyFile> company_;
  std::unique_ptr<QuorHost::Host> host_;
};

INSTANTIATE_TEST_SUITE_P(Dialects, Inventory, testing::ValuesIn(fixture::kDialects),
                         [](const auto& dialect) {
                           return dialect.param == Dialect::Server ? "Server" : "Desktop";
                         });

TEST_P(Inventory, AKitIsWhatItsScarcestComponentMakes) {
  use();
  CInventoryQueries queries;
  const auto kits = [&](std::int32_t warehouse, Date to, const std::string& extra = "") {
    return lines(queries.OpenQtyStock(9, warehouse, {}, to, false, false, extra),
                 {"ExProjId", "ExSegmentId", "QtyStock"});
  };
  const Date may = Date::of(2025, 5, 31);
  EXPECT_THAT(kits(0, may), UnorderedElementsAre("-|1|4", "1|1|2", "-|2|1", "-|3|8"));
  EXPECT_THAT(kits(1, may), UnorderedElementsAre("-|1|4", "1|1|2"));
  EXPECT_THAT(kits(2, may), UnorderedElementsAre("-|2|1", "-|3|8"));
  EXPECT_THAT(kits(0, may, "QtyStockView.ExProjId = 1"), ElementsAre("1|1|2"));
  // 10 - 25 of the first component: below zero the engines cut differently.
  EXPECT_THAT(kits(1, {}),
              UnorderedElementsAre(GetParam() == Dialect::Server ? "-|1|-7" : "-|1|-8", "1|1|2"));
  // A component that was never there makes none.
  EXPECT_THAT(lines(queries.OpenQtyStock(10, 0, {}, may, true, true, ""),
                    {"ExProjId", "ExSegmentId", "QtyStock"}),
              testing::Contains("-|-|0"));
}

TEST_P(Inventory, StockIsCountedByProjectSegmentAndWarehouse) {
  use();
  CInventoryQueries queries;
  const Date may = Date::of(2025, 5, 31);
  EXPECT_THAT(lines(queries.OpenQtyStock(1, 0, {}, may, false, false, ""),
                    {"ExItemId", "ExProjId", "ExSegmentId", "QtyStock"}),
              UnorderedElementsAre("1|-|1|10", "1|1|1|7", "1|-|2|3"));
  const std::string projects = "1,2";
  const std::string extra = "ExWarehouseId = 1";
  EXPECT_THAT(lines(queries.OpenQtyStockProj(0, {}, may, projects, extra),
                    {"ExItemId", "InProjId", "QtyStock"}),
              UnorderedElementsAre("1|1|7", "2|1|4", "3|1|1", "6|2|-1"));
  for (const bool cached : {false, true}) {
    CInventoryHelper helper;
    helper.SetCacheRecordsets(cached);
    for (int turn = 0; turn < 2; ++turn) {
      EXPECT_EQ(helper.GetQtyInStockRange(1, {}, may, 0, "", "", false, false), amount("20"));
      EXPECT_EQ(helper.GetQtyInStockRange(1, {}, {}, 2, "", "", false, false), amount("3"));
      EXPECT_EQ(helper.GetQtyInStockRange(1, {}, may, 1, "1", "ExSegmentId < 3", false, false),
                amount("7"));
      EXPECT_EQ(helper.GetQtyInStockRange(1, {}, may, 2, "1", "", false, false), Currency());
      EXPECT_EQ(helper.GetQtyInStockRange(9, {}, may, 1, "", "", false, false), amount("6"));
      EXPECT_EQ(helper.GetQtyInStockRange(8, {}, {}, 0, "", "", false, false), Currency());
      // Replacements replace each other: each counts once.
      EXPECT_EQ(helper.GetQtyInStockRange(1, {}, may, 0, "", "", true, false), amount("45"));
      EXPECT_TRUE(helper.ItemIsKit(9));
      EXPECT_FALSE(helper.ItemIsKit(1));
      EXPECT_FALSE(helper.ItemIsKit(77));
    }
  }
}

TEST_P(Inventory, CostsFollowTheMovements) {
  use();
  CInventoryHelper helper;
  EXPECT_EQ(helper.CalculateAverageCost(amount("10"), amount("5"), amount("5"), amount("20")),
            amount("15"));
  EXPECT_EQ(helper.CalculateAverageCost(amount("10"), amount("-3"), amount("5"), amount("20")),
            amount("20"));
  EXPECT_EQ(helper.CalculateAverageCost(amount("10"), amount("-3"), amount("1"), amount("20")),
            amount("10"));
  EXPECT_EQ(helper.CalculateAverageCost(amount("10"), amount("5"), amount("-5"), amount("20")),
            amount("20"));
  struct Expected {
    Date day;
    const char* average;
    const char* last;
  };
  const Expected kCosts[] = {{Date::of(2025, 1, 9), "0", "0"},  {Date::of(2025, 1, 10), "5", "5"},
                             {Date::of(2025, 1, 31), "6", "6"}, {Date::of(2025, 2, 1), "6", "6"},
                             {Date::of(2025, 2, 5), "7", "8"},  {Date(), "7", "9"}};
  for (const Expected& each : kCosts) {
    EXPECT_EQ(helper.GetAvgCostRange(5, each.day, 0, "", "", false), amount(each.average))
        << each.day.toText();
    EXPECT_EQ(helper.GetLastCost(5, each.day, 0, "", "", false), amount(each.last))
        << each.day.toText();
  }
  // A kit's: 2 x 3 + 1 x 2 x 2 + 0.5 x 1.25, the service nothing.
  EXPECT_EQ(helper.GetAvgCostRange(9, {}, 0, "", "", false), amount("10.625"));
  EXPECT_EQ(helper.GetLastCost(9, {}, 0, "", "", false), amount("10.625"));
  EXPECT_EQ(helper.GetAssemblyComponentsCost(13, {}, 0, "", "", false), amount("16"));
  EXPECT_EQ(helper.GetInventValue(5, true), amount("70"));
  EXPECT_EQ(helper.GetTrxTypeFromSource("asb"), 6);
  EXPECT_EQ(helper.GetTrxTypeFromSource("XYZ"), 0);
  EXPECT_EQ(helper.GetSourceFromTrxType(4), "TRW");
  EXPECT_EQ(helper.GetSourceFromTrxType(3), "");

  use({{"Company.Param.CostCalculMeth", "1"},
       {"Company.Param.QtyCostAtSessionDate", "1"},
       {"Company.SessionDate", "2025-02-06"}});
  EXPECT_EQ(CInventoryHelper().GetInventValue(5, true), amount("90"));
  use({{"Company.Param.QtyCostAtSessionDate", "1"}, {"Company.SessionDate", "2025-01-31"}});
  EXPECT_EQ(CInventoryHelper().GetInventValue(5, true), amount("36"));
  EXPECT_EQ(CInventoryHelper().GetInventValue(5, false), amount("70"));
}

TEST_P(Inventory, RowsMoveCostsByTypeAndSign) {
  use();
  CInventoryHelper helper;
  struct Row {
    std::int32_t type;
    std::int32_t document, line;  // 2, 2 adjusts a reception
    const char* quantity;
    bool invoiced;
    bool average, last;
  };
  const Row kRows[] = {{1, 2, 2, "-1", false, true, true},   {1, 2, 2, "1", false, false, false},
                       {1, 1, 1, "-1", false, false, false}, {1, 1, 1, "1", false, true, true},
                       {1, 2, 2, "-1", true, false, false},  {1, 2, 2, "1", true, true, true},
                       {2, 1, 1, "0", false, false, true},   {2, 1, 1, "-1", false, false, false},
                       {6, 1, 1, "1", false, true, true},    {6, 1, 1, "0", false, false, false}};
  for (const Row& row : kRows) {
    SCOPED_TRACE(std::to_string(row.type) + " " + row.quantity);
    const Currency quantity = amount(row.quantity);
    const std::string key = std::to_string(row.document);
    bool average = !row.average;
    bool last = !row.last;
    helper.InvenDetAdjustCost(row.type, key, row.line, quantity, row.invoiced, average, last);
    EXPECT_EQ(average, row.average);
    EXPECT_EQ(last, row.last);
    EXPECT_EQ(helper.InvenDetAdjustAvgCost(row.type, key, row.line, quantity, row.invoiced),
              row.average);
    EXPECT_EQ(
        helper.InvenDetAdjustLastCost(row.type, row.document, row.line, quantity, row.invoiced),
        row.last);
  }
  for (const std::int32_t type : {0, 4, 7, 3}) {
    bool average = true;
    bool last = false;
    helper.InvenDetAdjustCost(type, "no number", 1, amount("5"), false, average, last);
    EXPECT_TRUE(average && !last) << "the outputs stay as they were";
    EXPECT_FALSE(helper.InvenDetAdjustAvgCost(type, "1", 1, amount("5"), false));
  }
  std::int32_t reception = 0;
  EXPECT_TRUE(helper.IsReceptionAdjustment(2, 2, reception));
  EXPECT_EQ(reception, 1);
  EXPECT_FALSE(helper.IsReceptionAdjustment(1, 1, reception));
}

TEST_P(Inventory, AMovementsPositionTellsWhatWasThereBefore) {
  use();
  CInventoryQueries queries;
  const Date day = Date::of(2025, 3, 10);
  const auto before = [&](std::int32_t type, std::int32_t sequence, std::int32_t transaction) {
    return lines(queries.OpenQuantityOnHandBySegmentProject(6, day, type, sequence, transaction),
                 {"ExProjId", "ExSegmentId", "QtyOnHand", "LastCost", "AvgCost"});
  };
  // The day before has the same sequence number and is not counted; after it the average was
  // 11.9231, and (11.9231 x 103 + 14 x 6) / 109 = 12.0374 after the day's purchase.
  EXPECT_THAT(before(2, 7, 34), ElementsAre("-|1|10|14|12.0374", "2|1|-1|14|12.0374"));
  EXPECT_THAT(before(2, 7, 35),
              ElementsAre("-|1|10|11|12.0187", "-|2|2|11|12.0187", "2|1|-1|11|12.0187"));
  EXPECT_THAT(before(1, 8, 1),
              ElementsAre("-|1|10|14|12.0374", "-|2|100|14|12.0374", "2|1|-1|14|12.0374"));
  EXPECT_THAT(before(0, 7, 32), ElementsAre("-|1|4|10|10"));
  EXPECT_THAT(lines(queries.OpenQuantityOnHandBySegmentProject(6, Date::of(2025, 3, 8), 1, 6, 30)),
              IsEmpty());
}

TEST_P(Inventory, WhatIsReservedAndToComeIsListed) {
  use();
  CInventoryQueries queries;
  EXPECT_THAT(lines(queries.OpenQtyReserved(0, 0, {}, {}, "ignored", true),
                    {"ID", "ExItemID", "Qty", "TrxType"}),
              UnorderedElementsAre("C8|9|3|7", "C8|1|6|7", "C8|2|6|7", "C8|3|1.5|7", "C8|5|0|7",
                                   "C8|8|3|7", "C8|2|8|7", "F1|1|8|6", "F1|2|4|6"));
  EXPECT_THAT(lines(queries.OpenQtyReserved(2, 1, {}, {}, "SUM(Qty) AS Qty", false), {"Qty"}),
              UnorderedElementsAre("14", "4"));
  EXPECT_EQ(CInventoryHelper().GetReservedQty(2, {}, {}, 0), amount("18"));
  std::int32_t supplier = 0;
  const auto toCome = [&](std::int32_t item, bool only, bool with) {
    return lines(queries.OpenQtyToRec(item, 0, {}, {}, supplier, only, with),
                 {"ID", "ExItemID", "Qty", "TrxType"});
  };
  EXPECT_THAT(toCome(5, false, false), ElementsAre("O4|5|17|1", "O5|5|12|1"));
  EXPECT_THAT(toCome(5, true, false), ElementsAre("O4|5|17|1"));
  EXPECT_THAT(toCome(0, false, true), ElementsAre("O4|5|17|1", "O5|5|12|1", "F1|13|2|6"));
  supplier = 1;
  EXPECT_THAT(toCome(0, false, false), ElementsAre("O4|5|17|1", "O5|5|12|1"));
  EXPECT_THAT(lines(queries.OpenQtyOnHand(5, 1, Date::of(2025, 1, 20), Date::of(2025, 1, 31)),
                    {"ID", "Name", "Qty"}),
              ElementsAre("P2|Acier|-10", "P2|Acier|10", "F7|Baker|-4"));
}

TEST_P(Inventory, ItemsAreLookedUp) {
  use({{"Param.QuorAcctParams.SuppGLPurchAcct", "5010"},
       {"Param.QuorAcctParams.CustGLDiscSale", "4090"},
       {"Company.Param.Language", "French"}});
  for (const bool cached : {false, true}) {
    CInventoryHelper helper;
    helper.SetCacheRecordsets(cached);
    EXPECT_EQ(helper.GetStockUnit(1) + helper.GetSaleUnit(1) + helper.GetStockUnit(4) +
                  helper.GetSaleUnit(77) + helper.GetSaleUnit(2),
              "mcoilpair");
  }
  CInventoryHelper helper;
  EXPECT_EQ(helper.GetItemId(1) + helper.GetItemId(77), "A100");
  EXPECT_EQ(helper.GetItemPrice(1), amount("9.5"));
  EXPECT_EQ(helper.GetItemPrice(5) + helper.GetItemPrice(77), Currency());
  EXPECT_EQ(helper.GetPurchAccount(1), 5100);
  EXPECT_EQ(helper.GetPurchAccount(2), 5010);
  EXPECT_EQ(helper.GetDiscAccount(1), 4100);
  EXPECT_EQ(helper.GetDiscAccount(77), 4090);
  EXPECT_EQ(helper.ItemInTransactionsCount(5), 7 + 1 + 6);
  EXPECT_TRUE(helper.ItemInTransactions(4)) << "in a transfer's line alone";
  EXPECT_FALSE(helper.ItemInTransactions(14));
  EXPECT_EQ(helper.GetItemBarCodeValue(1, amount("2.5")), "A100*2.5") << "of a user who writes 2,5";
  EXPECT_EQ(helper.GetItemBarCodeValue(2, amount("2.5")), "B200");
  EXPECT_EQ(helper.GetItemBarCodeValue(3, amount("2.5")), "C300") << "null is false";
  EXPECT_EQ(helper.GetItemBarCodeValue(77, amount("2.5")), "");
  Lines components;
  const auto parts = helper.GetKitComponents(9);
  for (const QuorDataLib::Value& each : parts->values()) {
    const auto part = each.toObject().as<QuorAccQueries::CKitComponent>();
    components.push_back(std::to_string(part->InItemId()) + "|" + part->Qty().toText(1) + "|" +
                         part->FacSales().toText(0));
  }
  EXPECT_THAT(components, ElementsAre("1|2.0|0", "2|1.0|2", "3|0.5|1", "8|1.0|1", "5|0.0|1"));
  EXPECT_EQ(helper.GetKitComponents(1)->Count(), 0);
  const auto accounts = [](std::map<std::string, std::string> foundation) {
    const auto host = company_->host(GetParam(), std::move(foundation));
    Lines keys;
    const auto found = CInventoryHelper().GetInventoryGLAccounts();
    for (const auto& key : found->values()) keys.push_back(key.toText());
    return keys;
  };
  EXPECT_THAT(accounts({{"Param.QuorAcctParams.SuppGLInvAcct", "1210"}}),
              ElementsAre("1210", "1200"));
  EXPECT_THAT(accounts({{"Param.QuorAcctParams.SuppGLInvAcct", "0"}}), ElementsAre("1200", "1210"));
  std::string component;
  host_->install();
  EXPECT_TRUE(helper.IsValidAssembly(13, component));
  EXPECT_FALSE(helper.IsValidAssembly(14, component));
  EXPECT_EQ(component, "");
  EXPECT_FALSE(helper.IsValidAssembly(11, component));
  EXPECT_EQ(component, "L2 Loop two");
}

TEST_P(Inventory, MarkingKeepsItsPrecedence) {
  fixture::CompanyFile company;
  company.load("InvenDet",
               "InTrxId,ExItemId,DetDate,Type,SeqNo,RunningValuesDirty,RunningAvgCost,"
               "RunningLastCost\n"
               "1,1,2025-01-05,1,1,0,0,0\n2,1,2025-01-06,1,5,0,0,0\n3,1,2025-01-06,1,6,0,0,0\n"
               "4,1,2025-01-06,1,7,1,0,0\n5,1,2025-01-06,2,1,1,0,0\n6,1,2025-01-07,0,1,1,0,0\n");
  const auto host = company.host(GetParam(), {});
  const auto marks = [&] {
    return lines(company.store()
                     .connect(GetParam())
                     ->OpenRecordset("SELECT RunningValuesDirty FROM InvenDet ORDER BY InTrxId", 4,
                                     0, {}, 0));
  };
  CInventoryHelper helper;
  helper.FlagInventoryDirty(false, Date::of(2025, 1, 6), 1, 5);
  EXPECT_THAT(marks(), ElementsAre("0", "0", "0", "1", "1", "1"));
  helper.FlagInventoryDirty(true, Date::of(2025, 1, 6), 1, 5);
  EXPECT_THAT(marks(), ElementsAre("0", "0", "2", "1", "2", "2"));
}

}  // namespace
