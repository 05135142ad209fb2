#include <algorithm>
#include <string>
#include <vector>

#include "host/sql/rewrite/branches.h"
#include "host/sql/rewrite/keys.h"
#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Branch;
using Tree::Expression;
using Tree::Output;
using Tree::OutputColumn;
using Tree::Query;
using Tree::Select;
using Tree::SortKey;
using Tree::Source;
using Kind = Expression::Kind;

/// Whether totals of parts make the total of the whole, to the last digit.
bool isAddable(const Expression& aggregate) {
  if (aggregate.distinct) return false;
  const bool exact = isWhole(aggregate.type) || aggregate.type == Type::Currency;
  switch (aggregate.function) {
    case Function::Count:
      return true;
    case Function::Sum:
      return exact;
    case Function::Minimum:
    case Function::Maximum:
      return exact || aggregate.type == Type::Date;
    default:
      return false;
  }
}

/// The aggregates of a select over one union, in the order in which they are found.
class Totals {
 public:
  explicit Totals(const Source& source) : source_(source) {}

  /// Notes those in `expression`. Whether all can be had from those of the branches.
  bool take(Expression& expression) {
    if (!isOf(expression, source_)) return false;
    return takeFrom(expression);
  }
  [[nodiscard]] const std::vector<Expression*>& all() const noexcept { return all_; }

  [[nodiscard]] std::size_t place(const Expression& aggregate) const {
    const auto found = std::ranges::find_if(
        all_, [&](const Expression* other) { return Tree::same(*other, aggregate); });
    return static_cast<std::size_t>(found - all_.begin());
  }

 private:
  bool takeFrom(Expression& expression) {
    if (expression.kind != Kind::Aggregate) {
      return std::ranges::all_of(expression.args, [&](Expression* arg) { return takeFrom(*arg); });
    }
    if (place(expression) == all_.size()) all_.push_back(&expression);
    return isAddable(expression);
  }

  const Source& source_;
  std::vector<Expression*> all_;
};

class BranchSummer final : public Walker {
 public:
  explicit BranchSummer(Arena& arena) : arena_(arena) {}

 private:
  void visit(Query& query) override {
    for (const Branch& branch : query.branches) {
      if (branch.select != nullptr) sum(query, *branch.select);
    }
  }

  void sum(Query& query, Select& select) {
    if (!select.grouped || select.distinct || select.from == nullptr) return;
    const Source* const source = select.from->source;
    if (source == nullptr || !isPlainUnion(source->query)) return;
    if (select.where != nullptr && !isOf(*select.where, *source)) return;
    if (!isGroupedCheaply(select, *source)) return;
    Totals totals(*source);
    bool addable = std::ranges::all_of(
        select.outputs, [&](const Output& output) { return totals.take(*output.value); });
    if (select.having != nullptr) addable = addable && totals.take(*select.having);
    for (const SortKey& key : query.orderBy) {
      if (key.value != nullptr) addable = addable && totals.take(*key.value);
    }
    if (addable) replace(query, select, totals);
  }

  /// Whether the branches' rows are grouped along an index, many rows to a group.
  static bool isGroupedCheaply(const Select& select, const Source& source) {
    if (select.groupBy.size() > 1) return false;
    if (select.groupBy.empty()) return true;
    const Expression& key = *select.groupBy.front();
    if (key.kind != Kind::Column || !isWhole(key.type)) return false;
    return std::ranges::all_of(source.query->branches, [&](const Branch& branch) {
      const Expression& value = *branch.select->outputs[key.column].value;
      return value.kind == Kind::Column && value.source->relation != nullptr && isIndexed(value) &&
             !isPrimaryKey(value, *value.source);
    });
  }

  void replace(Query& query, Select& select, const Totals& totals) {
    const Source& source = *select.from->source;
    std::vector<OutputColumn> columns;
    for (const Expression* const key : select.groupBy) columns.push_back({"key", key->type});
    for (const Expression* const total : totals.all()) {
      columns.push_back({arena_.text("total " + std::to_string(columns.size())), total->type});
    }
    std::vector<Branch> branches;
    for (const Branch& branch : source.query->branches) {
      branches.push_back({.select = summed(select, *branch.select, totals, columns), .all = true});
    }
    Source* const sums =
        arena_.make(Source{.name = source.name,
                           .query = arena_.make(Query{.branches = arena_.list(branches),
                                                      .columns = arena_.list(columns)})});
    std::vector<Output> outputs;
    for (const Output& output : select.outputs) {
      outputs.push_back({output.name, total(*output.value, select, totals, *sums)});
    }
    if (select.having != nullptr) select.having = total(*select.having, select, totals, *sums);
    for (SortKey& key : query.orderBy) {
      if (key.value != nullptr) key.value = total(*key.value, select, totals, *sums);
    }
    std::vector<Expression*> keys;
    for (Expression* const key : select.groupBy) keys.push_back(total(*key, select, totals, *sums));
    select.outputs = arena_.list(outputs);
    select.groupBy = arena_.list(keys);
    select.where = nullptr;
    select.from = arena_.make(Tree::From{.source = sums});
  }

  /// One branch of the union with its own totals for rows.
  Select* summed(const Select& outer, const Select& inner, const Totals& totals,
                 const std::vector<OutputColumn>& columns) {
    const Source& source = *outer.from->source;
    Select select = inner;
    select.grouped = true;
    std::vector<Expression*> values;
    for (Expression* const key : outer.groupBy) {
      values.push_back(inTermsOf(inner, source, key, arena_));
    }
    select.groupBy = arena_.list(values);
    for (Expression* const aggregate : totals.all()) {
      values.push_back(inTermsOf(inner, source, aggregate, arena_));
    }
    std::vector<Output> outputs;
    outputs.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      outputs.push_back({columns[i].name, values[i]});
    }
    select.outputs = arena_.list(outputs);
    if (outer.where != nullptr) {
      select.where = both(inner.where, inTermsOf(inner, source, outer.where, arena_), arena_);
    }
    return arena_.make(select);
  }

  /// `expression` over the totals of the branches.
  Expression* total(const Expression& expression, const Select& select, const Totals& totals,
                    Source& sums) {
    const auto column = [&](std::size_t place) {
      return arena_.make(Expression{.kind = Kind::Column,
                                    .type = expression.type,
                                    .column = static_cast<std::uint32_t>(place),
                                    .word = expression.word,
                                    .source = &sums});
    };
    Expression copy = expression;
    if (expression.kind == Kind::Column) return column(0);
    if (expression.kind == Kind::Aggregate) {
      if (copy.function == Function::Count) copy.function = Function::Sum;
      copy.args =
          arena_.list(std::vector{column(select.groupBy.size() + totals.place(expression))});
      return arena_.make(copy);
    }
    std::vector<Expression*> args;
    for (const Expression* const arg : expression.args) {
      args.push_back(total(*arg, select, totals, sums));
    }
    copy.args = arena_.list(args);
    return arena_.make(copy);
  }

  Arena& arena_;
};

}  // namespace

void sumBranches(Query& query, Arena& arena) { BranchSummer(arena).walk(query); }

}  // namespace QuorHost::Sql
