// Queries: unions, their columns and their order.
#include <vector>

#include "host/sql/names.h"
#include "host/sql/number_text.h"
#include "host/sql/resolve/resolver.h"

namespace QuorHost::Sql {

using Tree::OutputColumn;
using Tree::Query;
using Tree::SortKey;

Resolver::Resolver(const StatementText& text, Dialect dialect, const Catalogue& catalogue,
                   Arena& arena, std::uint32_t markers)
    : text_(text),
      dialect_(dialect),
      rules_(rulesOf(dialect)),
      catalogue_(catalogue),
      arena_(arena),
      markers_(markers, Type::Unknown),
      typing_(text_, rules_, arena_, markers_) {}

Query* Resolver::resolveQuery(const Syntax::Query& query, const Scope* outer, Place place) {
  const Syntax::Select* const only =
      query.branches.size() == 1 ? query.branches.front().select : nullptr;
  const bool cut = only != nullptr && only->top.has_value();
  if (place == Place::Inner && !query.orderBy.empty() && !cut &&
      !rules_.derivedTablesMayBeOrdered) {
    text_.refuse("In the server dialect an inner select has no ORDER BY unless it has TOP",
                 query.orderBy.front().value->word);
  }
  if (only == nullptr) return resolveUnion(query, outer);
  Query resolved;
  Tree::Select* const select = resolveSelect(*only, outer, query.orderBy, resolved);
  resolved.branches = arena_.list(std::vector{Tree::Branch{.select = select}});
  return arena_.make(resolved);
}

Query* Resolver::resolveUnion(const Syntax::Query& query, const Scope* outer) {
  Query whole;
  std::vector<Tree::Branch> branches;
  for (const Syntax::Branch& syntax : query.branches) {
    std::span<OutputColumn> columns;
    const Tree::Branch branch = resolveBranch(syntax, outer, columns);
    const std::string_view word =
        syntax.select != nullptr ? syntax.select->word : syntax.query->word;
    if (branches.empty()) whole.columns = columns;
    if (columns.size() != whole.columns.size()) {
      text_.refuse("The selects of a union have different numbers of columns: " +
                       std::to_string(whole.columns.size()) + " and " +
                       std::to_string(columns.size()),
                   word);
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
      OutputColumn& column = whole.columns[i];
      const std::optional<Type> common = Typing::wider(column.type, columns[i].type);
      if (!common) {
        text_.refuse("Column " + std::to_string(i + 1) + " of the union, " + quoted(column.name) +
                         ", is of type " + std::string(typeName(column.type)) + " above and of " +
                         std::string(typeName(columns[i].type)) + " here",
                     word);
      }
      column.type = *common;
    }
    branches.push_back(branch);
  }
  for (std::size_t i = 0; i < whole.columns.size(); ++i) {
    for (Tree::Branch& branch : branches) convertColumn(branch, i, whole.columns[i].type);
  }
  whole.branches = arena_.list(branches);
  whole.orderBy = resolveUnionOrder(query, whole.columns);
  return arena_.make(whole);
}

Tree::Branch Resolver::resolveBranch(const Syntax::Branch& branch, const Scope* outer,
                                     std::span<OutputColumn>& columns) {
  if (branch.query != nullptr) {
    Query* const query = resolveQuery(*branch.query, outer, Place::Inner);
    columns = arena_.list(std::span<const OutputColumn>(query->columns));
    return {.query = query, .all = branch.all};
  }
  Query only;
  Tree::Select* const select = resolveSelect(*branch.select, outer, {}, only);
  columns = only.columns;
  return {.select = select, .all = branch.all};
}

void Resolver::convertColumn(Tree::Branch& branch, std::size_t column, Type to) {
  if (branch.query != nullptr) {
    convertColumn(*branch.query, column, to);
  } else {
    Tree::Expression*& value = branch.select->outputs[column].value;
    value = typing_.convert(value, to);
  }
}

void Resolver::convertColumn(Query& query, std::size_t column, Type to) {
  for (Tree::Branch& branch : query.branches) convertColumn(branch, column, to);
  query.columns[column].type = to;
}

std::span<SortKey> Resolver::resolveUnionOrder(const Syntax::Query& query,
                                               std::span<const OutputColumn> columns) {
  std::vector<SortKey> keys;
  for (const Syntax::OrderItem& item : query.orderBy) {
    std::optional<std::uint32_t> output = outputNumber(*item.value, columns.size());
    if (!output) output = outputNamed(*item.value, columns, {});
    if (!output) {
      text_.refuse("The order of a union is given by names or numbers of its columns",
                   item.value->word);
    }
    keys.push_back(sortKey(*output, columns[*output].type, item.descending));
    requireFew(keys.size(), "ORDER BY", item.value->word);
  }
  return arena_.list(keys);
}

/// The output, from 0, that a whole number stands for.
std::optional<std::uint32_t> Resolver::outputNumber(const Syntax::Expression& key,
                                                    std::size_t count) const {
  if (key.kind != Syntax::Expression::Kind::Number) return std::nullopt;
  const std::optional<std::uint32_t> number = readNumber<std::uint32_t>(key.word);
  if (!number || *number < 1 || *number > count) {
    text_.refuse("ORDER BY takes the number of a column, from 1 to " + std::to_string(count),
                 key.word);
  }
  return *number - 1;
}

/// The output, from 0, that a plain name stands for. Two outputs of one name are the same when they
/// are in `outputs` with the same value.
std::optional<std::uint32_t> Resolver::outputNamed(const Syntax::Expression& key,
                                                   std::span<const OutputColumn> columns,
                                                   std::span<const Tree::Output> outputs) const {
  if (key.kind != Syntax::Expression::Kind::Name || !key.qualifier.empty()) return std::nullopt;
  std::optional<std::uint32_t> found;
  for (std::uint32_t i = 0; i < columns.size(); ++i) {
    if (!sameName(columns[i].name, key.text)) continue;
    if (found && (outputs.empty() || !Tree::same(*outputs[*found].value, *outputs[i].value))) {
      text_.refuse("Ambiguous column " + quoted(key.text) + ": the select list has it twice",
                   key.word);
    }
    if (!found) found = i;
  }
  return found;
}

SortKey Resolver::sortKey(std::uint32_t output, Type type, bool descending) const {
  // Where true is -1 it sorts before false.
  const bool turned = type == Type::Boolean && rules_.trueNumber < 0;
  return {.output = output + 1, .descending = descending != turned, .nullsFirst = !descending};
}

void Resolver::requireNames(const Query& query, std::string_view owner,
                            std::string_view word) const {
  for (std::size_t i = 0; i < query.columns.size(); ++i) {
    const std::string_view name = query.columns[i].name;
    if (name.empty()) {
      text_.refuse("Column " + std::to_string(i + 1) + " of " + quoted(owner) + " needs a name",
                   word);
    }
    for (std::size_t j = 0; j < i; ++j) {
      if (sameName(name, query.columns[j].name)) {
        text_.refuse(quoted(owner) + " has two columns called " + quoted(name), word);
      }
    }
  }
}

void Resolver::requireOneColumn(const Query& query, std::string_view word) const {
  if (query.columns.size() == 1) return;
  text_.refuse("A sub-select that stands for a value has one column, not " +
                   std::to_string(query.columns.size()),
               word);
}

void Resolver::requireFew(std::size_t count, const char* what, std::string_view word) const {
  if (count <= kMostColumns) return;
  text_.refuse(std::string(what) + " has at most " + std::to_string(kMostColumns) + " columns",
               word);
}

}  // namespace QuorHost::Sql
