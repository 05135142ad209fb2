#include "host/company/stock/replay.h"

#include "platform/values/rounding.h"

namespace QuorHost {

LedgerRow readLedgerRow(QuorDataLib::Recordset& rows) {
  LedgerRow row;
  std::int32_t column = 0;
  const auto next = [&] { return rows.Field(column++); };
  row.item = next().toLong();
  row.date = next().toDate();
  row.type = next().toLong();
  row.sequence = next().toLong();
  row.transaction = next().toLong();
  row.quantity = next().toCurrency();
  row.cost = next().toCurrency();
  row.invoiced = next().toBoolean();
  row.average = next().toCurrency();
  row.last = next().toCurrency();
  row.stale = next().toLong() != 0;
  row.adjustsReception = next().toLong() > 0;
  return row;
}

void StockState::take(const LedgerRow& row) {
  const QuorDataLib::CostsMoved moved =
      QuorDataLib::costsMoved(row.type, row.quantity, row.invoiced, row.adjustsReception);
  if (moved.average) {
    average = QuorDataLib::movingAverage(average, quantity, row.quantity, row.cost);
  }
  if (moved.last) last = row.cost;
  quantity += row.quantity;
}

QuorDataLib::Currency StockState::value() const {
  return QuorDataLib::roundedProduct(quantity, average, 2);
}

}  // namespace QuorHost
