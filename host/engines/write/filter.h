// What a select throws rows out by, and what of it has to wait for joined rows.
#pragma once

#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

#include "host/sql/tree.h"

namespace QuorHost::Write {

using Conditions = std::vector<const Sql::Tree::Expression*>;

/// The conditions that `condition`, which may be null, joins by AND at any depth.
[[nodiscard]] Conditions termsOf(const Sql::Tree::Expression* condition);

/// What is true of every row that `terms` are tried on and cannot raise: the conditions of the
/// inner joins in `joined`. None where no term can raise.
[[nodiscard]] Conditions guardsOf(const Conditions& terms,
                                  std::initializer_list<const Sql::Tree::From*> joined);

/// A select in two: what WHERE has that can raise is tried on the rows of an inner select, which
/// does the rest, and into which the engine moves nothing.
struct Apart {
  Conditions inside;
  Conditions outside;
  /// The columns of FROM that are read outside.
  Conditions columns;
};

/// How the select, which is ordered by `keys`, is taken apart, or nothing where the terms of WHERE
/// can stand together: because none can raise, or because nothing but tables joined row by row
/// comes before it. With views, derived tables and outer joins the engine may try WHERE first
/// whatever it is written like.
[[nodiscard]] std::optional<Apart> takenApart(const Sql::Tree::Select& select,
                                              std::span<const Sql::Tree::SortKey> keys);

}  // namespace QuorHost::Write
