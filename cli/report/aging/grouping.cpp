#include "cli/report/aging/grouping.h"

#include <algorithm>
#include <utility>

#include "cli/report/period.h"

namespace QuorCli {

using QuorDataLib::Date;
using QuorDataLib::Value;
using Kind = AgedDocument::Kind;

AgingGrouping::AgingGrouping(Date asOf, AgeBuckets buckets, std::int32_t homeCurrency,
                             std::function<void(const AgingBlock&)> ready)
    : asOf_(asOf),
      buckets_(std::move(buckets)),
      homeCurrency_(homeCurrency),
      ready_(std::move(ready)),
      totals_(buckets_.count()) {}

void AgingGrouping::add(const AgingRow& row) {
  if (!party_.empty() && party_.front().block.partyId != row.partyId) finish();
  Filling& filling = fillingFor(row);
  AgedDocument& document = documentFor(filling, row);
  document.balance += row.balance;
  filling.block.total.add(document.bucket, row.balance);
  document.home.add(row.balance, row.currencyId == homeCurrency_ ? Value::null() : row.rate);
}

void AgingGrouping::finish() {
  for (Filling& filling : party_) {
    AgingBlock& block = filling.block;
    CurrencyTotal& total =
        totals_.byCurrency.try_emplace(block.currencyId, buckets_.count()).first->second;
    ++total.parties;
    total.documents += static_cast<std::int64_t>(block.documents.size());
    for (const AgedDocument& document : block.documents) {
      const QuorDataLib::Currency home = document.home.total();
      total.amounts.add(document.bucket, document.balance);
      totals_.home.add(document.bucket, home);
      block.home += home;
    }
    ready_(block);
  }
  party_.clear();
}

AgingGrouping::Filling& AgingGrouping::fillingFor(const AgingRow& row) {
  const auto found = std::ranges::find_if(
      party_, [&](const Filling& filling) { return filling.block.currencyId == row.currencyId; });
  if (found != party_.end()) return *found;
  Filling& filling = party_.emplace_back(Filling{AgingBlock(buckets_.count()), {}, {}});
  filling.block.partyId = row.partyId;
  filling.block.partyCode = row.partyCode;
  filling.block.partyName = row.partyName;
  filling.block.currencyId = row.currencyId;
  return filling;
}

AgedDocument& AgingGrouping::documentFor(Filling& filling, const AgingRow& row) const {
  std::vector<AgedDocument>& documents = filling.block.documents;
  const bool open = filling.open && documents[*filling.open].id == row.orderId &&
                    filling.openDate == row.orderDate;
  const bool besideDocument = open && documents[*filling.open].kind == Kind::Document;
  if (row.looksOpen() && !besideDocument) return append(filling.block, row, Kind::Credit);
  if (!open) {
    append(filling.block, row, row.isDocument() ? Kind::Document : Kind::Payment);
    filling.open = documents.size() - 1;
    filling.openDate = row.orderDate;
  }
  return documents[*filling.open];
}

AgedDocument& AgingGrouping::append(AgingBlock& block, const AgingRow& row, Kind kind) const {
  AgedDocument& document = block.documents.emplace_back();
  document.kind = kind;
  document.id = row.orderId;
  document.number = row.number;
  document.type = row.type;
  document.date = row.date;
  document.amount = row.balance;
  document.agesFrom = row.due.empty() ? row.date : row.due;
  document.age = daysBetween(document.agesFrom, asOf_);
  document.bucket = buckets_.bucketOf(document.age);
  return document;
}

}  // namespace QuorCli
