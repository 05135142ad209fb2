#include "host/engines/write/filter.h"

#include <algorithm>
#include <set>
#include <utility>

#include "host/engines/write/raising.h"

namespace QuorHost::Write {
namespace {

using Sql::Operator;
using Sql::Tree::Expression;
using Sql::Tree::From;
using Sql::Tree::JoinKind;
using Sql::Tree::Select;
using Sql::Tree::SortKey;
using Sql::Tree::Source;
using Kind = Expression::Kind;
using ColumnSet = std::set<std::pair<const Source*, std::uint32_t>>;

void addTerms(const Expression& condition, Conditions& terms) {
  if (condition.kind != Kind::Logic || condition.op != Operator::And) {
    terms.push_back(&condition);
    return;
  }
  for (const Expression* const term : condition.args) addTerms(*term, terms);
}

void addConditions(const From& from, Conditions& conditions) {
  if (from.source != nullptr) return;
  addConditions(*from.left, conditions);
  if (from.join == JoinKind::Left) return;
  addConditions(*from.right, conditions);
  for (const Expression* const term : termsOf(from.condition)) {
    if (raisingOf(*term) == Raising::Never) conditions.push_back(term);
  }
}

void addSources(const From& from, std::set<const Source*>& sources) {
  if (from.source != nullptr) {
    sources.insert(from.source);
  } else {
    addSources(*from.left, sources);
    addSources(*from.right, sources);
  }
}

/// Tables alone, with no row but those that WHERE and the joins' conditions find.
bool joinsTables(const From& from) {
  if (from.source != nullptr) {
    return from.source->relation != nullptr &&
           from.source->relation->kind == Sql::Relation::Kind::Table;
  }
  return from.join != JoinKind::Left && joinsTables(*from.left) && joinsTables(*from.right);
}

/// The columns that are equal to a constant, and those that may be by being equal to one of these.
/// The engine puts the constant in their place, and may then compute what reads them before it has
/// a row.
ColumnSet constantColumns(const Conditions& conditions) {
  ColumnSet columns;
  bool constants = false;
  for (const Expression* const condition : conditions) {
    if (condition->kind != Kind::Compare || condition->op != Operator::Equal) continue;
    for (const Expression* const operand : condition->args) {
      if (operand->kind == Kind::Column) columns.emplace(operand->source, operand->column);
      if (!readsColumn(*operand)) constants = true;
    }
  }
  return constants ? columns : ColumnSet();
}

}  // namespace

Conditions termsOf(const Expression* condition) {
  Conditions terms;
  if (condition != nullptr) addTerms(*condition, terms);
  return terms;
}

Conditions guardsOf(const Conditions& terms, std::initializer_list<const From*> joined) {
  Conditions guards;
  const auto raises = [](const Expression* term) { return raisingOf(*term) != Raising::Never; };
  if (std::ranges::none_of(terms, raises)) return guards;
  for (const From* const from : joined) addConditions(*from, guards);
  return guards;
}

std::optional<Apart> takenApart(const Select& select, std::span<const SortKey> keys) {
  Apart apart;
  for (const Expression* const term : termsOf(select.where)) {
    (raisingOf(*term) == Raising::ByRow ? apart.outside : apart.inside).push_back(term);
  }
  if (apart.outside.empty() || select.from == nullptr) return std::nullopt;

  ColumnSet risky;
  for (const Expression* const term : apart.outside) {
    forEachColumn(*term, [&](const Expression& read) { risky.emplace(read.source, read.column); });
  }
  Conditions known = apart.inside;
  addConditions(*select.from, known);
  const ColumnSet constant = constantColumns(known);
  const auto isConstant = [&](const auto& column) { return constant.contains(column); };
  if (joinsTables(*select.from) && std::ranges::none_of(risky, isConstant)) return std::nullopt;

  std::set<const Source*> own;
  addSources(*select.from, own);
  ColumnSet taken;
  const auto take = [&](const Expression& root) {
    forEachColumn(root, [&](const Expression& read) {
      if (!own.contains(read.source)) return;
      if (taken.emplace(read.source, read.column).second) apart.columns.push_back(&read);
    });
  };
  for (const Sql::Tree::Output& output : select.outputs) take(*output.value);
  for (const Expression* const term : apart.outside) take(*term);
  for (const Expression* const key : select.groupBy) take(*key);
  if (select.having != nullptr) take(*select.having);
  for (const SortKey& key : keys) {
    if (key.value != nullptr) take(*key.value);
  }
  return apart;
}

}  // namespace QuorHost::Write
