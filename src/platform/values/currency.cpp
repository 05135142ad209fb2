#include "platform/values/currency.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/error.h"
#include "platform/values/blanks.h"
#include "platform/values/wide_integer.h"

namespace QuorDataLib {
namespace {

constexpr int kDecimals = 4;
constexpr std::int64_t kPowersOfTen[kDecimals + 1] = {1, 10, 100, 1'000, 10'000};

[[noreturn]] void raiseOutsideRange() {
  raise(ErrorNumber::Overflow,
        "The amount is outside -922337203685477.5808 to 922337203685477.5807");
}

Currency checked(WideInteger units) {
  if (units < std::numeric_limits<std::int64_t>::min() ||
      units > std::numeric_limits<std::int64_t>::max()) {
    raiseOutsideRange();
  }
  return Currency::fromUnits(static_cast<std::int64_t>(units));
}

/// Of `floor` and the next whole number the nearest, halves to even; `restToHalf` compares what
/// lies above `floor` with a half.
WideInteger nearest(WideInteger floor, std::strong_ordering restToHalf) {
  const bool up = restToHalf > 0 || (restToHalf == 0 && (floor & 1) != 0);
  return floor + (up ? 1 : 0);
}

bool areDigits(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

Currency Currency::fromInteger(std::int64_t whole) {
  return checked(WideInteger{whole} * kUnitsPerOne);
}

Currency Currency::fromDouble(double number) {
  constexpr double kBeyondRange = 1e15;
  constexpr int kMantissaBits = std::numeric_limits<double>::digits;
  constexpr int kVanishingShift = 100;  // leaves less than half a unit of every product
  if (!(std::abs(number) < kBeyondRange)) raiseOutsideRange();
  // The number is a whole mantissa over a power of two, so that its product with the units of one
  // is exact in 128 bits and only the division by the power rounds.
  int exponent = 0;
  const double fraction = std::frexp(number, &exponent);
  const auto mantissa = static_cast<std::int64_t>(std::ldexp(fraction, kMantissaBits));
  const WideInteger product = WideInteger{mantissa} * kUnitsPerOne;
  const int shift = std::min(kMantissaBits - exponent, kVanishingShift);
  const WideInteger rest = product & ((WideInteger{1} << shift) - 1);
  return checked(nearest(product >> shift, rest <=> (WideInteger{1} << (shift - 1))));
}

std::optional<Currency> Currency::parse(std::string_view text) {
  constexpr WideInteger kBeyondRange = WideInteger{1} << 64;
  text = withoutBlanks(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
  if (whole.empty() && decimals.empty()) return std::nullopt;
  if (!areDigits(whole) || !areDigits(decimals)) return std::nullopt;

  WideInteger units = 0;
  for (const char digit : whole) {
    units = units * 10 + (digit - '0');
    if (units > kBeyondRange) raiseOutsideRange();
  }
  for (std::size_t i = 0; i < kDecimals; ++i) {
    units = units * 10 + (i < decimals.size() ? decimals[i] - '0' : 0);
  }
  // Without its last zeros, the text of the further digits sorts around "5" as their value does
  // around a half.
  std::string_view rest = decimals.substr(std::min<std::size_t>(kDecimals, decimals.size()));
  rest = rest.substr(0, rest.find_last_not_of('0') + 1);
  units = nearest(units, rest <=> "5");
  return checked(negative ? -units : units);
}

double Currency::toDouble() const noexcept {
  return static_cast<double>(units_) / static_cast<double>(kUnitsPerOne);
}

std::string Currency::toText(int decimals) const {
  if (decimals < 0 || decimals > kDecimals) {
    raise(ErrorNumber::InvalidArgument, "An amount is written with 0 to 4 decimals");
  }
  const auto divisor = static_cast<std::uint64_t>(kPowersOfTen[kDecimals - decimals]);
  const auto bits = static_cast<std::uint64_t>(units_);
  const std::uint64_t magnitude = units_ < 0 ? 0 - bits : bits;
  std::uint64_t rounded = (magnitude + divisor / 2) / divisor;
  const bool negative = units_ < 0 && rounded != 0;

  char text[24];
  char* const end = text + sizeof text;
  char* at = end;
  const auto writeDigit = [&] {
    *--at = static_cast<char>('0' + rounded % 10);
    rounded /= 10;
  };
  for (int i = 0; i < decimals; ++i) writeDigit();
  if (decimals > 0) *--at = '.';
  do {
    writeDigit();
  } while (rounded != 0);
  if (negative) *--at = '-';
  return {at, end};
}

Currency Currency::operator-() const { return checked(-WideInteger{units_}); }

Currency operator+(Currency a, Currency b) { return checked(WideInteger{a.units_} + b.units_); }

Currency operator-(Currency a, Currency b) { return checked(WideInteger{a.units_} - b.units_); }

Currency operator*(Currency a, Currency b) {
  const WideInteger product = WideInteger{a.units_} * b.units_;
  WideInteger floor = product / Currency::kUnitsPerOne;
  WideInteger rest = product % Currency::kUnitsPerOne;
  if (rest < 0) {
    floor -= 1;
    rest += Currency::kUnitsPerOne;
  }
  return checked(nearest(floor, rest * 2 <=> WideInteger{Currency::kUnitsPerOne}));
}

}  // namespace QuorDataLib
