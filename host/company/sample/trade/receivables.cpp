#include "host/company/sample/trade/receivables.h"

#include <utility>

#include "host/company/sample/lists.h"
#include "host/company/sample/stock/stock_trade.h"
#include "host/company/sample/trade/terms.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Currency;

constexpr Oddities kCustomerOddities{
    .partial = 45, .overpaid = 25, .creditUsed = 300, .refunded = 200};
constexpr Cents kReturnedChequeFee = 4'500;

/// Whether goods sold in the last winter are to be paid in spring. Chance is the document's own.
bool isBooked(const Document& document) {
  constexpr int kBookedFrom = kDays - 75;
  return document.day >= kBookedFrom && Random(static_cast<std::uint64_t>(document.id)).chance(80);
}

Table receiptTable(Store& store) {
  return {store,
          "PmtHdr",
          {"InPmtId", "ExCustId", "PmtDate", "ChqNo", "PmtType", "PmtTotAmnt", "PmtTotAmntHome",
           "ExchDiffHome", "ExchangeRate", "ExCurrencyId", "ExSegmentId", "ExGLAcctId"}};
}

Table receiptLineTable(Store& store) {
  return {
      store, "PmtDet", {"ExPmtId", "ExInvoiId", "ExPmtRefId", "PmtAmnt", "PmtDisc", "PmtDiscHome"}};
}

}  // namespace

