#include "host/company/sample/plans/schedules.h"

#include <array>

#include "host/company/sample/calendar.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Date;
using QuorDataLib::Value;

namespace Frequency = QuorDataLib::Frequency;

/// How a schedule runs, in days of the sample.
struct Pattern {
  std::int32_t frequency;
  int first;
  int last = kDays + 3'000;
  int neglected = kDays;
};
constexpr std::array<Pattern, 8> kPatterns{{
    {Frequency::kMonthly, 20},
    {Frequency::kQuarterly, 75},
    {Frequency::kMonthly, 110, 640},
    {Frequency::kTwoWeeks, 700, kDays + 3'000, kDays - 40},
    {Frequency::kHalfYearly, 150},
    {Frequency::kMonthly, 60, kDays + 3'000, kDays - 20},
    {Frequency::kYearly, 200},
    {Frequency::kWeekly, 900, 990},
}};

}  // namespace

Schedule::Schedule(ScheduleKind kind, std::int32_t frequency, int first, int last, int neglected)
    : kind_(kind),
      frequency_(frequency),
      end_(dateOf(0).addDays(last)),
      neglected_(neglected),
      nextRun_(dateOf(first)) {}

bool Schedule::runsOn(int day) const { return day < neglected_ && nextRun_ == dateOf(day); }

void Schedule::ran(int day, std::int32_t key) {
  if (nextRun_.empty()) return;
  if (model_ == 0) model_ = key;
  lastRun_ = dateOf(day);
  nextRun_ = QuorDataLib::nextRun(lastRun_, frequency_);
  if (nextRun_ > end_) nextRun_ = Date();
}

std::vector<Schedule> makeSchedules(ScheduleKind kind, std::int32_t count) {
  std::vector<Schedule> schedules;
  for (std::int32_t index = 0; index < count; ++index) {
    const Pattern& pattern = kPatterns.at(static_cast<std::size_t>(index) % kPatterns.size());
    // Not all on one day of the month.
    const int shift = index * 5 % 28;
    schedules.emplace_back(kind, pattern.frequency, pattern.first + shift, pattern.last,
                           pattern.neglected);
  }
  return schedules;
}

void writeSchedules(Store& store, const std::vector<const std::vector<Schedule>*>& schedules) {
  Table table(store, "TrxRec", {"TrxType", "ExTrxId", "Frqncy", "LastRun", "NextRun"});
  for (const std::vector<Schedule>* const ofKind : schedules) {
    for (const Schedule& each : *ofKind) {
      if (each.model_ == 0) continue;
      table.add({static_cast<std::int32_t>(each.kind_), each.model_,
                 static_cast<std::int16_t>(each.frequency_), each.lastRun_,
                 each.nextRun_.empty() ? Value::null() : Value(each.nextRun_)});
    }
  }
}

}  // namespace QuorHost::Sample
