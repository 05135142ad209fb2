#include "host/company/sample/banking.h"

#include <array>

#include "host/company/sample/calendar.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Value;

constexpr Cents kDollars = 100;

/// The entries of a month's end that have schedules, and the day from which nobody has made the one
/// that is late.
enum ScheduledEntry : std::uint8_t {
  kRentEntry,
  kInsuranceEntry,
  kDepreciationEntry,
  kPalletsEntry
};
constexpr int kNoDepreciationFrom = kDays - 50;

void writeLists(Store& store) {
  Table methods(store, "PmtMeth", {"InPmtMethId", "Descr", "ExGLAcctId"});
  methods.add({1, "Chèque / Cheque", Acct::kHomeBank});
  methods.add({2, "Virement / Direct deposit", Acct::kHomeBank});
  methods.add({3, "Carte / Card", Acct::kTill});

  Table codes(store, "TaxCode",
              {"InTaxCodeId", "TaxCodeId", "Descr", "TaxRate", "ExAcctId", "ExAcctIdPassif"});
  codes.add({1, "GST", "Goods and services tax", 5.0, Acct::kFederalTaxPaid, Acct::kFederalTax});
  codes.add({2, "HST13", "Harmonized sales tax, Ontario", 13.0, Acct::kFederalTaxPaid,
             Acct::kFederalTax});
  codes.add({3, "HST15", "Harmonized sales tax, Atlantic", 15.0, Acct::kFederalTaxPaid,
             Acct::kFederalTax});
  codes.add({4, "TVQ", "Taxe de vente du Québec", 9.975, Acct::kQuebecTaxPaid, Acct::kQuebecTax});
  codes.add(
      {5, "PST7", "Provincial sales tax, 7 %", 7.0, Acct::kProvincialTax, Acct::kProvincialTax});
  codes.add(
      {6, "PST6", "Provincial sales tax, 6 %", 6.0, Acct::kProvincialTax, Acct::kProvincialTax});
}

}  // namespace

Journal::Journal(Store& store, Ledger& ledger)
    : ledger_(ledger),
      entries_(
          store, "GJTrxHdr",
          {"InGJTrxId", "TrxNo", "TrxDate", "Descr", "SalesAmnt", "ExchangeRate", "ExCurrencyId"}),
      lines_(store, "GJTrxDet", {"ExGJTrxId", "ExGLAcctId", "Amount"}) {}

std::int32_t Journal::enter(int day, std::string_view description,
                            std::initializer_list<Line> lines, Cents sales) {
  ++last_;
  const std::string number = "GJ" + std::to_string(last_);
  entries_.add({last_, number, dateOf(day), description, sales == 0 ? Value::null() : money(sales),
                Value::null(), kHomeCurrency});
  ledger_.begin(
      {.day = day, .source = "GJ", .key = last_, .reference = number, .description = description});
  for (const Line& line : lines) {
    lines_.add({last_, line.account, money(line.amount)});
    ledger_.line(line.account, line.amount);
  }
  ledger_.end();
  return last_;
}

Banking::Banking(Store& store, Ledger& ledger, const Rates& rates, std::int32_t scale)
    : ledger_(ledger),
      rates_(rates),
      scale_(scale),
      journal_(store, ledger),
      deposits_(store, "DepHdr",
                {"InDepId", "DepNo", "DepDate", "Descr", "TotAmnt", "SalesAmnt", "ExchangeRate",
                 "ExCurrencyId", "ExGLAcctId"}),
      depositLines_(store, "DepDet", {"ExDepId", "Descr", "Amount", "ExGLAcctId"}),
      transfers_(store, "BankTransfer",
                 {"InBankTransferId", "TransferNo", "TransferDate", "ExGLAcctIdFrom",
                  "ExGLAcctIdTo", "AmntFrom", "AmntTo"}),
      taxes_(store, "TaxTrxHdr",
             {"InTaxTrxId", "TrxDate", "DateFrom", "DateTo", "PayTo", "ChqNo", "ChqAmnt",
              "ExGLAcctId"}) {
  writeLists(store);
  constexpr int kFirstMonthEnd = 29;
  constexpr int kByHandFrom = 730;  // the second year's end
  const auto add = [&](std::int32_t frequency, int last = kDays + 3'000) {
    schedules_.emplace_back(ScheduleKind::Entry, frequency, kFirstMonthEnd, last, kDays);
  };
  add(QuorDataLib::Frequency::kMonthly);
  add(QuorDataLib::Frequency::kMonthly, kByHandFrom);
  add(QuorDataLib::Frequency::kMonthly);
  add(QuorDataLib::Frequency::kQuarterly);
}

void Banking::day(int day) {
  if (day == 0) found();
  if (weekday(day) == 4) deposit(day);
  if (endsMonth(day)) closeMonth(day);
}

/// The first day: what the owners and the bank bring in, and what is bought with it.
void Banking::found() {
  const Cents capital = scale_ * 100'000 * kDollars;
  const Cents loan = scale_ * 40'000 * kDollars;
  const Cents equipment = scale_ * 36'000 * kDollars;
  journal_.enter(0, "Mise de fonds / Share capital",
                 {{Acct::kHomeBank, capital}, {Acct::kShareCapital, -capital}});
  journal_.enter(0, "Emprunt / Bank loan", {{Acct::kHomeBank, loan}, {Acct::kLoan, -loan}});
  journal_.enter(0, "Equipment", {{Acct::kEquipment, equipment}, {Acct::kHomeBank, -equipment}});
}

