// A statement on its way through a driver.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/odbc/driver/session.h"
#include "host/engines/odbc/run/arguments.h"
#include "host/engines/odbc/run/text_look.h"
#include "host/sql/types.h"

namespace QuorHost::Odbc {

/// A column of a result, as the driver describes it.
struct DrivenColumn {
  std::string name;
  Sql::Type type = Sql::Type::Text;
  /// The form in which it is fetched.
  SQLSMALLINT form = SQL_C_WCHAR;
  /// Bytes that a value takes; 0 for texts that may be of any length.
  std::size_t width = 0;
};

/// One statement on a session, which it keeps open. Every operation raises what the driver reports.
class Statement {
 public:
  /// `text` is for messages.
  Statement(std::shared_ptr<Session> session, std::string text);

  /// Runs the text as it stands, for so many seconds at most; 0 for no limit. Raises a refused
  /// statement with both counts when there are more or fewer values than markers.
  void run(const std::vector<QuorDataLib::Value>& values, std::int32_t limit);

  // Questions to the catalogue of the database, whose answers are rows.
  void askTables(std::string_view name);
  void askColumns(std::string_view table);
  /// Gives the place (from 0) of the columns' names in the answer.
  std::size_t askPrimaryKey(std::string_view schema, std::string_view table);

  /// Rows that a change has changed.
  [[nodiscard]] std::int32_t rowsChanged();
  /// The result's columns; none for a change.
  [[nodiscard]] std::vector<DrivenColumn> columns();

  [[nodiscard]] SQLHSTMT handle() const noexcept { return handle_.get(); }
  [[nodiscard]] const std::string& text() const noexcept { return text_; }
  [[nodiscard]] Session& session() const noexcept { return *session_; }
  /// Raises what a call on the statement has reported, unless it succeeded.
  void check(SQLRETURN result);
  /// Sets an attribute to a number, or to the address of what the driver fills in.
  void set(SQLINTEGER attribute, SQLULEN value);
  void set(SQLINTEGER attribute, SQLPOINTER value);

 private:
  [[nodiscard]] DrivenColumn describe(SQLUSMALLINT number);

  std::shared_ptr<Session> session_;
  StatementHandle handle_;
  std::string text_;
  std::int32_t limit_ = 0;
};

/// Raises a refused statement unless there is one statement in the text, with so many markers as
/// there are values.
void requireWhole(const TextLook& look, std::size_t values);

}  // namespace QuorHost::Odbc
