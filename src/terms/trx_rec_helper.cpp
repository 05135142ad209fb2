#include "terms/trx_rec_helper.h"

#include "core/platform_access.h"
#include "core/statement.h"
#include "platform/error.h"
#include "platform/schedules.h"
#include "terms/term_sql.h"

namespace QuorAccQueries {

namespace Sql = TermSql;

namespace {

/// What the application is told of a change: rows were updated, of no object in particular.
constexpr std::int32_t kWholeSet = 0;
constexpr std::int32_t kUpdated = 3;

/// Takes a date over unless it is null.
void readDate(const Ref<Recordset>& rows, const std::string& column, Date& date) {
  const Value value = rows->Field(column);
  if (!value.isNull()) date = value.toDate();
}

}  // namespace

const ClassInfo& CTrxRecHelper::info() {
  using Self = CTrxRecHelper;
  static const ClassInfo info = describeClass<CTrxRecHelper>(
      "Recurring transactions.",
      joined(QueryFrame::members(),
             {
                 method<&Self::GetTrxRecInfo>(
                     "GetTrxRecInfo", {"TrxType", "TrxId", "Frequency", "LastRun", "NextRun"},
                     "A transaction's schedule; whether there is one."),
                 method<&Self::GetTrxRecFrequency>("GetTrxRecFrequency", {"TrxType", "TrxId"},
                                                   "How often a transaction is repeated."),
                 method<&Self::GetTrxRecLastRun>("GetTrxRecLastRun", {"TrxType", "TrxId"},
                                                 "When a recurring transaction ran last."),
                 method<&Self::GetTrxRecNextRun>("GetTrxRecNextRun", {"TrxType", "TrxId"},
                                                 "When a recurring transaction is to run next."),
                 method<&Self::GetNextDate>("GetNextDate", {"FromDate", "Frequency"},
                                            "The date one period after another one."),
                 method<&Self::UpdateRecurringTransactionDates>(
                     "UpdateRecurringTransactionDates", {"TrxType", "TrxId", "LastRun", "NextRun"},
                     "Stores when a schedule ran and is to run next; no next date ends it."),
             }));
  return info;
}

bool CTrxRecHelper::GetTrxRecInfo(std::int32_t TrxType, std::int32_t TrxId, std::int16_t& Frequency,
                                  Date& LastRun, Date& NextRun) {
  return trap("GetTrxRecInfo", [&](Steps& step, bool& result) {
    const Ref<Recordset> rows =
        open(step, Statement(Sql::kSchedule).bind(TrxType).bind(TrxId), Pass::Array);
    if (hasRow(step, rows)) {
      step([&] { Frequency = rows->Field("Frqncy").toInteger(); });
      step([&] { readDate(rows, "LastRun", LastRun); });
      step([&] { readDate(rows, "NextRun", NextRun); });
      result = true;
    }
    step([&] { rows->Close(); });
  });
}

CTrxRecHelper::Schedule CTrxRecHelper::existing(std::int32_t type, std::int32_t key) {
  Schedule schedule;
  if (!GetTrxRecInfo(type, key, schedule.frequency, schedule.lastRun, schedule.nextRun)) {
    throw QuorDataLib::Error(QuorDataLib::ErrorNumber::ObjectDefined, std::string(kClassName),
                             "GetTrxRecInfo returned false.");
  }
  return schedule;
}

std::int16_t CTrxRecHelper::GetTrxRecFrequency(std::int32_t TrxType, std::int32_t TrxId) {
  return trap("GetTrxRecFrequency", [&](Steps& step, std::int16_t& result) {
    step([&] { result = existing(TrxType, TrxId).frequency; });
  });
}

Date CTrxRecHelper::GetTrxRecLastRun(std::int32_t TrxType, std::int32_t TrxId) {
  return trap("GetTrxRecLastRun", [&](Steps& step, Date& result) {
    step([&] { result = existing(TrxType, TrxId).lastRun; });
  });
}

Date CTrxRecHelper::GetTrxRecNextRun(std::int32_t TrxType, std::int32_t TrxId) {
  return trap("GetTrxRecNextRun", [&](Steps& step, Date& result) {
    step([&] { result = existing(TrxType, TrxId).nextRun; });
  });
}

Date CTrxRecHelper::GetNextDate(Date FromDate, std::int16_t Frequency) {
  return trap("GetNextDate", [&](Steps& step, Date& result) {
    step([&] { result = QuorDataLib::nextRun(FromDate, Frequency); });
  });
}

void CTrxRecHelper::UpdateRecurringTransactionDates(std::int32_t TrxType, std::int32_t TrxId,
                                                    Date LastRun, Date NextRun) {
  trap("UpdateRecurringTransactionDates", [&](Steps& step) {
    Statement update(NextRun.empty() ? Sql::kEndSchedule : Sql::kAdvance);
    update.bind(LastRun);
    if (!NextRun.empty()) update.bind(NextRun);
    execute(step, update.bind(TrxId).bind(TrxType));

    const std::int32_t dataSet = askFoundation(step, std::source_location::current(),
                                               &QuorCastriaFoundation::CastriaApplication::Declares,
                                               &QuorCastriaFoundation::Declares::DATA_TRX_REC);
    askDataServices(step, [&](QuorDataLib::DataServices& services) {
      services.NotifyDataChange(std::to_string(dataSet), kWholeSet, kUpdated, {});
    });
  });
}

}  // namespace QuorAccQueries
