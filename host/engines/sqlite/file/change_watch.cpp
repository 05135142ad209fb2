#include "host/engines/sqlite/file/change_watch.h"

#include <string>
#include <utility>

#include "host/engines/sqlite/run/binding.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

/// Notes the row as it is before (`OLD`) or after (`NEW`) the change.
std::string note(const WatchedTable& watched, const std::string& log, std::string_view row) {
  const auto column = [&](const std::string& name) {
    return std::string(row).append(".").append(quotedName(name));
  };
  return "INSERT INTO " + log + " SELECT " + column(watched.key) + ", " +
         (watched.date.empty() ? "''" : column(watched.date)) + " WHERE " +
         (watched.positive.empty() ? "true" : column(watched.positive) + " > 0") +
         " ON CONFLICT (Key) DO UPDATE SET Date = min(Date, excluded.Date); ";
}

std::string columnList(const std::vector<std::string>& columns) {
  std::string list;
  for (const std::string& column : columns) {
    list.append(list.empty() ? "" : ", ").append(quotedName(column));
  }
  return list;
}

}  // namespace

ChangeWatch::ChangeWatch(std::shared_ptr<Database> database, const WatchedTable& watched)
    : database_(std::move(database)), table_(watched.table) {
  const std::string log = name("Changes");
  const std::string on = " ON main." + quotedName(table_) + " BEGIN ";
  try {
    database_->run("CREATE TEMP TABLE " + log +
                   " (Key INTEGER PRIMARY KEY, Date TEXT NOT NULL) STRICT");
    database_->run("CREATE TEMP TRIGGER " + name("Added") + " AFTER INSERT" + on +
                   note(watched, log, "NEW") + "END");
    database_->run("CREATE TEMP TRIGGER " + name("Removed") + " AFTER DELETE" + on +
                   note(watched, log, "OLD") + "END");
    database_->run("CREATE TEMP TRIGGER " + name("Changed") + " AFTER UPDATE OF " +
                   columnList(watched.columns) + on + note(watched, log, "OLD") +
                   note(watched, log, "NEW") + "END");
  } catch (...) {
    end();
    throw;
  }
}

ChangeWatch::~ChangeWatch() { end(); }

std::string ChangeWatch::name(std::string_view what) const {
  return quotedName("Quor" + table_ + std::string(what));
}

void ChangeWatch::end() noexcept {
  const auto drop = [&](const std::string& kind, std::string_view what) {
    try {
      database_->run("DROP " + kind + " IF EXISTS temp." + name(what));
    } catch (...) {  // NOLINT(bugprone-empty-catch)
      // After a rollback there is nothing to drop.
    }
  };
  for (const char* const what : {"Added", "Removed", "Changed"}) drop("TRIGGER", what);
  drop("TABLE", "Changes");
}

std::vector<ChangeLog::Change> ChangeWatch::take() {
  std::vector<Change> changes;
  Statement rows(database_->handle(),
                 "SELECT Key, Date FROM temp." + name("Changes") + " ORDER BY Key");
  while (rows.step()) {
    changes.push_back(
        {static_cast<std::int32_t>(cellOf(rows, 0).integer),
         QuorDataLib::Date::parse(cellOf(rows, 1).text).value_or(QuorDataLib::Date())});
  }
  return changes;
}

}  // namespace QuorHost::Sqlite
