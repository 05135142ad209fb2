// Inventory values: quantities, costs and look-ups of items.
#pragma once

#include <cstdint>
#include <set>
#include <source_location>
#include <string>
#include <string_view>

#include "core/frame.h"
#include "inventory/inventory_queries.h"
#include "inventory/kit_component.h"

namespace QuorAccQueries {

/// Answers single questions about an item: its stock and what that is worth, its costs, its
/// attributes.
///
/// Quantities are in stock units, and like costs exact to four decimals. Items are named by their
/// keys; an unknown item has no stock, no costs and empty attributes.
///
/// Stock totals and movements are read through a query object of the helper's own, which is never
/// given the helper's connection and runs on the application's default connection; all other
/// statements run on the helper's own.
///
/// Filters are alike in all methods, and 0, empty or no date filters nothing: `FromDate` and
/// `ToDate` (both days belong to the range) or `AtDate` (the last day); `WarehouseID`;
/// `ProjIdList`, keys of projects separated by commas; `ExtraWhere`, a condition on columns of
/// `InvenDet`.
///
/// Session-date rule: where the last day is left open, `UseSessionDate` is true and the company
/// parameter "QtyCostAtSessionDate" was set when the helper was made, the last day is the company's
/// session date.
class CInventoryHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CInventoryHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Reads what stays the same for the helper's life; errors reach the creator.
  explicit CInventoryHelper(Steps& step = Steps::untrapped());

  /// Whether the item is a kit: sold as one and kept as its components.
  bool ItemIsKit(std::int32_t ItemID);

  /// What the item's stock is worth, to the cent: its quantity at its average cost, or at its last
  /// cost where the company parameter "CostCalculMeth" is not "0".
  Currency GetInventValue(std::int32_t ItemID, bool UseSessionDate);

  /// The average cost of the item after its movements up to a day, replayed from the first; of a
  /// kit, the sum of its components' for what one kit takes of them (`Qty` sale units of each).
  Currency GetAvgCostRange(std::int32_t ItemID, Date AtDate, std::int32_t WarehouseID,
                           const std::string& ProjIdList, const std::string& ExtraWhere,
                           bool UseSessionDate);

  /// The average cost after a movement of `Qty` at `UnitCost` to a stock of `PrevQty`. It stays
  /// while the stock stays below zero; a stock that was below zero and is no longer, or that
  /// becomes exactly zero, takes the movement's cost.
  Currency CalculateAverageCost(Currency PrevAvgCost, Currency PrevQty, Currency Qty,
                                Currency UnitCost);

  /// Whether a movement moves the average cost: purchases, adjustments and assemblies that come in,
  /// and reception adjustments that go out.
  /// @param SrcKey    key of the movement's document, as text
  /// @param DetId     line of the document
  /// @param Invoiced  whether a purchase is invoiced already
  bool InvenDetAdjustAvgCost(std::int32_t TrxType, const std::string& SrcKey, std::int32_t DetId,
                             Currency Qty, bool Invoiced);

  /// Whether it moves the last cost: the same movements, and adjustments of no quantity, which set
  /// a cost. The document's key is a number here.
  bool InvenDetAdjustLastCost(std::int32_t TrxType, std::int32_t SrcKeyId, std::int32_t DetId,
                              Currency Qty, bool Invoiced);

  /// Both answers at once. For movements that never move a cost (sales, transfers, consumptions)
  /// neither output is written.
  void InvenDetAdjustCost(std::int32_t TrxType, const std::string& SrcKey, std::int32_t DetId,
                          Currency Qty, bool Invoiced, bool& AdjustsAvg, bool& AdjustsLast);

  /// Marks stored running costs as stale (`RunningValuesDirty` 2) behind a position in the ledger,
  /// for all items, and has the ledger's inventory postings begun anew ("InventGLToDate" 0). Rows
  /// of the position's own date and type with a higher sequence number are marked where they are
  /// clean, all others in any case. It runs on the application's default connection.
  /// @param MarkRows  false sets the parameter only
  void FlagInventoryDirty(bool MarkRows, Date AtDate, std::int32_t CurType, std::int32_t CurSeqNo);

  /// Whether a line of a purchase invoices or adjusts a reception.
  bool IsReceptionAdjustment2(std::int32_t SrcKeyId, std::int32_t DetId);

  /// The same for a line of a purchase; `RecId` receives the reception, and stays as it is where
  /// there is none.
  bool IsReceptionAdjustment(std::int32_t PurcId, std::int32_t PurcDetId, std::int32_t& RecId);

  /// The unit that stock is counted in, and the one it is sold by.
  std::string GetStockUnit(std::int32_t ItemID);
  std::string GetSaleUnit(std::int32_t ItemID);

  /// The item's code, as users know it.
  std::string GetItemId(std::int32_t ItemID);

  /// The item's first price, for one sale unit.
  Currency GetItemPrice(std::int32_t ItemID);

  /// The account that purchases of the item go to: its own, or the company's ("SuppGLPurchAcct").
  std::int32_t GetPurchAccount(std::int32_t ItemID);

  /// The account of discounts on its sales: its own, or the company's ("CustGLDiscSale").
  std::int32_t GetDiscAccount(std::int32_t ItemID);

  /// What a bar code of the item says: its code, followed by "*" and the quantity where the item
  /// wants that. The quantity has a point for its decimals, whatever the user's locale, and no more
  /// of them than it needs.
  std::string GetItemBarCodeValue(std::int32_t ItemID, Currency Qty);

