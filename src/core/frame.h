// What every query and helper class has in common.
#pragma once

#include <cstdint>
#include <source_location>
#include <string_view>
#include <utility>
#include <vector>

#include "core/error_trap.h"
#include "core/member_table.h"
#include "core/mutils.h"
#include "core/statement.h"
#include "platform/data_library.h"
#include "platform/foundation.h"

namespace QuorAccQueries {

using QuorDataLib::Connection;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::make;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

/// The frame of a query class: its connection and its error trap. Every public member runs under
/// the trap, with the class's and the member's name.
class QueryFrame : public ComponentObject {
 public:
  /// The connection assigned, or else the application's default connection, asked for each time.
  Ref<Connection> CustomConnection();

  /// Assigns the connection to use in place of the one before; empty for the default connection.
  void SetCustomConnection(const Ref<Connection>& Conn);

  /// The lines of the member table for the members above.
  static std::vector<Member> members();

 protected:
  template <class Body>
  auto trap(std::string_view methodName, Body&& body) const {
    return QuorAccQueries::trap(classInfo().name, methodName, std::forward<Body>(body));
  }

  /// Flags of the recordset-open call.
  static constexpr std::int32_t kFlagNone = 0;
  static constexpr std::int32_t kFlagSet = -1;

  /// Opens the rows of a statement on the object's connection, for reading to the caller.
  Ref<Recordset> open(const Statement& statement, Pass pass, std::int32_t flag = kFlagSet);

  /// The columns that a table has in the database, each as "`table`.Name", separated by ", ",
  /// without those named in `exclusions`. `noRows` is a query of all the table's columns and none
  /// of its rows.
  void listColumns(Steps& step, std::string& list, std::string_view noRows, std::string_view table,
                   const std::string& exclusions,
                   std::source_location where = std::source_location::current());

  /// A number of the accounting parameters (an account, mostly); 0 where it was never set.
  std::int32_t accountParameter(const std::string& name);

  /// The engine type that the data services report; it picks between the two dialects.
  static std::int16_t engineType();

  /// A column, or `defaultValue` where it is null, in the active dialect.
  static std::string nullSafe(const std::string& column, std::int16_t defaultValue);

  /// Whether the company trades in foreign currencies.
  static bool foreignCurrencyUsed();

 private:
  Ref<Connection> connection_;
};

/// The frame of a helper class that may keep the recordsets it reads.
class HelperFrame : public QueryFrame {
 public:
  /// Whether recordsets read are kept for later calls; off in a new object.
  bool CacheRecordsets();

  /// Switches keeping on or off; it stays off where the application does not allow it.
  void SetCacheRecordsets(bool On);

  static std::vector<Member> members();

 protected:
  /// Asks the application whether recordsets may be kept; its errors reach the creator.
  HelperFrame() : cacheAllowed_(MUtils::IsRecordsetCacheAllowed()) {}

  /// The recordset kept under `key`, or the one that `openRows` opens, which is kept while
  /// `CacheRecordsets` is on. The steps carry the line of the caller.
  template <class OpenRows>
  Ref<Recordset> reuse(Steps& step, RecordsetCache& cache, CacheKey key, OpenRows&& openRows,
                       std::source_location where = std::source_location::current()) {
    Ref<Recordset> rows;
    if (cacheOn_) rows = step([&] { return MUtils::GetRecordsetFromCache(cache, key); }, where);
    if (rows) return rows;
    rows = step(std::forward<OpenRows>(openRows), where);
    if (cacheOn_ && rows) step([&] { MUtils::PutRecordsetInCache(cache, rows, key); }, where);
    return rows;
  }

  /// Whether recordsets are kept at present.
  [[nodiscard]] bool keepsRecordsets() const noexcept { return cacheOn_; }

  /// Closes a recordset that is not kept.
  void release(const Ref<Recordset>& rows) const {
    if (!cacheOn_) rows->Close();
  }

 private:
  bool cacheAllowed_;
  bool cacheOn_ = false;
};

/// Moves to the next row; whether there is one. It is none, too, after an error that the method
/// goes on from, so that a walk through rows always ends. The steps carry the line of the caller.
bool moveOn(Steps& step, const Ref<Recordset>& rows,
            std::source_location where = std::source_location::current());

/// A field's value, or Empty (zero, no date, no text) where it is null.
Value valueOrEmpty(const Ref<Recordset>& rows, const std::string& column);

/// The frame's lines followed by the class's own: the members of a class in interface order.
std::vector<Member> joined(std::vector<Member> frameMembers, std::vector<Member> ownMembers);

/// The member table of class `T`.
template <class T>
ClassInfo describeClass(std::string_view summary, std::vector<Member> members) {
  return {T::kClassName, summary, std::move(members),
          [] { return Ref<ComponentObject>(make<T>()); }};
}

}  // namespace QuorAccQueries
