// One select: its list, its groups, and its order.
#include <algorithm>
#include <vector>

#include "host/sql/names.h"
#include "host/sql/resolve/resolver.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Tree::Output;
using Tree::OutputColumn;
using Tree::Query;
using Tree::Select;
using Tree::SortKey;
using Kind = Expression::Kind;

constexpr int kFirstExpressionNumber = 1000;

bool holdsColumn(const Expression& value) {
  return value.kind == Kind::Column ||
         std::ranges::any_of(value.args, [](const Expression* arg) { return holdsColumn(*arg); });
}

std::vector<OutputColumn> columnsOf(const std::vector<Output>& outputs) {
  std::vector<OutputColumn> columns;
  columns.reserve(outputs.size());
  for (const Output& output : outputs) columns.push_back({output.name, output.value->type});
  return columns;
}

}  // namespace

Select* Resolver::resolveSelect(const Syntax::Select& syntax, const Scope* outer,
                                std::span<const Syntax::OrderItem> orderBy, Query& query) {
  Select select{.distinct = syntax.distinct, .top = syntax.top};
  std::vector<Tree::Source*> sources;
  if (syntax.from != nullptr) select.from = resolveFrom(*syntax.from, outer, sources);

  Scope scope{.outer = outer, .sources = sources};
  if (syntax.where != nullptr) {
    scope.noAggregates = "WHERE";
    select.where = condition(*syntax.where, scope);
  }
  select.groupBy = resolveGroupBy(syntax, scope);
  scope.noAggregates = nullptr;

  std::vector<Output> outputs;
  if (rules_.aliasesAreVisible) scope.aliases = syntax.items;
  resolveOutputs(syntax, scope, outputs);
  select.outputs = arena_.list(outputs);
  query.columns = arena_.list(columnsOf(outputs));

  std::vector<SortKey> keys;
  for (const Syntax::OrderItem& item : orderBy) {
    keys.push_back(resolveSortKey(item, select, query.columns, scope));
    requireFew(keys.size(), "ORDER BY", item.value->word);
  }
  query.orderBy = arena_.list(keys);
  scope.aliases = {};

  if (syntax.having != nullptr) select.having = condition(*syntax.having, scope);
  select.grouped = !select.groupBy.empty() || scope.aggregates;
  if (select.having != nullptr && !select.grouped) {
    text_.refuse("HAVING needs GROUP BY or an aggregate", syntax.having->word);
  }
  if (select.grouped) requireGrouped(select, query.orderBy, scope);
  return arena_.make(select);
}

void Resolver::resolveOutputs(const Syntax::Select& select, Scope& scope,
                              std::vector<Output>& outputs) {
  for (const Syntax::Item& item : select.items) {
    if (item.value == nullptr) {
      expandStar(item, scope, outputs);
    } else {
      scope.pending = {&item};
      Expression* const result = value(*item.value, scope);
      outputs.push_back({outputName(item, outputs.size()), result});
    }
    requireFew(outputs.size(), "A select", item.word);
  }
  scope.pending.clear();
}

void Resolver::expandStar(const Syntax::Item& item, const Scope& scope,
                          std::vector<Output>& outputs) {
  bool found = false;
  for (Tree::Source* const source : scope.sources) {
    if (!item.qualifier.empty() && !sameName(item.qualifier, source->name)) continue;
    found = true;
    for (std::uint32_t i = 0; i < source->size(); ++i) {
      outputs.push_back({source->columnName(i), column(source, i, item.word)});
    }
  }
  if (!found) {
    text_.refuse(item.qualifier.empty() ? "'*' needs a FROM"
                                        : "Unknown table or alias " + quoted(item.qualifier),
                 item.word);
  }
}

std::string_view Resolver::outputName(const Syntax::Item& item, std::size_t position) {
  if (!item.alias.empty()) return item.alias;
  if (item.value->kind == Syntax::Expression::Kind::Name) return item.value->text;
  if (dialect_ == Dialect::Server) return {};
  return arena_.text("Expr" + std::to_string(kFirstExpressionNumber + position));
}

std::span<Expression*> Resolver::resolveGroupBy(const Syntax::Select& select, Scope& scope) {
  scope.noAggregates = "GROUP BY";
  std::vector<Expression*> keys;
  for (const Syntax::Expression* const syntax : select.groupBy) {
    Expression* const key = value(*syntax, scope);
    if (!holdsColumn(*key)) {
      text_.refuse("GROUP BY takes expressions that name a column", syntax->word);
    }
    keys.push_back(key);
    requireFew(keys.size(), "GROUP BY", syntax->word);
  }
  return arena_.list(keys);
}

SortKey Resolver::resolveSortKey(const Syntax::OrderItem& item, const Select& select,
                                 std::span<const Tree::OutputColumn> columns, Scope& scope) {
  std::optional<std::uint32_t> output = outputNumber(*item.value, columns.size());
  if (!output) output = outputNamed(*item.value, columns, select.outputs);
  if (output) return sortKey(*output, columns[*output].type, item.descending);

  Expression* const key = value(*item.value, scope);
  for (std::uint32_t i = 0; i < select.outputs.size(); ++i) {
    if (Tree::same(*select.outputs[i].value, *key)) {
      return sortKey(i, key->type, item.descending);
    }
  }
  if (select.distinct) {
    text_.refuse("With DISTINCT, ORDER BY takes only what the select list has", item.value->word);
  }
  if (!holdsColumn(*key)) {
    text_.refuse("ORDER BY takes expressions that name a column", item.value->word);
  }
  SortKey sorted = sortKey(0, key->type, item.descending);
  sorted.output = 0;
  sorted.value = key;
  return sorted;
}

void Resolver::requireGrouped(const Select& select, std::span<const SortKey> keys,
                              const Scope& scope) const {
  for (const Output& output : select.outputs)
    requireGrouped(*output.value, select.groupBy, scope, false);
  if (select.having != nullptr) requireGrouped(*select.having, select.groupBy, scope, false);
  for (const SortKey& key : keys) {
    if (key.value != nullptr) requireGrouped(*key.value, select.groupBy, scope, false);
  }
}

void Resolver::requireGrouped(const Expression& value, std::span<Expression* const> keys,
                              const Scope& scope, bool inner) const {
  if (value.kind == Kind::Aggregate && !inner) return;
  const auto isKey = [&](const Expression* key) { return Tree::same(*key, value); };
  if (std::ranges::any_of(keys, isKey)) return;
  if (value.kind == Kind::Column &&
      std::ranges::find(scope.sources, value.source) != scope.sources.end()) {
    text_.refuse("Column " + quoted(value.source->columnName(value.column)) +
                     " is neither in GROUP BY nor inside an aggregate",
                 value.word);
  }
  for (const Expression* const arg : value.args) requireGrouped(*arg, keys, scope, inner);
  if (value.query != nullptr) {
    Tree::forEachRoot(*value.query,
                      [&](const Expression& root) { requireGrouped(root, keys, scope, true); });
  }
}

}  // namespace QuorHost::Sql
