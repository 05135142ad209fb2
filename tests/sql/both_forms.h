// A statement in both of its forms: as it is written, and changed for speed.
#pragma once

#include <string>
#include <vector>

#include "sql/database.h"

namespace QuorHost::Sql::Testing {

struct BothForms {
  /// The rows of the statement as it is written and of the faster form, each in its order.
  std::vector<std::string> plain;
  std::vector<std::string> faster;
  /// Why the engine does not run the form; empty when it does.
  std::string plainError;
  std::string fasterError;
  /// The engine's SQL of the faster form.
  std::string fasterSql;
};

/// Runs a query in both forms.
[[nodiscard]] BothForms runBoth(Database& database, const std::string& statement, Dialect dialect,
                                const Values& values);

/// Where the rows of the forms differ first, or empty: rows are compared as they come in the
/// columns that the statement's last ORDER BY names, and without regard to their order otherwise.
[[nodiscard]] std::string difference(const BothForms& forms, const std::string& statement,
                                     const Translation& translation);

/// A value for each marker that some rows may have.
[[nodiscard]] Values markerValues(const Translation& translation);

}  // namespace QuorHost::Sql::Testing
