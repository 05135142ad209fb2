#include "host/sql/rewrite/branches.h"

#include <algorithm>
#include <array>
#include <vector>

#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Tree::Select;
using Tree::Source;

bool holdsSubSelect(const Expression& expression) {
  return expression.query != nullptr ||
         std::ranges::any_of(expression.args,
                             [](const Expression* arg) { return holdsSubSelect(*arg); });
}

}  // namespace

bool isPlain(const Select* select) {
  return select != nullptr && !select->distinct && !select->grouped && !select->top;
}

bool isPlainUnion(const Tree::Query* query) {
  return query != nullptr && query->branches.size() > 1 && query->orderBy.empty() &&
         isUnionAll(*query) && std::ranges::all_of(query->branches, [](const Tree::Branch& branch) {
           return isPlain(branch.select);
         });
}

bool isOf(Expression& expression, const Source& source) {
  const std::array<const Source*, 1> only{&source};
  return !holdsSubSelect(expression) && readsOnly(expression, only);
}

Expression* inTermsOf(const Select& inner, const Source& source, Expression* expression,
                      Arena& arena) {
  if (expression->kind == Expression::Kind::Column && expression->source == &source) {
    return inner.outputs[expression->column].value;
  }
  if (expression->args.empty()) return expression;
  std::vector<Expression*> args;
  args.reserve(expression->args.size());
  for (Expression* const arg : expression->args) {
    args.push_back(inTermsOf(inner, source, arg, arena));
  }
  Expression copy = *expression;
  copy.args = arena.list(args);
  return arena.make(copy);
}

}  // namespace QuorHost::Sql
