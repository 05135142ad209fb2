// Amounts in home currency.
#pragma once

#include "platform/values/value.h"

namespace QuorCli {

/// `amount` times `rate`, the rate's decimal digits taken as they are written, rounded to the cent,
/// halves away from zero. A missing or zero rate counts as 1, as it does throughout the company's
/// books, and at a rate of 1 the amount stays as it is. Raises 13 for a rate that is no number and
/// 6 when the product does not fit.
[[nodiscard]] QuorDataLib::Currency inHomeCurrency(QuorDataLib::Currency amount,
                                                   const QuorDataLib::Value& rate);

/// A sum of amounts in home currency. Amounts at one rate are converted together, so that a
/// document that was paid to the last cent comes to zero whatever its rate. Raises as
/// `inHomeCurrency` does.
class HomeSum {
 public:
  void add(QuorDataLib::Currency amount, const QuorDataLib::Value& rate);
  [[nodiscard]] QuorDataLib::Currency total() const;

 private:
  QuorDataLib::Currency converted_;
  /// Not converted yet: what came at `rate_`.
  QuorDataLib::Currency atRate_;
  QuorDataLib::Value rate_ = QuorDataLib::Value::null();
};

}  // namespace QuorCli
