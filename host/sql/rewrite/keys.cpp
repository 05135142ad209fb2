#include "host/sql/rewrite/keys.h"

#include <algorithm>
#include <vector>

#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Tree::From;
using Tree::JoinKind;
using Tree::Query;
using Tree::Select;
using Tree::Source;
using Kind = Expression::Kind;

/// The longest list of keys that is taken to leave few rows.
constexpr std::size_t kFewKeys = 50;

const Column* tableColumn(const Expression& value) {
  const bool ofTable = value.kind == Kind::Column && value.source->relation != nullptr;
  return ofTable ? &value.source->relation->columns[value.column] : nullptr;
}

/// Whether something is true of the table's column that `value` is; of a union, in every branch
/// that does not have a constant there.
template <class Predicate>
bool comesFrom(const Expression& value, const Predicate& predicate) {
  if (const Column* const column = tableColumn(value)) return predicate(*column);
  if (value.kind != Kind::Column || value.source->query == nullptr) return false;
  return std::ranges::all_of(value.source->query->branches, [&](const Tree::Branch& branch) {
    if (branch.select == nullptr) return false;
    const Expression& output = *branch.select->outputs[value.column].value;
    return output.kind == Kind::Literal || comesFrom(output, predicate);
  });
}

bool isOfOneRow(const Column& column) {
  return column.leadsIndex && (column.primaryKey || column.reference);
}

/// How far into derived tables of derived tables keys are looked for.
constexpr int kLevels = 5;

bool isUniqueWithin(const Select& select, const Expression& value, int levels);

bool isUniqueWithin(const Query& query, std::uint32_t column, int levels) {
  const Select* const select = query.branches.size() == 1 ? query.branches[0].select : nullptr;
  return select != nullptr && levels > 0 &&
         isUniqueWithin(*select, *select->outputs[column].value, levels - 1);
}

/// Whether no two rows of a table or derived table have one value of its column `value`.
bool isKeyWithin(const Expression& value, const Source& source, int levels) {
  if (value.kind != Kind::Column || value.source != &source) return false;
  return source.query != nullptr ? isUniqueWithin(*source.query, value.column, levels)
                                 : isPrimaryKey(value, source);
}

/// How the tables of a select meet.
class Meetings {
 public:
  Meetings(const Select& select, int levels) : levels_(levels) {
    if (select.from != nullptr) collect(*select.from);
    add(select.where);
  }

  /// Whether a row of `first` is in at most one row of the select.
  bool one(const Source& first) {
    std::vector<const Source*> met{&first};
    for (bool found = true; found;) {
      found = false;
      for (const Source* const source : sources_) {
        if (std::ranges::find(met, source) != met.end() || !meetsOne(*source, met)) continue;
        met.push_back(source);
        found = true;
      }
    }
    return met.size() == sources_.size();
  }

 private:
  struct Equality {
    Expression* a;
    Expression* b;
    /// The right side of the left join whose condition it is; null where it holds for all rows.
    const From* right;
  };

  void collect(const From& from, const From* right = nullptr) {
    if (from.source != nullptr) {
      sources_.push_back(from.source);
      return;
    }
    collect(*from.left, right);
    const From* const inner = from.join == JoinKind::Left ? from.right : right;
    collect(*from.right, inner);
    add(from.condition, inner);
  }

  void add(Expression* const& condition, const From* right = nullptr) {
    for (const Expression* const term : conjuncts(condition)) {
      if (term->kind != Kind::Compare || term->op != Operator::Equal) continue;
      equalities_.push_back({term->args[0], term->args[1], right});
    }
  }

  static bool holds(const From& from, const Source& source) {
    if (from.source != nullptr) return from.source == &source;
    return holds(*from.left, source) || holds(*from.right, source);
  }

  bool meetsOne(const Source& source, const std::vector<const Source*>& met) const {
    if (source.query != nullptr && isOneRow(*source.query)) return true;
    return std::ranges::any_of(equalities_, [&](const Equality& equality) {
      if (equality.right != nullptr && !holds(*equality.right, source)) return false;
      return (isKeyWithin(*equality.a, source, levels_) && readsOnly(*equality.b, met)) ||
             (isKeyWithin(*equality.b, source, levels_) && readsOnly(*equality.a, met));
    });
  }

  /// A table of totals over all rows has one row.
  static bool isOneRow(const Query& query) {
    const Select* const select = query.branches.size() == 1 ? query.branches[0].select : nullptr;
    return select != nullptr && select->grouped && select->groupBy.empty();
  }

  int levels_;
  std::vector<const Source*> sources_;
  std::vector<Equality> equalities_;
};

