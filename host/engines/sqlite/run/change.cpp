#include "host/engines/sqlite/run/change.h"

#include <algorithm>
#include <string>
#include <vector>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/engines/sqlite/totals/kept_totals.h"
#include "platform/error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Sqlite {
namespace {

/// Seconds that finding the words for an error may take.
constexpr std::int32_t kExplaining = 2;

std::string shown(const Rows::Cell& cell) {
  switch (cell.kind) {
    case Rows::Cell::Kind::Integer:
      return std::to_string(cell.integer);
    case Rows::Cell::Kind::Text:
      return "'" + QuorDataLib::shownText(cell.text) + "'";
    default:
      return "this value";
  }
}

/// A change that was refused, done once more to see what it would have stored. Nothing of that is
/// kept when the object ends.
class Again {
 public:
  Again(Database& database, Statement& change, std::string_view text)
      : database_(database), handle_(database.handle()), change_(change), text_(text) {
    database_.run("SAVEPOINT Again");
    database_.session()->totals.beginInVain();
  }
  ~Again() {
    change_.reset();
    if (database_.usable()) database_.session()->totals.end(true);
    database_.rollBackTo("Again");
    // Or the next changes of the transaction would be looked at when it ends.
    sqlite3_exec(handle_, "PRAGMA defer_foreign_keys=OFF", nullptr, nullptr, nullptr);
  }
  Again(const Again&) = delete;
  Again& operator=(const Again&) = delete;

  /// The reference that the changed rows break, in words.
  [[nodiscard]] std::string brokenReference() {
    database_.run("PRAGMA defer_foreign_keys=ON");
    run();
    Statement broken(database_.handle(),
                     "SELECT Broken.\"table\", Broken.rowid, Broken.parent, Reference.\"from\","
                     " Reference.\"to\" FROM pragma_foreign_key_check AS Broken"
                     " JOIN pragma_foreign_key_list(Broken.\"table\") AS Reference"
                     " ON Reference.id = Broken.fkid ORDER BY Reference.seq LIMIT 1");
    if (!broken.step(text_, limit_)) return {};
    const auto name = [&](int column) { return std::string(cellOf(broken, column).text); };
    Statement value(database_.handle(),
                    "SELECT " + quotedName(name(3)) + " FROM " + quotedName(name(0)) +
                        " WHERE rowid = " + std::to_string(cellOf(broken, 1).integer));
    if (!value.step(text_, limit_)) return {};
    return "Column " + name(3) + " of table " + name(0) + " would hold " + shown(cellOf(value, 0)) +
           ", but table " + name(2) + " has no row with that " + name(4) + " (a foreign key)";
  }

  /// The values of the row that is refused in some columns of `table`.
  [[nodiscard]] std::string refusedValues(const std::string& table,
                                          const std::vector<std::string>& columns) {
    std::string values;
    std::string list;
    for (const std::string& column : columns) {
      list += (list.empty() ? "NEW." : ", NEW.") + quotedName(column);
    }
    note(&values);
    try {
      for (const char* const change : {"INSERT", "UPDATE"}) {
        database_.run(std::string("CREATE TEMP TRIGGER QuorAgain") + change + " BEFORE " + change +
                      " ON main." + quotedName(table) + " BEGIN SELECT quor_note(" + list +
                      "); END");
      }
      run();
    } catch (const QuorDataLib::Error&) {  // NOLINT(bugprone-empty-catch): that was to be expected
    }
    change_.reset();
    note(nullptr);
    return values;
  }

 private:
  void run() {
    while (change_.step(text_, limit_)) {
    }
    change_.reset();
  }

  /// Makes `quor_note` write its arguments to `values`, or takes the function away.
  void note(std::string* values) {
    const auto write = [](sqlite3_context* context, int count, sqlite3_value** arguments) {
      auto& text = *static_cast<std::string*>(sqlite3_user_data(context));
      text.clear();
      for (int i = 0; i < count; ++i) {
        text += (text.empty() ? "" : ", ") + shown(cellOf(arguments[i]));
      }
    };
    sqlite3_create_function_v2(database_.handle(), "quor_note", -1, SQLITE_UTF8 | SQLITE_INNOCUOUS,
                               values, values != nullptr ? +write : nullptr, nullptr, nullptr,
                               nullptr);
  }

  Database& database_;
  sqlite3* handle_;
  Statement& change_;
  std::string_view text_;
  TimeLimit limit_ = TimeLimit(kExplaining);
};

/// "Table.A, Table.B" of the engine's message about a key, taken apart.
std::string keyMessage(Database& database, Statement& change, std::string_view text,
                       std::string_view message) {
  const std::size_t colon = message.find(": ");
  if (colon == std::string_view::npos) return {};
  std::string_view names = message.substr(colon + 2);
  std::string table;
  std::string list;
  std::vector<std::string> columns;
  while (!names.empty()) {
    const std::string_view name = names.substr(0, names.find(", "));
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos) return {};
    table = name.substr(0, dot);
    columns.emplace_back(name.substr(dot + 1));
    list += (list.empty() ? "" : ", ") + columns.back();
    names.remove_prefix(std::min(name.size() + 2, names.size()));
  }
  const std::string values = Again(database, change, text).refusedValues(table, columns);
  if (values.empty()) return {};
  return "Another row already has " + values + " in " + list + " of table " + table +
         ", which must be unique";
}

/// A refused change in words; empty where the engine's own message says enough.
std::string explained(Database& database, Statement& change, std::string_view text, int code,
                      const std::string& message) {
  try {
    switch (code) {
      case SQLITE_CONSTRAINT_FOREIGNKEY:
        return Again(database, change, text).brokenReference();
      case SQLITE_CONSTRAINT_UNIQUE:
      case SQLITE_CONSTRAINT_PRIMARYKEY:
      case SQLITE_CONSTRAINT_ROWID:
        return keyMessage(database, change, text, message);
      default:
        return {};
    }
  } catch (const QuorDataLib::Error&) {
    return {};
  }
}

}  // namespace

std::int32_t runChange(Database& database, Statement& change, std::string_view text,
                       TimeLimit limit, const std::function<void()>& onRow) {
  RowChange kept(database, text);
  try {
    while (change.step(text, limit)) {
      if (onRow) onRow();
    }
  } catch (const QuorDataLib::Error&) {
    sqlite3* const handle = database.handle();
    const int code = sqlite3_extended_errcode(handle);
    const std::string what = explained(database, change, text, code, sqlite3_errmsg(handle));
    if (what.empty()) throw;
    refuseStatement(what + inStatement(text));
  }
  const std::int32_t changed = sqlite3_changes(database.handle());
  kept.finish();
  return changed;
}

}  // namespace QuorHost::Sqlite
