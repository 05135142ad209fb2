// A prepared statement of the storage engine, and the limit on the time it may take.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace QuorHost::Sqlite {

/// How long a statement may still work. Only time spent in the engine counts, so that a recordset
/// which is read slowly does not run out of it.
struct TimeLimit {
  TimeLimit() = default;
  explicit TimeLimit(std::int32_t limit) : seconds(limit), left(std::chrono::seconds(limit)) {}

  /// The limit as it was given; 0 for none.
  std::int32_t seconds = 0;
  std::chrono::steady_clock::duration left{};
};

/// Owner of a prepared statement; empty or ready to be stepped. It must end before its database.
class Statement {
 public:
  Statement() = default;

  /// Prepares `sql`. `kept` says that the statement will live long. Raises the engine's error,
  /// quoting `text`, the statement as its author wrote it.
  Statement(sqlite3* database, std::string_view sql, bool kept, std::string_view text);

  /// Prepares one of the host's own statements.
  Statement(sqlite3* database, std::string_view sql) : Statement(database, sql, false, sql) {}

  [[nodiscard]] explicit operator bool() const noexcept { return statement_ != nullptr; }
  [[nodiscard]] sqlite3_stmt* get() const noexcept { return statement_.get(); }

  /// Runs to the next row; false when there is none. The time that it takes is deducted from
  /// `limit`; when that runs out, a refused statement is raised. On any error the statement is
  /// reset and the engine's error raised, quoting `text`.
  bool step(std::string_view text, TimeLimit& limit);
  /// The same without a limit.
  bool step(std::string_view text);
  bool step() { return step(sqlite3_sql(get())); }

  /// Makes the statement ready to run again, with the values that it has.
  void reset() noexcept;
  /// The same, and forgets the values.
  void clear() noexcept;

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/// `name` as an identifier of the engine's SQL.
[[nodiscard]] std::string quotedName(std::string_view name);

}  // namespace QuorHost::Sqlite
