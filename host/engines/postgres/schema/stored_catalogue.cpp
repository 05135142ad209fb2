#include "host/engines/postgres/schema/stored_catalogue.h"

#include <algorithm>

#include "host/engines/postgres/schema/functions.h"
#include "host/engines/postgres/server/server_error.h"
#include "host/engines/postgres/write/kept_totals_text.h"
#include "host/engines/postgres/write/sql_writer.h"
#include "host/engines/rows/cell.h"
#include "host/sql/names.h"
#include "platform/error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Postgres {
namespace {

using QuorDataLib::Error;
using Sql::StatementKind;

// Below position 1 stand versions: of the functions (-1) and of the company's schema (0).
constexpr const char* kCreate =
    "CREATE TABLE quor_catalogue (position integer PRIMARY KEY, name text NOT NULL,"
    " kind text NOT NULL, sql text NOT NULL)";
constexpr const char* kStoreVersion =
    "INSERT INTO quor_catalogue (position, name, kind, sql) VALUES ($1, $2, 'version', $3)"
    " ON CONFLICT (position) DO UPDATE SET sql = excluded.sql";
constexpr const char* kAppend =
    "INSERT INTO quor_catalogue (position, name, kind, sql)"
    " SELECT max(position) + 1, $1, $2, $3 FROM quor_catalogue";
constexpr const char* kReplace =
    "UPDATE quor_catalogue SET sql = $2 WHERE kind = 'table' AND name = $1";
constexpr int kFunctionsPosition = -1;
constexpr int kSchemaPosition = 0;

void storeVersionAt(Link& link, int position, const char* name, int version) {
  link.run(kStoreVersion,
           {{.text = std::to_string(position)}, {.text = name}, {.text = std::to_string(version)}});
}

int versionAt(Link& link, int position) {
  return static_cast<int>(
      link.number("SELECT sql FROM quor_catalogue WHERE position = " + std::to_string(position)));
}

void storeFunctions(Link& link) {
  for (const std::string_view text : functionTexts()) link.run(std::string(text));
  storeVersionAt(link, kFunctionsPosition, "functions", kFunctionsVersion);
}

std::string_view kindName(StatementKind kind) {
  switch (kind) {
    case StatementKind::CreateTable:
      return "table";
    case StatementKind::CreateView:
      return "view";
    default:
      return "index";
  }
}

/// The rows of a query, the values of each in one text.
std::vector<std::string> texts(Link& link, const std::string& sql) {
  const Result rows = link.run(sql);
  std::vector<std::string> result;
  for (int row = 0; row < PQntuples(rows.get()); ++row) {
    std::string text;
    for (int column = 0; column < PQnfields(rows.get()); ++column) {
      if (column > 0) text += ", ";
      text += PQgetisnull(rows.get(), row, column) != 0 ? "null" : textAt(rows, row, column);
    }
    result.push_back(std::move(text));
  }
  return result;
}

/// Raises 75 where texts are ordered otherwise now than when the indexes were built.
void requireTextOrder(Link& link, const Address& address) {
  const std::vector<std::string> other = texts(
      link,
      "SELECT collversion, pg_collation_actual_version(oid) FROM pg_collation WHERE collname = "
      "'quor' AND collnamespace = to_regnamespace(quote_ident(current_schema())) AND collversion "
      "<> "
      "pg_collation_actual_version(oid)");
  if (other.empty()) return;
  refuseServer(address.shown,
               "has its texts in the order of another version of the server's library (" +
                   other.front() + "): have its owner run REINDEX SCHEMA " +
                   Link::quoted(address.schema) + " and ALTER COLLATION " +
                   Link::quoted(address.schema) + ".quor REFRESH VERSION");
}

}  // namespace

void createFoundations(Link& link) {
  link.run(
      "CREATE COLLATION quor (provider = icu, locale = 'und-u-ks-level2', deterministic = false)");
  link.run(kCreate);
  storeFunctions(link);
  storeVersionAt(link, kSchemaPosition, "schema", 0);
}

void lockDefinitions(Link& link, const Address& address) {
  // The first number keeps apart what other programs lock.
  link.run("SELECT pg_advisory_xact_lock(1903521650, hashtext(" + Link::literal(address.schema) +
           "))");
}

void renewFunctions(Link& link, const Address& address) {
  const auto areOlder = [&] {
    return holdsCompany(link) && versionAt(link, kFunctionsPosition) < kFunctionsVersion;
  };
  if (!areOlder()) return;
  try {
    link.run("BEGIN");
    lockDefinitions(link, address);
    // Another program may have been faster.
    if (areOlder()) storeFunctions(link);
    link.run("COMMIT");
  } catch (const Error& error) {
    link.rollBack();
    Rows::raiseNaming(
        "The functions of the company '" + address.shown +
            "' are of an older version of this program and must be brought up to date",
        error);
  }
}

