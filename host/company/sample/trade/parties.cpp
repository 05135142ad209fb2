#include "host/company/sample/trade/parties.h"

#include <algorithm>
#include <array>

#include "host/company/sample/calendar.h"
#include "host/company/sample/trade/terms.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Value;

Value textOrNull(const std::string& text) { return text.empty() ? Value::null() : Value(text); }

Habits makeHabits(Random& random, const SampleTerm& term) {
  Habits habits;
  habits.term = term.id;
  habits.takesDiscounts = term.discountPerMille > 0 && random.chance(600);
  constexpr std::array<int, 8> kLateness = {0, 0, 0, 3, 5, 10, 25, 60};
  habits.lateness = habits.takesDiscounts ? 0 : random.pick(std::span(kLateness));
  constexpr std::array<int, 4> kRhythms = {7, 7, 14, 30};
  habits.rhythm = habits.takesDiscounts ? 7 : random.pick(std::span(kRhythms));
  // Weekly payers pay on a working day.
  do {
    habits.phase = random.below(habits.rhythm);
  } while (weekday(habits.phase) >= 5);
  return habits;
}

/// A party of a currency: the row's identity, and what the trade needs.
Party makeParty(Random& random, std::int32_t id, std::int32_t currencyId, const SampleTerm& term,
                const Identity& who, const Region& region) {
  Party party;
  party.id = id;
  party.name = who.name;
  party.currencyId = currencyId;
  party.region = &region;
  party.habits = makeHabits(random, term);
  constexpr std::array<const char*, 5> kMethods = {"CHQ", "CHQ", "EFT", "EFT", "CARD"};
  party.habits.method = random.pick(std::span(kMethods));
  party.activeUntil = kDays;
  return party;
}

/// A party's currency: every ninth trades in dollars, every thirtieth in euros.
std::int32_t currencyOf(std::int32_t index) {
  if (index % 9 == 4) return kDollar;
  if (index % 30 == 8) return kEuro;
  return kHomeCurrency;
}

constexpr std::int32_t kWithoutCurrency = 5;
constexpr std::int32_t kNamesake = 12;  // has the name of the one before

std::string accountDigits(Random& random, int digits) {
  std::string text;
  for (int i = 0; i < digits; ++i) text += static_cast<char>('0' + random.below(10));
  return text;
}

}  // namespace