bool isUniqueWithin(const Select& select, const Expression& value, int levels) {
  if (select.groupBy.size() == 1 && Tree::same(*select.groupBy.front(), value)) return true;
  return !select.grouped && value.kind == Kind::Column &&
         isKeyWithin(value, *value.source, levels) && Meetings(select, levels).one(*value.source);
}

/// Whether an index of some table that `value` may come from begins with it.
bool isIndexedAnywhere(const Expression& value) {
  if (value.kind != Kind::Column) return false;
  if (value.source->query == nullptr) return isIndexed(value);
  return std::ranges::any_of(value.source->query->branches, [&](const Tree::Branch& branch) {
    return branch.select != nullptr &&
           isIndexedAnywhere(*branch.select->outputs[value.column].value);
  });
}

bool comparesFromBelow(const Expression& comparison) {
  const auto isCut = [&](std::size_t side, Operator open, Operator closed) {
    const Operator op = comparison.op;
    return (op == Operator::Equal || op == open || op == closed) &&
           isIndexedAnywhere(*comparison.args[side]) &&
           comparison.args[1 - side]->kind != Kind::Column;
  };
  return isCut(0, Operator::Greater, Operator::GreaterEqual) ||
         isCut(1, Operator::Less, Operator::LessEqual);
}

void visitSelects(Query& query, bool narrow, const SelectVisitor& visit);

void visitSelects(const From& from, bool narrow, const SelectVisitor& visit) {
  if (from.source == nullptr) {
    visitSelects(*from.left, narrow, visit);
    visitSelects(*from.right, narrow, visit);
  } else if (from.source->query != nullptr) {
    visitSelects(*from.source->query, narrow, visit);
  }
}

void visitSelects(Query& query, bool narrow, const SelectVisitor& visit) {
  for (const Tree::Branch& branch : query.branches) {
    if (branch.query != nullptr) {
      visitSelects(*branch.query, narrow, visit);
    } else if (branch.select->from != nullptr) {
      const bool few = narrow || isNarrowed(*branch.select);
      visit(query, *branch.select, few);
      visitSelects(*branch.select->from, few, visit);
    }
  }
}

}  // namespace

bool isWhole(Type type) noexcept { return type == Type::Integer || type == Type::Long; }

bool isConstant(const Expression& value) noexcept {
  if (value.kind == Kind::Convert) return isConstant(*value.args[0]);
  return value.kind == Kind::Literal || value.kind == Kind::Marker;
}

bool isIndexed(const Expression& value) {
  return comesFrom(value, [](const Column& column) { return column.leadsIndex; });
}

bool isPrimaryKey(const Expression& value, const Source& source) {
  const Column* const column = value.source == &source ? tableColumn(value) : nullptr;
  return column != nullptr && column->primaryKey &&
         std::ranges::count(source.relation->columns, true, &Column::primaryKey) == 1;
}

bool isUnique(const Select& select, const Expression& value) {
  return isUniqueWithin(select, value, kLevels);
}

bool isUnique(const Query& query, std::uint32_t column) {
  return isUniqueWithin(query, column, kLevels);
}

bool isNarrowed(const Select& select) {
  const auto isKey = [](const Expression& value) { return comesFrom(value, isOfOneRow); };
  return std::ranges::any_of(conjuncts(select.where), [&](const Expression* condition) {
    if (condition->kind == Kind::InList) {
      const auto list = condition->args.subspan(1);
      return !condition->negated && list.size() <= kFewKeys && isKey(*condition->args[0]) &&
             std::ranges::all_of(list, [](const Expression* item) { return isConstant(*item); });
    }
    if (condition->kind != Kind::Compare || condition->op != Operator::Equal) return false;
    const Expression& a = *condition->args[0];
    const Expression& b = *condition->args[1];
    return (isKey(a) && isConstant(b)) || (isKey(b) && isConstant(a));
  });
}

bool isCutFromBelow(const Expression* condition) {
  if (condition == nullptr) return false;
  const auto isCut = [](const Expression* part) { return isCutFromBelow(part); };
  switch (condition->kind) {
    case Kind::Logic:
      return condition->op == Operator::And ? std::ranges::any_of(condition->args, isCut)
                                            : std::ranges::all_of(condition->args, isCut);
    case Kind::Compare:
      return comparesFromBelow(*condition);
    case Kind::Between:
    case Kind::InList:
    case Kind::IsNull:
      return !condition->negated && isIndexedAnywhere(*condition->args[0]);
    default:
      return false;
  }
}

void forEachSelect(Query& query, const SelectVisitor& visit) { visitSelects(query, false, visit); }

}  // namespace QuorHost::Sql
