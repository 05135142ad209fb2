#include "cli/report/exchange.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/values/currency.h"
#include "platform/values/wide_integer.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Value;
using QuorDataLib::ValueType;
using QuorDataLib::WideInteger;

/// A decimal number: `digits` divided by `scale`, a power of ten.
struct Decimal {
  std::int64_t digits = 0;
  WideInteger scale = 1;
};

/// The number written by `text`, its decimals cut after the sixteenth.
Decimal parseDecimal(std::string_view text) {
  constexpr std::size_t kMostDecimals = 16;
  const std::size_t point = text.find('.');
  std::string digits(text.substr(0, point));
  Decimal decimal;
  if (point != std::string_view::npos) {
    const std::string_view decimals = text.substr(point + 1, kMostDecimals);
    digits += decimals;
    for (std::size_t index = 0; index < decimals.size(); ++index) decimal.scale *= 10;
  }
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, decimal.digits);
  if (error == std::errc::result_out_of_range) {
    QuorDataLib::raise(ErrorNumber::Overflow,
                       "The exchange rate " + std::string(text) + " does not fit");
  }
  if (error != std::errc() || stop != end) {
    QuorDataLib::raise(ErrorNumber::TypeMismatch,
                       "'" + std::string(text) + "' is no exchange rate");
  }
  return decimal;
}

Decimal decimalRate(const Value& rate) {
  if (rate.isNull()) return {1, 1};
  Decimal decimal;
  if (rate.type() == ValueType::Double) {
    char text[400];  // enough for the longest fixed form of a double
    const auto [end, error] =
        std::to_chars(std::begin(text), std::end(text), rate.toDouble(), std::chars_format::fixed);
    decimal = parseDecimal(std::string_view(text, end));
  } else {
    decimal = parseDecimal(rate.toCurrency().toText(4));
  }
  return decimal.digits == 0 ? Decimal{1, 1} : decimal;
}

}  // namespace

Currency inHomeCurrency(Currency amount, const Value& rate) {
  const Decimal factor = decimalRate(rate);
  if (factor.digits == factor.scale) return amount;
  constexpr std::int64_t kUnitsPerCent = Currency::kUnitsPerOne / 100;
  const WideInteger product = WideInteger{amount.units()} * factor.digits;
  const WideInteger divisor = factor.scale * kUnitsPerCent;
  const WideInteger half = product < 0 ? -(divisor / 2) : divisor / 2;
  const WideInteger units = (product + half) / divisor * kUnitsPerCent;
  if (units > std::numeric_limits<std::int64_t>::max() ||
      units < std::numeric_limits<std::int64_t>::min()) {
    QuorDataLib::raise(ErrorNumber::Overflow, "An amount is too large in home currency");
  }
  return Currency::fromUnits(static_cast<std::int64_t>(units));
}

void HomeSum::add(Currency amount, const Value& rate) {
  if (rate != rate_) {
    converted_ = total();
    atRate_ = Currency();
    rate_ = rate;
  }
  atRate_ += amount;
}

Currency HomeSum::total() const { return converted_ + inHomeCurrency(atRate_, rate_); }

}  // namespace QuorCli
