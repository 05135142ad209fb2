#include <algorithm>
#include <optional>
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
using Tree::From;
using Tree::JoinKind;
using Tree::Output;
using Tree::OutputColumn;
using Tree::Query;
using Tree::Select;
using Tree::Source;
using Kind = Expression::Kind;

/// The only values of a union's column that a select lets pass.
struct Wanted {
  From* join;                // to the table of keys
  const Expression* column;  // of the union
  const Expression* key;     // of the table
  std::vector<Expression*> others;
};

bool isColumnOf(const Expression& value, const Source& source) {
  return value.kind == Kind::Column && value.source == &source;
}

bool isSameColumn(const Expression& a, const Expression& b) {
  return a.kind == Kind::Column && a.source == b.source && a.column == b.column;
}

/// Whether the engine would build a table of it to join it, anyway.
bool isBuilt(const Query* query) {
  if (query == nullptr) return false;
  const Select* const select = query->branches.size() == 1 ? query->branches[0].select : nullptr;
  return select == nullptr || select->grouped || select->distinct ||
         (select->from != nullptr && select->from->source == nullptr);
}

/// Whether an index of some table that `value` may come from begins with it.
bool isIndexedAnywhere(const Expression& value) {
  if (value.kind != Kind::Column) return false;
  if (value.source->query == nullptr) return isIndexed(value);
  return std::ranges::any_of(value.source->query->branches, [&](const Branch& branch) {
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

/// Whether a condition asks for some values of an indexed column, or for those above one: rows may
/// then be found faster by it than by keys. Most rows of a company are older than a date.
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

/// What a condition says of the column and the key that a left join compares, when it says that the
/// join has found the key, or that the column is one of a few constants.
class Alternatives {
 public:
  Alternatives(const Expression& column, const Expression& key) : column_(column), key_(key) {}

  /// The constants, or nothing when the condition says something else.
  std::optional<std::vector<Expression*>> in(Expression& condition) {
    const bool several = condition.kind == Kind::Logic && condition.op == Operator::Or;
    Expression* const only = &condition;
    for (Expression* const part : several ? condition.args : std::span(&only, 1)) {
      if (isFound(*part)) {
        found_ = true;
      } else if (!takeConstant(*part)) {
        return std::nullopt;
      }
    }
    return found_ ? std::optional(constants_) : std::nullopt;
  }

 private:
  bool isFound(const Expression& part) const {
    if (part.kind == Kind::Not) {
      const Expression& test = *part.args[0];
      return test.kind == Kind::IsNull && !test.negated && isSameColumn(*test.args[0], key_);
    }
    return part.kind == Kind::IsNull && part.negated && isSameColumn(*part.args[0], key_);
  }

  bool takeConstant(const Expression& part) {
    if (part.kind != Kind::Compare || part.op != Operator::Equal) return false;
    const std::size_t side = isSameColumn(*part.args[0], column_) ? 1 : 0;
    Expression* const constant = part.args[side];
    if (!isSameColumn(*part.args[1 - side], column_) || !isConstant(*constant)) return false;
    constants_.push_back(constant);
    return isWhole(constant->type);
  }

  const Expression& column_;
  const Expression& key_;
  std::vector<Expression*> constants_;
  bool found_ = false;
};

class KeyStarter {
 public:
  explicit KeyStarter(Arena& arena) : arena_(arena) {}

  void start(Query& query, const Select& select) {
    const From* first = select.from;
    while (first->source == nullptr) first = first->left;
    const Source& source = *first->source;
    if (!isPlainUnion(source.query) || isCutFromBelow(select.where)) return;
    for (From* join = select.from; join->source == nullptr; join = join->left) {
      const std::optional<Wanted> wanted = wantedBy(*join, source, select);
      if (wanted && startBranches(query, *source.query, *wanted)) return;
    }
  }

 private:
  /// What WHERE wants of the union's column that the join compares.
  static std::optional<Wanted> wantedBy(From& join, const Source& first, const Select& select) {
    const Source* const table = join.right->source;
    if (join.join != JoinKind::Left || table == nullptr || !isBuilt(table->query)) return {};
    const Expression& condition = *join.condition;
    if (condition.kind != Kind::Compare || condition.op != Operator::Equal) return {};
    const Expression* column = condition.args[0];
    const Expression* key = condition.args[1];
    if (!isColumnOf(*key, *table)) std::swap(column, key);
    if (!isColumnOf(*key, *table) || !isColumnOf(*column, first)) return {};
    if (!isWhole(key->type) || !isWhole(column->type)) return {};
    for (Expression* const term : conjuncts(select.where)) {
      if (auto others = Alternatives(*column, *key).in(*term)) {
        return Wanted{&join, column, key, std::move(*others)};
      }
    }
    return {};
  }

  /// Whether any branch can be begun with the keys.
  bool startBranches(Query& query, const Query& first, const Wanted& wanted) {
    Source* shared = nullptr;
    for (const Branch& branch : first.branches) {
      Expression* const value = branch.select->outputs[wanted.column->column].value;
      const bool found = value->kind == Kind::Column && value->source->relation != nullptr &&
                         isWhole(value->type) && isIndexed(*value);
      if (!found || isCutFromBelow(branch.select->where)) continue;
      if (shared == nullptr) shared = share(query, *wanted.join->right->source);
      branch.select->where = both(branch.select->where, isAmong(*value, *shared, wanted), arena_);
    }
    return shared != nullptr;
  }

  /// Puts the table in front of the query; `table` from now on reads it there.
  Source* share(Query& query, Source& table) {
    // No statement can name a table like that.
    const std::string_view name = arena_.text(":keys " + std::to_string(++shared_));
    Source* const shared = arena_.make(Source{.name = name, .query = table.query});
    table.shared = shared;
    std::vector<Source*> all(query.shared.begin(), query.shared.end());
    all.push_back(shared);
    query.shared = arena_.list(all);
    return shared;
  }

  /// value IN (SELECT key FROM shared UNION ALL SELECT constant ...)
  Expression* isAmong(Expression& value, const Source& shared, const Wanted& wanted) {
    Source* const reader =
        arena_.make(Source{.name = shared.name, .query = shared.query, .shared = &shared});
    Expression key = *wanted.key;
    key.source = reader;
    std::vector<Branch> branches{selecting(arena_.make(key), arena_.make(From{.source = reader}))};
    for (Expression* const constant : wanted.others)
      branches.push_back(selecting(constant, nullptr));
    Query keys;
    keys.branches = arena_.list(branches);
    keys.columns = arena_.list(std::vector{OutputColumn{kKey, key.type}});
    return arena_.make(Expression{.kind = Kind::InQuery,
                                  .type = Type::Boolean,
                                  .isCondition = true,
                                  .args = arena_.list(std::vector{&value}),
                                  .query = arena_.make(keys)});
  }

  Branch selecting(Expression* value, From* from) {
    return {.select = arena_.make(
                Select{.outputs = arena_.list(std::vector{Output{kKey, value}}), .from = from}),
            .all = true};
  }

  static constexpr std::string_view kKey = "key";

  Arena& arena_;
  int shared_ = 0;
};

}  // namespace

void startFromKeys(Query& query, Arena& arena) {
  KeyStarter starter(arena);
  forEachSelect(query, [&](Query& around, const Select& select, bool few) {
    if (!few) starter.start(around, select);
  });
}

}  // namespace QuorHost::Sql
