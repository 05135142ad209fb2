#include "host/company/sample/sample.h"

#include "host/company/sample/accounts.h"
#include "host/company/sample/calendar.h"
#include "host/company/sample/items.h"
#include "host/company/sample/lists.h"
#include "host/company/sample/payables.h"
#include "host/company/sample/receivables.h"

namespace QuorHost::Sample {

namespace {

constexpr int kProgressDays = 4;  // a report every so many days

/// The journal entries of a month's end: the till to the bank, wages, rent, taxes remitted.
void closeMonth(Ledger& ledger, int day, std::int32_t scale) {
  ledger.transfer(day, "Dépôt de la caisse", Acct::kTill, Acct::kHomeBank,
                  ledger.balance(Acct::kTill));
  ledger.transfer(day, "Wages", Acct::kHomeBank, Acct::kWages, scale * 485'000LL);
  ledger.transfer(day, "Loyer", Acct::kHomeBank, Acct::kRent, 180'000 + scale * 20'000LL);
  // Taxes of a quarter are remitted the month after it.
  if (dateOf(day).civil().month % 3 != 1) return;
  for (const std::int32_t account : {Acct::kFederalTax, Acct::kQuebecTax, Acct::kProvincialTax,
                                     Acct::kFederalTaxPaid, Acct::kQuebecTaxPaid}) {
    ledger.transfer(day, "Sales taxes, remise trimestrielle", account, Acct::kHomeBank,
                    ledger.balance(account));
  }
}

}  // namespace

void writeSample(Store& store, const CreateOptions& options, const Progress& progress) {
  Random random(options.seed);
  const std::int32_t scale = options.scale;
  writeLists(store);
  writeAccounts(store);
  writeItems(store);
  const Rates rates(random.next());
  std::vector<Party> customers = writeCustomers(store, random.fork(), 40 + 20 * scale);
  std::vector<Party> suppliers = writeSuppliers(store, random.fork(), 16 + 4 * scale);

  Ledger ledger(store);
  ledger.transfer(0, "Mise de fonds / Share capital", Acct::kShareCapital, Acct::kHomeBank,
                  scale * 10'000'000LL);
  Receivables receivables(store, ledger, rates, std::move(customers), scale * 1'000LL,
                          random.fork());
  Payables payables(store, ledger, rates, std::move(suppliers), scale * 200LL, random.fork());
  for (int day = 0; day < kDays; ++day) {
    receivables.day(day);
    payables.day(day);
    if (endsMonth(day)) closeMonth(ledger, day, scale);
    if (progress && day % kProgressDays == 0) progress("writing the sample", day, kDays);
  }
  if (progress) progress("writing the sample", kDays, kDays);
}

}  // namespace QuorHost::Sample
