#include "host/engines/sqlite/stored_catalogue.h"

#include <string>
#include <utility>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/functions/collation.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/engines/sqlite/write/kept_totals_text.h"
#include "host/engines/sqlite/write/sql_writer.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::Error;
using Sql::StatementKind;

// The row at position 0 is no definition: its text is the version of the order of texts that the
// file's indexes were built with.
constexpr std::string_view kCreate =
    "CREATE TABLE QuorCatalogue (Position INTEGER PRIMARY KEY, Name TEXT NOT NULL,"
    " Kind TEXT NOT NULL, Sql TEXT NOT NULL) STRICT";
constexpr std::string_view kRead =
    "SELECT Sql FROM QuorCatalogue WHERE Position > 0 AND Kind <> 'trigger' ORDER BY Position";
constexpr std::string_view kAppend =
    "INSERT INTO QuorCatalogue (Position, Name, Kind, Sql)"
    " VALUES ((SELECT max(Position) + 1 FROM QuorCatalogue), ?1, ?2, ?3)";
constexpr std::string_view kReplace = "UPDATE QuorCatalogue SET Sql = ?2 WHERE Name = ?1";
constexpr std::string_view kReadOrder = "SELECT Sql FROM QuorCatalogue WHERE Position = 0";
constexpr std::string_view kStoreOrder =
    "INSERT OR REPLACE INTO QuorCatalogue (Position, Name, Kind, Sql)"
    " VALUES (0, 'texts', 'order', ?1)";

constexpr std::string_view kTable = "table";
constexpr std::string_view kTrigger = "trigger";

std::string_view kindName(const Sql::Translation& definition) {
  if (!definition.created.keptOf.empty()) return kTable;
  switch (definition.kind) {
    case StatementKind::CreateTable:
      return kTable;
    case StatementKind::CreateView:
      return "view";
    default:
      return "index";
  }
}

void storeOrder(Database& database) {
  Statement store(database.handle(), kStoreOrder);
  bindText(store, 1, collationVersion());
  store.step();
}

}  // namespace

void createStoredCatalogue(Database& database) {
  database.run(kCreate);
  storeOrder(database);
}

std::string_view createsStoredCatalogue() noexcept { return kCreate; }

void bindText(const Statement& statement, int index, std::string_view text) {
  bindValue(statement, index, text, Sql::Type::Text, Lifetime::Copied);
}

StoredCatalogue readStoredCatalogue(Database& database) {
  StoredCatalogue stored;
  try {
    const SqlWriter writer;
    Statement rows(database.handle(), kRead);
    while (rows.step()) {
      Sql::Translation definition =
          Sql::translate(cellOf(rows, 0).text, Sql::Dialect::Server, stored.catalogue, writer);
      Sql::enter(definition, stored.catalogue);
      stored.definitions.push_back(
          {kindName(definition), definition.created.name, std::move(definition.sql)});
      if (definition.created.keptOf.empty()) continue;
      const KeptTotals totals(definition.created, stored.catalogue);
      const auto names = keptTriggerNames(totals.view());
      auto triggers = totals.triggers();
      for (std::size_t i = 0; i < names.size(); ++i) {
        stored.definitions.push_back({kTrigger, names[i], std::move(triggers[i])});
      }
    }
  } catch (const Error& error) {
    Rows::raiseNaming(
        "The definitions in the company file '" + database.path() + "' cannot be read", error);
  }
  return stored;
}

std::vector<std::string> storedDefinitions(Database& database) {
  std::vector<std::string> definitions;
  Statement rows(database.handle(), kRead);
  while (rows.step()) definitions.emplace_back(cellOf(rows, 0).text);
  return definitions;
}

void storeDefinition(Database& database, std::string_view statement,
                     const Sql::Translation& translation) {
  const auto append = [&](std::string_view name, std::string_view kind, std::string_view sql) {
    Statement row(database.handle(), kAppend);
    bindText(row, 1, name);
    bindText(row, 2, kind);
    bindText(row, 3, sql);
    row.step();
  };
  const Sql::Relation& created = translation.created;
  append(created.name, kindName(translation), statement);
  if (created.keptOf.empty()) return;
  for (const std::string& trigger : keptTriggerNames(created.name)) append(trigger, kTrigger, "");
}

void replaceDefinition(Database& database, std::string_view name, std::string_view statement) {
  Statement replace(database.handle(), kReplace);
  bindText(replace, 1, name);
  bindText(replace, 2, statement);
  replace.step();
}

bool hasCurrentTextOrder(Database& database) {
  Statement order(database.handle(), kReadOrder);
  return order.step() && cellOf(order, 0).text == collationVersion();
}

void renewTextOrder(Database& database) {
  database.run("BEGIN IMMEDIATE");
  database.run("REINDEX");
  storeOrder(database);
  database.run("COMMIT");
}

}  // namespace QuorHost::Sqlite
