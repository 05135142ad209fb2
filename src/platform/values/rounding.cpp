#include "platform/values/rounding.h"

#include <cmath>
#include <limits>

#include "platform/error.h"
#include "platform/values/wide_integer.h"

namespace QuorDataLib {
namespace {

[[noreturn]] void raiseOverflow() { raise(ErrorNumber::Overflow, "Overflow"); }

Currency fitting(WideInteger units) {
  if (units > std::numeric_limits<std::int64_t>::max() ||
      units < std::numeric_limits<std::int64_t>::min()) {
    raiseOverflow();
  }
  return Currency::fromUnits(static_cast<std::int64_t>(units));
}

}  // namespace

Currency roundedProduct(Currency a, Currency b, int decimals) {
  // The product counts hundred-millionths.
  WideInteger step = Currency::kUnitsPerOne;
  for (int place = 4; place > decimals; --place) step *= 10;
  const WideInteger product = WideInteger{a.units()} * b.units();
  const WideInteger half = product < 0 ? -(step / 2) : step / 2;
  return fitting((product + half) / step * (step / Currency::kUnitsPerOne));
}

Currency roundedToCurrency(double number) {
  if (!std::isfinite(number)) raiseOverflow();
  const double size = std::fabs(number);
  const double whole = std::trunc(size);
  constexpr double kMost = 922'337'203'685'477.0;  // whole units of 64 bits of ten-thousandths
  if (whole > kMost) raiseOverflow();
  // Scaling may round onto a half that the number itself is just below.
  const double fraction = size - whole;
  const double scaled = fraction * Currency::kUnitsPerOne;
  const double lost = std::fma(fraction, static_cast<double>(Currency::kUnitsPerOne), -scaled);
  const double down = std::floor(scaled);
  const double over = scaled - down;
  const bool up = over > 0.5 || (over == 0.5 && lost >= 0);
  const WideInteger units = WideInteger{static_cast<std::int64_t>(whole)} * Currency::kUnitsPerOne +
                            static_cast<std::int64_t>(down) + (up ? 1 : 0);
  return fitting(number < 0 ? -units : units);
}

}  // namespace QuorDataLib
