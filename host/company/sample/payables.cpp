#include "host/company/sample/payables.h"

#include <utility>

#include "host/company/sample/lists.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;

constexpr Oddities kSupplierOddities{
    .partial = 15, .overpaid = 4, .creditUsed = 400, .refunded = 40};

// Purchases are delivered to the company, in Québec, whatever the supplier's province.
constexpr std::int32_t kFederalRate = 5'000;
constexpr std::int32_t kQuebecRate = 9'975;

namespace OrderStatus {
constexpr std::int32_t kExpected = 1;
constexpr std::int32_t kReceived = 2;
constexpr std::int32_t kCancelled = 3;
}  // namespace OrderStatus

Table paymentTable(Store& store) {
  return {store,
          "SuppPmtHdr",
          {"InPmtId", "ExSuppId", "ChqDate", "ChqNo", "PmtType", "PmtTotAmnt", "PmtTotAmntHome",
           "ExchDiffHome", "ExchangeRate", "ExCurrencyId", "ExSegmentId", "ExGLAcctId"}};
}

Table paymentLineTable(Store& store) {
  return {store,
          "SuppPmtDet",
          {"ExPmtId", "ExPurcId", "ExPmtRefId", "PmtAmnt", "PmtDisc", "PmtDiscHome"}};
}

bool payable(const Document& document) { return document.type < DocType::kOrder; }

}  // namespace

Payables::Payables(Store& store, Ledger& ledger, const Rates& rates, std::vector<Party> suppliers,
                   std::int64_t purchases, Random random)
    : ledger_(ledger),
      rates_(rates),
      suppliers_(std::move(suppliers)),
      quota_(purchases),
      random_(random),
      documents_(store, "PurcHdr",
                 {"InPurcId",       "DocNo",    "PurcType",    "PurcCredit",   "ExSuppId",
                  "PurcDate",       "DueDate",  "ReqDate",     "POrderStatus", "OriginalRefNo",
                  "DetAmnt",        "ShipAmnt", "TaxAmnt",     "TotAmnt",      "PaidAmnt",
                  "PaidExGLAcctId", "Balance",  "BalanceHome", "ExchangeRate", "ExCurrencyId",
                  "ExDocSegmentId"}),
      lines_(store, "PurcDet",
             {"InPurcDetId", "ExPurcId", "ExItemId", "Qty", "UnitPrice", "LineAmnt", "ExPurcAcctId",
              "ExProjId", "ExSegmentId", "ExPODetId", "ExRecId", "ExRecDetId"}),
      settlements_(paymentTable(store), paymentLineTable(store), ledger, rates, kPayablesSide,
                   kSupplierOddities, numbering_, random_.fork(), suppliers_.size()),
      awaited_(kDays) {}

