// Movements of an item, one after the other.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/data_library.h"
#include "platform/stock_costs.h"

namespace QuorHost {

/// A movement as the ledger of its item has it.
struct LedgerRow {
  /// The columns of `InvenDet` that `readLedgerRow` reads, for a select list.
  static constexpr std::string_view kColumns =
      "InvenDet.ExItemId, InvenDet.DetDate, InvenDet.Type, InvenDet.SeqNo, InvenDet.InTrxId, "
      "InvenDet.Qty, InvenDet.Cost, InvenDet.Invoiced, InvenDet.RunningAvgCost, "
      "InvenDet.RunningLastCost, InvenDet.RunningValuesDirty, "
      "CASE WHEN InvenDet.Type = 1 AND InvenDet.Invoiced = 0 THEN "
      "(SELECT COUNT(*) FROM PurcDet WHERE PurcDet.ExPurcId = InvenDet.ExSrcKeyVal "
      "AND PurcDet.InPurcDetId = InvenDet.ExDetId AND PurcDet.ExRecDetId > 0) ELSE 0 END";
  /// The order of the ledger.
  static constexpr std::string_view kOrder = "DetDate, Type, SeqNo, InTrxId";

  std::int32_t item = 0;
  QuorDataLib::Date date;
  std::int32_t type = 0;
  std::int32_t sequence = 0;
  std::int32_t transaction = 0;
  QuorDataLib::Currency quantity;
  QuorDataLib::Currency cost;
  bool invoiced = false;
  QuorDataLib::Currency average;
  QuorDataLib::Currency last;
  bool stale = false;
  bool adjustsReception = false;
};

/// The current row of a query of `LedgerRow::kColumns`.
[[nodiscard]] LedgerRow readLedgerRow(QuorDataLib::Recordset& rows);

/// What the movements of an item up to one come to.
struct StockState {
  QuorDataLib::Currency quantity;
  QuorDataLib::Currency average;
  QuorDataLib::Currency last;

  /// Takes the next movement in, by the rules of the component. Raises 6 where a value does not
  /// fit.
  void take(const LedgerRow& row);

  /// What the stock is worth at its average cost, to the cent.
  [[nodiscard]] QuorDataLib::Currency value() const;
};

}  // namespace QuorHost
