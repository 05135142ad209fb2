#include "host/engines/sqlite/table_remake.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/engines/sqlite/statement.h"
#include "host/engines/sqlite/stored_catalogue.h"
#include "host/engines/sqlite/totals/kept_totals.h"
#include "host/engines/sqlite/write/sql_writer.h"
#include "host/sql/front_end.h"
#include "host/sql/names.h"

namespace QuorHost::Sqlite {
namespace {

std::string sharedColumns(const Sql::Relation& before, const Sql::Relation& after) {
  std::string names;
  for (const Sql::Column& column : after.columns) {
    if (before.find(column.name) == nullptr) continue;
    names.append(names.empty() ? "\"" : ", \"").append(column.name).append("\"");
  }
  return names;
}

/// The statements that made the table's indexes.
std::vector<std::string> indexesOf(Database& database, std::string_view table) {
  Statement query(database.handle(),
                  "SELECT sql FROM sqlite_schema WHERE type = 'index' AND sql IS NOT NULL"
                  " AND tbl_name = ?1 ORDER BY rowid");
  bindValue(query, 1, QuorDataLib::Value(table), Sql::Type::Text, Lifetime::Copied);
  std::vector<std::string> indexes;
  while (query.step()) indexes.emplace_back(cellOf(query, 0).text);
  return indexes;
}

std::string storedText(Database& database, std::string_view table) {
  Statement query(database.handle(),
                  "SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ?1");
  bindValue(query, 1, QuorDataLib::Value(table), Sql::Type::Text, Lifetime::Copied);
  return query.step() ? std::string(cellOf(query, 0).text) : std::string();
}

/// The one column that `after` has behind those of `before`, as it is defined there; empty when
/// that is not all in which they differ.
std::string addedColumn(std::string_view before, std::string_view after) {
  constexpr std::string_view kComma = ", ";
  if (after.size() <= before.size() + kComma.size()) return {};
  auto start = static_cast<std::size_t>(std::ranges::mismatch(before, after).in1 - before.begin());
  // A comma may part the columns from what stands behind them, too.
  if (before.substr(0, start).ends_with(kComma)) start -= kComma.size();
  const std::string column(after.substr(start, after.size() - before.size()));
  const std::string whole =
      std::string(before.substr(0, start)) + column + std::string(before.substr(start));
  return column.starts_with(kComma) && whole == after ? column.substr(kComma.size())
                                                      : std::string();
}

/// Adds the one column that the table gains, which leaves everything that refers to it alone.
/// Whether that was all.
bool grow(Database& database, const Sql::Relation& before, const Sql::Translation& definition,
          std::string_view statement) {
  if (definition.created.columns.size() != before.columns.size() + 1) return false;
  const std::string column = addedColumn(storedText(database, before.name), definition.sql);
  if (column.empty()) return false;
  database.run("ALTER TABLE main.\"" + before.name + "\" ADD COLUMN " + column);
  replaceDefinition(database, before.name, statement);
  return true;
}

void remake(Database& database, const Sql::Relation& before, const Sql::Translation& definition,
            std::string_view statement) {
  const std::string columns = sharedColumns(before, definition.created);
  const std::string name = "\"" + before.name + "\"";
  const std::vector<std::string> indexes = indexesOf(database, before.name);
  // The rows wait in a table beside the schema: what names the table there names the new one then.
  database.run("CREATE TEMP TABLE QuorRows AS SELECT " + columns + " FROM main." + name +
               " ORDER BY rowid");
  database.run("DROP TABLE main." + name);
  database.run(definition.sql);
  database.run("INSERT INTO main." + name + " (" + columns + ") SELECT " + columns +
               " FROM temp.QuorRows ORDER BY rowid");
  database.run("DROP TABLE temp.QuorRows");
  for (const std::string& index : indexes) database.run(index);
  for (const KeptTotals& totals : database.kept()) {
    if (totals.table() == before.name) goOnKeeping(database, totals);
  }
  replaceDefinition(database, before.name, statement);
}

}  // namespace

void remakeTable(Database& database, const Sql::Catalogue& catalogue, std::string_view table,
                 std::string_view statement) {
  const Sql::Relation* const before = catalogue.find(table);
  if (before == nullptr) refuseStatement("There is no table " + std::string(table));
  const Sql::Translation definition =
      Sql::translate(statement, Sql::Dialect::Server, catalogue.without(table), SqlWriter());
  if (definition.kind != Sql::StatementKind::CreateTable ||
      !Sql::sameName(definition.created.name, table)) {
    refuseStatement("Only a CREATE TABLE of the same name makes a table anew");
  }
  database.run("SAVEPOINT Remake");
  try {
    if (!grow(database, *before, definition, statement)) {
      remake(database, *before, definition, statement);
    }
  } catch (...) {
    database.rollBackTo("Remake");
    throw;
  }
  database.run("RELEASE Remake");
}

}  // namespace QuorHost::Sqlite