/// The entries of a month's end: rent, insurance, the loan, depreciation.
void Banking::closeMonth(int day) {
  const Cents rent = 1'800 * kDollars + (scale_ * 200 * kDollars);
  const auto scheduled = [&](ScheduledEntry entry, std::int32_t key) {
    schedules_.at(entry).ran(day, key);
  };
  scheduled(kRentEntry,
            journal_.enter(day, "Loyer", {{Acct::kRent, rent}, {Acct::kHomeBank, -rent}}));
  const Cents premium = 240 * kDollars + (scale_ * 60 * kDollars);
  scheduled(
      kInsuranceEntry,
      journal_.enter(day, "Insurance", {{Acct::kInsurance, premium}, {Acct::kHomeBank, -premium}}));
  // Repaid over eight years, at 6 % on what is left.
  const Cents repaid = scale_ * 41'667;
  const Cents interest = share(-ledger_.balance(Acct::kLoan), 5, 1'000);
  journal_.enter(
      day, "Remboursement de l'emprunt",
      {{Acct::kLoan, repaid}, {Acct::kInterest, interest}, {Acct::kHomeBank, -repaid - interest}});
  const Cents worn = scale_ * 60'000;
  if (day < kNoDepreciationFrom) {
    scheduled(kDepreciationEntry,
              journal_.enter(day, "Depreciation",
                             {{Acct::kDepreciation, worn}, {Acct::kDepreciated, -worn}}));
  }
  const int month = dateOf(day).civil().month;
  if (month % 3 == 0) {
    // Old pallets, for cash.
    const Cents pallets = scale_ * 85 * kDollars;
    scheduled(kPalletsEntry,
              journal_.enter(day, "Vente de palettes / Pallets sold",
                             {{Acct::kTill, pallets}, {Acct::kSundryIncome, -pallets}}, pallets));
  }
  // Taxes of a quarter are remitted the month after it.
  if (month % 3 == 1) remitTaxes(day);
  for (const SampleCurrency& each : kCurrencies) {
    if (each.id != kHomeCurrency) transfer(day, each);
  }
}

/// Brings a week's money from the till to the bank, now and then with a rebate.
void Banking::deposit(int day) {
  const Cents till = ledger_.balance(Acct::kTill);
  const Cents rebate = day % 5 == 0 ? scale_ * 12 * kDollars + day : 0;
  if (till + rebate <= 0) return;
  const std::int32_t id = ++lastDeposit_;
  const std::string number = "D" + std::to_string(id);
  const std::string_view description = "Dépôt de la caisse / Deposit";
  deposits_.add({id, number, dateOf(day), description, money(till + rebate),
                 rebate == 0 ? Value::null() : money(rebate), Value::null(), kHomeCurrency,
                 Acct::kHomeBank});
  ledger_.begin(
      {.day = day, .source = "DEP", .key = id, .reference = number, .description = description});
  ledger_.line(Acct::kHomeBank, till + rebate);
  const auto from = [&](std::string_view what, std::int32_t account, Cents amount) {
    if (amount == 0) return;
    depositLines_.add({id, what, money(amount), account});
    ledger_.line(account, -amount);
  };
  from("Caisse / Till", Acct::kTill, till);
  from("Ristourne / Rebate", Acct::kSundryIncome, rebate);
  ledger_.end();
}

/// Changes half of what is in a foreign bank account into home currency, in whole hundreds.
void Banking::transfer(int day, const SampleCurrency& from) {
  const Rate rate = rates_.on(day, from.id);
  const Cents amount =
      share(ledger_.balance(from.bankAccount), kParity, rate) / (200 * kDollars) * 100 * kDollars;
  if (amount <= 0) return;
  const Cents home = toHome(amount, rate);
  const std::int32_t id = ++lastTransfer_;
  const std::string number = "V" + std::to_string(id);
  transfers_.add(
      {id, number, dateOf(day), from.bankAccount, Acct::kHomeBank, money(amount), money(home)});
  ledger_.begin({.day = day,
                 .source = "TRF",
                 .key = id,
                 .reference = number,
                 .description = "Virement entre comptes / Transfer",
                 .currency = from.id});
  ledger_.line(from.bankAccount, -home, -amount);
  ledger_.inCurrency(kHomeCurrency);
  ledger_.line(Acct::kHomeBank, home);
  ledger_.end();
}

void Banking::remitTaxes(int day) {
  remit(day, "Receiver General", {Acct::kFederalTax, Acct::kFederalTaxPaid});
  remit(day, "Revenu Québec", {Acct::kQuebecTax, Acct::kQuebecTaxPaid});
  remit(day, "Minister of Finance", {Acct::kProvincialTax});
}

/// Remits what the accounts hold, or has it paid back.
void Banking::remit(int day, std::string_view authority,
                    std::initializer_list<std::int32_t> accounts) {
  Cents owed = 0;
  for (const std::int32_t account : accounts) owed -= ledger_.balance(account);
  if (owed == 0) return;
  const std::int32_t id = ++lastTax_;
  const std::string number = "T" + std::to_string(id);
  const QuorDataLib::Date firstOfMonth = dateOf(day).addDays(1 - dateOf(day).civil().day);
  taxes_.add({id, dateOf(day), firstOfMonth.addMonths(-3), firstOfMonth.addDays(-1), authority,
              number, money(owed), Acct::kHomeBank});
  ledger_.begin(
      {.day = day, .source = "TAX", .key = id, .reference = number, .description = authority});
  for (const std::int32_t account : accounts) ledger_.line(account, -ledger_.balance(account));
  ledger_.line(Acct::kHomeBank, -owed);
  ledger_.end();
}

}  // namespace QuorHost::Sample
