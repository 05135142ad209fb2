// Names, places and addresses for the sample's customers and suppliers.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/company/sample/random.h"

namespace QuorHost::Sample {

struct City {
  const char* name;
  const char* areaCode;
  /// What postal codes there begin with: the first half in Canada, three digits in the United
  /// States, two or three elsewhere.
  const char* postalPrefix;
};

/// A province or a foreign country, with the sales taxes that apply to goods sold there. Rates are
/// in thousandths of a percent.
struct Region {
  std::int32_t id;
  const char* name;
  std::int32_t country;  // 1 Canada, 2 United States, others in Europe
  bool french;
  std::int32_t segment;
  std::int32_t federalRate;
  std::int32_t provincialRate;
  std::int32_t provincialTaxAccount;
  /// How many of a thousand parties of its currency are there.
  std::int32_t frequency;
  std::vector<City> cities;
};

/// A region for a party of a currency.
const Region& pickRegion(Random& random, std::int32_t currencyId);

/// Who a party is and where.
struct Identity {
  std::string name;
  std::string contact;
  std::string contactTitle;
  std::string telephone;
  std::string fax;
  std::string email;
  std::string web;
  std::string address;
  std::string address2;
  std::string city;
  std::string postalCode;
  bool french = false;
};

Identity makeIdentity(Random& random, const Region& region);

/// A person's name, of either language.
std::string makePerson(Random& random, bool french);

/// The code of a party: the first letters of its name without accents, and its number.
std::string partyCode(std::string_view name, std::int32_t id);

}  // namespace QuorHost::Sample
