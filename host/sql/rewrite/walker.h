// Visiting every part of a resolved query, and what several passes ask of expressions.
#pragma once

#include <span>

#include "host/sql/arena.h"
#include "host/sql/tree.h"

namespace QuorHost::Sql {

/// Goes through a query, its derived tables and its sub-selects at every depth. A pass overrides
/// what it looks for.
class Walker {
 public:
  Walker() = default;
  virtual ~Walker() = default;
  Walker(const Walker&) = delete;
  Walker& operator=(const Walker&) = delete;

  void walk(Tree::Query& query);
  void walk(Tree::Select& select);
  void walk(Tree::From& from);
  void walk(Tree::Expression& expression);

 protected:
  /// After everything in the query.
  virtual void visit(Tree::Query&) {}
  /// Before the derived table that the source may be.
  virtual void visit(Tree::Source&) {}
  /// Before the expression's arguments and its sub-select.
  virtual void visit(Tree::Expression&) {}
};

/// Whether nothing but UNION ALL joins the branches, if there are several.
[[nodiscard]] bool isUnionAll(const Tree::Query& query);

/// The conditions that `condition`, which may be null, joins by AND.
[[nodiscard]] std::span<Tree::Expression* const> conjuncts(Tree::Expression* const& condition);

/// `condition`, which may be null, and `further` joined by AND.
[[nodiscard]] Tree::Expression* both(Tree::Expression* condition, Tree::Expression* further,
                                     Arena& arena);

/// Whether `expression`, with its sub-selects, reads a column of `source`.
[[nodiscard]] bool reads(Tree::Expression& expression, const Tree::Source& source);

/// Whether `expression`, with its sub-selects, reads nothing but columns of `sources`.
[[nodiscard]] bool readsOnly(Tree::Expression& expression,
                             std::span<const Tree::Source* const> sources);

}  // namespace QuorHost::Sql
