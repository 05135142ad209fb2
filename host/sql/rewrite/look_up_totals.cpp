#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Tree::From;
using Tree::JoinKind;
using Tree::Output;
using Tree::OutputColumn;
using Tree::Query;
using Tree::Select;
using Tree::Source;
using Kind = Expression::Kind;

bool isWhole(Type type) { return type == Type::Integer || type == Type::Long; }

/// Whether an index of the table that the column comes from begins with it; of a union, in every
/// branch that does not have a constant there.
bool isIndexed(const Expression& value) {
  if (value.kind != Kind::Column) return false;
  const Source& source = *value.source;
  if (source.relation != nullptr) return source.relation->columns[value.column].leadsIndex;
  return std::ranges::all_of(source.query->branches, [&](const Tree::Branch& branch) {
    if (branch.select == nullptr) return false;
    const Expression& output = *branch.select->outputs[value.column].value;
    return output.kind == Kind::Literal || isIndexed(output);
  });
}

bool isConstant(const Expression& value) {
  if (value.kind == Kind::Convert) return isConstant(*value.args[0]);
  return value.kind == Kind::Literal || value.kind == Kind::Marker;
}

/// Whether WHERE asks for one value of an indexed column, or for some.
bool isNarrowed(const Select& select) {
  return std::ranges::any_of(conjuncts(select.where), [](const Expression* condition) {
    if (condition->kind == Kind::InList) {
      const auto list = condition->args.subspan(1);
      return !condition->negated && isIndexed(*condition->args[0]) &&
             std::ranges::all_of(list, [](const Expression* item) { return isConstant(*item); });
    }
    if (condition->kind != Kind::Compare || condition->op != Operator::Equal) return false;
    const Expression& a = *condition->args[0];
    const Expression& b = *condition->args[1];
    return (isIndexed(a) && isConstant(b)) || (isIndexed(b) && isConstant(a));
  });
}

/// A grouped table that is joined by its key, and the value that the key has to have.
struct Totals {
  const Source* source;
  const Select* select;
  Expression* value;
};

bool readsTablesOnly(const From& from) {
  if (from.source != nullptr) return from.source->relation != nullptr;
  return readsTablesOnly(*from.left) && readsTablesOnly(*from.right);
}

/// The select of `source` when it is a table of groups by `column`, an indexed whole number.
const Select* groupsByKey(const Source& source, std::uint32_t column) {
  const Query* const query = source.query;
  if (query == nullptr || query->branches.size() != 1 || !query->orderBy.empty()) return nullptr;
  const Select* const select = query->branches.front().select;
  if (select == nullptr || select->distinct || select->top || select->groupBy.size() != 1) {
    return nullptr;
  }
  const Expression& key = *select->groupBy.front();
  const bool named = Tree::same(key, *select->outputs[column].value);
  return named && isWhole(key.type) && isIndexed(key) && readsTablesOnly(*select->from) ? select
                                                                                        : nullptr;
}

/// What the join looks up, when it is one to a table of groups.
std::optional<Totals> totalsOf(const From& join) {
  const Source* const source = join.right->source;
  if (join.join != JoinKind::Left || source == nullptr) return std::nullopt;
  const Expression& condition = *join.condition;
  if (condition.kind != Kind::Compare || condition.op != Operator::Equal) return std::nullopt;
  Expression* const a = condition.args[0];
  Expression* const b = condition.args[1];
  for (const auto& [key, value] : {std::pair(a, b), std::pair(b, a)}) {
    if (key->kind != Kind::Column || key->source != source || reads(*value, *source)) continue;
    if (!isWhole(value->type)) continue;
    const Select* const select = groupsByKey(*source, key->column);
    if (select != nullptr) return Totals{source, select, value};
  }
  return std::nullopt;
}

/// Whether the total of no rows at all is the NULL that a left join would give.
bool isNullOfNothing(const Expression& total) {
  return total.kind == Kind::Aggregate && total.function != Function::Count;
}

/// Looks for sub-selects that read a source of the select around them.
class SubSelectSearch final : public Walker {
 public:
  explicit SubSelectSearch(const Source& source) : source_(source) {}
  [[nodiscard]] bool found() const noexcept { return found_; }

