#include "host/company/stock/recost.h"

#include <span>
#include <string>

#include "host/company/stock/replay.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Connection;
using QuorDataLib::Currency;
using QuorDataLib::Error;
using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;

/// Movements read at a time. They are written before the next ones are read.
constexpr int kBatch = 10'000;

const std::string kAtOrAfter =
    "DetDate >= ? AND (DetDate > ? OR Type > ? OR (Type = ? AND (SeqNo > ? OR "
    "(SeqNo = ? AND InTrxId >= ?))))";
const std::string kBefore =
    "DetDate <= ? AND (DetDate < ? OR Type < ? OR (Type = ? AND (SeqNo < ? OR "
    "(SeqNo = ? AND InTrxId < ?))))";

/// The values of the markers of either condition, behind the item's.
Parameters itemAndPosition(const LedgerRow& row) {
  return Parameters::array({row.item, row.date, row.date, row.type, row.type, row.sequence,
                            row.sequence, row.transaction});
}

/// The order of the ledger backwards.
const std::string kLatestFirst = " ORDER BY DetDate DESC, Type DESC, SeqNo DESC, InTrxId DESC";

class ItemRecost {
 public:
  ItemRecost(Ref<Connection> connection, std::int32_t item)
      : connection_(std::move(connection)), result_{.item = item} {}

  /// Computes the item; `onBatch` is told how many movements were done.
  template <class OnBatch>
  RecostedItem run(const OnBatch& onBatch) {
    noteLatest(result_.averageBefore, result_.lastBefore);
    LedgerRow from = firstMarked();
    StockState state = stateBefore(from);
    while (true) {
      const std::vector<LedgerRow> rows = batch(from);
      for (const LedgerRow& row : rows) take(state, row);
      onBatch(static_cast<std::int64_t>(rows.size()));
      if (rows.size() < kBatch) break;
      from = rows.back();
      ++from.transaction;
    }
    result_.average = state.average;
    result_.last = state.last;
    return result_;
  }

 private:
  Ref<Recordset> open(const std::string& sql, const Parameters& parameters) {
    return connection_->OpenRecordset(sql, 4, 0, parameters, 0);
  }

  void noteLatest(Currency& average, Currency& last) {
    const Ref<Recordset> row =
        open("SELECT TOP 1 RunningAvgCost, RunningLastCost FROM InvenDet WHERE ExItemId = ?" +
                 kLatestFirst,
             Parameters::single(result_.item));
    average = row->Field(0).toCurrency();
    last = row->Field(1).toCurrency();
  }

  LedgerRow firstMarked() {
    return readLedgerRow(*open("SELECT TOP 1 " + std::string(LedgerRow::kColumns) +
                                   " FROM InvenDet WHERE ExItemId = ? AND RunningValuesDirty <> 0 "
                                   "ORDER BY " +
                                   std::string(LedgerRow::kOrder),
                               Parameters::single(result_.item)));
  }

  StockState stateBefore(const LedgerRow& row) {
    StockState state;
    const Ref<Recordset> sum = open(
        "SELECT SUM(Qty) FROM InvenDet WHERE ExItemId = ? AND " + kBefore, itemAndPosition(row));
    if (sum->Field(0).isNull()) return state;
    state.quantity = sum->Field(0).toCurrency();
    const Ref<Recordset> costs =
        open("SELECT TOP 1 RunningAvgCost, RunningLastCost FROM InvenDet WHERE ExItemId = ? AND " +
                 kBefore + kLatestFirst,
             itemAndPosition(row));
    state.average = costs->Field(0).toCurrency();
    state.last = costs->Field(1).toCurrency();
    return state;
  }

  std::vector<LedgerRow> batch(const LedgerRow& from) {
    std::vector<LedgerRow> rows;
    const Ref<Recordset> read =
        open("SELECT TOP " + std::to_string(kBatch) + " " + std::string(LedgerRow::kColumns) +
                 " FROM InvenDet WHERE ExItemId = ? AND " + kAtOrAfter + " ORDER BY " +
                 std::string(LedgerRow::kOrder),
             itemAndPosition(from));
    for (; !read->AtEnd(); read->MoveNext()) rows.push_back(readLedgerRow(*read));
    read->Close();
    return rows;
  }

  void take(StockState& state, const LedgerRow& row) {
    state.take(row);
    ++result_.computed;
    const bool changed = row.average != state.average || row.last != state.last;
    if (changed) ++result_.changed;
    if (!changed && !row.stale) return;
    std::int32_t affected = 0;
    connection_->Execute(
        "UPDATE InvenDet SET RunningLastCost = ?, RunningAvgCost = ?, RunningValuesDirty = 0 "
        "WHERE InTrxId = ?",
        affected, -1, Parameters::array({state.last, state.average, row.transaction}));
  }

  Ref<Connection> connection_;
  RecostedItem result_;
};

struct MarkedItem {
  std::int32_t item;
  std::int64_t rows;
};

std::vector<MarkedItem> markedItems(const Ref<Connection>& connection, std::int32_t item) {
  std::string sql = "SELECT ExItemId, COUNT(*) FROM InvenDet WHERE RunningValuesDirty <> 0";
  if (item != 0) sql += " AND ExItemId = " + std::to_string(item);
  const Ref<Recordset> rows =
      connection->OpenRecordset(sql + " GROUP BY ExItemId ORDER BY ExItemId", 4, 0, {}, 0);
  std::vector<MarkedItem> items;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    items.push_back({rows->Field(0).toLong(), rows->Field(1).toLong()});
  }
  return items;
}

}  // namespace

std::vector<RecostedItem> recostStock(Store& store, std::int32_t item, const Progress& progress) {
  const Ref<Connection> connection = store.connect(Sql::Dialect::Server);
  const std::unique_ptr<Transaction> transaction = store.begin();
  const std::vector<MarkedItem> items = markedItems(connection, item);
  std::int64_t total = 0;
  for (const MarkedItem& each : items) total += each.rows;
  std::int64_t done = 0;
  std::vector<RecostedItem> results;
  for (const MarkedItem& each : items) {
    try {
      results.push_back(ItemRecost(connection, each.item).run([&](std::int64_t rows) {
        done += rows;
        total = std::max(total, done);
        if (progress) progress("computing costs", done, total);
      }));
    } catch (const Error& error) {
      throw Error(error.number(), error.source(),
                  "The costs of item " + std::to_string(each.item) +
                      " cannot be computed: " + error.description());
    }
  }
  transaction->commit();
  return results;
}

MovementWatch::MovementWatch(Store& store)
    : store_(store),
      changes_(store.watch(
          {.table = kMovements,
           .key = "ExItemId",
           .date = "DetDate",
           .columns = {"ExItemId", "DetDate", "Type", "SeqNo", "InTrxId", "Qty", "Cost", "Invoiced",
                       "ExSrcKeyVal", "ExDetId", "RunningAvgCost", "RunningLastCost"}})) {}

void MovementWatch::markStale() {
  const std::vector<ChangeLog::Change> changes = changes_->take();
  changes_.reset();
  const Ref<Connection> connection = store_.connect(Sql::Dialect::Server);
  for (const ChangeLog::Change& change : changes) {
    std::int32_t marked = 0;
    connection->Execute(
        "UPDATE InvenDet SET RunningValuesDirty = 2 WHERE ExItemId = ? AND DetDate >= ? "
        "AND RunningValuesDirty = 0",
        marked, -1, Parameters::array({change.key, change.from}));
  }
}

}  // namespace QuorHost
