// The sample's recurring transactions.
#pragma once

#include <cstdint>
#include <vector>

#include "host/engines/store.h"
#include "platform/schedules.h"
#include "platform/values/date.h"

namespace QuorHost::Sample {

/// Kinds of transactions that have schedules (`TrxRec.TrxType`).
enum class ScheduleKind : std::uint8_t { Invoice = 1, Bill = 2, Entry = 3 };

/// One schedule: the first transaction is the model of the others.
class Schedule {
 public:
  /// Runs on days `first` to `last` of the sample. A `last` past its end leaves it running; nobody
  /// has run it from day `neglected` on, so that it is late.
  Schedule(ScheduleKind kind, std::int32_t frequency, int first, int last, int neglected);

  /// Whether the transaction is to be made on a day.
  [[nodiscard]] bool runsOn(int day) const;

  /// Notes that it was made, under a key. A schedule that has ended stays as it is.
  void ran(int day, std::int32_t key);

 private:
  friend void writeSchedules(Store& store,
                             const std::vector<const std::vector<Schedule>*>& schedules);

  ScheduleKind kind_;
  std::int32_t frequency_;
  QuorDataLib::Date end_;
  int neglected_;
  std::int32_t model_ = 0;
  QuorDataLib::Date lastRun_;
  QuorDataLib::Date nextRun_;
};

/// How the schedules of one kind run, in turn: most go on, some have ended, some are late.
[[nodiscard]] std::vector<Schedule> makeSchedules(ScheduleKind kind, std::int32_t count);

/// Fills `TrxRec` with the schedules that have run.
void writeSchedules(Store& store, const std::vector<const std::vector<Schedule>*>& schedules);

}  // namespace QuorHost::Sample