std::vector<Party> writeCustomers(Store& store, Random random, std::int32_t count) {
  Table table(
      store, "Cust",
      {"InCustId",      "CustId",       "CustInactive",   "Name",          "Contact",
       "ContactTitle",  "Tel1",         "TelExt1",        "Fax",           "Email",
       "Web",           "ExTermId",     "CreditLim",      "SalesPerson",   "CustFee",
       "SendStmnt",     "ExGLAcctId",   "ExPriceLevelId", "Discount",      "NSFChqNb",
       "CredNoticeNb",  "EDIExport",    "NameLang",       "InvoiSendMeth", "StmntSendMeth",
       "Addr1",         "Addr2",        "City",           "Area",          "Zip",
       "ExWarehouseId", "ExTaxGroupId", "ExCountryId",    "ShipVia",       "UseDirectDeposite",
       "Transit",       "Institution",  "Account",        "ExPmtMethId",   "ExCurrencyId"});
  std::array<std::string, 6> sellers;
  for (std::string& seller : sellers) seller = makePerson(random, random.chance(600));
  constexpr std::array<const char*, 4> kCarriers = {"Pick-up", "Messagerie", "Truck", "Poste"};

  std::vector<Party> parties;
  parties.reserve(static_cast<std::size_t>(count));
  for (std::int32_t index = 0; index < count; ++index) {
    const std::int32_t id = index + 1;
    const std::int32_t currencyId = index == kWithoutCurrency ? 0 : currencyOf(index);
    const Region& region = pickRegion(random, currencyId);
    Identity who = makeIdentity(random, region);
    if (index == kNamesake) who.name = parties.back().name;
    const SampleTerm& term = pickTerm(random);
    Party party = makeParty(random, id, currencyId, term, who, region);
    const bool inactive = index % 17 == 16;
    if (inactive) party.activeUntil = random.between(kDays / 4, kDays - 90);
    const int earlierReturns = random.chance(50) ? 1 : 0;
    if (party.habits.method == std::string_view("CHQ") && random.chance(120)) {
      party.habits.returnedCheques = random.between(1, 2);
    }
    const bool deposits = party.habits.method == std::string_view("EFT");
    table.add({id,
               partyCode(who.name, id),
               inactive,
               who.name,
               who.contact,
               who.contactTitle,
               who.telephone,
               random.chance(300) ? Value(accountDigits(random, 3)) : Value::null(),
               textOrNull(who.fax),
               who.email,
               random.chance(500) ? Value(who.web) : Value::null(),
               term.id,
               money(100'000LL * random.between(5, 250)),
               random.pick(std::span(sellers)),
               random.chance(300),
               random.chance(800),
               currency(currencyId).receivablesAccount,
               random.between(1, 3),
               QuorDataLib::Currency::fromInteger(5L * random.below(3)),
               static_cast<std::int16_t>(earlierReturns + party.habits.returnedCheques),
               static_cast<std::int16_t>(random.chance(80) ? 1 : 0),
               false,
               static_cast<std::int16_t>(who.french ? 2 : 1),
               static_cast<std::int16_t>(random.below(3)),
               static_cast<std::int16_t>(random.below(3)),
               who.address,
               textOrNull(who.address2),
               who.city,
               region.name,
               who.postalCode,
               region.segment,
               region.id,
               region.country,
               random.pick(std::span(kCarriers)),
               deposits,
               deposits ? Value(accountDigits(random, 5)) : Value::null(),
               deposits ? Value(accountDigits(random, 3)) : Value::null(),
               deposits ? Value(accountDigits(random, 7)) : Value::null(),
               random.between(1, 3),
               keyOrNull(currencyId)});
    parties.push_back(std::move(party));
  }
  return parties;
}

std::vector<Party> writeSuppliers(Store& store, Random random, std::int32_t count) {
  Table table(store, "Supp",
              {"InSuppId",
               "SuppId",
               "SuppInactive",
               "Name",
               "Contact",
               "ContactTitle",
               "Tel1",
               "Fax",
               "Email",
               "Web",
               "ExTermId",
               "Addr1",
               "Addr2",
               "City",
               "Area",
               "ExCountryId",
               "Zip",
               "ExTaxGroupId",
               "CreditLim",
               "ExGLAcctId",
               "Buyer",
               "NameLang",
               "SendPo",
               "IncludeInT5018",
               "BusinessNumber",
               "UseDirectDeposite",
               "ExPmtMethId",
               "ExCurrencyId"});
  std::array<std::string, 3> buyers;
  for (std::string& buyer : buyers) buyer = makePerson(random, random.chance(600));

  std::vector<Party> parties;
  parties.reserve(static_cast<std::size_t>(count));
  for (std::int32_t index = 0; index < count; ++index) {
    const std::int32_t id = index + 1;
    const std::int32_t currencyId = index == kWithoutCurrency ? 0 : currencyOf(index);
    const Region& region = pickRegion(random, currencyId);
    Identity who = makeIdentity(random, region);
    if (index == kNamesake) who.name = parties.back().name;
    const SampleTerm& term = pickTerm(random);
    Party party = makeParty(random, id, currencyId, term, who, region);
    // The company pays its suppliers in time.
    party.habits.lateness = std::min(party.habits.lateness, 5);
    if (party.habits.method == std::string_view("CARD")) party.habits.method = "EFT";
    const bool inactive = index % 17 == 16;
    if (inactive) party.activeUntil = random.between(kDays / 4, kDays - 90);
    table.add({id,
               partyCode(who.name, id),
               inactive,
               who.name,
               who.contact,
               who.contactTitle,
               who.telephone,
               textOrNull(who.fax),
               who.email,
               random.chance(500) ? Value(who.web) : Value::null(),
               term.id,
               who.address,
               textOrNull(who.address2),
               who.city,
               region.name,
               region.country,
               who.postalCode,
               region.id,
               money(100'000LL * random.between(10, 400)),
               currency(currencyId).payablesAccount,
               random.pick(std::span(buyers)),
               static_cast<std::int16_t>(who.french ? 2 : 1),
               random.chance(700),
               random.chance(150) && region.country == 1,
               accountDigits(random, 9),
               party.habits.method == std::string_view("EFT"),
               random.between(1, 3),
               keyOrNull(currencyId)});
    parties.push_back(std::move(party));
  }
  return parties;
}

}  // namespace QuorHost::Sample
