// Saying what a select asks of a union in the terms of the union's branches.
#pragma once

#include "host/sql/arena.h"
#include "host/sql/tree.h"

namespace QuorHost::Sql {

/// Whether `select`, which may be null, gives one row for each one in that WHERE lets pass.
[[nodiscard]] bool isPlain(const Tree::Select* select);

/// Whether `query` is nothing but several plain selects joined by UNION ALL, in no order.
[[nodiscard]] bool isPlainUnion(const Tree::Query* query);

/// Whether `expression` can be said in other terms than the columns of `source`: it reads nothing
/// else, which could be taken for something else among the tables of another select, and has no
/// sub-select.
[[nodiscard]] bool isOf(Tree::Expression& expression, const Tree::Source& source);

/// `expression` with the outputs of `inner`, one branch of the union `source`, in place of its
/// columns.
[[nodiscard]] Tree::Expression* inTermsOf(const Tree::Select& inner, const Tree::Source& source,
                                          Tree::Expression* expression, Arena& arena);

}  // namespace QuorHost::Sql
