// FROM, and the columns that names lead to.
#include <algorithm>
#include <utility>

#include "host/sql/names.h"
#include "host/sql/resolve/resolver.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Tree::From;
using Tree::Source;

constexpr std::size_t kMostSources = 64;

Tree::JoinKind joinKind(Syntax::JoinKind written) {
  switch (written) {
    case Syntax::JoinKind::Inner:
      return Tree::JoinKind::Inner;
    case Syntax::JoinKind::Left:
    case Syntax::JoinKind::Right:
      return Tree::JoinKind::Left;
    case Syntax::JoinKind::Cross:
      break;
  }
  return Tree::JoinKind::Cross;
}

/// The cross join of two sides, with the joins of the right side behind it where that means the
/// same: A, B JOIN C is (A, B) JOIN C. A plain row of joins leaves the engine the choice of order.
From* crossJoin(Arena& arena, From* left, From* right) {
  if (right->source != nullptr) return arena.make(From{.left = left, .right = right});
  right->left = crossJoin(arena, left, right->left);
  return right;
}

}  // namespace

From* Resolver::resolveFrom(const Syntax::From& from, const Scope* outer,
                            std::vector<Source*>& sources) {
  if (from.left == nullptr) {
    Source* const source = resolveSource(from, outer);
    const bool taken = std::ranges::any_of(
        sources, [&](const Source* other) { return sameName(other->name, source->name); });
    if (taken) {
      text_.refuse("FROM has two tables called " + quoted(source->name) + "; give one an alias",
                   from.word);
    }
    if (sources.size() == kMostSources) {
      text_.refuse("FROM joins more than " + std::to_string(kMostSources) + " tables", from.word);
    }
    sources.push_back(source);
    return arena_.make(From{.source = source});
  }
  const std::size_t first = sources.size();
  From join{.join = joinKind(from.join)};
  join.left = resolveFrom(*from.left, outer, sources);
  join.right = resolveFrom(*from.right, outer, sources);
  if (from.condition == nullptr) return crossJoin(arena_, join.left, join.right);
  // ON sees the tables of its own join only.
  Scope scope{.outer = outer,
              .sources = std::span<Source* const>(sources).subspan(first),
              .noAggregates = "ON"};
  join.condition = condition(*from.condition, scope);
  // A RIGHT JOIN B is B LEFT JOIN A. Behind other joins the storage engine has the first one wrong:
  // it loses conditions that stand further out.
  if (from.join == Syntax::JoinKind::Right) std::swap(join.left, join.right);
  return arena_.make(join);
}

Source* Resolver::resolveSource(const Syntax::From& from, const Scope* outer) {
  Source source{.name = from.alias.empty() ? from.table : from.alias};
  if (from.query != nullptr) {
    source.query = resolveQuery(*from.query, outer, Place::Inner);
    requireNames(*source.query, from.alias, from.query->word);
  } else {
    source.relation = &findRelation(from.table, from.word);
  }
  return arena_.make(source);
}

const Relation& Resolver::findRelation(std::string_view name, std::string_view word) const {
  const Relation* const relation = catalogue_.find(name);
  if (relation == nullptr) text_.refuse("Unknown table or view " + quoted(name), word);
  return *relation;
}

Expression* Resolver::column(Source* source, std::uint32_t index, std::string_view word) {
  return typing_.make({.kind = Expression::Kind::Column,
                       .type = source->columnType(index),
                       .column = index,
                       .word = word,
                       .source = source});
}

/// What a name in an expression stands for. A column of an inner select hides those of the selects
/// around it, and a column hides an alias of its own select list.
Expression* Resolver::resolveName(const Syntax::Expression& name, Scope& scope) {
  if (!name.qualifier.empty()) return resolveQualified(name, scope);
  if (Expression* const own = findColumn(name, scope)) return own;
  if (Expression* const alias = resolveAlias(name, scope)) return alias;
  for (const Scope* outer = scope.outer; outer != nullptr; outer = outer->outer) {
    if (Expression* const found = findColumn(name, *outer)) return found;
  }
  text_.refuse("Unknown column " + quoted(name.text), name.word);
}

Expression* Resolver::resolveQualified(const Syntax::Expression& name, const Scope& scope) {
  for (const Scope* current = &scope; current != nullptr; current = current->outer) {
    for (Source* const source : current->sources) {
      if (!sameName(source->name, name.qualifier)) continue;
      const std::optional<std::uint32_t> index = source->find(name.text);
      if (!index) {
        text_.refuse("Unknown column " + quoted(name.text) + " of " + quoted(source->name),
                     name.word);
      }
      return column(source, *index, name.word);
    }
  }
  text_.refuse("Unknown table or alias " + quoted(name.qualifier), name.word);
}

/// The column of that name among the tables of one select, or null.
Expression* Resolver::findColumn(const Syntax::Expression& name, const Scope& scope) {
  Source* owner = nullptr;
  std::uint32_t index = 0;
  for (Source* const source : scope.sources) {
    const std::optional<std::uint32_t> found = source->find(name.text);
    if (!found) continue;
    if (owner != nullptr) {
      text_.refuse("Ambiguous column " + quoted(name.text) + ": " + quoted(owner->name) + " and " +
                       quoted(source->name) + " have one",
                   name.word);
    }
    owner = source;
    index = *found;
  }
  return owner == nullptr ? nullptr : column(owner, index, name.word);
}

/// The value of an alias of the same select list, or null.
Expression* Resolver::resolveAlias(const Syntax::Expression& name, Scope& scope) {
  for (const Syntax::Item& item : scope.aliases) {
    if (item.value == nullptr || !sameName(item.alias, name.text)) continue;
    if (std::ranges::find(scope.pending, &item) != scope.pending.end()) {
      text_.refuse("The alias " + quoted(name.text) + " leads to itself", name.word);
    }
    scope.pending.push_back(&item);
    Expression* const aliased = value(*item.value, scope);
    scope.pending.pop_back();
    return aliased;
  }
  return nullptr;
}

}  // namespace QuorHost::Sql
