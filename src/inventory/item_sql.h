// The fixed texts of the inventory helper. Nothing separates their pieces.
#pragma once

#include <array>
#include <string_view>

#include "core/dialect_text.h"

namespace QuorAccQueries::ItemSql {

/// Where the row of an item is looked for in a recordset of items, and where its stock is.
inline constexpr std::string_view kFindItem = "InItemId = ";
inline constexpr std::string_view kFindStock = "ExItemId = ";

// Read for all items once where recordsets are kept, otherwise for one.
inline constexpr std::string_view kKits = "SELECT InItemId, IsKit FROM Item WHERE IsKit <> 0";
inline constexpr std::string_view kIsKit = "SELECT InItemId, IsKit FROM Item WHERE InItemId = ";
inline constexpr std::string_view kStockUnits = "SELECT InItemId, StockUnit FROM Item";
inline constexpr std::string_view kStockUnit = "SELECT StockUnit FROM Item WHERE InItemId = ?";
inline constexpr std::string_view kSaleUnits = "SELECT InItemId, SaleUnit FROM Item";
inline constexpr std::string_view kSaleUnit = "SELECT SaleUnit FROM Item WHERE InItemId=?";

inline constexpr std::string_view kItemCode = "SELECT ItemId FROM Item WHERE InItemId=?";
inline constexpr std::string_view kPrice = "SELECT Price1 FROM Item WHERE InItemId=?";
inline constexpr std::string_view kPurchaseAccount =
    "SELECT InItemId, ExPurcAcctId FROM Item WHERE InItemId=?";
inline constexpr std::string_view kDiscountAccount =
    "SELECT InItemId, ExDiscSalesAcctId FROM Item WHERE InItemId=?";
inline constexpr std::string_view kItem = "SELECT * FROM Item WHERE InItemId=?";

// How often an item is used.
inline constexpr std::string_view kUseBegin =
    "SELECT SUM(RecordCount) As TrxCount "
    " FROM ( ";
inline constexpr std::string_view kUseCount = "   SELECT COUNT(ExItemId) As RecordCount ";
inline constexpr std::array<std::string_view, 7> kUseTables{
    "   FROM InvenDet ",         "   FROM Invoidet ",    "   FROM PurcDet ",
    "   FROM AdjItemDet ",       "   FROM AssemblyHdr ", "   FROM AssemblyDet ",
    "   FROM WarehouseTransDet "};
inline constexpr std::string_view kUseOfItem = "   WHERE ExItemId = ";
inline constexpr std::string_view kUnionAll = " UNION ALL ";
inline constexpr std::string_view kUseEnd = ") AS ItemTrx ";

// Whether a line of a purchase invoices or adjusts a line of a reception.
inline constexpr std::string_view kReceptionOfLine =
    "SELECT ExRecId, ExRecDetId FROM PurcDet WHERE ExPurcId = ? AND InPurcDetId = ?";
inline constexpr std::string_view kReceptionCount =
    "SELECT COUNT(*) FROM PurcDet WHERE ExPurcId = ";
inline constexpr std::string_view kReceptionCountOfLine = " AND InPurcDetId = ";
inline constexpr std::string_view kReceptionCountEnd = " AND ExRecDetId > 0";

// Inventory accounts.
inline constexpr std::string_view kAccounts =
    "SELECT ExInvAcctId FROM Item WHERE NOT ExInvAcctId IS NULL";
inline constexpr std::string_view kAccountsBut = " AND ExInvAcctId <> ";
inline constexpr std::string_view kAccountsGroup = " GROUP BY ExInvAcctId";

inline constexpr std::string_view kReplacements =
    "SELECT ExItemId FROM ItemReplacement WHERE ExId=?";

// What a kit or an assembly is made of, in the order of its list.
inline constexpr std::string_view kKitComponents =
    "SELECT Item.InItemId, ItemKitDet.Qty, Item.FacSales "
    "FROM ItemKitDet INNER JOIN Item ON ItemKitDet.ExItemId = Item.InItemId "
    "WHERE ItemKitDet.ExItemKitId = ? ORDER BY ItemKitDet.InItemKitDetId";
inline constexpr std::string_view kAssemblyComponents =
    "SELECT ItemKitDet.ExItemID, ItemKitDet.Qty FROM ItemKitDet "
    "WHERE ItemKitDet.ExItemKitId = ? ORDER BY ItemKitDet.InItemKitDetId";
inline constexpr DialectText kAssemblyParts{
    .desktop =
        "SELECT ItemKitDet.ExItemId, Item.IsAssembly, Item.ItemId & ' ' & Item.Descr1 AS "
        "ItemIdAndDescr1 ",
    .server =
        "SELECT ItemKitDet.ExItemId, Item.IsAssembly, COALESCE(Item.ItemId, '') + ' ' + "
        "COALESCE(Item.Descr1, '') AS ItemIdAndDescr1 "};
inline constexpr std::string_view kAssemblyPartsOf =
    "FROM ItemKitDet INNER JOIN Item ON ItemKitDet.ExItemId = Item.InItemId "
    "WHERE ItemKitDet.ExItemKitId = ? ORDER BY ItemKitDet.InItemKitDetId";

// Marks the running costs behind a position as stale. The last condition belongs to the last
// alternative alone: later days and higher types are marked whatever their mark is.
inline constexpr std::string_view kMarkStale =
    "UPDATE InvenDet SET RunningValuesDirty = "
    "2"
    " WHERE (DetDate > ?) "
    " OR (DetDate = ? AND Type > ";
inline constexpr std::string_view kMarkOfType = ") OR (DetDate = ? AND Type = ";
inline constexpr std::string_view kMarkOfSequence = " AND SeqNo > ";
inline constexpr std::string_view kMarkEnd =
    ")"
    " AND RunningValuesDirty = "
    "0";

}  // namespace QuorAccQueries::ItemSql
