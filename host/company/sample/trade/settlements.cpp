#include "host/company/sample/trade/settlements.h"

#include <algorithm>
#include <utility>

#include "host/company/sample/calendar.h"
#include "host/company/sample/trade/terms.h"

namespace QuorHost::Sample {

namespace {

constexpr int kDaysToReturn = 4;
constexpr int kRefundAfterDays = 120;
constexpr int kMostDocuments = 24;
constexpr Cents kDollars = 100;

QuorDataLib::Value keyOf(const PaymentLine& line, bool credit) {
  return keyOrNull((line.kind == PaymentLine::Kind::Credit) == credit ? line.id : 0);
}

}  // namespace

Cents Payment::total() const {
  Cents sum = kept;
  for (const PaymentLine& line : lines) sum += line.amount;
  return sum;
}

bool Payment::usesCredits() const {
  return std::ranges::any_of(
      lines, [](const PaymentLine& line) { return line.kind == PaymentLine::Kind::Credit; });
}

Settlements::Settlements(Table header, Table detail, Ledger& ledger, const Rates& rates,
                         const Side& side, const Oddities& oddities, Numbering& numbering,
                         Random random, std::size_t parties)
    : header_(std::move(header)),
      detail_(std::move(detail)),
      ledger_(ledger),
      rates_(rates),
      side_(side),
      oddities_(oddities),
      numbering_(numbering),
      random_(random),
      items_(parties),
      returns_(kDays) {}

void Settlements::owe(const Document& document, bool disputed) {
  if (document.balance() == 0) return;
  const SampleTerm& term = termOf(document.term);
  OpenDocument open{.id = document.id,
                    .dueDay = dueDayOf(document.term, document.day),
                    .rate = document.rate,
                    .remaining = document.balance(),
                    .remainingHome = document.balanceHome(),
                    .disputed = disputed};
  if (document.total > 0 && document.settled == 0) {
    open.discount = share(document.net, term.discountPerMille, 1000);
    open.discountUntil = document.day + term.discountDays;
  }
  itemsOf(*document.party).documents.push_back(open);
}

const OpenDocument* Settlements::latest(const Party& party) const {
  const OpenItems& items = items_[static_cast<std::size_t>(party.id) - 1];
  return items.documents.empty() ? nullptr : &items.documents.back();
}

Payment Settlements::start(const Party& party, int day, const char* type) {
  return {.party = &party,
          .day = day,
          .rate = rates_.on(day, party.currencyId),
          .type = type,
          .reference = {},
          .lines = {}};
}

/// Adds a line that applies money and a discount to a document.
void Settlements::apply(Payment& payment, OpenDocument& document, Cents amount, Cents discount) {
  const Cents applied = amount + discount;
  const Cents valueHome =
      applied == document.remaining ? document.remainingHome : toHome(applied, document.rate);
  payment.lines.push_back({PaymentLine::Kind::Document, document.id, amount, discount, valueHome});
  document.remaining -= applied;
  document.remainingHome -= valueHome;
  document.discount = 0;
}

/// Adds a line that draws on a credit.
void Settlements::draw(Payment& payment, OpenCredit& credit, Cents amount) {
  const Cents valueHome =
      amount == credit.remaining ? credit.remainingHome : toHome(amount, credit.rate);
  payment.lines.push_back({PaymentLine::Kind::Credit, credit.payment, -amount, 0, -valueHome});
  credit.remaining -= amount;
  credit.remainingHome -= valueHome;
}

/// Puts the documents that are to be paid on a payment, then the credit notes that it can absorb.
void Settlements::collect(Payment& payment, OpenItems& items) {
  const Habits& habits = payment.party->habits;
  Cents total = 0;
  int count = 0;
  for (OpenDocument& document : items.documents) {
    if (document.disputed || document.remaining <= 0 || count == kMostDocuments) continue;
    const bool discounted =
        habits.takesDiscounts && document.discount > 0 && payment.day <= document.discountUntil;
    if (!discounted && payment.day < document.dueDay + habits.lateness) continue;
    const Cents discount = discounted ? document.discount : 0;
    Cents amount = document.remaining - discount;
    const bool partial =
        !discounted && amount > 100 * kDollars && random_.chance(oddities_.partial);
    if (partial) amount = share(amount, random_.between(3, 7), 10 * kDollars) * kDollars;
    apply(payment, document, amount, discount);
    total += amount;
    ++count;
  }
  if (count == 0) return;
  for (OpenDocument& note : items.documents) {
    if (note.remaining >= 0 || total + note.remaining < 0) continue;
    total += note.remaining;
    apply(payment, note, note.remaining, 0);
  }
  if (items.credits.empty() || !random_.chance(oddities_.creditUsed)) return;
  for (OpenCredit& credit : items.credits) {
    const Cents drawn = std::min(credit.remaining, total);
    if (drawn <= 0) continue;
    draw(payment, credit, drawn);
    total -= drawn;
  }
}

/// Gives back credits that were not put to use for long.
void Settlements::refund(const Party& party, int day, OpenItems& items) {
  for (OpenCredit& credit : items.credits) {
    if (day < credit.since + kRefundAfterDays || !random_.chance(oddities_.refunded)) continue;
    Payment payment = start(party, day, "REFUND");
    draw(payment, credit, credit.remaining);
    write(payment);
  }
}

void Settlements::payDue(const Party& party, int day) {
  OpenItems& items = itemsOf(party);
  if (items.documents.empty() && items.credits.empty()) return;
  refund(party, day, items);
  Payment payment = start(party, day, party.habits.method);
  collect(payment, items);
  if (!payment.lines.empty()) {
    if (payment.total() == 0) payment.type = "CREDIT";
    if (payment.total() > 0 && random_.chance(oddities_.overpaid)) {
      payment.kept = random_.between(5, 150) * kDollars;
    }
    const OpenCredit credit = write(payment);
    if (credit.remaining != 0) items.credits.push_back(credit);
    const bool comesBack = party.habits.returnedCheques > items.chequesReturned &&
                           payment.kept == 0 && !payment.usesCredits() && payment.total() > 0 &&
                           day + kDaysToReturn < kDays && random_.chance(200);
    if (comesBack) {
      ++items.chequesReturned;
      returns_[static_cast<std::size_t>(day) + kDaysToReturn].push_back(std::move(payment));
    }
  }
  std::erase_if(items.documents, [](const OpenDocument& each) { return each.remaining == 0; });
  std::erase_if(items.credits, [](const OpenCredit& each) { return each.remaining == 0; });
}

OpenCredit Settlements::payDeposit(const Party& party, int day, std::int32_t order, Cents amount) {
  Payment payment = start(party, day, party.habits.method);
  payment.lines.push_back(
      {PaymentLine::Kind::Order, order, amount, 0, toHome(amount, payment.rate)});
  return write(payment);
}

void Settlements::useCredit(const Party& party, int day, OpenCredit credit) {
  OpenItems& items = itemsOf(party);
  OpenDocument& document = items.documents.back();
  const Cents amount = std::min(document.remaining, credit.remaining);
  Payment payment = start(party, day, "CREDIT");
  apply(payment, document, amount, 0);
  draw(payment, credit, amount);
  write(payment);
  if (document.remaining == 0) items.documents.pop_back();
  if (credit.remaining != 0) items.credits.push_back(credit);
}

void Settlements::payInAdvance(const Party& party, int day, Cents amount) {
  Payment payment = start(party, day, party.habits.method);
  payment.kept = amount;
  itemsOf(party).credits.push_back(write(payment));
}

std::vector<const Party*> Settlements::returnCheques(int day) {
  std::vector<const Party*> writers;
  for (Payment& payment : returns_[static_cast<std::size_t>(day)]) {
    OpenItems& items = itemsOf(*payment.party);
    for (PaymentLine& line : payment.lines) {
      auto document = std::ranges::find(items.documents, line.id, &OpenDocument::id);
      if (document == items.documents.end()) {
        items.documents.push_back({.id = line.id, .dueDay = day, .rate = payment.rate});
        document = std::prev(items.documents.end());
      }
      document->remaining += line.amount + line.discount;
      document->remainingHome += line.valueHome;
      line.amount = -line.amount;
      line.discount = -line.discount;
      line.valueHome = -line.valueHome;
    }
    payment.day = day;
    payment.type = "NSF";
    write(payment);
    writers.push_back(payment.party);
  }
  returns_[static_cast<std::size_t>(day)] = {};
  return writers;
}

/// Writes a payment, its lines and its postings; returns what it leaves open.
OpenCredit Settlements::write(Payment& payment) {
  const Party& party = *payment.party;
  if (payment.reference.empty()) payment.reference = reference(payment.type);
  const std::int32_t id = numbering_.next();
  const Cents total = payment.total();
  const Cents totalHome = toHome(total, payment.rate);
  OpenCredit left{.payment = id,
                  .since = payment.day,
                  .rate = payment.rate,
                  .remaining = payment.kept,
                  .remainingHome = toHome(payment.kept, payment.rate)};
  Cents valueHome = left.remainingHome;
  Cents discountHome = 0;
  for (const PaymentLine& line : payment.lines) {
    valueHome += line.valueHome;
    discountHome += toHome(line.discount, payment.rate);
    if (line.kind != PaymentLine::Kind::Order) continue;
    left.remaining += line.amount;
    left.remainingHome += line.valueHome;
  }
  const Cents exchangeDifference = totalHome + discountHome - valueHome;

  header_.add({id, party.id, dateOf(payment.day), payment.reference, payment.type, money(total),
               money(totalHome), money(exchangeDifference), rateValue(party, payment.rate),
               currencyValue(party), party.region->segment,
               currency(party.currencyId).bankAccount});
  for (const PaymentLine& line : payment.lines) {
    detail_.add({id, keyOf(line, false), keyOf(line, true), money(line.amount),
                 money(line.discount), money(toHome(line.discount, payment.rate))});
  }
  postToLedger(id, payment, totalHome, discountHome, exchangeDifference);
  return left;
}

void Settlements::postToLedger(std::int32_t id, const Payment& payment, Cents totalHome,
                               Cents discountHome, Cents exchangeDifference) {
  const Party& party = *payment.party;
  const SampleCurrency& money = currency(party.currencyId);
  ledger_.begin({.day = payment.day,
                 .source = side_.paymentSource,
                 .key = id,
                 .reference = payment.reference,
                 .description = party.name,
                 .currency = money.id,
                 .segment = party.region->segment});
  // The control account gets what was settled and what changed in credits apart, so that the use of
  // a credit shows in the ledger.
  Cents settled = 0;
  Cents settledHome = 0;
  Cents discount = 0;
  for (const PaymentLine& line : payment.lines) {
    if (line.kind != PaymentLine::Kind::Document) continue;
    settled += line.amount + line.discount;
    settledHome += line.valueHome;
    discount += line.discount;
  }
  const Cents credits = payment.total() + discount - settled;
  const Cents creditsHome = totalHome + discountHome - exchangeDifference - settledHome;
  const int sign = side_.sign;
  const std::int32_t control = money.*side_.controlAccount;
  ledger_.line(money.bankAccount, sign * totalHome, sign * payment.total());
  ledger_.line(side_.discountAccount, sign * discountHome, sign * discount);
  ledger_.line(control, -sign * settledHome, -sign * settled);
  ledger_.line(control, -sign * creditsHome, -sign * credits);
  ledger_.line(Acct::kExchangeDifferences, -sign * exchangeDifference, 0);
  ledger_.end();
}

/// A payment's number: the company's own cheques run on, customers' are what they are.
std::string Settlements::reference(const char* type) {
  if (type == std::string_view("CHQ") || type == std::string_view("REFUND")) {
    return std::to_string(side_.sign < 0 ? ++cheques_ : random_.between(100, 9'999));
  }
  return std::string(1, type[0]) + std::to_string(++transfers_);
}

}  // namespace QuorHost::Sample
