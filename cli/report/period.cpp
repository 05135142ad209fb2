#include "cli/report/period.h"

#include "cli/console.h"

namespace QuorCli {

using QuorDataLib::Date;

Date parseDay(const std::string& option, const std::string& text) {
  const std::optional<Date> date = Date::parse(text);
  if (!date || date->empty() || date->hasTime()) {
    throw UsageError(option + " wants a date as YYYY-MM-DD, not '" + text + "'");
  }
  return *date;
}

Date endOfDay(Date day) {
  const Date::Civil civil = day.civil();
  return Date::of(civil.year, civil.month, civil.day, 23, 59, 59);
}

std::int64_t daysBetween(Date from, Date to) {
  constexpr std::int64_t kSecondsPerDay = 86'400;
  return (to.dateOnly().seconds() - from.dateOnly().seconds()) / kSecondsPerDay;
}

void addAsOf(CLI::App& command, std::optional<std::string>& asOf) {
  command.add_option("--as-of", asOf, "The day of the report [the session date]")
      ->type_name("DATE");
}

void checkDays(const std::optional<std::string>& from, const std::optional<std::string>& to) {
  const Date first = from ? parseDay("--from", *from) : Date();
  const Date last = to ? parseDay("--to", *to) : Date();
  if (from && to && last < first) throw UsageError("--to " + *to + " comes before --from " + *from);
}

Date dayOf(const std::optional<std::string>& asOf, Date sessionDate) {
  return asOf ? parseDay("--as-of", *asOf) : sessionDate;
}

}  // namespace QuorCli
