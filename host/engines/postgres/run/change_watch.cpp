#include "host/engines/postgres/run/change_watch.h"

#include <charconv>
#include <utility>

#include "platform/error.h"

namespace QuorHost::Postgres {
namespace {

/// Notes the row as it is before (`OLD`) or after (`NEW`) the change.
std::string note(const WatchedTable& watched, const std::string& log, const std::string& row) {
  const auto column = [&](const std::string& name) { return row + "." + Link::nameOf(name); };
  return "INSERT INTO pg_temp." + log + " SELECT " + column(watched.key) + ", " +
         (watched.date.empty() ? "NULL" : column(watched.date)) + " WHERE " +
         (watched.positive.empty() ? "TRUE" : column(watched.positive) + " > 0") +
         " ON CONFLICT (key) DO UPDATE SET date = least(" + log + ".date, excluded.date);";
}

}  // namespace

ChangeWatch::ChangeWatch(std::shared_ptr<Database> database, const WatchedTable& watched)
    : database_(std::move(database)),
      table_(Link::nameOf(watched.table)),
      log_(Link::nameOf("quor_changes_" + watched.table)),
      function_("pg_temp." + Link::nameOf("quor_note_" + watched.table)) {
  if (!database_->inTransaction()) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "Changes on a server are noted inside a transaction: begin one first");
  }
  std::string columns;
  for (const std::string& column : watched.columns) {
    columns += (columns.empty() ? "" : ", ") + Link::nameOf(column);
  }
  const std::string before = note(watched, log_, "OLD");
  const std::string after = note(watched, log_, "NEW");
  database_->changing().run(
      "CREATE TEMP TABLE " + log_ +
      " (key integer PRIMARY KEY, date timestamp) ON COMMIT DROP; CREATE FUNCTION " + function_ +
      "() RETURNS trigger LANGUAGE plpgsql AS $quor$ BEGIN IF TG_OP <> 'INSERT' THEN " + before +
      " END IF; IF TG_OP <> 'DELETE' THEN " + after +
      " END IF; RETURN NULL; END $quor$; CREATE TRIGGER quor_note AFTER INSERT OR DELETE OR UPDATE "
      "OF " +
      columns + " ON " + table_ + " FOR EACH ROW EXECUTE FUNCTION " + function_ + "()");
}

ChangeWatch::~ChangeWatch() {
  try {
    // After a failure the transaction takes them back.
    if (!database_->inTransaction()) return;
    database_->changing().run("DROP TRIGGER quor_note ON " + table_ + "; DROP FUNCTION " +
                              function_ + "(); DROP TABLE pg_temp." + log_);
  } catch (...) {  // NOLINT(bugprone-empty-catch): see above
  }
}

std::vector<ChangeLog::Change> ChangeWatch::take() {
  std::vector<Change> changes;
  const Result rows = database_->changing().run(
      "SELECT key, to_char(date, 'YYYY-MM-DD HH24:MI:SS') FROM pg_temp." + log_ + " ORDER BY key");
  for (int row = 0; row < PQntuples(rows.get()); ++row) {
    Change change;
    const std::string_view key = textAt(rows, row, 0);
    std::from_chars(key.data(), key.data() + key.size(), change.key);
    change.from = QuorDataLib::Date::parse(textAt(rows, row, 1)).value_or(QuorDataLib::Date());
    changes.push_back(change);
  }
  return changes;
}

}  // namespace QuorHost::Postgres
