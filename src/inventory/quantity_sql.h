// The fixed texts of the quantity queries. Nothing separates their pieces.
#pragma once

#include <string_view>

#include "core/dialect_text.h"

namespace QuorAccQueries::QuantitySql {

// Movements of an item, in ledger order.
inline constexpr std::string_view kOnHand =
    "SELECT TrxDate, InTrxId, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, Name "
    "FROM ItemAvgCost_View "
    "WHERE ExItemID = ? AND TrxDate BETWEEN ? AND ?";
inline constexpr std::string_view kOnHandOfWarehouse = " AND ExWarehouseID = ?";
inline constexpr std::string_view kOnHandOrder = " ORDER BY TrxDate, TrxType, SeqNo, InTrxId";

// Reserved quantities. An item's are read from the two views that the view of all is made of.
inline constexpr std::string_view kSelect = "SELECT ";
inline constexpr std::string_view kUnionSelect = "UNION SELECT ";
inline constexpr std::string_view kReservedList =
    "TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, UnitPrice, Name, "
    "ExCurrencyId";
inline constexpr std::string_view kServiceColumn = ", Item.Servc ";
inline constexpr std::string_view kReservedByInvoices =
    "FROM ItemReservedInvoi_View LEFT JOIN Item ON ItemReservedInvoi_View.ExItemId = "
    "Item.InItemId ";
inline constexpr std::string_view kReservedByAssemblies =
    "FROM ItemReservedAssembly_View LEFT JOIN Item ON ItemReservedAssembly_View.ExItemId = "
    "Item.InItemId ";
inline constexpr std::string_view kReserved =
    "FROM ItemReservedAll_View LEFT JOIN Item ON ItemReservedAll_View.ExItemId = Item.InItemId ";
inline constexpr std::string_view kReservedPeriod = "WHERE TrxDate BETWEEN ? AND ? ";
inline constexpr std::string_view kReservedOfItem = " AND ExItemID = ";
inline constexpr std::string_view kReservedOfWarehouse = " AND ExWarehouseID = ";
inline constexpr std::string_view kReservedGroup = "GROUP BY Item.Servc ";
inline constexpr std::string_view kReservedOrder = "ORDER BY TrxDate, ID";

// Quantities to receive. The views with expected quantities have two columns more.
inline constexpr std::string_view kToReceiveList =
    "SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name, "
    "UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit ";
inline constexpr std::string_view kUnion = " UNION ";
inline constexpr std::string_view kExpectedColumns = ", OriginalRefNo, QtyExpected ";
inline constexpr std::string_view kToReceiveByPurchases = "FROM ItemToRecPurch_view ";
inline constexpr std::string_view kExpectedByPurchases = "FROM ItemToRecExpPurch_View ";
inline constexpr std::string_view kToReceiveByAssemblies = "FROM ItemToRecAssembly_View ";
inline constexpr std::string_view kExpectedByAssemblies = "FROM ItemToRecExpAssembly_View ";
inline constexpr std::string_view kToReceive = "FROM ItemToRec_View ";
inline constexpr std::string_view kExpected = "FROM ItemToRecExpected_View ";
inline constexpr std::string_view kToReceivePeriod = "WHERE TrxDate BETWEEN ? AND ? ";
inline constexpr std::string_view kToReceiveOfItem = " AND ExItemID = ? ";
inline constexpr std::string_view kToReceiveOfWarehouse = " AND ExWarehouseID = ? ";
inline constexpr std::string_view kToReceiveOfSupplier = " AND InSuppId = ? ";
inline constexpr std::string_view kOnlyExpected = " AND (QtyExpected > 0) ";
inline constexpr std::string_view kToReceiveOrder = " ORDER BY TrxDate, ID, TrxId";

// Stock by project.
inline constexpr std::string_view kProjectStock =
    "SELECT ExItemId, SUM(InvenDet.Qty) AS QtyStock, InvenDet.ExProjId AS InProjId, Item.Servc "
    "FROM Item INNER JOIN InvenDet ON Item.InItemId = InvenDet.ExItemId "
    "WHERE InvenDet.DetDate BETWEEN ? AND ? ";
inline constexpr std::string_view kOfProjects = " AND ExProjId IN (";
inline constexpr std::string_view kOfProjectsEnd = ") ";
inline constexpr std::string_view kProjectStockOfItem = " AND ExItemId = ? ";
inline constexpr std::string_view kAnd = " AND ";
inline constexpr std::string_view kProjectStockGroup =
    " GROUP BY InvenDet.ExItemId, InvenDet.ExProjId, Item.Servc";

// Stock by project and segment.
inline constexpr std::string_view kStock =
    "SELECT ExItemId, SUM(InvenDet.Qty) AS QtyStock, ExProjId, ExSegmentId, Item.Servc "
    "FROM Item INNER JOIN InvenDet ON Item.InItemId = InvenDet.ExItemId "
    "WHERE InvenDet.DetDate BETWEEN ? AND ? ";
inline constexpr std::string_view kStockOfItem = " AND ExItemId = ";
inline constexpr std::string_view kStockOfWarehouse = " AND ExWarehouseId = ";
inline constexpr std::string_view kStockGroup =
    " GROUP BY InvenDet.ExItemId, InvenDet.ExProjId, InvenDet.ExSegmentId, Item.Servc ";

// Whole kits that the stock of the components makes.
inline constexpr DialectText kKitStock{
    .desktop =
        "SELECT MIN(Int(IIf(IsNull(QtyStockView.QtyStock), 0, QtyStockView.QtyStock) / "
        "(Qty * IIf(Item.FacSales > 0 OR Item.FacSales < 0, Item.FacSales, 1)))) AS QtyStock, "
        "ExItemKitId,  QtyStockView.ExSegmentId,  QtyStockView.ExProjId, Item.Servc ",
    .server =
        "SELECT MIN(CAST(COALESCE(QtyStockView.QtyStock, 0) / (Qty * "
        "Case "
        "When Item.FacSales > 0 OR Item.FacSales < 0  then item.FacSales "
        "Else 1 "
        "End)  AS int)) AS QtyStock, ExItemKitId, QtyStockView.ExSegmentId, "
        "QtyStockView.ExProjId, Item.Servc "};
inline constexpr std::string_view kKitStockFrom =
    "FROM (ItemKitDet LEFT JOIN "
    "(SELECT InvenDet.ExItemId AS InItemId, Sum(InvenDet.Qty) AS QtyStock, ExProjId, ExSegmentId "
    " FROM InvenDet "
    " WHERE DetDate BETWEEN ? AND ? ";
inline constexpr std::string_view kKitComponents =
    " GROUP BY InvenDet.ExItemId, InvenDet.ExProjId, InvenDet.ExSegmentId) As QtyStockView ON "
    "ItemKitDet.ExItemId = QtyStockView.InItemId) "
    "INNER JOIN Item ON ItemKitDet.ExItemId = Item.InItemId "
    "WHERE (Servc=0 OR Servc IS NULL) AND Qty <> 0 ";
inline constexpr std::string_view kOfKit = " AND ExItemKitId = ";
inline constexpr std::string_view kKitStockGroup =
    " GROUP BY ExItemKitId, QtyStockView.ExSegmentId, QtyStockView.ExProjId, Item.Servc ";

/// The rows before a position in the ledger: rows of earlier days, but not those with the
/// position's own sequence number, and rows of its day that come before it.
struct BeforeTexts {
  std::string_view earlier;
  std::string_view types;
  std::string_view sameSequence;
};
/// The condition inside, and the one outside, which carries the WHERE and is indented less.
inline constexpr BeforeTexts kInnerBefore{
    .earlier = "          ((DetDate < ? AND InvenDet.SeqNo <>",
    .types = "          ((Type < ",
    .sameSequence = "          (Type="};
inline constexpr BeforeTexts kOuterBefore{.earlier = "WHERE ((DetDate < ? AND InvenDet.SeqNo <>",
                                          .types = "      ((Type < ",
                                          .sameSequence = "      (Type="};
inline constexpr std::string_view kSameDay = ") OR (DetDate = ? AND ";
inline constexpr std::string_view kSameType = ") OR (Type=";
inline constexpr std::string_view kLowerSequence = " AND SeqNo < ";
inline constexpr std::string_view kOr = ") OR ";
inline constexpr std::string_view kSameSequence = " AND SeqNo = ";
inline constexpr std::string_view kLowerTransaction = " AND InTrxId < ";
inline constexpr std::string_view kBeforeEnd = ")))) ";

// Quantity on hand before a position, with the costs of the last row before it.
inline constexpr std::string_view kBeforePosition =
    "SELECT SUM(InvenDet.Qty) As QtyOnHand, LC.LastCost as LastCost, LC.AvgCost as AvgCost, "
    "InvenDet.ExProjId, InvenDet.ExSegmentId "
    "FROM InvenDet "
    "RIGHT JOIN "
    "    ( "
    "    SELECT TOP 1 ExItemID as ExItemID, RunningLastCost as LastCost, RunningAvgCost as AvgCost "
    "    FROM InvenDet "
    "    WHERE ExItemId = ";
inline constexpr std::string_view kLastBefore =
    "    ORDER BY DetDate DESC, Type DESC, SeqNo DESC, InTrxID DESC "
    "    ) AS LC ON LC.ExItemID = InvenDet.ExItemID ";
inline constexpr std::string_view kBeforePositionGroup =
    "GROUP BY ExProjId, ExSegmentId, LC.LastCost, LC.AvgCost "
    "ORDER BY ExProjId, ExSegmentId ";

// What the costs of an item are made of, up to a day: in ledger order for the average, newest first
// for the last cost.
inline constexpr std::string_view kAverageCost =
    "SELECT Type, ExSrcKeyVal, ExDetId, Qty, Cost, Invoiced ";
inline constexpr DialectText kLastCost{
    .desktop =
        "SELECT Cost AS LastCost, Switch(Type = 0, 'CON', Type = 1, 'PUR', Type = 2, 'ADJ', "
        "Type = 4, 'TRW', Type = 6, 'ASB', Type = 7, 'INV') AS Source, ExSrcKeyVal, ExDetId, Qty, "
        "Invoiced ",
    .server =
        "SELECT Cost AS LastCost, CASE Type WHEN 0 THEN 'CON' WHEN 1 THEN 'PUR' WHEN 2 THEN 'ADJ' "
        "WHEN 4 THEN 'TRW' WHEN 6 THEN 'ASB' WHEN 7 THEN 'INV' END AS Source, ExSrcKeyVal, "
        "ExDetId, Qty, Invoiced "};
inline constexpr std::string_view kCostRows = "FROM InvenDet WHERE ExItemId = ? AND DetDate <= ? ";
inline constexpr std::string_view kLedgerOrder = " ORDER BY DetDate, Type, SeqNo, InTrxId";
inline constexpr std::string_view kNewestFirst =
    " ORDER BY DetDate DESC, Type DESC, SeqNo DESC, InTrxId DESC";

}  // namespace QuorAccQueries::QuantitySql
