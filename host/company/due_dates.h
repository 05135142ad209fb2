// Due dates as a company's payment terms give them.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/values/date.h"

namespace QuorHost {

/// What a term's rule needs: the columns of `Term`, and the first date of `TermDet`. A column that
/// is null has no value.
struct PaymentTerm {
  std::optional<std::int32_t> mode;
  std::optional<std::int32_t> due;
  std::optional<std::int32_t> dueNextMonth;
  std::optional<std::int32_t> firstPaymentDay;
  std::optional<QuorDataLib::Date> fixedDate;
};

/// When a document is due under a term; nothing where the term lacks a value that its rule needs,
/// or has a mode that has no rule. Raises 6 outside the range of dates.
[[nodiscard]] std::optional<QuorDataLib::Date> dueDate(const PaymentTerm& term,
                                                       QuorDataLib::Date document);

}  // namespace QuorHost
