// Money and exchange rates of the sample.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "platform/values/value.h"

namespace QuorHost::Sample {

/// An amount in cents of its currency.
using Cents = std::int64_t;

/// An amount as a database value.
inline QuorDataLib::Value money(Cents cents) {
  return QuorDataLib::Currency::fromUnits(cents * (QuorDataLib::Currency::kUnitsPerOne / 100));
}

/// Home currency for one unit of a currency, in ten-thousandths.
using Rate = std::int32_t;
inline constexpr Rate kParity = 10'000;

/// `amount` x `numerator` / `denominator`, halves away from zero; `denominator` is positive.
Cents share(Cents amount, std::int64_t numerator, std::int64_t denominator);

/// An amount in home currency.
inline Cents toHome(Cents amount, Rate rate) { return share(amount, rate, kParity); }

/// A currency of the sample; the accounts are keys of `GLAcct`.
struct SampleCurrency {
  std::int32_t id;
  const char* code;
  const char* description;
  std::int32_t bankAccount;
  std::int32_t receivablesAccount;
  std::int32_t payablesAccount;
};

inline constexpr std::int32_t kHomeCurrency = 1;
inline constexpr std::int32_t kDollar = 2;
inline constexpr std::int32_t kEuro = 3;

/// The currencies, the one of id n at index n - 1.
extern const std::array<SampleCurrency, 3> kCurrencies;

/// A currency by id; 0 (a party without a currency) is the home currency.
inline const SampleCurrency& currency(std::int32_t id) {
  return kCurrencies[id == 0 ? 0 : static_cast<std::size_t>(id) - 1];
}

/// The exchange rates of every day of the sample.
class Rates {
 public:
  explicit Rates(std::uint64_t seed);

  [[nodiscard]] Rate on(int day, std::int32_t currencyId) const;

 private:
  std::vector<Rate> dollar_;
  std::vector<Rate> euro_;
};

}  // namespace QuorHost::Sample
