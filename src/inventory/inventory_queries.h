// Inventory queries.
#pragma once

#include <cstdint>
#include <source_location>
#include <string>
#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

class CInventoryHelper;

/// Quantities of items. Every `Open...` method hands its recordset to the caller open; the caller
/// closes it. On an error that leaves a method no recordset is returned (an empty reference).
///
/// Stock is kept as movements (`InvenDet`): what comes in is positive, what goes out negative, so
/// the sum over all days up to one is the stock of that day. The movements of an item are in ledger
/// order: by date, type, sequence number and transaction.
///
/// An identifier of 0 sets no condition. A date range takes both its days in; no first day is
/// 1900-01-01 and no last day 9999-12-31. The caller's SQL fragments go into the statement as they
/// stand.
class CInventoryQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CInventoryQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// The movements of one item in a period, in ledger order, with number and party of the document
  /// that each comes from.
  Ref<Recordset> OpenQtyOnHand(std::int32_t ItemID, std::int32_t WarehouseID, Date FromDate,
                               Date ToDate);

  /// What is reserved by customers' orders and by planned assemblies, dated in a period. A service
  /// has `Servc` set.
  ///
  /// @param ItemID     one item, or 0 for all
  /// @param FieldList  a select list of aggregates ("SUM(Qty) AS Qty"), for one row for each value
  ///                   of `Servc` on either side; empty for the rows themselves. Equal rows of both
  ///                   sides are one row. Without an item it is ignored.
  /// @param Sorted     by date and document; otherwise the order is the engine's
  Ref<Recordset> OpenQtyReserved(std::int32_t ItemID, std::int32_t WarehouseID, Date FromDate,
                                 Date ToDate, const std::string& FieldList, bool Sorted);

  /// What is still to come from suppliers' orders and planned assemblies, dated in a period, by
  /// date and document.
  ///
  /// @param ItemID        one item, or 0 for all
  /// @param SuppID        one supplier's, or 0 for all; assemblies have none
  /// @param ExpectedOnly  only rows with an expected quantity, with the columns of `WithExpected`
  /// @param WithExpected  adds the supplier's number of the document and the quantity expected
  Ref<Recordset> OpenQtyToRec(std::int32_t ItemID, std::int32_t WarehouseID, Date FromDate,
                              Date ToDate, std::int32_t SuppID, bool ExpectedOnly,
                              bool WithExpected);

  /// Movements summed by item and project.
  ///
  /// @param ProjIdList  keys of projects separated by commas, or empty for all
  /// @param ExtraWhere  a further condition, or empty
  Ref<Recordset> OpenQtyStockProj(std::int32_t ItemID, Date FromDate, Date ToDate,
                                  const std::string& ProjIdList, const std::string& ExtraWhere);

  /// Movements summed by item, project and segment. For a kit, which has no movements of its own:
  /// how many whole kits the components' stock makes in each project and segment. Below zero the
  /// desktop engine cuts downwards, the server engine towards zero.
  ///
  /// @param KitKnown    whether `IsKit` tells if the item is a kit; otherwise it is looked up on
  /// the
  ///                    application's default connection and remembered
  /// @param ExtraWhere  a further condition, or empty
  Ref<Recordset> OpenQtyStock(std::int32_t ItemID, std::int32_t WarehouseID, Date FromDate,
                              Date ToDate, bool KitKnown, bool IsKit,
                              const std::string& ExtraWhere);

  /// The stock of an item by project and segment just before a position in the ledger, every row
  /// with the running costs of the item's last movement before it; no row where there is none.
  /// Movements of earlier days that have the position's own sequence number are not counted: they
  /// belong to the transaction that is being entered again.
  Ref<Recordset> OpenQuantityOnHandBySegmentProject(std::int32_t ItemID, Date AtDate,
                                                    std::int32_t CurType, std::int32_t CurSeqNo,
                                                    std::int32_t CurTrxId);

  /// The movements that the average cost of an item is replayed from, up to and with `AtDate`, in
  /// ledger order. A cost is the same wherever the item lies, so the filters only serve who wants
  /// the cost of a part of the stock as if it were kept alone.
  ///
  /// @param AtDate       the last day; no date for all movements
  /// @param ProjIdList   keys of projects separated by commas, or empty for all
  /// @param ExtraWhere   a further condition, or empty
  Ref<Recordset> OpenItemAvgCost(std::int32_t ItemID, Date AtDate, std::int32_t WarehouseID,
                                 const std::string& ProjIdList, const std::string& ExtraWhere);

  /// The same movements, newest first, each with its unit cost as `LastCost` and its source code.
  Ref<Recordset> OpenItemLastCost(std::int32_t ItemID, Date AtDate, std::int32_t WarehouseID,
                                  const std::string& ProjIdList, const std::string& ExtraWhere);

 private:
  /// Whether the item is a kit, asked of a helper that keeps the kits it has read.
  bool isKit(Steps& step, std::int32_t item);

  /// Which movements costs are made of.
  struct CostFilter {
    std::int32_t item;
    Date atDate;
    std::int32_t warehouse;
    const std::string& projects;
    const std::string& condition;
  };
  Ref<Recordset> openCosts(Steps& step, std::string_view list, std::string_view order,
                           CostFilter filter,
                           std::source_location where = std::source_location::current());

  Ref<CInventoryHelper> helper_;
};

}  // namespace QuorAccQueries
