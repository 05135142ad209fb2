#include "host/company/stock/recost.h"

#include <algorithm>
#include <span>
#include <string>

#include "host/company/stock/replay.h"
#include "host/sql/names.h"
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

bool movesCosts(std::string_view table) noexcept {
  return Sql::sameName(table, kMovements) || Sql::sameName(table, kPurchaseLines);
}

CostWatch::CostWatch(Store& store)
    : store_(store),
      movements_(store.watch(
          {.table = kMovements,
           .key = "ExItemId",
           .date = "DetDate",
           .positive = "",
           .columns = {"ExItemId", "DetDate", "Type", "SeqNo", "InTrxId", "Qty", "Cost", "Invoiced",
                       "ExSrcKeyVal", "ExDetId", "RunningAvgCost", "RunningLastCost"}})),
      lines_(store.watch({.table = kPurchaseLines,
                          .key = "InPurcDetId",
                          .date = "",
                          .positive = "ExRecDetId",
                          .columns = {"InPurcDetId", "ExPurcId", "ExRecDetId"}})) {}

void CostWatch::markStale() {
  std::map<std::int32_t, QuorDataLib::Date> items;
  for (const ChangeLog::Change& change : movements_->take()) items[change.key] = change.from;
  addReceptions(lines_->take(), items);
  movements_.reset();
  lines_.reset();
  const Ref<Connection> connection = store_.connect(Sql::Dialect::Server);
  for (const auto& [item, from] : items) {
    std::int32_t marked = 0;
    connection->Execute(
        "UPDATE InvenDet SET RunningValuesDirty = 2 WHERE ExItemId = ? AND DetDate >= ? "
        "AND RunningValuesDirty = 0",
        marked, -1, Parameters::array({item, from}));
  }
}

void CostWatch::addReceptions(const std::vector<ChangeLog::Change>& lines,
                              std::map<std::int32_t, QuorDataLib::Date>& items) const {
  if (lines.empty()) return;
  const Ref<Recordset> receptions =
      store_.connect(Sql::Dialect::Server)
          ->OpenRecordset(
              "SELECT ExDetId, ExItemId, DetDate FROM InvenDet WHERE Type = 1 AND Invoiced = 0 "
              "AND ExDetId IS NOT NULL",
              4, 0, {}, 0);
  for (; !receptions->AtEnd(); receptions->MoveNext()) {
    const std::int32_t line = receptions->Field(0).toLong();
    if (!std::ranges::binary_search(lines, line, {}, &ChangeLog::Change::key)) continue;
    const QuorDataLib::Date date = receptions->Field(2).toDate();
    const auto [item, isNew] = items.try_emplace(receptions->Field(1).toLong(), date);
    if (!isNew) item->second = std::min(item->second, date);
  }
}

}  // namespace QuorHost
