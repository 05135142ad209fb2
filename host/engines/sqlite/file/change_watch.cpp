#include "host/engines/sqlite/file/change_watch.h"

#include <string>
#include <utility>

#include "host/engines/sqlite/run/binding.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

constexpr std::string_view kCreate =
    "CREATE TEMP TABLE QuorChanges (Key INTEGER PRIMARY KEY, Date TEXT NOT NULL) STRICT";

/// Notes the row as it is before (`OLD`) or after (`NEW`) the change.
std::string note(const WatchedTable& watched, std::string_view row) {
  std::string sql = "INSERT INTO QuorChanges SELECT ";
  sql.append(row).append(".\"").append(watched.key).append("\", ");
  sql.append(row).append(".\"").append(watched.date).append("\"");
  return sql + " WHERE true ON CONFLICT (Key) DO UPDATE SET Date = min(Date, excluded.Date); ";
}

std::string columnList(const std::vector<std::string>& columns) {
  std::string list;
  for (const std::string& column : columns) {
    list.append(list.empty() ? "\"" : ", \"").append(column).append("\"");
  }
  return list;
}

}  // namespace

ChangeWatch::ChangeWatch(std::shared_ptr<Database> database, const WatchedTable& watched)
    : database_(std::move(database)) {
  const std::string on = " ON main.\"" + watched.table + "\" BEGIN ";
  try {
    database_->run(kCreate);
    database_->run("CREATE TEMP TRIGGER QuorAdded AFTER INSERT" + on + note(watched, "NEW") +
                   "END");
    database_->run("CREATE TEMP TRIGGER QuorRemoved AFTER DELETE" + on + note(watched, "OLD") +
                   "END");
    database_->run("CREATE TEMP TRIGGER QuorChanged AFTER UPDATE OF " +
                   columnList(watched.columns) + on + note(watched, "OLD") + note(watched, "NEW") +
                   "END");
  } catch (...) {
    end();
    throw;
  }
}

ChangeWatch::~ChangeWatch() { end(); }

void ChangeWatch::end() noexcept {
  for (const char* const what :
       {"TRIGGER IF EXISTS temp.QuorAdded", "TRIGGER IF EXISTS temp.QuorRemoved",
        "TRIGGER IF EXISTS temp.QuorChanged", "TABLE IF EXISTS temp.QuorChanges"}) {
    try {
      database_->run(std::string("DROP ") + what);
    } catch (const QuorDataLib::Error&) {  // NOLINT(bugprone-empty-catch)
      // After a rollback there is nothing to drop.
    }
  }
}

std::vector<ChangeLog::Change> ChangeWatch::take() {
  std::vector<Change> changes;
  Statement rows(database_->handle(), "SELECT Key, Date FROM temp.QuorChanges ORDER BY Key");
  while (rows.step()) {
    changes.push_back(
        {static_cast<std::int32_t>(cellOf(rows, 0).integer),
         QuorDataLib::Date::parse(cellOf(rows, 1).text).value_or(QuorDataLib::Date())});
  }
  return changes;
}

}  // namespace QuorHost::Sqlite
