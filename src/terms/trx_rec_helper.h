// Recurring transactions.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// The schedules of recurring transactions: a transaction that is to be made again and again has a
/// row in `TrxRec`, found by its kind (`TrxType`) and its key within that kind (`TrxId`). This
/// class reads a schedule and moves it on; making the transaction is the host's affair.
///
/// Two that advance one schedule at the same time both read the same next date, and the update of
/// one replaces that of the other: each update is whole, but the transaction was made twice. A host
/// that lets several advance schedules holds a transaction of its database from the reading to the
/// update.
class CTrxRecHelper : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CTrxRecHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Reads a schedule; whether there is one. Without one the three outputs stay as they are, and so
  /// does a date whose column is null: a schedule that has not run yet, or that has ended.
  ///
  /// @param Frequency  how often it runs, a code as in `GetNextDate`
  /// @param LastRun    when it ran last
  /// @param NextRun    when it is to run next
  bool GetTrxRecInfo(std::int32_t TrxType, std::int32_t TrxId, std::int16_t& Frequency,
                     Date& LastRun, Date& NextRun);

  /// One of the three: a date that is null is no date. Without such a schedule they raise the error
  /// "GetTrxRecInfo returned false." of number -2147221504 (0x80040000) and source "CTrxRecHelper".
  std::int16_t GetTrxRecFrequency(std::int32_t TrxType, std::int32_t TrxId);
  Date GetTrxRecLastRun(std::int32_t TrxType, std::int32_t TrxId);
  Date GetTrxRecNextRun(std::int32_t TrxType, std::int32_t TrxId);

  /// The date one period after another one, whatever has passed since: 1 a day, 2 a week, 3 a
  /// month, 4 two weeks, 5 a year, 6 a quarter, 7 half a year. Months keep the day, or take the
  /// last one of a shorter month; the time of day stays. No date for 0 (not repeated) and any other
  /// code. Raises 6 beyond the range of dates.
  Date GetNextDate(Date FromDate, std::int16_t Frequency);

  /// Stores when a schedule ran and when it is to run next, and tells the application that the data
  /// set of recurring transactions has changed. It tells so as well where no row was changed,
  /// because there is no such schedule.
  ///
  /// The update is a transaction of its own: a process that ends before the application was told
  /// leaves the new dates, both of them.
  ///
  /// @param LastRun  stored as it is
  /// @param NextRun  no date ends the schedule: null is stored
  void UpdateRecurringTransactionDates(std::int32_t TrxType, std::int32_t TrxId, Date LastRun,
                                       Date NextRun);

 private:
  struct Schedule {
    std::int16_t frequency = 0;
    Date lastRun;
    Date nextRun;
  };
  /// The schedule; raises where there is none.
  Schedule existing(std::int32_t type, std::int32_t key);
};

}  // namespace QuorAccQueries
