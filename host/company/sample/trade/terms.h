// The sample's payment terms.
#pragma once

#include <cstdint>

#include "host/company/due_dates.h"
#include "host/company/sample/random.h"
#include "host/engines/store.h"

namespace QuorHost::Sample {

struct SampleTerm {
  std::int32_t id;
  const char* code;
  const char* description;
  PaymentTerm rule;
  /// Discount for payment in full within some days, in thousandths of the goods; 0 for none.
  int discountPerMille = 0;
  int discountDays = 0;
};

/// Terms that are agreed on for one sale: at the counter, and for goods booked for the spring.
inline constexpr std::int32_t kOnReceipt = 8;
inline constexpr std::int32_t kSpringBooking = 9;

/// A term by its key.
[[nodiscard]] const SampleTerm& termOf(std::int32_t id);

/// The term of a customer or supplier.
[[nodiscard]] const SampleTerm& pickTerm(Random& random);

/// When a document of a day of the sample is due, and the day of the sample that this is: one past
/// the last or before the first where the sample does not reach so far.
[[nodiscard]] QuorDataLib::Date dueDateOf(std::int32_t term, int day);
[[nodiscard]] int dueDayOf(std::int32_t term, int day);

/// Fills `Term` and `TermDet`.
void writeTerms(Store& store);

}  // namespace QuorHost::Sample
