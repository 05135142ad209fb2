// The shared rounding routine: halves away from zero, on the exact decimal value.
#pragma once

#include "platform/values/currency.h"

namespace QuorDataLib {

/// `a` x `b` rounded to `decimals` (0 to 4) places. The exact product is rounded, once. Raises 6
/// when it does not fit.
[[nodiscard]] Currency roundedProduct(Currency a, Currency b, int decimals);

/// `number` rounded to four places. Raises 6 when it does not fit or is not finite.
[[nodiscard]] Currency roundedToCurrency(double number);

}  // namespace QuorDataLib
