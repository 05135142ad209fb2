// What is known of the rows of a select without looking at them: which columns tell them apart, and
// which conditions leave few of them.
#pragma once

#include <functional>

#include "host/sql/tree.h"

namespace QuorHost::Sql {

[[nodiscard]] bool isWhole(Type type) noexcept;

/// A literal or a marker, converted or not.
[[nodiscard]] bool isConstant(const Tree::Expression& value) noexcept;

/// Whether `value` is a column of a table that an index of the table begins with; of a union, in
/// every branch that does not have a constant there.
[[nodiscard]] bool isIndexed(const Tree::Expression& value);

/// Whether `value` is the column that is the whole primary key of the table `source`.
[[nodiscard]] bool isPrimaryKey(const Tree::Expression& value, const Tree::Source& source);

/// Whether no two rows of `select` have one value of `value`, which is an expression of its tables;
/// rows without a value do not count. True only where keys and joins by them show it.
[[nodiscard]] bool isUnique(const Tree::Select& select, const Tree::Expression& value);

/// Whether no two rows of a derived table have one value of a column.
[[nodiscard]] bool isUnique(const Tree::Query& query, std::uint32_t column);

/// Whether WHERE asks for one row, or for those that belong to one row of another table: one value,
/// or a short list, of a primary key or of an indexed reference. A column like a document's type is
/// indexed as well, but a value of it may be that of nearly every row.
[[nodiscard]] bool isNarrowed(const Tree::Select& select);

/// Whether `condition`, which may be null, asks for some values of a column that an index of any of
/// its tables begins with, or for those above one: rows may then be found faster by it than by
/// something else. Most rows of a company are older than a date.
[[nodiscard]] bool isCutFromBelow(const Tree::Expression* condition);

/// What is done with a select of a query, which may be a derived table. `few` says that the select,
/// or one around it, is narrowed.
using SelectVisitor = std::function<void(Tree::Query& query, Tree::Select& select, bool few)>;

/// Calls `visit` for each select of `query` that has a FROM, and then for those of the derived
/// tables that are left there; not for sub-selects.
void forEachSelect(Tree::Query& query, const SelectVisitor& visit);

}  // namespace QuorHost::Sql
