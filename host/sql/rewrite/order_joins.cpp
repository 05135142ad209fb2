#include <algorithm>
#include <array>
#include <vector>

#include "host/sql/rewrite/keys.h"
#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Tree::From;
using Tree::JoinKind;
using Tree::Query;
using Tree::Select;
using Tree::Source;
using Kind = Expression::Kind;

/// Whether a row on the left finds its row of the table on the right by primary key.
bool joinsByKey(const From& join) {
  const Source* const table = join.right->source;
  if (table == nullptr || table->relation == nullptr ||
      table->relation->kind != Relation::Kind::Table) {
    return false;
  }
  return std::ranges::any_of(conjuncts(join.condition), [&](const Expression* condition) {
    if (condition->kind != Kind::Compare || condition->op != Operator::Equal) return false;
    Expression& a = *condition->args[0];
    Expression& b = *condition->args[1];
    return (isPrimaryKey(a, *table) && !reads(b, *table)) ||
           (isPrimaryKey(b, *table) && !reads(a, *table));
  });
}

class JoinOrder final : public Walker {
  void visit(Query& query) override {
    for (const Tree::Branch& branch : query.branches) {
      if (branch.select != nullptr && branch.select->from != nullptr) order(*branch.select);
    }
  }

  static void order(const Select& select) {
    std::vector<From*> joins;  // the first one first
    From* first = select.from;
    for (; first->source == nullptr; first = first->left) joins.insert(joins.begin(), first);
    const Source& source = *first->source;
    if (source.query == nullptr || source.query->branches.size() < 2) return;
    for (std::size_t i = 0; i < joins.size(); ++i) {
      if (throwsRowsOut(*joins[i], source, select)) moveToFront(std::span(joins).first(i + 1));
    }
    for (From* const join : joins) {
      if (join->join == JoinKind::Inner) join->ordered = joinsByKey(*join);
    }
  }

  /// Whether the join depends on the first source alone, and so does a condition on its result.
  static bool throwsRowsOut(const From& join, const Source& first, const Select& select) {
    const Source* const right = join.right->source;
    if (join.join != JoinKind::Left || right == nullptr) return false;
    const std::array<const Source*, 2> two{&first, right};
    return readsOnly(*join.condition, two) &&
           std::ranges::any_of(conjuncts(select.where), [&](Expression* condition) {
             return reads(*condition, *right) && readsOnly(*condition, two);
           });
  }

  /// Makes the last of `joins` the first one.
  static void moveToFront(std::span<From*> joins) {
    for (std::size_t i = joins.size() - 1; i > 0; --i) {
      From& upper = *joins[i];
      From& lower = *joins[i - 1];
      std::swap(upper.right, lower.right);
      std::swap(upper.join, lower.join);
      std::swap(upper.condition, lower.condition);
    }
  }
};

}  // namespace

void orderJoins(Query& query) { JoinOrder().walk(query); }

}  // namespace QuorHost::Sql