  /// In how many rows of movements and document lines the item stands.
  std::int32_t ItemInTransactionsCount(std::int32_t ItemID);
  bool ItemInTransactions(std::int32_t ItemID);

  /// The item's stock over a period; from the first day on, what is there at its end. Services have
  /// none. Of a kit, how many the components' stock makes, in all projects and segments, each for
  /// itself; a list of projects is not looked at then.
  /// @param WithReplacement  adds the stock of the items that can replace it, and of those that can
  ///                         replace them, each item once
  Currency GetQtyInStockRange(std::int32_t ItemID, Date FromDate, Date ToDate,
                              std::int32_t WarehouseID, const std::string& ProjIdList,
                              const std::string& ExtraWhere, bool WithReplacement,
                              bool UseSessionDate);

  /// The cost of the item's last movement up to a day that sets one (`InvenDetAdjustLastCost`), 0
  /// where there is none; of a kit, the sum of its components' for what one kit takes of them. It
  /// is found in the movements, so that stale running costs do no harm.
  Currency GetLastCost(std::int32_t ItemID, Date AtDate, std::int32_t WarehouseID,
                       const std::string& ProjIdList, const std::string& ExtraWhere,
                       bool UseSessionDate);

  /// What the components of one unit of an assembled item cost, at their average or last cost as
  /// "CostCalculMeth" says.
  Currency GetAssemblyComponentsCost(std::int32_t ItemID, Date AtDate, std::int32_t WarehouseID,
                                     const std::string& ProjIdList, const std::string& ExtraWhere,
                                     bool UseSessionDate);

  /// Whether the item can be assembled: it has components, and is not made of itself, directly or
  /// by way of components that are assembled, too.
  /// @param Component  receives code and description of the component that is made of the item;
  ///                   empty in every other case
  bool IsValidAssembly(std::int32_t ItemID, std::string& Component);

  /// What customers' orders and planned assemblies reserve of the item in a period, in all. Where
  /// both reserve the same quantity, it counts once (see `OpenQtyReserved`).
  Currency GetReservedQty(std::int32_t ItemID, Date FromDate, Date ToDate,
                          std::int32_t WarehouseID);

  /// The type code of a movement's source code ("PUR", in any case), 0 for an unknown one; and the
  /// source code of a type, empty for an unknown one.
  std::int32_t GetTrxTypeFromSource(const std::string& Source);
  std::string GetSourceFromTrxType(std::int32_t TrxType);

  /// What a kit is made of: its components (`CKitComponent`) in the order of its list, services
  /// among them. Empty for what is no kit.
  Ref<Collection> GetKitComponents(std::int32_t ItemID);

  /// Keys of the inventory accounts in use: the company's ("SuppGLInvAcct"), where it has one, and
  /// then those of items that have another one.
  Ref<Collection> GetInventoryGLAccounts();

 private:
  /// The movements and stock that a question is about.
  struct Filter {
    Date from;
    Date to;
    std::int32_t warehouse = 0;
    std::string projects;
    std::string condition;
  };

  /// Fills in the last day by the session-date rule.
  void applySessionDate(Steps& step, Date& to, bool useSessionDate,
                        std::source_location where = std::source_location::current()) const;

  /// The average cost and the last cost of an item that is no kit. Each has a trap of its own.
  Currency GetAvgCostRangeForItem(std::int32_t ItemID, Date AtDate, std::int32_t WarehouseID,
                                  const std::string& ProjIdList, const std::string& ExtraWhere,
                                  bool UseSessionDate);
  Currency GetLastCostItem(std::int32_t ItemID, Date AtDate, std::int32_t WarehouseID,
                           const std::string& ProjIdList, const std::string& ExtraWhere,
                           bool UseSessionDate);

  /// Replays movements in the order in which they come. It has a trap of its own.
  Currency CalculateAverageCostForRS(const Ref<Recordset>& rows);

  /// The stock of an item and, where they are asked for, of its replacements that are not counted
  /// yet.
  Currency quantityOf(Steps& step, std::int32_t item, const Filter& filter, bool withReplacement,
                      std::set<std::int32_t>& counted);
  /// The stock of an item itself.
  Currency ownQuantity(Steps& step, std::int32_t item, const Filter& filter);
  /// Stock by project, and by segment where no projects are asked for; 0 for all items but kits.
  Ref<Recordset> openStock(Steps& step, std::int32_t item, bool isKit, const Filter& filter);

  /// The component by which an assembly comes back to `item`; empty where it does not. `seen` are
  /// the assemblies looked into already, `any` becomes true where there is a component at all.
  std::string wayBack(Steps& step, std::int32_t item, std::int32_t assembly,
                      std::set<std::int32_t>& seen, bool& any);

  /// An item's field: read from all items where recordsets are kept (in `kept`, opened on first
  /// need), otherwise from `one`. Empty where there is no such item, or no value.
  Value fieldOfItem(Steps& step, Ref<Recordset>& kept, std::string_view all, const Statement& one,
                    Pass pass, std::int32_t item, const std::string& column,
                    std::source_location where = std::source_location::current());

  /// The field of a statement's first row; Empty where there is none, or no value.
  Value firstField(Steps& step, const Statement& statement, Pass pass, const std::string& column,
                   std::source_location where = std::source_location::current());

  Ref<CInventoryQueries> queries_ = make<CInventoryQueries>();
  bool qtyCostAtSessionDate_;
  std::int16_t engineType_;
  Ref<Recordset> kits_;
  Ref<Recordset> stockUnits_;
  Ref<Recordset> saleUnits_;
  RecordsetCache stock_;
};

}  // namespace QuorAccQueries
