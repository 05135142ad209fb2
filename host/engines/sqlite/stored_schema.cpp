#include "host/engines/sqlite/stored_schema.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "host/engines/sqlite/file/raw_handle.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/sql/names.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Sqlite {
namespace {

/// Objects that are neither the engine's own nor in the list of definitions, or triggers on that
/// list; a table without pages is a virtual one.
constexpr std::string_view kUnknown =
    "SELECT iif(type = 'table' AND rootpage = 0, 'virtual table', type), name FROM sqlite_schema"
    " AS Object WHERE (type = 'table' AND rootpage = 0)"
    " OR (type = 'trigger' AND tbl_name = 'QuorCatalogue' COLLATE NOCASE)"
    " OR (name NOT GLOB 'sqlite_autoindex_*' AND name NOT GLOB 'sqlite_stat[1-4]'"
    " AND name <> 'QuorCatalogue'"
    " AND NOT EXISTS (SELECT 1 FROM QuorCatalogue AS Known WHERE Known.Position > 0"
    " AND Known.Kind = Object.type AND Known.Name = Object.name)) LIMIT 1";

[[noreturn]] void refuseObject(const Database& database, std::string_view kind,
                               std::string_view name) {
  refuseFile(database.path(), "holds the " + std::string(kind) + " " +
                                  QuorDataLib::shownText(name) +
                                  ", which this program has not made so: the file was damaged or "
                                  "changed by another program; restore it from a copy");
}

[[noreturn]] void refuseMissing(const Database& database, std::string_view trigger) {
  refuseFile(database.path(), "lacks the trigger " + QuorDataLib::shownText(trigger) +
                                  ", without which totals would not be kept: the file was changed "
                                  "by another program; restore it from a copy");
}

std::string textAt(const Statement& row, int column) {
  return std::string(cellOf(row, column).text);
}

/// Calls `visit` for every piece of `sql`: a quoted name or text as a whole, anything else
/// character by character.
template <class Visit>
void forEachPiece(std::string_view sql, const Visit& visit) {
  for (std::size_t i = 0; i < sql.size();) {
    std::size_t end = i + 1;
    if (sql[i] == '"' || sql[i] == '\'')
      end = std::min(sql.find(sql[i], i + 1), sql.size() - 1) + 1;
    visit(sql.substr(i, end - i));
    i = end;
  }
}

/// A table's definition without its checks.
std::string withoutChecks(std::string_view sql) {
  constexpr std::string_view kCheck = " CHECK (";
  std::string rest;
  int depth = 0;  // of parentheses since the check began
  forEachPiece(sql, [&](std::string_view piece) {
    if (depth == 0) {
      rest += piece;
      if (!rest.ends_with(kCheck)) return;
      rest.resize(rest.size() - kCheck.size());
      depth = 1;
    } else if (piece == "(") {
      ++depth;
    } else if (piece == ")") {
      --depth;
    }
  });
  return rest;
}

/// Whether a view is one select, as this program writes views, and names no other text of its own
/// (WITH), which could go on for ever.
bool isPlainView(std::string_view sql) {
  std::string words;
  forEachPiece(sql, [&](std::string_view piece) {
    const char lower = Sql::lowerCase(piece.front());
    words += piece.size() == 1 && lower >= 'a' && lower <= 'z' ? lower : ' ';
  });
  return (" " + words + " ").find(" with ") == std::string::npos;
}

/// Puts the forms of this build in the place of older ones. The engine's way of doing that is to
/// change its list of objects; what the objects hold stays.
void renew(Database& database, const std::vector<const StoredDefinition*>& older) {
  database.run("BEGIN IMMEDIATE");
  const auto setDefensive = [&](int on) {
    sqlite3_db_config(database.handle(), SQLITE_DBCONFIG_DEFENSIVE, on, nullptr);
  };
  try {
    const std::int64_t version = database.number("PRAGMA schema_version");
    setDefensive(0);
    database.run("PRAGMA writable_schema=ON");
    for (const StoredDefinition* const definition : older) {
      Statement update(database.handle(),
                       "UPDATE sqlite_schema SET sql = ?1 WHERE type = ?2 AND name = ?3");
      bindText(update, 1, definition->sql);
      bindText(update, 2, definition->kind);
      bindText(update, 3, definition->name);
      update.step();
    }
    database.run("PRAGMA schema_version=" + std::to_string(version + 1));
    database.run("COMMIT");
  } catch (...) {
    setDefensive(1);
    database.rollBack();
    throw;
  }
  database.run("PRAGMA writable_schema=RESET");
  setDefensive(1);
}

}  // namespace

void requireKnownObjects(Database& database) {
  {
    // First of all the list of definitions itself.
    Statement list(database.handle(),
                   "SELECT type, sql FROM sqlite_schema WHERE name = 'QuorCatalogue' COLLATE NOCASE"
                   " AND rootpage > 0");
    if (!list.step() || textAt(list, 0) != "table" || textAt(list, 1) != createsStoredCatalogue()) {
      refuseObject(database, "list of definitions", "QuorCatalogue");
    }
  }
  Statement unknown(database.handle(), kUnknown);
  if (unknown.step()) refuseObject(database, textAt(unknown, 0), textAt(unknown, 1));
}

void requireKnownForms(Database& database, const std::vector<StoredDefinition>& definitions) {
  std::vector<const StoredDefinition*> older;
  {
    // Those that nobody's definition makes stand in the list of definitions by their names alone.
    Statement triggers(database.handle(), "SELECT name FROM sqlite_schema WHERE type = 'trigger'");
    while (triggers.step()) {
      const std::string name = textAt(triggers, 0);
      const bool known = std::ranges::any_of(definitions, [&](const StoredDefinition& definition) {
        return definition.kind == "trigger" && definition.name == name;
      });
      if (!known) refuseObject(database, "trigger", name);
    }
    Statement form(database.handle(),
                   "SELECT sql FROM sqlite_schema WHERE type = ?1 AND name = ?2");
    for (const StoredDefinition& definition : definitions) {
      bindText(form, 1, definition.kind);
      bindText(form, 2, definition.name);
      const bool there = form.step();
      const std::string sql = there ? textAt(form, 0) : definition.sql;
      form.reset();
      // Without its trigger, nothing would keep totals true.
      if (!there && definition.kind == "trigger") refuseMissing(database, definition.name);
      if (sql == definition.sql) continue;
      const bool known = definition.kind == "view" ? isPlainView(sql)
                         : definition.kind == "table"
                             ? withoutChecks(sql) == withoutChecks(definition.sql)
                             : false;
      if (!known) refuseObject(database, definition.kind, definition.name);
      older.push_back(&definition);
    }
  }
  if (!older.empty() && database.writable()) renew(database, older);
}

}  // namespace QuorHost::Sqlite
