#include "host/company/sample/money.h"

#include <algorithm>

#include "host/company/sample/calendar.h"
#include "host/company/sample/random.h"

namespace QuorHost::Sample {

namespace {

/// A rate that wanders from day to day within its bounds, drawn back to the middle.
std::vector<Rate> wander(Random random, Rate lowest, Rate highest) {
  const Rate middle = (lowest + highest) / 2;
  std::vector<Rate> rates(kDays);
  Rate rate = middle;
  for (Rate& today : rates) {
    rate += random.between(-60, 60) + (middle - rate) / 200;
    rate = std::clamp(rate, lowest, highest);
    today = rate;
  }
  return rates;
}

}  // namespace

const std::array<SampleCurrency, 3> kCurrencies{{
    {kHomeCurrency, "CAD", "Dollar canadien / Canadian dollar", 1010, 1100, 2100},
    {kDollar, "USD", "Dollar américain / US dollar", 1020, 1110, 2110},
    {kEuro, "EUR", "Euro", 1030, 1120, 2120},
}};

Cents share(Cents amount, std::int64_t numerator, std::int64_t denominator) {
  const std::int64_t product = amount * numerator;
  const std::int64_t half = denominator / 2;
  return (product >= 0 ? product + half : product - half) / denominator;
}

Rates::Rates(std::uint64_t seed) {
  Random random(seed);
  dollar_ = wander(random.fork(), 12'600, 14'500);
  euro_ = wander(random.fork(), 13'300, 15'600);
}

Rate Rates::on(int day, std::int32_t currencyId) const {
  const auto index = static_cast<std::size_t>(day);
  if (currencyId == kDollar) return dollar_[index];
  if (currencyId == kEuro) return euro_[index];
  return kParity;
}

}  // namespace QuorHost::Sample
