// What every report says of the company whose books it reads.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "cli/session.h"
#include "platform/values/date.h"

namespace QuorCli {

struct CompanyFacts {
  std::string name;
  QuorDataLib::Date sessionDate;
  std::int32_t homeCurrency = 1;
  bool foreignCurrencies = false;
  std::map<std::int32_t, std::string> currencyCodes;

  /// The currency's code, or its id where the company has no such currency.
  [[nodiscard]] std::string currencyCode(std::int32_t currencyId) const;
};

/// Reads them: what the foundation tells through the host, names and codes past it, so that a trace
/// shows what the component does and nothing else.
[[nodiscard]] CompanyFacts readCompany(const Session& session);

/// Opens a query of the server dialect past the host, for what a report says beside its figures.
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Recordset> readBeside(
    QuorHost::Store& store, const std::string& sql, const QuorDataLib::Parameters& parameters = {});

}  // namespace QuorCli
