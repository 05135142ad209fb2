// The company's definitions as they stand in its file.
#pragma once

#include <string_view>

#include "host/engines/sqlite/database.h"
#include "host/sql/catalogue.h"
#include "host/sql/front_end.h"

namespace QuorHost::Sqlite {

/// Makes the table that keeps the definitions: the `CREATE` statements of tables, views and indexes
/// in the server dialect, in their order. They are the truth about column types; the engine's own
/// schema knows only how the values are stored.
void createStoredCatalogue(Database& database);

/// Reads the definitions of tables and views. Raises an error that names the file when they cannot
/// be read.
[[nodiscard]] Sql::Catalogue readStoredCatalogue(Database& database);

/// Appends the definition of what `translation` creates.
void storeDefinition(Database& database, std::string_view statement,
                     const Sql::Translation& translation);

/// Puts another definition in the place of the one that made `name`.
void replaceDefinition(Database& database, std::string_view name, std::string_view statement);

/// True when the file's indexes of texts were built under the order that this program sorts by.
[[nodiscard]] bool hasCurrentTextOrder(Database& database);

/// Builds the indexes anew under this program's order of texts.
void renewTextOrder(Database& database);

}  // namespace QuorHost::Sqlite
