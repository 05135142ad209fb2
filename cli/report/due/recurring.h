// The transactions that schedules will make.
#pragma once

#include <cstdint>
#include <functional>

#include "cli/session.h"
#include "cli/words/options.h"
#include "platform/values/value.h"
#include "terms/term_helper.h"
#include "terms/trx_rec_helper.h"

namespace QuorCli {

/// One run of a schedule.
struct ScheduledCash {
  /// When it is due by the model's payment term; a journal entry is due when it is made.
  QuorDataLib::Date due;
  /// Money to come in; negative to go out.
  QuorDataLib::Currency amount;
  std::int32_t currencyId = 1;
  /// The model's exchange rate; Null where it has none.
  QuorDataLib::Value rate;
};

/// How a company's schedules stand.
struct ScheduleCount {
  std::int64_t running = 0;
  /// Of those running: their next run is before the report's day.
  std::int64_t late = 0;
  std::int64_t ended = 0;
};

/// Follows every schedule through the component's members, from its next run to the last one that
/// is made by a day.
class Recurring {
 public:
  Recurring(const RunOptions& options, Session& session);

  /// Tells each run up to `until` to `tell`, those that are late first of all.
  ScheduleCount forEachRun(QuorDataLib::Date day, QuorDataLib::Date until,
                           const std::function<void(const ScheduledCash&)>& tell);

 private:
  Session& session_;
  QuorDataLib::Ref<QuorAccQueries::CTrxRecHelper> schedules_;
  QuorDataLib::Ref<QuorAccQueries::CTermHelper> terms_;
};

}  // namespace QuorCli