 private:
  void visit(Expression& expression) override {
    if (expression.query != nullptr && reads(expression, source_)) found_ = true;
  }

  const Source& source_;
  bool found_ = false;
};

/// Whether a sub-select reads the totals. In a look-up there, the names of the tables of this
/// select could be taken for those of the sub-select's own.
bool isReadInSubSelect(Select& select, const Source& source) {
  SubSelectSearch search(source);
  search.walk(select);
  return search.found();
}

/// Puts look-ups in the place of the columns of `totals`.
class LookUps final : public Walker {
 public:
  LookUps(const Totals& totals, Arena& arena) : totals_(totals), arena_(arena) {}

 private:
  void visit(Expression& expression) override {
    if (expression.kind != Kind::Column || expression.source != totals_.source) return;
    expression = {.kind = Kind::Query,
                  .type = expression.type,
                  .word = expression.word,
                  .query = lookUp(expression.column)};
  }

  Query* lookUp(std::uint32_t column) {
    Select select = *totals_.select;
    const Output& output = select.outputs[column];
    select.outputs = arena_.list(std::vector{output});
    Expression* const key = select.groupBy.front();
    Expression* const match =
        arena_.make(Expression{.kind = Kind::Compare,
                               .type = Type::Boolean,
                               .op = Operator::Equal,
                               .isCondition = true,
                               .args = arena_.list(std::vector{key, totals_.value})});
    select.where = both(select.where, match, arena_);
    if (isNullOfNothing(*output.value)) select.groupBy = {};
    Query query;
    query.branches = arena_.list(std::vector{Tree::Branch{.select = arena_.make(select)}});
    query.columns = arena_.list(std::vector{OutputColumn{output.name, output.value->type}});
    return arena_.make(query);
  }

  const Totals& totals_;
  Arena& arena_;
};

class TotalsFinder {
 public:
  explicit TotalsFinder(Arena& arena) : arena_(arena) {}

  /// `narrow` says that a filter around the query leaves few of its rows.
  void find(Query& query, bool narrow) {
    for (const Tree::Branch& branch : query.branches) {
      if (branch.query != nullptr) {
        find(*branch.query, narrow);
        continue;
      }
      Select& select = *branch.select;
      const bool few = narrow || isNarrowed(select);
      if (select.from == nullptr) continue;
      if (!select.grouped) replaceTotals(query, select, few);
      findIn(*select.from, few);
    }
  }

 private:
  void findIn(const From& from, bool narrow) {
    if (from.source == nullptr) {
      findIn(*from.left, narrow);
      findIn(*from.right, narrow);
    } else if (from.source->query != nullptr) {
      find(*from.source->query, narrow);
    }
  }

  void replaceTotals(Query& query, Select& select, bool few) {
    for (From** place = &select.from; (*place)->source == nullptr;) {
      From& join = **place;
      const std::optional<Totals> totals = totalsOf(join);
      // A total over one table costs as much to look up as in a table of totals that is built
      // first.
      const bool worthIt = totals && (few || totals->select->from->source != nullptr);
      if (!worthIt || isReadInSubSelect(select, *totals->source)) {
        place = &join.left;
        continue;
      }
      rename(*select.from, *totals->select->from);
      *place = join.left;
      LookUps lookUps(*totals, arena_);
      lookUps.walk(select);
      for (const Tree::SortKey& key : query.orderBy) {
        if (key.value != nullptr) lookUps.walk(*key.value);
      }
    }
  }

  /// Gives the tables of a look-up names that nothing around it has.
  void rename(const From& around, const From& from) {
    if (from.source == nullptr) {
      rename(around, *from.left);
      rename(around, *from.right);
      return;
    }
    std::string_view name;
    do {
      name = arena_.text(std::string(from.source->name) + ":" + std::to_string(++renamed_));
    } while (isTaken(around, name));
    from.source->name = name;
  }

  static bool isTaken(const From& from, std::string_view name) {
    if (from.source != nullptr) return from.source->name == name;
    return isTaken(*from.left, name) || isTaken(*from.right, name);
  }

  Arena& arena_;
  int renamed_ = 0;
};

}  // namespace

void lookUpTotals(Query& query, Arena& arena) { TotalsFinder(arena).find(query, false); }

}  // namespace QuorHost::Sql
