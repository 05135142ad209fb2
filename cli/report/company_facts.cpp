#include "cli/report/company_facts.h"

#include "core/mutils.h"

namespace QuorCli {

using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;

std::string CompanyFacts::currencyCode(std::int32_t currencyId) const {
  const auto found = currencyCodes.find(currencyId);
  return found == currencyCodes.end() ? "currency " + std::to_string(currencyId) : found->second;
}

CompanyFacts readCompany(const Session& session) {
  CompanyFacts facts;
  const auto company = QuorAccQueries::MUtils::QuorCastriaFoundation()->Application()->Company();
  facts.sessionDate = company->SessionDate().dateOnly();
  const auto currencyInfo = company->CurrencyInfo();
  facts.homeCurrency = currencyInfo->CieHomeCurrencyId();
  facts.foreignCurrencies = currencyInfo->CieIsForeignCurrencyUsed();
  const auto name = readBeside(*session.store(), "SELECT Name FROM CieInfo");
  if (!name->AtEnd()) facts.name = name->Field(0).isNull() ? "" : name->Field(0).toText();
  const auto rows =
      readBeside(*session.store(), "SELECT InCurrencyId, CurrencyCode FROM WorldCurrency");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    facts.currencyCodes.emplace(rows->Field(0).toLong(), rows->Field(1).toText());
  }
  return facts;
}

Ref<Recordset> readBeside(QuorHost::Store& store, const std::string& sql,
                          const Parameters& parameters) {
  return store.connectInEither()->OpenRecordset(sql, 4, 0, parameters, 0);
}

}  // namespace QuorCli