bool holdsCompany(Link& link) {
  return link.number(
             "SELECT count(*) FROM pg_class WHERE relname = 'quor_catalogue' AND "
             "relnamespace = to_regnamespace(quote_ident(current_schema()))") > 0;
}

void requireCompany(Link& link, const Address& address) {
  if (!holdsCompany(link)) {
    if (link.number(
            "SELECT count(*) FROM pg_namespace WHERE nspname = " + Link::literal(address.schema) +
            " AND NOT has_schema_privilege(oid, 'USAGE')") > 0) {
      refuseServer(address.shown,
                   "is not for this role to read: have the owner of the schema make it a reader "
                   "(quoracc company create --reader, or GRANT USAGE and SELECT)");
    }
    refuseServer(address.shown, "holds no company in the schema " +
                                    QuorDataLib::shownText(address.schema) +
                                    ": name the schema (?schema=NAME), or make a company there "
                                    "(quoracc company create, quoracc company copy)");
  }
  const int version = storedVersion(link);
  const int functions = versionAt(link, kFunctionsPosition);
  if (version > kNewestSchemaVersion || functions > kFunctionsVersion) {
    refuseServer(address.shown, "was made by a newer version of this program (schema " +
                                    std::to_string(version) + ", here " +
                                    std::to_string(kNewestSchemaVersion) +
                                    "): use that version, or a newer one");
  }
  if (functions < kFunctionsVersion) {
    refuseServer(address.shown,
                 "has the functions of an older version of this program: have somebody who may "
                 "change it open it for writing (quoracc sql --write \"SELECT COUNT(*) FROM "
                 "CieInfo\" --company ...)");
  }
  requireTextOrder(link, address);
}

StoredCatalogue readStoredCatalogue(Link& link, const Address& address) {
  StoredCatalogue stored;
  try {
    const SqlWriter writer;
    stored.definitions =
        texts(link, "SELECT sql FROM quor_catalogue WHERE position > 0 ORDER BY position");
    for (const std::string& definition : stored.definitions) {
      Sql::enter(Sql::translate(definition, Sql::Dialect::Server, stored.catalogue, writer),
                 stored.catalogue);
    }
  } catch (const Error& error) {
    Rows::raiseNaming("The definitions of the company '" + address.shown + "' cannot be read",
                      error);
  }
  return stored;
}

void storeDefinition(Link& link, std::string_view statement, const Sql::Translation& translation) {
  link.run(kAppend, {{.text = translation.created.name},
                     {.text = std::string(kindName(translation.kind))},
                     {.text = std::string(statement)}});
}

void replaceDefinition(Link& link, const std::string& name, std::string_view statement) {
  link.run(kReplace, {{.text = name}, {.text = std::string(statement)}});
}

int storedVersion(Link& link) { return versionAt(link, kSchemaPosition); }

void storeVersion(Link& link, int version) {
  storeVersionAt(link, kSchemaPosition, "schema", version);
}

std::vector<std::string> schemaFindings(Link& link, const Sql::Catalogue& catalogue) {
  std::vector<std::string> findings;
  for (const std::string& missing :
       texts(link,
             "SELECT kind || ' ' || name FROM quor_catalogue WHERE position > 0 AND NOT "
             "EXISTS (SELECT 1 FROM pg_class WHERE relname = lower(name) AND relnamespace = "
             "to_regnamespace(quote_ident(current_schema()))) ORDER BY position")) {
    findings.push_back("the " + missing + " is missing: restore the schema from a copy");
  }
  for (const std::string& invalid :
       texts(link,
             "SELECT c.relname FROM pg_index i JOIN pg_class c ON c.oid = i.indexrelid WHERE "
             "NOT i.indisvalid AND c.relnamespace = "
             "to_regnamespace(quote_ident(current_schema()))")) {
    findings.push_back("the index " + invalid + " is not whole: have it built anew (REINDEX)");
  }
  if (!findings.empty()) return findings;
  for (const Sql::Relation& view : catalogue.relations()) {
    if (view.keptOf.empty()) continue;
    const Sql::Relation& table = *catalogue.find(view.keptOf);
    for (const std::string& group : texts(link, keptTotalsDifferences(view, table))) {
      findings.push_back("the totals kept in " + view.name + " for " + group +
                         " are not what the rows of " + table.name + " add up to");
    }
  }
  return findings;
}

}  // namespace QuorHost::Postgres
