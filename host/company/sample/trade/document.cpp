#include "host/company/sample/trade/document.h"

namespace QuorHost::Sample {

const Side kReceivablesSide{1, &SampleCurrency::receivablesAccount, Acct::kSalesDiscounts,
                            Acct::kShippingCharged, "PMT"};
const Side kPayablesSide{-1, &SampleCurrency::payablesAccount, Acct::kPurchaseDiscounts,
                         Acct::kShippingPaid, "CHQ"};

void complete(Document& document, const Rates& rates, std::int32_t federalRate,
              std::int32_t provincialRate) {
  constexpr std::int64_t kWhole = 100'000;
  document.rate = rates.on(document.day, document.party->currencyId);
  document.net = 0;
  for (const DocumentLine& line : document.lines) document.net += line.amount();
  const Cents taxed = document.net + document.shipping;
  document.federalTax = share(taxed, federalRate, kWhole);
  document.provincialTax = share(taxed, provincialRate, kWhole);
  document.total = taxed + document.tax();
}

void post(Ledger& ledger, Document& document, const Side& side, std::string_view source) {
  const SampleCurrency& money = currency(document.party->currencyId);
  ledger.begin({.day = document.day,
                .source = source,
                .key = document.id,
                .reference = document.number,
                .description = document.party->name,
                .currency = money.id,
                .project = document.project,
                .segment = document.party->region->segment});
  document.ledgerSequence = ledger.sequence();
  Cents openHome = 0;  // what is left for the income or expense account to balance
  const auto line = [&](std::int32_t account, Cents home, Cents foreign) {
    ledger.line(account, home, foreign);
    openHome += home;
  };
  const auto part = [&](std::int32_t account, Cents amount) {
    line(account, side.sign * toHome(amount, document.rate), side.sign * amount);
  };
  line(money.*side.controlAccount, side.sign * document.balanceHome(),
       side.sign * document.balance());
  part(document.settledAccount, document.settled);
  part(side.shippingAccount, -document.shipping);
  part(document.federalTaxAccount, -document.federalTax);
  part(document.provincialTaxAccount, -document.provincialTax);
  line(document.account, -openHome, -side.sign * document.net);
  if (document.project != 0) {
    // Hours that are bought go into work in progress and hours that are billed leave it, both at
    // half of their price.
    part(Acct::kUnrecordedServices, document.net / 2);
    part(Acct::kProjectHours, -(document.net / 2));
  }
  ledger.end();
}

std::vector<Cents> lineAmountsHome(const Document& document) {
  // What the posting leaves for the lines, when everything else is converted by itself.
  Cents left = document.balanceHome();
  for (const Cents part :
       {document.settled, -document.shipping, -document.federalTax, -document.provincialTax}) {
    left += toHome(part, document.rate);
  }
  std::vector<Cents> amounts;
  for (const DocumentLine& line : document.lines) {
    amounts.push_back(toHome(line.amount(), document.rate));
    left -= amounts.back();
  }
  amounts.back() += left;
  return amounts;
}

QuorDataLib::Value rateValue(const Party& party, Rate rate) {
  if (party.currencyId == 0) return QuorDataLib::Value::null();
  return QuorDataLib::Value(static_cast<double>(rate) / kParity);
}

QuorDataLib::Value currencyValue(const Party& party) { return keyOrNull(party.currencyId); }

}  // namespace QuorHost::Sample
