#include "platform/schedules.h"

namespace QuorDataLib {

Date nextRun(Date from, std::int32_t frequency) {
  switch (frequency) {
    case Frequency::kDaily:
      return from.addDays(1);
    case Frequency::kWeekly:
      return from.addDays(7);
    case Frequency::kTwoWeeks:
      return from.addDays(14);
    case Frequency::kMonthly:
      return from.addMonths(1);
    case Frequency::kQuarterly:
      return from.addMonths(3);
    case Frequency::kHalfYearly:
      return from.addMonths(6);
    case Frequency::kYearly:
      return from.addMonths(12);
    default:
      return {};
  }
}

}  // namespace QuorDataLib
