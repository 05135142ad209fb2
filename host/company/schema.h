// The company schema, as the files in `schema/` have it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/store.h"

namespace QuorHost {

/// The texts of the schema files, in their order of definition.
const std::vector<std::string_view>& schemaTexts();

/// Calls `visit` with the name of every table, view and index of the schema, in their order, and
/// the statement that makes it.
void forEachDefinition(
    const std::function<void(std::string_view name, const std::string& statement)>& visit);

/// Whether the `CREATE` statement makes something out of the rows of a table: an index, or totals
/// that are kept.
[[nodiscard]] bool holdsRows(std::string_view statement);

/// Defines the tables and views in an empty database, without those whose rows are kept.
void defineRelations(Store& store);

/// Defines the indexes and the views whose rows are kept. Rows are loaded faster without them, so
/// they come last. `done` is told before each one how many of how many there are already, and at
/// the end.
void defineIndexes(Store& store, const std::function<void(int done, int total)>& done);

}  // namespace QuorHost
