#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "host/sql/rewrite/keys.h"
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

/// Whether a condition restricts a column, other than `key`, that an index begins with. The rows of
/// all groups may then be found faster than those of each group.
bool isCutByIndex(const Expression& condition, const Expression& key) {
  return condition.kind != Kind::IsNull &&
         std::ranges::any_of(condition.args, [&](const Expression* arg) {
           return (isIndexed(*arg) && !Tree::same(*arg, key)) || isCutByIndex(*arg, key);
         });
}

/// Puts COALESCE where a choice says the same of a column: `x IS NULL` chooses between `y` and `x`.
/// The column is then read once.
class ChoiceShortener final : public Walker {
 public:
  explicit ChoiceShortener(Arena& arena) : arena_(arena) {}

 private:
  void visit(Expression& choice) override {
    if (choice.kind != Kind::Case || choice.args.size() != 3) return;
    const Expression& test = *choice.args[0];
    if (test.kind != Kind::IsNull || test.args[0]->kind != Kind::Column) return;
    Expression* const instead = choice.args[test.negated ? 2 : 1];
    Expression* const column = choice.args[test.negated ? 1 : 2];
    if (!Tree::same(*test.args[0], *column)) return;
    choice = {.kind = Kind::Call,
              .type = choice.type,
              .function = Function::Coalesce,
              .word = choice.word,
              .args = arena_.list(std::vector{column, instead})};
  }

  Arena& arena_;
};

/// Counts the places that read totals of a table of groups; reading the key is no work.
class Readings final : public Walker {
 public:
  explicit Readings(const Totals& totals) : totals_(totals) {}
  [[nodiscard]] int count() const noexcept { return count_; }

 private:
  void visit(Expression& expression) override {
    if (expression.kind != Kind::Column || expression.source != totals_.source) return;
    const Expression& output = *totals_.select->outputs[expression.column].value;
    if (!Tree::same(output, *totals_.select->groupBy.front())) ++count_;
  }

  const Totals& totals_;
  int count_ = 0;
};

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
    if (isNullOfNothing(*output.value)) {
      select.groupBy = {};
    } else if (select.having == nullptr && Tree::same(*output.value, *key)) {
      // Any row of the group has it.
      select.groupBy = {};
      select.grouped = false;
      select.top = 1;
    }
    Query query;
    query.branches = arena_.list(std::vector{Tree::Branch{.select = arena_.make(select)}});
    query.columns = arena_.list(std::vector{OutputColumn{output.name, output.value->type}});
    return arena_.make(query);
  }

  const Totals& totals_;
  Arena& arena_;
};

/// Readings of totals in one row for which it still pays to look them up where few rows ask.
constexpr int kMostReadings = 3;

class TotalsFinder {
 public:
  explicit TotalsFinder(Arena& arena) : arena_(arena) {}

  /// `few` says that few rows ask.
  void replaceTotals(Query& query, Select& select, bool few) {
    if (select.grouped) return;
    for (From** place = &select.from; (*place)->source == nullptr;) {
      From& join = **place;
      const std::optional<Totals> totals = totalsOf(join);
      if (!totals || !isWorthIt(query, select, *totals, few) ||
          isReadInSubSelect(select, *totals->source)) {
        place = &join.left;
        continue;
      }
      rename(*select.from, *totals->select->from);
      *place = join.left;
      walk(LookUps(*totals, arena_), query, select);
    }
  }

 private:
  /// Whether looking the totals up is less work than making a table of them, or as much.
  bool isWorthIt(Query& query, Select& select, const Totals& totals, bool few) {
    // A key that comes again would be looked up again.
    if (!isUnique(select, *totals.value)) return false;
    walk(ChoiceShortener(arena_), query, select);
    Readings readings(totals);
    walk(readings, query, select);
    if (few) return readings.count() <= kMostReadings;
    const Select& groups = *totals.select;
    return groups.from->source != nullptr && readings.count() <= 1 &&
           (groups.where == nullptr || !isCutByIndex(*groups.where, *groups.groupBy.front()));
  }

  /// Everything that may read a table of FROM.
  static void walk(Walker&& walker, Query& query, Select& select) { walk(walker, query, select); }
  static void walk(Walker& walker, Query& query, Select& select) {
    walker.walk(select);
    for (const Tree::SortKey& key : query.orderBy) {
      if (key.value != nullptr) walker.walk(*key.value);
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

void lookUpTotals(Query& query, Arena& arena) {
  TotalsFinder finder(arena);
  forEachSelect(query, [&](Query& around, Select& select, bool few) {
    finder.replaceTotals(around, select, few);
  });
}

}  // namespace QuorHost::Sql
