// The company's definitions as they stand in its file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/engines/sqlite/database.h"
#include "host/sql/catalogue.h"
#include "host/sql/front_end.h"

namespace QuorHost::Sqlite {

/// Makes the table that keeps the definitions: the `CREATE` statements of tables, views and indexes
/// in the server dialect, in their order. Kept totals are a table there, and their triggers stand
/// behind them without a statement. They are the truth about column types; the engine's own
/// schema knows only how the values are stored.
void createStoredCatalogue(Database& database);

/// The statement that makes the table.
[[nodiscard]] std::string_view createsStoredCatalogue() noexcept;

/// An object of the file as its definition makes it.
struct StoredDefinition {
  std::string_view kind;  // "table", "view", "index" or "trigger"
  std::string name;
  /// The engine's statement.
  std::string sql;
};

struct StoredCatalogue {
  Sql::Catalogue catalogue;
  std::vector<StoredDefinition> definitions;
};

/// Reads the definitions. Raises an error that names the file when they cannot be read.
[[nodiscard]] StoredCatalogue readStoredCatalogue(Database& database);

/// The statements that are kept, in their order.
[[nodiscard]] std::vector<std::string> storedDefinitions(Database& database);

/// Binds a text to the marker at `index` (from 1) of a statement of the host's own.
void bindText(const Statement& statement, int index, std::string_view text);

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
