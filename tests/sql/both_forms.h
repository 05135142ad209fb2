// A statement in both of its forms: as it is written, and changed for speed.
#pragma once

#include <string>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {

struct BothForms {
  /// Rows of the statement as it is written.
  std::size_t rows = 0;
  /// Why the engine does not run it as it is written; empty when it does.
  std::string error;
  /// Why it does not run the other form.
  std::string errorFaster;
  /// The first of the rows in which the forms differ; empty when there is none.
  std::string difference;
  /// The engine's SQL of the faster form.
  std::string faster;
};

/// Runs a query in both forms. Rows are compared as they come in the columns that its last ORDER BY
/// names, and without regard to their order otherwise.
[[nodiscard]] BothForms runBoth(Database& database, const std::string& statement, Dialect dialect,
                                const Values& values);

/// A value for each marker that some rows may have.
[[nodiscard]] Values markerValues(const Translation& translation);

}  // namespace QuorHost::Sql::Testing