Receivables::Receivables(Store& store, Ledger& ledger, Stock& stock, const Rates& rates,
                         std::vector<Party> customers, std::int64_t sales, Random random)
    : ledger_(ledger),
      stock_(stock),
      rates_(rates),
      customers_(std::move(customers)),
      quota_(sales),
      random_(random),
      documents_(
          store, "InvoiHdr",
          {"InInvoiId", "InvoiId", "InvoiType", "ExCustId", "InvoiDate", "DueDate", "DetAmnt",
           "ShipAmnt", "TaxAmnt", "TotAmnt", "RecAmnt", "RecExGLAcctId", "Balance", "BalanceHome",
           "ExchangeRate", "ExCurrencyId", "ExDocSegmentId", "ExOrderId", "ExTermId"}),
      lines_(store, "InvoiDet",
             {"InInvoiDetId", "ExInvoiId", "ExItemId", "Qty", "UnitPrice", "LineAmnt",
              "ExSaleAcctId", "ExProjId", "ExSegmentId", "ExWarehouseId", "ExOrderDetId"}),
      settlements_(receiptTable(store), receiptLineTable(store), ledger, rates, kReceivablesSide,
                   kCustomerOddities, numbering_, random_.fork(), customers_.size()),
      deliveries_(kDays) {
  makeContracts(4 + static_cast<std::int32_t>(sales / 2'000));
}

void Receivables::day(int day) {
  runContracts(day);
  deliver(day);
  while (sold_ < quota_.until(day)) {
    sell(day);
    if (random_.chance(30)) order(day);
  }
  if (inLastWeeks(day)) order(day);
  for (const Party* writer : settlements_.returnCheques(day)) chargeReturnedCheque(*writer, day);
  for (const Party& customer : customers_) {
    if (customer.paysOn(day)) settlements_.payDue(customer, day);
  }
}

/// A customer to do business with; the first ones buy most.
const Party& Receivables::pickCustomer(int day) {
  const auto count = static_cast<std::int32_t>(customers_.size());
  const std::int64_t spread = random_.below(count) + 1;
  auto index = static_cast<std::size_t>(spread * random_.below(count) / count);
  while (customers_[index].activeUntil < day) index = (index + 1) % customers_.size();
  return customers_[index];
}

std::vector<DocumentLine> Receivables::pickLines(const SampleItem& (*pick)(Random&),
                                                 const Party& customer, int day) {
  const std::int32_t chance = random_.below(100);
  std::vector<DocumentLine> lines(chance < 60 ? 1 : chance < 87 ? 2 : 3);
  const Rate rate = rates_.on(day, customer.currencyId);
  for (DocumentLine& line : lines) {
    const SampleItem& item = pick(random_);
    line.item = item.id;
    line.quantity = random_.between(1, item.mostSold);
    line.price = share(item.price, kParity, rate);
  }
  return lines;
}

Document Receivables::begin(std::int32_t type, const Party& customer, int day) {
  Document document;
  document.id = numbering_.next();
  document.type = type;
  document.party = &customer;
  document.day = day;
  document.term = type == DocType::kCounterSale ? kOnReceipt : customer.habits.term;
  document.account = type == DocType::kServices ? Acct::kServiceSales : Acct::kSales;
  switch (type) {
    case DocType::kOrder:
      document.number = "C" + std::to_string(++orders_);
      break;
    case DocType::kAdjustment:
      document.number = "N" + std::to_string(++adjustments_);
      break;
    default:
      document.number = std::to_string(++invoices_);
  }
  return document;
}

/// Works out a document's totals by the taxes of where its customer is.
void Receivables::finish(Document& document, bool taxed) {
  const Region& region = *document.party->region;
  document.federalTaxAccount = Acct::kFederalTax;
  document.provincialTaxAccount =
      region.provincialTaxAccount == 0 ? Acct::kProvincialTax : region.provincialTaxAccount;
  complete(document, rates_, taxed ? region.federalRate : 0, taxed ? region.provincialRate : 0);
}

void Receivables::write(Document& document, std::int32_t order) {
  const Party& customer = *document.party;
  const bool receivable = document.type != DocType::kOrder;
  const std::int32_t segment = customer.region->segment;
  documents_.add({document.id, document.number, document.type, customer.id, dateOf(document.day),
                  dueDateOf(document.term, document.day), money(document.net),
                  money(document.shipping), money(document.tax()), money(document.total),
                  money(document.settled), keyOrNull(document.settledAccount),
                  money(document.balance()), money(document.balanceHome()),
                  rateValue(customer, document.rate), currencyValue(customer), segment,
                  keyOrNull(order), document.term});
  document.firstLine = lastLine_ + 1;
  const bool ofGoods = document.account == Acct::kSales;
  for (const DocumentLine& line : document.lines) {
    lines_.add({++lastLine_, document.id, keyOrNull(line.item),
                Currency::fromInteger(line.quantity), money(line.price), money(line.amount()),
                document.account, keyOrNull(document.project), segment,
                keyOrNull(ofGoods ? warehouseOf(segment) : 0), keyOrNull(line.orderLine)});
  }
  if (!receivable) return;
  post(ledger_, document, kReceivablesSide, "INV");
  stock_.add(saleOf(document));
}

/// Service contracts of customers at home. Some are licences, which the project of fees is about.
void Receivables::makeContracts(std::int32_t count) {
  schedules_ = makeSchedules(ScheduleKind::Invoice, count);
  while (contracts_.size() < schedules_.size()) {
    const Party& customer = customers_[static_cast<std::size_t>(
        random_.below(static_cast<std::int32_t>(customers_.size())))];
    if (customer.foreign() || customer.activeUntil < kDays) continue;
    contracts_.push_back(
        {&customer, {pickService(random_).id, 1, Cents{1'000} * random_.between(9, 60)}});
  }
}

void Receivables::runContracts(int day) {
  for (std::size_t index = 0; index < schedules_.size(); ++index) {
    if (!schedules_[index].runsOn(day)) continue;
    const bool licence = index % 4 == 1 && projectRuns(kFeeProject, day);
    Document invoice = begin(DocType::kServices, *contracts_[index].customer, day);
    invoice.project = licence ? kFeeProject : 0;
    invoice.lines = {contracts_[index].line};
    finish(invoice);
    write(invoice, 0);
    settlements_.owe(invoice, false);
    ++sold_;
    schedules_[index].ran(day, invoice.id);
  }
}

void Receivables::sell(int day) {
  const Party& customer = pickCustomer(day);
  const std::int32_t project = random_.below(kProjects) + 1;
  const std::int32_t kind = random_.below(1000);
  Document document;
  if (kind < 80 && projectRuns(project, day)) {
    // Every project has one client, who stays active as long as it runs.
    const Party& client = customers_[static_cast<std::size_t>(project - 1) % 16];
    document = begin(DocType::kServices, client, day);
    document.project = project;
    document.lines = pickLines(pickService, client, day);
    finish(document);
  } else if (kind < 130 && !customer.foreign()) {
    document = begin(DocType::kCounterSale, customer, day);
    document.lines = pickLines(pickGoods, customer, day);
    finish(document);
    document.settled = random_.chance(800) ? document.total : document.total / 200 * 100;
    document.settledAccount = Acct::kTill;
  } else {
    document = begin(DocType::kGoods, customer, day);
    document.lines = pickLines(pickGoods, customer, day);
    if (random_.chance(250)) document.shipping = random_.between(950, 8'500);
    if (isBooked(document)) document.term = kSpringBooking;
    finish(document);
  }
  write(document, 0);
  settlements_.owe(document, random_.chance(12));
  ++sold_;
  if (random_.chance(20)) giveCredit(*document.party, day);
}

/// Takes an order, in half of the cases with a deposit.
void Receivables::order(int day) {
  const Party& customer = pickCustomer(day);
  Document document = begin(DocType::kOrder, customer, day);
  document.lines = pickLines(pickGoods, customer, day);
  finish(document);
  write(document, 0);
  std::int32_t key = document.firstLine;
  for (DocumentLine& line : document.lines) line.orderLine = key++;
  OpenCredit deposit;
  const Cents quarter = document.total / 400 * 100;
  if (quarter > 0 && (inLastWeeks(day) || random_.chance(500))) {
    deposit = settlements_.payDeposit(customer, day, document.id, quarter);
  }
  const int delivery = day + random_.between(8, 40);
  if (delivery >= kDays) return;
  deliveries_[static_cast<std::size_t>(delivery)].push_back({std::move(document), deposit});
}

/// Leaves half of the first line, where it has more than one, for another delivery.
std::vector<DocumentLine> Receivables::splitOff(std::vector<DocumentLine>& lines) {
  DocumentLine rest = lines.front();
  rest.quantity /= 2;
  if (rest.quantity == 0 || !random_.chance(250)) return {};
  lines.front().quantity -= rest.quantity;
  return {rest};
}

/// Delivers and invoices the orders of a day, some of them in part, and puts their deposits to use.
void Receivables::deliver(int day) {
  for (Order& order : std::exchange(deliveries_[static_cast<std::size_t>(day)], {})) {
    const Party& customer = *order.document.party;
    Document invoice = begin(DocType::kGoods, customer, day);
    invoice.lines = std::move(order.document.lines);
    order.document.lines = splitOff(invoice.lines);
    finish(invoice);
    write(invoice, order.document.id);
    settlements_.owe(invoice, false);
    ++sold_;
    if (order.deposit.remaining != 0) settlements_.useCredit(customer, day, order.deposit);
    const int rest = day + random_.between(5, 25);
    if (order.document.lines.empty() || rest >= kDays) continue;
    deliveries_[static_cast<std::size_t>(rest)].push_back({std::move(order.document), {}});
  }
}

/// Gives a credit note for goods that came back from the last sale.
void Receivables::giveCredit(const Party& customer, int day) {
  const OpenDocument* sale = settlements_.latest(customer);
  const SampleItem& item = pickGoods(random_);
  const Rate rate = rates_.on(day, customer.currencyId);
  const Cents price = share(item.price, kParity, rate);
  if (sale == nullptr || sale->remaining < 2 * price) return;
  Document note = begin(DocType::kAdjustment, customer, day);
  note.lines = {{item.id, -1, price}};
  finish(note);
  write(note, 0);
  settlements_.owe(note, false);
}

void Receivables::chargeReturnedCheque(const Party& customer, int day) {
  Document note = begin(DocType::kAdjustment, customer, day);
  note.account = Acct::kSundryIncome;
  note.lines = {{0, 1, kReturnedChequeFee}};
  finish(note, false);
  write(note, 0);
  settlements_.owe(note, false);
}

}  // namespace QuorHost::Sample