void Payables::day(int day) {
  for (const Awaited& awaited : std::exchange(awaited_[static_cast<std::size_t>(day)], {})) {
    awaited.received ? invoice(awaited, day) : receive(awaited, day);
  }
  while (bought_ < quota_.until(day)) {
    buy(day);
    if (random_.chance(180)) order(day);
  }
  if (inLastWeeks(day)) order(day);
  for (const Party& supplier : suppliers_) {
    if (!supplier.paysOn(day)) continue;
    settlements_.payDue(supplier, day);
    if (day <= supplier.activeUntil && random_.chance(12)) {
      settlements_.payInAdvance(supplier, day, Cents{10'000} * random_.between(2, 20));
    }
  }
}

/// A supplier to do business with; the first ones sell most.
const Party& Payables::pickSupplier(int day) {
  const auto count = static_cast<std::int32_t>(suppliers_.size());
  const std::int64_t spread = random_.below(count) + 1;
  auto index = static_cast<std::size_t>(spread * random_.below(count) / count);
  while (suppliers_[index].activeUntil < day) index = (index + 1) % suppliers_.size();
  return suppliers_[index];
}

std::vector<DocumentLine> Payables::pickLines(const Party& supplier, int day) {
  const std::int32_t chance = random_.below(100);
  std::vector<DocumentLine> lines(chance < 55 ? 1 : chance < 85 ? 2 : 3);
  const Rate rate = rates_.on(day, supplier.currencyId);
  for (DocumentLine& line : lines) {
    const SampleItem& item = pickGoods(random_);
    line.item = item.id;
    line.quantity = random_.between(1, item.mostSold) * 5;
    line.price = share(item.cost, kParity, rate);
  }
  return lines;
}

Document Payables::begin(std::int32_t type, const Party& supplier, int day) {
  Document document;
  document.id = numbering_.next();
  document.type = type;
  document.party = &supplier;
  document.day = day;
  document.account = Acct::kPurchases;
  switch (type) {
    case DocType::kOrder:
      document.number = "PO" + std::to_string(++orders_);
      break;
    case DocType::kReception:
      document.number = "R" + std::to_string(++receptions_);
      break;
    default:  // the supplier's number
      document.number = std::to_string(random_.between(10'000, 999'999));
  }
  return document;
}

void Payables::finish(Document& document) {
  const bool taxed = !document.party->foreign();
  document.federalTaxAccount = Acct::kFederalTaxPaid;
  document.provincialTaxAccount = Acct::kQuebecTaxPaid;
  complete(document, rates_, taxed ? kFederalRate : 0, taxed ? kQuebecRate : 0);
}

std::int32_t Payables::write(const Document& document, const Origin& origin,
                             const OrderState& state) {
  const Party& supplier = *document.party;
  const std::int32_t segment = supplier.region->segment;
  documents_.add({document.id,
                  document.number,
                  document.type,
                  document.total < 0,
                  supplier.id,
                  dateOf(document.day),
                  dateOf(document.day + supplier.habits.termDays),
                  state.requiredDay < 0 ? Value::null() : Value(dateOf(state.requiredDay)),
                  keyOrNull(state.status),
                  payable(document) ? Value(document.number) : Value::null(),
                  money(document.net),
                  money(document.shipping),
                  money(document.tax()),
                  money(document.total),
                  money(document.settled),
                  keyOrNull(document.settledAccount),
                  money(document.balance()),
                  money(document.balanceHome()),
                  rateValue(supplier, document.rate),
                  currencyValue(supplier),
                  segment});
  const std::int32_t first = lastLine_ + 1;
  std::int32_t position = 0;
  const auto originKey = [&position](std::int32_t firstKey) {
    return keyOrNull(firstKey == 0 ? 0 : firstKey + position);
  };
  for (const DocumentLine& line : document.lines) {
    lines_.add({++lastLine_, document.id, keyOrNull(line.item),
                Currency::fromInteger(line.quantity), money(line.price), money(line.amount()),
                document.account, keyOrNull(document.project), segment, originKey(origin.orderLine),
                keyOrNull(origin.reception), originKey(origin.receptionLine)});
    ++position;
  }
  return first;
}

/// Posts a purchase and puts it on the list of what is to be paid.
void Payables::owe(const Document& document) {
  post(ledger_, document, kPayablesSide, document.type == DocType::kExpense ? "EXP" : "PUR");
  settlements_.owe(document, random_.chance(6));
}

void Payables::buy(int day) {
  const Party& supplier = pickSupplier(day);
  const std::int32_t kind = random_.below(1000);
  const std::int32_t project = random_.below(kProjects) + 1;
  Document document;
  if (kind < 300) {
    document = begin(DocType::kExpense, supplier, day);
    document.account = Acct::kSupplies;
    document.lines = {{0, 1, random_.between(2'500, 90'000)}};
    finish(document);
    if (random_.chance(200) && !supplier.foreign()) {
      document.settled = document.total;
      document.settledAccount = Acct::kHomeBank;
    }
  } else if (kind < 500 && projectRuns(project, day) && !supplier.foreign()) {
    const SampleItem& item = pickSubcontract(random_);
    document = begin(DocType::kServices, supplier, day);
    document.account = Acct::kSubcontractors;
    document.project = project;
    document.lines = {{item.id, random_.between(4, item.mostSold), item.cost}};
    finish(document);
  } else {
    document = begin(DocType::kGoods, supplier, day);
    document.lines = pickLines(supplier, day);
    if (random_.chance(300)) document.shipping = random_.between(2'500, 25'000);
    finish(document);
  }
  write(document, {}, {});
  owe(document);
  ++bought_;
  if (document.type == DocType::kGoods && random_.chance(40)) returnGoods(document, day);
}

/// Sends part of a purchase back for a credit note.
void Payables::returnGoods(const Document& purchase, int day) {
  Document note = begin(DocType::kAdjustment, *purchase.party, day);
  note.lines = {purchase.lines.front()};
  note.lines.front().quantity = -(note.lines.front().quantity + 2) / 3;
  finish(note);
  write(note, {}, {});
  owe(note);
}

/// Orders goods that will be received later, and invoiced later still.
void Payables::order(int day) {
  const Party& supplier = pickSupplier(day);
  Document document = begin(DocType::kOrder, supplier, day);
  document.lines = pickLines(supplier, day);
  finish(document);
  const int reception = day + random_.between(4, 35);
  const bool cancelled = random_.chance(30);
  const std::int32_t status = cancelled           ? OrderStatus::kCancelled
                              : reception < kDays ? OrderStatus::kReceived
                                                  : OrderStatus::kExpected;
  const std::int32_t firstLine = write(document, {}, {status, reception});
  if (!cancelled) await(reception, {std::move(document), {firstLine, 0, 0}, false});
}

void Payables::await(int day, Awaited awaited) {
  if (day < kDays) awaited_[static_cast<std::size_t>(day)].push_back(std::move(awaited));
}

void Payables::receive(const Awaited& awaited, int day) {
  Document reception = begin(DocType::kReception, *awaited.document.party, day);
  reception.lines = awaited.document.lines;
  finish(reception);
  const std::int32_t firstLine =
      write(reception, {awaited.origin.orderLine, 0, 0}, {OrderStatus::kReceived, day});
  const Origin origin{0, reception.id, firstLine};
  await(day + random_.between(1, 20), {std::move(reception), origin, true});
}

void Payables::invoice(const Awaited& awaited, int day) {
  Document purchase = begin(DocType::kGoods, *awaited.document.party, day);
  purchase.lines = awaited.document.lines;
  finish(purchase);
  write(purchase, awaited.origin, {});
  owe(purchase);
  ++bought_;
}

}  // namespace QuorHost::Sample
