#include "host/engines/sqlite/statement.h"

#include <algorithm>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/write/sqlite_form.h"
#include "host/engines/write/sql_text.h"

namespace QuorHost::Sqlite {

namespace {

using Clock = std::chrono::steady_clock;

/// Engine operations between two looks at the clock.
constexpr int kOperationsBetweenLooks = 2000;

int isPast(void* deadline) noexcept {
  return Clock::now() >= *static_cast<const Clock::time_point*>(deadline) ? 1 : 0;
}

int stepWithin(sqlite3_stmt* statement, TimeLimit& limit) {
  sqlite3* const database = sqlite3_db_handle(statement);
  Clock::time_point deadline = Clock::now() + limit.left;
  sqlite3_progress_handler(database, kOperationsBetweenLooks, &isPast, &deadline);
  const int code = sqlite3_step(statement);
  sqlite3_progress_handler(database, 0, nullptr, nullptr);
  limit.left = std::max(deadline - Clock::now(), Clock::duration::zero());
  return code;
}

}  // namespace

Statement::Statement(sqlite3* database, std::string_view sql, bool kept, std::string_view text) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()),
                                      kept ? SQLITE_PREPARE_PERSISTENT : 0, &statement, nullptr);
  statement_.reset(statement);
  if (code != SQLITE_OK) raiseEngineError(database, code, text);
}

bool Statement::step(std::string_view text, TimeLimit& limit) {
  const int code = limit.seconds > 0 ? stepWithin(get(), limit) : sqlite3_step(get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  reset();
  if (code == SQLITE_INTERRUPT) {
    refuseStatement("The statement was stopped: it took longer than its command timeout of " +
                    std::to_string(limit.seconds) + " s");
  }
  raiseEngineError(sqlite3_db_handle(get()), code, text);
}

bool Statement::step(std::string_view text) {
  TimeLimit none;
  return step(text, none);
}

void Statement::reset() noexcept { sqlite3_reset(get()); }

void Statement::clear() noexcept {
  sqlite3_reset(get());
  sqlite3_clear_bindings(get());
  // The next user counts from nothing.
  sqlite3_stmt_status(get(), SQLITE_STMTSTATUS_FULLSCAN_STEP, 1);
}

std::string quotedName(std::string_view name) {
  Write::SqlText text(sqliteText());
  return text.name(name).take();
}

}  // namespace QuorHost::Sqlite
