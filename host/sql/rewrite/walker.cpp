#include "host/sql/rewrite/walker.h"

#include <algorithm>
#include <vector>

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Kind = Expression::Kind;

/// Looks for a column of which something is true.
template <class Predicate>
class ColumnSearch final : public Walker {
 public:
  explicit ColumnSearch(Predicate predicate) : predicate_(std::move(predicate)) {}
  [[nodiscard]] bool found() const noexcept { return found_; }

 private:
  void visit(Expression& expression) override {
    if (expression.kind == Kind::Column && predicate_(*expression.source)) found_ = true;
  }

  Predicate predicate_;
  bool found_ = false;
};

template <class Predicate>
bool readsAny(Expression& expression, Predicate predicate) {
  ColumnSearch search(std::move(predicate));
  search.walk(expression);
  return search.found();
}

}  // namespace

void Walker::walk(Tree::Query& query) {
  for (const Tree::Branch& branch : query.branches) {
    if (branch.select != nullptr) {
      walk(*branch.select);
    } else {
      walk(*branch.query);
    }
  }
  for (const Tree::SortKey& key : query.orderBy) {
    if (key.value != nullptr) walk(*key.value);
  }
  visit(query);
}

void Walker::walk(Tree::Select& select) {
  for (const Tree::Output& output : select.outputs) walk(*output.value);
  if (select.from != nullptr) walk(*select.from);
  if (select.where != nullptr) walk(*select.where);
  for (Expression* const key : select.groupBy) walk(*key);
  if (select.having != nullptr) walk(*select.having);
}

void Walker::walk(Tree::From& from) {
  if (from.source != nullptr) {
    visit(*from.source);
    if (from.source->query != nullptr) walk(*from.source->query);
    return;
  }
  walk(*from.left);
  walk(*from.right);
  if (from.condition != nullptr) walk(*from.condition);
}

void Walker::walk(Expression& expression) {
  visit(expression);
  for (Expression* const arg : expression.args) walk(*arg);
  if (expression.query != nullptr) walk(*expression.query);
}

bool isUnionAll(const Tree::Query& query) {
  return std::ranges::all_of(query.branches.subspan(1), &Tree::Branch::all);
}

std::span<Expression* const> conjuncts(Expression* const& condition) {
  if (condition == nullptr) return {};
  const bool both = condition->kind == Kind::Logic && condition->op == Operator::And;
  return both ? std::span<Expression* const>(condition->args) : std::span(&condition, 1);
}

Expression* both(Expression* condition, Expression* further, Arena& arena) {
  if (condition == nullptr) return further;
  return arena.make(Expression{.kind = Kind::Logic,
                               .type = Type::Boolean,
                               .op = Operator::And,
                               .isCondition = true,
                               .args = arena.list(std::vector{condition, further})});
}

bool reads(Expression& expression, const Tree::Source& source) {
  return readsAny(expression, [&](const Tree::Source& read) { return &read == &source; });
}

bool readsOnly(Expression& expression, std::span<const Tree::Source* const> sources) {
  return !readsAny(expression, [&](const Tree::Source& read) {
    return std::ranges::find(sources, &read) == sources.end();
  });
}

}  // namespace QuorHost::Sql
