// By what a select groups its rows.
#pragma once

#include <vector>

#include "host/sql/tree.h"

namespace QuorHost::Write {

/// The keys of GROUP BY that tell rows apart, for an engine that takes a column which is no key
/// from any row of the group: not those that are columns of a derived table of one row, by which it
/// would sort all the same. One key stays at least, or the groups would become a total over all
/// rows. For an engine that reads keys only, all of them.
[[nodiscard]] std::vector<const Sql::Tree::Expression*> groupKeys(const Sql::Tree::Select& select,
                                                                  bool readsKeysOnly);

}  // namespace QuorHost::Write
