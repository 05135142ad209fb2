#include "host/company/sample/trade/payables.h"

#include <utility>

#include "host/company/sample/lists.h"
#include "host/company/sample/stock/stock_trade.h"
#include "host/company/sample/trade/terms.h"

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

Payables::Payables(Store& store, Ledger& ledger, Stock& stock, StockRoom& stockRoom,
                   const Rates& rates, std::vector<Party> suppliers, std::int64_t purchases,
                   Random random)
    : ledger_(ledger),
      stock_(stock),
      stockRoom_(stockRoom),
      rates_(rates),
      suppliers_(std::move(suppliers)),
      quota_(purchases),
      random_(random),
      documents_(store, "PurcHdr",
                 {"InPurcId",       "DocNo",    "PurcType",    "PurcCredit",   "ExSuppId",
                  "PurcDate",       "DueDate",  "ReqDate",     "POrderStatus", "OriginalRefNo",
                  "DetAmnt",        "ShipAmnt", "TaxAmnt",     "TotAmnt",      "PaidAmnt",
                  "PaidExGLAcctId", "Balance",  "BalanceHome", "ExchangeRate", "ExCurrencyId",
                  "ExDocSegmentId", "ExTermId"}),
      lines_(store, "PurcDet",
             {"InPurcDetId", "ExPurcId", "ExItemId", "Qty", "UnitPrice", "LineAmnt", "ExPurcAcctId",
              "ExProjId", "ExSegmentId", "ExPODetId", "ExRecId", "ExRecDetId", "ExWarehouseId"}),
      settlements_(paymentTable(store), paymentLineTable(store), ledger, rates, kPayablesSide,
                   kSupplierOddities, numbering_, random_.fork(), suppliers_.size()),
      awaited_(kDays) {
  makeAgreements(4 + static_cast<std::int32_t>(purchases / 400));
}

void Payables::day(int day) {
  runAgreements(day);
  for (const Awaited& awaited : std::exchange(awaited_[static_cast<std::size_t>(day)], {})) {
    awaited.received.empty() ? receive(awaited, day) : invoice(awaited, day);
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
    const SampleItem& item = stockRoom_.wanted(random_, day);
    line.item = item.id;
    line.quantity = random_.between(1, StockRoom::largestSale(item)) * 6;
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
  document.term = supplier.habits.term;
  document.account = Acct::kGoodsReceived;
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

void Payables::write(Document& document, const Origin& origin, const OrderState& state) {
  const Party& supplier = *document.party;
  const std::int32_t segment = supplier.region->segment;
  documents_.add({document.id,
                  document.number,
                  document.type,
                  document.total < 0,
                  supplier.id,
                  dateOf(document.day),
                  dueDateOf(document.term, document.day),
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
                  segment,
                  document.term});
  document.firstLine = lastLine_ + 1;
  const bool ofGoods = document.account == Acct::kGoodsReceived;
  std::int32_t position = 0;
  const auto originKey = [&position](std::int32_t firstKey) {
    return keyOrNull(firstKey == 0 ? 0 : firstKey + position);
  };
  for (const DocumentLine& line : document.lines) {
    lines_.add({++lastLine_, document.id, keyOrNull(line.item),
                Currency::fromInteger(line.quantity), money(line.price), money(line.amount()),
                document.account, keyOrNull(line.project == 0 ? document.project : line.project),
                segment, originKey(origin.orderLine), keyOrNull(origin.reception),
                originKey(origin.receptionLine), keyOrNull(ofGoods ? kMainWarehouse : 0)});
    ++position;
  }
}

/// Posts a purchase and puts it on the list of what is to be paid.
void Payables::owe(Document& document) {
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
    if (projectRuns(project, day) && random_.chance(150)) {
      DocumentLine& line = document.lines.front();
      line.project = project;
      stockRoom_.keepForProject(project, line.item, line.quantity, day);
    }
    if (random_.chance(300)) document.shipping = random_.between(2'500, 25'000);
    finish(document);
  }
  write(document, {}, {});
  owe(document);
  if (document.type == DocType::kGoods) {
    stock_.add(purchaseOf(document, lineAmountsHome(document)));
  }
  ++bought_;
  if (document.type == DocType::kGoods && random_.chance(40)) returnGoods(document, day);
}

/// What suppliers at home bill as agreed: cleaning, telephone, leases.
void Payables::makeAgreements(std::int32_t count) {
  schedules_ = makeSchedules(ScheduleKind::Bill, count);
  while (agreements_.size() < schedules_.size()) {
    const Party& supplier = suppliers_[static_cast<std::size_t>(
        random_.below(static_cast<std::int32_t>(suppliers_.size())))];
    if (supplier.foreign() || supplier.activeUntil < kDays) continue;
    agreements_.push_back({&supplier, Cents{500} * random_.between(12, 90)});
  }
}

void Payables::runAgreements(int day) {
  for (std::size_t index = 0; index < schedules_.size(); ++index) {
    if (!schedules_[index].runsOn(day)) continue;
    Document bill = begin(DocType::kExpense, *agreements_[index].supplier, day);
    bill.account = Acct::kSupplies;
    bill.lines = {{0, 1, agreements_[index].amount}};
    finish(bill);
    write(bill, {}, {});
    owe(bill);
    schedules_[index].ran(day, bill.id);
  }
}

/// Sends part of a purchase back for a credit note.
void Payables::returnGoods(const Document& purchase, int day) {
  Document note = begin(DocType::kAdjustment, *purchase.party, day);
  note.lines = {purchase.lines.front()};
  note.lines.front().quantity = -(note.lines.front().quantity + 2) / 3;
  finish(note);
  write(note, {}, {});
  owe(note);
  stock_.add(purchaseOf(note, lineAmountsHome(note)));
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
  write(document, {}, {status, reception});
  const std::int32_t firstLine = document.firstLine;
  if (!cancelled) await(reception, {std::move(document), {firstLine, 0, 0}});
}

void Payables::await(int day, Awaited awaited) {
  if (day < kDays) awaited_[static_cast<std::size_t>(day)].push_back(std::move(awaited));
}

void Payables::receive(const Awaited& awaited, int day) {
  Document reception = begin(DocType::kReception, *awaited.document.party, day);
  reception.lines = awaited.document.lines;
  finish(reception);
  write(reception, {awaited.origin.orderLine, 0, 0}, {OrderStatus::kReceived, day});
  std::vector<Cents> amounts = lineAmountsHome(reception);
  stock_.add(purchaseOf(reception, amounts));
  const Origin origin{0, reception.id, reception.firstLine};
  await(day + random_.between(1, 20), {std::move(reception), origin, std::move(amounts)});
}

void Payables::invoice(const Awaited& awaited, int day) {
  Document purchase = begin(DocType::kGoods, *awaited.document.party, day);
  purchase.lines = awaited.document.lines;
  if (random_.chance(150)) {  // the price has changed since
    Cents& price = purchase.lines.front().price;
    price = share(price, random_.between(95, 108), 100);
  }
  finish(purchase);
  write(purchase, awaited.origin, {});
  owe(purchase);
  stock_.add(invoiceOf(purchase, awaited.received));
  ++bought_;
}

}  // namespace QuorHost::Sample
