#include "host/company/due_dates.h"

#include "platform/schedules.h"

namespace QuorHost {

using QuorDataLib::Date;

namespace TermMode = QuorDataLib::TermMode;

namespace {

int lengthOf(int year, int month) {
  return month > 12 ? QuorDataLib::daysInMonth(year + 1, month - 12)
                    : QuorDataLib::daysInMonth(year, month);
}

}  // namespace

std::optional<Date> dueDate(const PaymentTerm& term, Date document) {
  switch (term.mode.value_or(0)) {
    case TermMode::kNetDays:
      if (!term.due) return std::nullopt;
      return document.addDays(*term.due);
    case TermMode::kDayOfMonth:
      if (!term.due || !term.dueNextMonth) return std::nullopt;
      return QuorDataLib::dueOnDayOfMonth(document, *term.due, *term.dueNextMonth, lengthOf);
    case TermMode::kFirstPayment:
      if (!term.firstPaymentDay) return std::nullopt;
      return document.dateOnly().addDays(*term.firstPaymentDay);
    case TermMode::kFixedDate:
      return term.fixedDate.value_or(document);
    default:
      return std::nullopt;
  }
}

}  // namespace QuorHost
