#include "inventory/inventory_queries.h"

#include "core/statement.h"
#include "inventory/inventory_helper.h"
#include "inventory/quantity_sql.h"

namespace QuorAccQueries {

namespace Sql = QuantitySql;

namespace {

/// A condition with a pasted key, unless the key is 0.
void pasted(Statement& statement, std::string_view condition, std::int32_t key) {
  if (key != 0) statement.text(condition).number(key);
}

/// A condition with a marker for a key, unless the key is 0.
void marked(Statement& statement, std::string_view condition, std::int32_t key) {
  if (key != 0) statement.text(condition).bind(key);
}

void extra(Statement& statement, const std::string& condition) {
  if (!condition.empty()) statement.text(Sql::kAnd).fragment(condition);
}

void ofProjects(Statement& statement, const std::string& keys) {
  if (keys.empty()) return;
  statement.text(Sql::kOfProjects).fragment(keys).text(Sql::kOfProjectsEnd);
}

/// A place in the ledger of an item.
struct Position {
  Date date;
  std::int32_t type;
  std::int32_t sequence;
  std::int32_t transaction;
};

void before(Statement& statement, const Sql::BeforeTexts& texts, const Position& at) {
  statement.text(texts.earlier).number(at.sequence).bind(at.date);
  statement.text(Sql::kSameDay).bind(at.date);
  statement.text(texts.types).number(at.type).text(Sql::kSameType).number(at.type);
  statement.text(Sql::kLowerSequence).number(at.sequence).text(Sql::kOr);
  statement.text(texts.sameSequence).number(at.type).text(Sql::kSameSequence).number(at.sequence);
  statement.text(Sql::kLowerTransaction).number(at.transaction).text(Sql::kBeforeEnd);
}

}  // namespace

const ClassInfo& CInventoryQueries::info() {
  static const ClassInfo info = describeClass<CInventoryQueries>(
      "Inventory queries: movements, stock, reserved quantities, quantities to receive.",
      joined(QueryFrame::members(),
             {
                 method<&CInventoryQueries::OpenQtyOnHand>(
                     "OpenQtyOnHand", {"ItemID", "WarehouseID", "FromDate", "ToDate"},
                     "The movements of an item in a period, in ledger order."),
                 method<&CInventoryQueries::OpenQtyReserved>(
                     "OpenQtyReserved",
                     {"ItemID", "WarehouseID", "FromDate", "ToDate", "FieldList", "Sorted"},
                     "What customers' orders and planned assemblies reserve."),
                 method<&CInventoryQueries::OpenQtyToRec>(
                     "OpenQtyToRec",
                     {"ItemID", "WarehouseID", "FromDate", "ToDate", unwritten("SuppID"),
                      "ExpectedOnly", "WithExpected"},
                     "What is still to come from suppliers' orders and planned assemblies."),
                 method<&CInventoryQueries::OpenQtyStockProj>(
                     "OpenQtyStockProj",
                     {"ItemID", "FromDate", "ToDate", unwritten("ProjIdList"),
                      unwritten("ExtraWhere")},
                     "Stock by item and project."),
                 method<&CInventoryQueries::OpenQtyStock>(
                     "OpenQtyStock",
                     {"ItemID", "WarehouseID", "FromDate", "ToDate", "KitKnown", "IsKit",
                      "ExtraWhere"},
                     "Stock by item, project and segment; of a kit, how many can be made."),
                 method<&CInventoryQueries::OpenQuantityOnHandBySegmentProject>(
                     "OpenQuantityOnHandBySegmentProject",
                     {"ItemID", "AtDate", "CurType", "CurSeqNo", "CurTrxId"},
                     "An item's stock and running costs just before a position in the ledger."),
                 method<&CInventoryQueries::OpenItemAvgCost>(
                     "OpenItemAvgCost",
                     {"ItemID", "AtDate", "WarehouseID", "ProjIdList", "ExtraWhere"},
                     "The movements that an item's average cost is made of, in ledger order."),
                 method<&CInventoryQueries::OpenItemLastCost>(
                     "OpenItemLastCost",
                     {"ItemID", "AtDate", "WarehouseID", "ProjIdList", "ExtraWhere"},
                     "The movements that an item's last cost is found in, newest first."),
             }));
  return info;
}

Ref<Recordset> CInventoryQueries::OpenQtyOnHand(std::int32_t ItemID, std::int32_t WarehouseID,
                                                Date FromDate, Date ToDate) {
  return trap("OpenQtyOnHand", [&](Steps& step, Ref<Recordset>& result) {
    step([&] { MUtils::NormalizeDateRange(FromDate, ToDate); });
    Statement statement(Sql::kOnHand);
    statement.bind(ItemID).bind(FromDate).bind(ToDate);
    marked(statement, Sql::kOnHandOfWarehouse, WarehouseID);
    statement.text(Sql::kOnHandOrder);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CInventoryQueries::OpenQtyReserved(std::int32_t ItemID, std::int32_t WarehouseID,
                                                  Date FromDate, Date ToDate,
                                                  const std::string& FieldList, bool Sorted) {
  return trap("OpenQtyReserved", [&](Steps& step, Ref<Recordset>& result) {
    step([&] { MUtils::NormalizeDateRange(FromDate, ToDate); });
    Statement statement;
    const bool grouped = ItemID != 0 && !FieldList.empty();
    const auto select = [&](std::string_view verb, std::string_view from) {
      statement.text(verb).fragment(grouped ? FieldList : Sql::kReservedList);
      statement.text(Sql::kServiceColumn).text(from);
      statement.text(Sql::kReservedPeriod).bind(FromDate).bind(ToDate);
      if (ItemID != 0) statement.text(Sql::kReservedOfItem).number(ItemID).text(" ");
      if (WarehouseID != 0) statement.text(Sql::kReservedOfWarehouse).number(WarehouseID).text(" ");
      if (grouped) statement.text(Sql::kReservedGroup);
    };
    if (ItemID != 0) {
      select(Sql::kSelect, Sql::kReservedByInvoices);
      select(Sql::kUnionSelect, Sql::kReservedByAssemblies);
    } else {
      select(Sql::kSelect, Sql::kReserved);
    }
    if (Sorted) statement.text(Sql::kReservedOrder);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CInventoryQueries::OpenQtyToRec(std::int32_t ItemID, std::int32_t WarehouseID,
                                               Date FromDate, Date ToDate, std::int32_t SuppID,
                                               bool ExpectedOnly, bool WithExpected) {
  return trap("OpenQtyToRec", [&](Steps& step, Ref<Recordset>& result) {
    step([&] { MUtils::NormalizeDateRange(FromDate, ToDate); });
    Statement statement;
    const bool expected = ExpectedOnly || WithExpected;
    const auto select = [&](std::string_view plain, std::string_view withExpected) {
      statement.text(Sql::kToReceiveList);
      if (expected) statement.text(Sql::kExpectedColumns);
      statement.text(expected ? withExpected : plain);
      statement.text(Sql::kToReceivePeriod).bind(FromDate).bind(ToDate);
      marked(statement, Sql::kToReceiveOfItem, ItemID);
      marked(statement, Sql::kToReceiveOfWarehouse, WarehouseID);
      marked(statement, Sql::kToReceiveOfSupplier, SuppID);
      if (ExpectedOnly) statement.text(Sql::kOnlyExpected);
    };
    if (ItemID != 0) {
      select(Sql::kToReceiveByPurchases, Sql::kExpectedByPurchases);
      statement.text(Sql::kUnion);
      select(Sql::kToReceiveByAssemblies, Sql::kExpectedByAssemblies);
    } else {
      select(Sql::kToReceive, Sql::kExpected);
    }
    statement.text(Sql::kToReceiveOrder);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CInventoryQueries::OpenQtyStockProj(std::int32_t ItemID, Date FromDate, Date ToDate,
                                                   const std::string& ProjIdList,
                                                   const std::string& ExtraWhere) {
  return trap("OpenQtyStockProj", [&](Steps& step, Ref<Recordset>& result) {
    step([&] { MUtils::NormalizeDateRange(FromDate, ToDate); });
    Statement statement(Sql::kProjectStock);
    statement.bind(FromDate).bind(ToDate);
    ofProjects(statement, ProjIdList);
    marked(statement, Sql::kProjectStockOfItem, ItemID);
    extra(statement, ExtraWhere);
    statement.text(Sql::kProjectStockGroup);
    result = open(step, statement, Pass::Array);
  });
}

bool CInventoryQueries::isKit(Steps& step, std::int32_t item) {
  if (!helper_) {
    const Ref<CInventoryHelper> helper = step([&] { return make<CInventoryHelper>(step); });
    step([&] { helper->SetCacheRecordsets(true); });
    helper_ = helper;
  }
  return step([&] { return helper_->ItemIsKit(item); });
}

Ref<Recordset> CInventoryQueries::OpenQtyStock(std::int32_t ItemID, std::int32_t WarehouseID,
                                               Date FromDate, Date ToDate, bool KitKnown,
                                               bool IsKit, const std::string& ExtraWhere) {
  return trap("OpenQtyStock", [&](Steps& step, Ref<Recordset>& result) {
    step([&] { MUtils::NormalizeDateRange(FromDate, ToDate); });
    Statement statement;
    if (KitKnown ? IsKit : isKit(step, ItemID)) {
      const std::int16_t engine = engineType(step);
      statement.text(Sql::kKitStock.ofKnown(engine))
          .text(Sql::kKitStockFrom)
          .bind(FromDate)
          .bind(ToDate);
      pasted(statement, Sql::kStockOfWarehouse, WarehouseID);
      statement.text(Sql::kKitComponents);
      pasted(statement, Sql::kOfKit, ItemID);
      extra(statement, ExtraWhere);
      statement.text(Sql::kKitStockGroup);
    } else {
      statement.text(Sql::kStock).bind(FromDate).bind(ToDate);
      pasted(statement, Sql::kStockOfItem, ItemID);
      pasted(statement, Sql::kStockOfWarehouse, WarehouseID);
      extra(statement, ExtraWhere);
      statement.text(Sql::kStockGroup);
    }
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CInventoryQueries::OpenQuantityOnHandBySegmentProject(std::int32_t ItemID,
                                                                     Date AtDate,
                                                                     std::int32_t CurType,
                                                                     std::int32_t CurSeqNo,
                                                                     std::int32_t CurTrxId) {
  return trap("OpenQuantityOnHandBySegmentProject", [&](Steps& step, Ref<Recordset>& result) {
    const Position position{AtDate, CurType, CurSeqNo, CurTrxId};
    Statement statement(Sql::kBeforePosition);
    statement.number(ItemID).text(Sql::kAnd);
    before(statement, Sql::kInnerBefore, position);
    statement.text(Sql::kLastBefore);
    before(statement, Sql::kOuterBefore, position);
    statement.text(Sql::kBeforePositionGroup);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CInventoryQueries::OpenItemAvgCost(std::int32_t ItemID, Date AtDate,
                                                  std::int32_t WarehouseID,
                                                  const std::string& ProjIdList,
                                                  const std::string& ExtraWhere) {
  return trap("OpenItemAvgCost", [&](Steps& step, Ref<Recordset>& result) {
    result = openCosts(step, Sql::kAverageCost, Sql::kLedgerOrder,
                       {ItemID, AtDate, WarehouseID, ProjIdList, ExtraWhere});
  });
}

Ref<Recordset> CInventoryQueries::OpenItemLastCost(std::int32_t ItemID, Date AtDate,
                                                   std::int32_t WarehouseID,
                                                   const std::string& ProjIdList,
                                                   const std::string& ExtraWhere) {
  return trap("OpenItemLastCost", [&](Steps& step, Ref<Recordset>& result) {
    const std::int16_t engine = engineType(step);
    result = openCosts(step, Sql::kLastCost.of(engine), Sql::kNewestFirst,
                       {ItemID, AtDate, WarehouseID, ProjIdList, ExtraWhere});
  });
}

Ref<Recordset> CInventoryQueries::openCosts(Steps& step, std::string_view list,
                                            std::string_view order, CostFilter filter,
                                            std::source_location where) {
  Date noLowerDate;
  step([&] { MUtils::NormalizeDateRange(noLowerDate, filter.atDate); }, where);
  Statement statement(list);
  statement.text(Sql::kCostRows).bind(filter.item).bind(filter.atDate);
  pasted(statement, Sql::kStockOfWarehouse, filter.warehouse);
  ofProjects(statement, filter.projects);
  extra(statement, filter.condition);
  statement.text(order);
  return open(step, statement, Pass::Array, {}, where);
}

}  // namespace QuorAccQueries
