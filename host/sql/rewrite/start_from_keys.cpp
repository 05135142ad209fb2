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

/// A table of keys in front of a query, and the conditions that its keys are many, or few.
struct Keys {
  const Source* table;
  Expression* many;
  Expression* few;
};

/// Keys are few up to this part of a table's rows: one in so many.
constexpr std::int64_t kFewOf = 2;

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
    if (join.join != JoinKind::Left || table == nullptr || table->shared != nullptr) return {};
    if (!isBuilt(table->query)) return {};
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
  bool startBranches(Query& query, Query& first, const Wanted& wanted) {
    std::vector<Branch> branches;
    std::optional<Keys> keys;
    for (const Branch& branch : first.branches) {
      Expression* const value = branch.select->outputs[wanted.column->column].value;
      const bool found = value->kind == Kind::Column && value->source->relation != nullptr &&
                         isWhole(value->type) && isIndexed(*value);
      if (!found || isCutFromBelow(branch.select->where)) {
        branches.push_back(branch);
        continue;
      }
      if (!keys) keys = shareKeys(query, wanted, *value->source->relation);
      branches.push_back(under(*branch.select, isAmong(*value, *keys, wanted)));
      branches.push_back(under(*branch.select, keys->many));
    }
    if (keys) first.branches = arena_.list(branches);
    return keys.has_value();
  }

  Branch under(Select select, Expression* condition) {
    select.where = both(select.where, condition, arena_);
    return {.select = arena_.make(select), .all = true};
  }

  /// Puts the table of keys in front of the query, and whether there are many of them for a table
  /// with the rows of `relation`.
  Keys shareKeys(Query& query, const Wanted& wanted, const Relation& relation) {
    Source& table = *wanted.join->right->source;
    Source* const keys = share(query, *table.query);
    table.shared = keys;
    Source* const rows = arena_.make(Source{.name = relation.name, .relation = &relation});
    Expression* const part =
        arena_.make(Expression{.kind = Kind::Arithmetic,
                               .type = Type::Long,
                               .op = Operator::DivideWhole,
                               .args = arena_.list(std::vector{count(rows), literal(kFewOf)})});
    Expression* const many = compare(Operator::Greater, count(reading(*keys)), part);
    Source* const answer = reading(*share(query, *selecting("many", many, nullptr)));
    const auto asked = [&](Operator op) {
      Expression* const value =
          arena_.make(Expression{.kind = Kind::Column, .type = Type::Boolean, .source = answer});
      return compare(op, valueOf(*selecting("many", value, arena_.make(From{.source = answer}))),
                     arena_.make(Expression{.kind = Kind::Literal, .type = Type::Boolean}));
    };
    return {keys, asked(Operator::NotEqual), asked(Operator::Equal)};
  }

  Source* share(Query& query, Query& table) {
    // No statement can name a table like that.
    const std::string_view name = arena_.text(":keys " + std::to_string(++shared_));
    Source* const shared = arena_.make(Source{.name = name, .query = &table});
    std::vector<Source*> all(query.shared.begin(), query.shared.end());
    all.push_back(shared);
    query.shared = arena_.list(all);
    return shared;
  }

  Source* reading(const Source& shared) {
    return arena_.make(Source{.name = shared.name, .query = shared.query, .shared = &shared});
  }

  /// value IN (SELECT key FROM keys WHERE few UNION ALL SELECT constant WHERE few ...)
  Expression* isAmong(Expression& value, const Keys& keys, const Wanted& wanted) {
    Source* const reader = reading(*keys.table);
    Expression key = *wanted.key;
    key.source = reader;
    Query* const list = selecting("key", arena_.make(key), arena_.make(From{.source = reader}));
    std::vector<Branch> branches{under(*list->branches[0].select, keys.few)};
    for (Expression* const constant : wanted.others) {
      branches.push_back(under(*selecting("key", constant, nullptr)->branches[0].select, keys.few));
    }
    list->branches = arena_.list(branches);
    return arena_.make(Expression{.kind = Kind::InQuery,
                                  .type = Type::Boolean,
                                  .isCondition = true,
                                  .args = arena_.list(std::vector{&value}),
                                  .query = list});
  }

  /// SELECT value AS name FROM from
  Query* selecting(std::string_view name, Expression* value, From* from) {
    Select* const select =
        arena_.make(Select{.outputs = arena_.list(std::vector{Output{name, value}}), .from = from});
    return arena_.make(Query{.branches = arena_.list(std::vector{Branch{.select = select}}),
                             .columns = arena_.list(std::vector{OutputColumn{name, value->type}})});
  }

  Expression* valueOf(Query& query) {
    return arena_.make(
        Expression{.kind = Kind::Query, .type = query.columns[0].type, .query = &query});
  }

  /// (SELECT COUNT(*) FROM table)
  Expression* count(Source* table) {
    Expression* const rows = arena_.make(
        Expression{.kind = Kind::Aggregate, .type = Type::Long, .function = Function::Count});
    Query* const query = selecting("rows", rows, arena_.make(From{.source = table}));
    query->branches[0].select->grouped = true;
    return valueOf(*query);
  }

  Expression* literal(std::int64_t number) {
    return arena_.make(Expression{.kind = Kind::Literal, .type = Type::Long, .integer = number});
  }

  Expression* compare(Operator op, Expression* a, Expression* b) {
    return arena_.make(Expression{.kind = Kind::Compare,
                                  .type = Type::Boolean,
                                  .op = op,
                                  .isCondition = true,
                                  .args = arena_.list(std::vector{a, b})});
  }

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
