// The company's definitions as they stand in its schema.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/engines/postgres/server/link.h"
#include "host/sql/catalogue.h"
#include "host/sql/front_end.h"

namespace QuorHost::Postgres {

/// Makes what every company's schema has: the order of texts, the functions, and the table that
/// keeps the definitions, which are the `CREATE` statements of tables, views and indexes in the
/// server dialect, in their order. The schema must be there and empty.
void createFoundations(Link& link);

/// Waits for whoever makes the company or changes its definitions, and keeps others from it until
/// the open transaction ends.
void lockDefinitions(Link& link, const Address& address);

/// Puts the functions of this version in the place of an older one's, all or none. No transaction
/// may be open.
void renewFunctions(Link& link, const Address& address);

/// Sees that the schema holds a company that this program reads, ordered as it was filled. Raises
/// 75 with what to do otherwise.
void requireCompany(Link& link, const Address& address);

/// Whether the schema of the connection holds a company.
[[nodiscard]] bool holdsCompany(Link& link);

struct StoredCatalogue {
  Sql::Catalogue catalogue;
  /// The statements.
  std::vector<std::string> definitions;
};

/// Reads the definitions. Raises an error that names the company when they cannot be read.
[[nodiscard]] StoredCatalogue readStoredCatalogue(Link& link, const Address& address);

/// Appends the definition of what `translation` creates.
void storeDefinition(Link& link, std::string_view statement, const Sql::Translation& translation);

/// Puts `statement` in the place of the definition of the table `name`.
void replaceDefinition(Link& link, const std::string& name, std::string_view statement);

/// Version of the company schema; 0 where none was set.
[[nodiscard]] int storedVersion(Link& link);
void storeVersion(Link& link, int version);

/// Definitions whose objects are missing, and kept totals that are not what their rows add up to,
/// one line each.
[[nodiscard]] std::vector<std::string> schemaFindings(Link& link, const Sql::Catalogue& catalogue);

}  // namespace QuorHost::Postgres
