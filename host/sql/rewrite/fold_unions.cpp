#include <algorithm>
#include <array>
#include <vector>

#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Branch;
using Tree::Expression;
using Tree::Output;
using Tree::Query;
using Tree::Select;
using Tree::Source;

/// A select of rows as they come: one out for each one in that WHERE lets pass.
bool isPlain(const Select* select) {
  return select != nullptr && !select->distinct && !select->grouped && !select->top;
}

bool holdsSubSelect(const Expression& expression) {
  return expression.query != nullptr ||
         std::ranges::any_of(expression.args,
                             [](const Expression* arg) { return holdsSubSelect(*arg); });
}

/// Whether `expression` can be said in other terms than the columns of `source`: what it reads
/// besides could be taken for something else among the tables of another select.
bool isOf(Expression& expression, const Source& source) {
  const std::array<const Source*, 1> only{&source};
  return !holdsSubSelect(expression) && readsOnly(expression, only);
}

/// The union that the branch does nothing but pick from, or null.
const Query* pickedUnion(const Branch& branch) {
  const Select* const select = branch.select;
  if (!isPlain(select) || select->from == nullptr || select->from->source == nullptr) {
    return nullptr;
  }
  const Source& source = *select->from->source;
  const Query* const query = source.query;
  if (query == nullptr || query->branches.size() < 2 || !query->orderBy.empty() ||
      !isUnionAll(*query)) {
    return nullptr;
  }
  const bool plain =
      std::ranges::all_of(query->branches, [](const Branch& b) { return isPlain(b.select); });
  const bool simple =
      std::ranges::all_of(select->outputs,
                          [&](const Output& output) { return isOf(*output.value, source); }) &&
      (select->where == nullptr || isOf(*select->where, source));
  return plain && simple ? query : nullptr;
}

class UnionFolder final : public Walker {
 public:
  explicit UnionFolder(Arena& arena) : arena_(arena) {}

 private:
  void visit(Query& query) override {
    if (!query.orderBy.empty() || !isUnionAll(query)) return;
    std::vector<Branch> branches;
    for (const Branch& branch : query.branches) {
      const Query* const inner = pickedUnion(branch);
      if (inner == nullptr) {
        branches.push_back(branch);
        continue;
      }
      for (const Branch& folded : inner->branches) {
        branches.push_back({.select = picked(*branch.select, *folded.select), .all = true});
      }
    }
    query.branches = arena_.list(branches);
  }

  /// What `outer` picks, said in the terms of `inner`, one branch of the union it picks from.
  Select* picked(const Select& outer, const Select& inner) {
    const Source& source = *outer.from->source;
    Select select = inner;
    std::vector<Output> outputs;
    outputs.reserve(outer.outputs.size());
    for (const Output& output : outer.outputs) {
      outputs.push_back({output.name, inTermsOf(inner, source, output.value)});
    }
    select.outputs = arena_.list(outputs);
    if (outer.where != nullptr) {
      select.where = both(inner.where, inTermsOf(inner, source, outer.where), arena_);
    }
    return arena_.make(select);
  }

  Expression* inTermsOf(const Select& inner, const Source& source, Expression* expression) {
    if (expression->kind == Expression::Kind::Column && expression->source == &source) {
      return inner.outputs[expression->column].value;
    }
    if (expression->args.empty()) return expression;
    std::vector<Expression*> args;
    args.reserve(expression->args.size());
    for (Expression* const arg : expression->args) args.push_back(inTermsOf(inner, source, arg));
    Expression copy = *expression;
    copy.args = arena_.list(args);
    return arena_.make(copy);
  }

  Arena& arena_;
};

}  // namespace

void foldUnions(Query& query, Arena& arena) { UnionFolder(arena).walk(query); }

}  // namespace QuorHost::Sql
