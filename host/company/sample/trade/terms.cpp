#include "host/company/sample/trade/terms.h"

#include <array>
#include <span>

#include "host/company/sample/calendar.h"
#include "host/company/sample/money.h"
#include "host/company/table.h"
#include "platform/schedules.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Value;

namespace TermMode = QuorDataLib::TermMode;

PaymentTerm net(std::int32_t days) {
  return {.mode = TermMode::kNetDays,
          .due = days,
          .dueNextMonth = {},
          .firstPaymentDay = {},
          .fixedDate = {}};
}

PaymentTerm dayOfMonth(std::int32_t day, std::int32_t daysBefore) {
  return {.mode = TermMode::kDayOfMonth,
          .due = day,
          .dueNextMonth = daysBefore,
          .firstPaymentDay = {},
          .fixedDate = {}};
}

PaymentTerm firstPayment(std::int32_t days) {
  return {.mode = TermMode::kFirstPayment,
          .due = {},
          .dueNextMonth = {},
          .firstPaymentDay = days,
          .fixedDate = {}};
}

PaymentTerm onDate(Date date) {
  return {.mode = TermMode::kFixedDate,
          .due = {},
          .dueNextMonth = {},
          .firstPaymentDay = {},
          .fixedDate = date};
}

const std::array<SampleTerm, 9>& allTerms() {
  static const std::array<SampleTerm, 9> terms{{
      {1, "N30", "Net 30 jours / Net 30 days", net(30)},
      {2, "2-10-N30", "2 % 10 jours, net 30 / 2 % 10 days, net 30", net(30), 20, 10},
      {3, "N15", "Net 15 jours / Net 15 days", net(15)},
      {4, "1-10-N60", "1 % 10 jours, net 60 / 1 % 10 days, net 60", net(60), 10, 10},
      {5, "FMS", "Fin du mois suivant / End of next month", dayOfMonth(31, 31)},
      {6, "LE15", "Le 15 du mois / The 15th of the month", dayOfMonth(15, 10)},
      {7, "V45", "Premier versement à 45 jours / First payment after 45 days", firstPayment(45)},
      {kOnReceipt, "COMPT", "Comptant / On receipt", net(0)},
      {kSpringBooking, "PRINT", "Réservations du printemps / Spring booking",
       onDate(Date::of(kFirstYear + kFiscalYears, 5, 15))},
  }};
  return terms;
}

/// How often each of the terms of parties is met.
constexpr std::array<std::int32_t, 12> kOfParties{1, 1, 1, 2, 2, 3, 3, 4, 5, 5, 6, 7};

template <class T>
Value valueOrNull(const std::optional<T>& value) {
  return value ? Value(*value) : Value::null();
}

}  // namespace

const SampleTerm& termOf(std::int32_t id) {
  return allTerms().at(static_cast<std::size_t>(id) - 1);
}

const SampleTerm& pickTerm(Random& random) { return termOf(random.pick(std::span(kOfParties))); }

Date dueDateOf(std::int32_t term, int day) {
  return dueDate(termOf(term).rule, dateOf(day)).value_or(dateOf(day));
}

int dueDayOf(std::int32_t term, int day) {
  constexpr std::int64_t kSecondsPerDay = 86'400;
  const std::int64_t later = dueDateOf(term, day).seconds() - dateOf(day).seconds();
  return day + static_cast<int>(later / kSecondsPerDay);
}

void writeTerms(Store& store) {
  Table terms(store, "Term",
              {"InTermId", "TermId", "Descr", "TermMode", "Due", "DueNxtMonth", "FirstPmtDay",
               "DiscPercent", "DiscDay"});
  Table dates(store, "TermDet", {"ExTermId", "DueDate"});
  for (const SampleTerm& term : allTerms()) {
    const bool discounted = term.discountPerMille != 0;
    terms.add(
        {term.id, term.code, term.description, valueOrNull(term.rule.mode),
         valueOrNull(term.rule.due), valueOrNull(term.rule.dueNextMonth),
         valueOrNull(term.rule.firstPaymentDay),
         discounted ? Value(Currency::fromInteger(term.discountPerMille / 10)) : Value::null(),
         keyOrNull(term.discountDays)});
    if (term.rule.fixedDate) dates.add({term.id, *term.rule.fixedDate});
  }
}

}  // namespace QuorHost::Sample
