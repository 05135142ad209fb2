// What every query and helper class has in common.
#pragma once

#include <cstdint>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/error_trap.h"
#include "core/member_table.h"
#include "core/mutils.h"
#include "core/platform_access.h"
#include "core/row_steps.h"
#include "core/statement.h"
#include "platform/data_library.h"
#include "platform/foundation.h"

namespace QuorAccQueries {

using QuorDataLib::Collection;
using QuorDataLib::Connection;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::make;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

/// Flags of the recordset-open call.
inline constexpr std::int32_t kFlagNone = 0;
inline constexpr std::int32_t kFlagSet = -1;

/// How a recordset is opened.
struct Opening {
  std::int32_t mode = QuorDataLib::kOpenRows;
  std::int32_t flag = kFlagSet;
};

/// The frame of a query class: its connection and its error trap. Every public member runs under
/// the trap, with the class's and the member's name.
///
/// The protected members below are statements of the method that calls them: each is one step,
/// under the line of its caller.
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

  /// Hands the connection that was assigned on, to objects of the class's own that are to use it,
  /// too; a class that has such objects overrides it. Part of the assignment's statement.
  virtual void handOn(const Ref<Connection>& /*connection*/) {}

  /// Seconds that each statement of this object may run, 0 for no limit; the connection's own limit
  /// counts until it is assigned. Public in the classes that offer it, each with a line in its
  /// member table (`commandTimeoutLine`).
  void SetCustomCommandTimeout(std::int32_t Timeout);
  template <class Class>
  static Member commandTimeoutLine() {
    return propertyPut<&Class::SetCustomCommandTimeout>(
        "CustomCommandTimeout", "Seconds that a statement of this object may run; 0: no limit.");
  }

  /// Opens the rows of a statement on the object's connection.
  Ref<Recordset> open(Steps& step, const Statement& statement, Pass pass, Opening opening = {},
                      std::source_location where = std::source_location::current());

  /// Runs a statement that changes rows, its values passed as an array, on the object's connection
  /// or on another one. Returns the number of rows changed.
  std::int32_t execute(Steps& step, const Statement& statement,
                       std::source_location where = std::source_location::current());
  std::int32_t execute(Steps& step, const Statement& statement, const Ref<Connection>& connection,
                       std::source_location where = std::source_location::current());

  /// The columns that a table has in the database, each as "`table`.Name", separated by ", ",
  /// without those named in `exclusions`. `noRows` is a query of all the table's columns and none
  /// of its rows. A step for each column.
  void listColumns(Steps& step, std::string& list, std::string_view noRows, std::string_view table,
                   const std::string& exclusions,
                   std::source_location where = std::source_location::current());

  /// A number of the accounting parameters (an account, mostly); 0 where it was never set.
  std::int32_t accountParameter(Steps& step, const std::string& name,
                                std::source_location where = std::source_location::current());

  /// The application's default connection.
  static Ref<Connection> defaultConnection(
      Steps& step, std::source_location where = std::source_location::current());

  /// The engine type that the data services report; it picks between the two dialects.
  static std::int16_t engineType(Steps& step,
                                 std::source_location where = std::source_location::current());

  /// A column, or `defaultValue` where it is null, in the active dialect.
  static std::string nullSafe(Steps& step, const std::string& column, std::int16_t defaultValue,
                              std::source_location where = std::source_location::current());

  /// Whether the company trades in foreign currencies.
  static bool foreignCurrencyUsed(Steps& step,
                                  std::source_location where = std::source_location::current());

 private:
  template <class ConnectionOf>
  std::int32_t executeOn(Steps& step, const Statement& statement, ConnectionOf&& connectionOf,
                         std::source_location where);

  Ref<Connection> connection_;
  std::optional<std::int32_t> commandTimeout_;
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
  /// Asks the application whether recordsets may be kept. Its errors reach the creator: a method
  /// that makes a helper does so in a step and gives the steps, so that a retry repeats no earlier
  /// call.
  explicit HelperFrame(Steps& step = Steps::untrapped())
      : cacheAllowed_(MUtils::IsRecordsetCacheAllowed(step)) {}

  /// Whether recordsets are kept at present.
  [[nodiscard]] bool keepsRecordsets() const noexcept { return cacheOn_; }

  /// The recordset kept under `key` while `CacheRecordsets` is on, or else the one that `openRows`
  /// opens, in steps of its own. For methods that keep rows after they have read them.
  template <class OpenRows>
  Ref<Recordset> findOrOpen(Steps& step, const RecordsetCache& cache, CacheKey key,
                            OpenRows&& openRows,
                            std::source_location where = std::source_location::current()) {
    Ref<Recordset> rows;
    if (cacheOn_) rows = step([&] { return MUtils::GetRecordsetFromCache(cache, key); }, where);
    if (!rows) rows = openRows();
    return rows;
  }

  /// The same, and the rows are kept before they are read.
  template <class OpenRows>
  Ref<Recordset> reuse(Steps& step, RecordsetCache& cache, CacheKey key, OpenRows&& openRows,
                       std::source_location where = std::source_location::current()) {
    const Ref<Recordset> rows = findOrOpen(step, cache, key, openRows, where);
    if (cacheOn_ && rows) step([&] { MUtils::PutRecordsetInCache(cache, rows, key); }, where);
    return rows;
  }

  /// Keeps rows that have been read while `CacheRecordsets` is on, and closes them otherwise.
  void keepOrClose(Steps& step, RecordsetCache& cache, CacheKey key, const Ref<Recordset>& rows,
                   std::source_location where = std::source_location::current());

  /// Closes rows that are not kept.
  void release(Steps& step, const Ref<Recordset>& rows,
               std::source_location where = std::source_location::current()) const;

 private:
  bool cacheAllowed_;
  bool cacheOn_ = false;
};

}  // namespace QuorAccQueries
