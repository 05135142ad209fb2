// Which expressions can end a statement with an error.
#pragma once

#include <cstdint>

#include "host/sql/tree.h"

namespace QuorHost::Write {

/// Whether an expression can end its statement: by a division by zero, a text that is no number or
/// no date, a result that does not fit. `Once` is the same for all rows, because no column is read
/// where it happens; `ByRow` depends on the row.
enum class Raising : std::uint8_t { Never, Once, ByRow };

[[nodiscard]] Raising raisingOf(const Sql::Tree::Expression& expression);

/// Whether a column of `query`, or of a derived table that its selects read, can.
[[nodiscard]] bool columnRaises(const Sql::Tree::Query& query);

/// Whether the expression, with its sub-selects, reads a column of a select around it.
[[nodiscard]] bool readsColumn(const Sql::Tree::Expression& expression);

/// Calls `visit` for every column that `expression` and its sub-selects read.
template <class Visit>
void forEachColumn(const Sql::Tree::Expression& expression, const Visit& visit) {
  if (expression.kind == Sql::Tree::Expression::Kind::Column) visit(expression);
  for (const Sql::Tree::Expression* const arg : expression.args) forEachColumn(*arg, visit);
  if (expression.query != nullptr) {
    Sql::Tree::forEachRoot(*expression.query,
                           [&](const Sql::Tree::Expression& root) { forEachColumn(root, visit); });
  }
}

}  // namespace QuorHost::Write
