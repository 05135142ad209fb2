#include "host/engines/postgres/schema/growth.h"

#include <algorithm>
#include <string>

#include "host/engines/postgres/schema/stored_catalogue.h"
#include "host/engines/postgres/server/server_error.h"
#include "host/engines/postgres/write/sql_writer.h"
#include "host/sql/front_end.h"
#include "host/sql/names.h"

namespace QuorHost::Postgres {
namespace {

/// Whether `after` has all columns of `before` as they are.
bool keepsAll(const Sql::Relation& before, const Sql::Relation& after) {
  return std::ranges::all_of(before.columns, [&](const Sql::Column& column) {
    const Sql::Column* const same = after.find(column.name);
    return same != nullptr && same->type == column.type && same->size == column.size &&
           same->nullable == column.nullable && same->primaryKey == column.primaryKey;
  });
}

}  // namespace

void growTable(Link& link, const Sql::Catalogue& catalogue, std::string_view table,
               std::string_view statement) {
  const Sql::Relation* const before = catalogue.find(table);
  if (before == nullptr) refuseStatement("There is no table " + std::string(table));
  const Sql::Translation definition = Sql::translate(
      statement, Sql::Dialect::Server, catalogue.without(table), GrowthWriter(*before));
  if (definition.kind != Sql::StatementKind::CreateTable ||
      !Sql::sameName(definition.created.name, table)) {
    refuseStatement("Only a CREATE TABLE of the same name makes a table anew");
  }
  if (!keepsAll(*before, definition.created)) {
    refuseStatement("The table " + before->name +
                    " on a server only gains columns: those that it has must stay as they are");
  }
  link.run(definition.sql, statement);
  replaceDefinition(link, before->name, statement);
}

}  // namespace QuorHost::Postgres
