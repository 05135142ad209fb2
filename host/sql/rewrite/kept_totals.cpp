#include <algorithm>
#include <optional>
#include <span>
#include <vector>

#include "host/sql/rewrite/keys.h"
#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Tree::From;
using Tree::Query;
using Tree::Select;
using Tree::SortKey;
using Tree::Source;
using Kind = Expression::Kind;

/// A table in FROM.
struct Place {
  From* from;
  /// Rows of other tables may stand without a row of it.
  bool optional;
};

void collect(From& from, bool optional, std::vector<Place>& places) {
  if (from.source != nullptr) {
    places.push_back({&from, optional});
    return;
  }
  collect(*from.left, optional, places);
  collect(*from.right, optional || from.join == Tree::JoinKind::Left, places);
}

void collect(const From& from, std::vector<Expression*>& conditions) {
  if (from.source != nullptr) return;
  collect(*from.left, conditions);
  collect(*from.right, conditions);
  for (Expression* const condition : conjuncts(from.condition)) conditions.push_back(condition);
}

/// Calls `visit` for the expressions of a select itself, its joins included, and not for those of
/// its derived tables. Whether all of them were taken.
template <class Visit>
bool everyRoot(Query& query, Select& select, const Visit& visit) {
  std::vector<Expression*> roots;
  collect(*select.from, roots);
  for (const Tree::Output& output : select.outputs) roots.push_back(output.value);
  for (Expression* const root : {select.where, select.having}) {
    if (root != nullptr) roots.push_back(root);
  }
  roots.insert(roots.end(), select.groupBy.begin(), select.groupBy.end());
  for (const SortKey& key : query.orderBy) {
    if (key.value != nullptr) roots.push_back(key.value);
  }
  return std::ranges::all_of(roots, [&](Expression* root) { return visit(*root); });
}

/// What kept totals can answer of a select that reads their table.
class Question {
 public:
  Question(const Place& place, const Relation& totals) : place_(place), totals_(totals) {}

  /// Whether all that `expression` wants of the table can be had from the totals.
  [[nodiscard]] bool isAnswered(const Expression& expression) const {
    if (expression.kind == Kind::Column) {
      return expression.source != &source() || find(expression, KeptColumn::Kind::Key);
    }
    if (expression.kind == Kind::Aggregate) return isTotal(expression);
    if (expression.query != nullptr && !readsKeysOnly(expression)) return false;
    return std::ranges::all_of(expression.args,
                               [&](const Expression* arg) { return isAnswered(*arg); });
  }

  /// The column of the totals that is, or has the sums of, a column of the table.
  [[nodiscard]] std::optional<std::uint32_t> find(const Expression& column,
                                                  KeptColumn::Kind kind) const {
    const auto found = std::ranges::find_if(totals_.kept, [&](const KeptColumn& kept) {
      return kept.kind == kind && (kind == KeptColumn::Kind::Rows || kept.column == column.column);
    });
    if (found == totals_.kept.end()) return std::nullopt;
    return static_cast<std::uint32_t>(found - totals_.kept.begin());
  }

  /// Whether the table's rows are found faster than the totals. Which of `groups` are wanted may be
  /// said outside of the select.
  [[nodiscard]] bool isAskedElsewhere(const std::vector<Expression*>& conditions,
                                      std::span<Expression*> groups) const {
    return std::ranges::none_of(conditions, [&](auto* each) { return isAnchored(*each); }) &&
           (std::ranges::any_of(conditions, [&](auto* each) { return hasOwnIndex(*each); }) ||
            std::ranges::any_of(groups, [&](auto* each) { return isOwnIndexed(*each); }));
  }

 private:
  [[nodiscard]] const Source& source() const { return *place_.from->source; }

  [[nodiscard]] bool isFirstKey(const Expression& value) const {
    return value.kind == Kind::Column && value.source == &source() &&
           find(value, KeptColumn::Kind::Key) == 0U;
  }

  /// Whether a condition asks for one value of the totals' first key, or for some.
  [[nodiscard]] bool isAnchored(const Expression& condition) const {
    if (condition.kind == Kind::InList) {
      return !condition.negated && isFirstKey(*condition.args[0]);
    }
    if (condition.kind != Kind::Compare || condition.op != Operator::Equal) return false;
    const Expression& a = *condition.args[0];
    const Expression& b = *condition.args[1];
    return (isFirstKey(a) && isConstant(b)) || (isFirstKey(b) && isConstant(a));
  }

  /// Whether a condition asks for another key, one that an index of the table begins with.
  [[nodiscard]] bool hasOwnIndex(const Expression& condition) const {
    if (condition.kind == Kind::IsNull) return false;
    return std::ranges::any_of(condition.args, [&](const Expression* arg) {
      return isOwnIndexed(*arg) || hasOwnIndex(*arg);
    });
  }

  [[nodiscard]] bool isOwnIndexed(const Expression& value) const {
    return value.kind == Kind::Column && value.source == &source() && isIndexed(value) &&
           !isFirstKey(value);
  }

  [[nodiscard]] bool isTotal(const Expression& aggregate) const {
    if (aggregate.args.empty()) return !place_.optional;
    const Expression& of = *aggregate.args[0];
    const bool anyNumberOfTimes = aggregate.distinct || aggregate.function == Function::Minimum ||
                                  aggregate.function == Function::Maximum;
    if (anyNumberOfTimes) return isAnswered(of);
    return aggregate.function == Function::Sum && isLinear(of);
  }

  /// Whether the sum of `value` over rows is `value` of their sums.
  [[nodiscard]] bool isLinear(const Expression& value) const {
    switch (value.kind) {
      case Kind::Column:
        return value.source == &source() && find(value, KeptColumn::Kind::Sum);
      case Kind::Negate:
        return isLinear(*value.args[0]);
      case Kind::Arithmetic:
        return (value.op == Operator::Add || value.op == Operator::Subtract) &&
               isLinear(*value.args[0]) && isLinear(*value.args[1]);
      case Kind::Call:
        return value.function == Function::Coalesce && value.args.size() == 2 &&
               isZero(*value.args[1]) && isSum(*value.args[0]);
      case Kind::Case:
        return value.args.size() == 3 && (isSumOrZero(value) || isChoice(value));
      default:
        return false;
    }
  }

  /// Whether `choice` is what the totals have the sum of, or zero where that is null.
  [[nodiscard]] bool isSumOrZero(const Expression& choice) const {
    const Expression& test = *choice.args[0];
    return test.kind == Kind::IsNull && isZero(*choice.args[test.negated ? 2 : 1]) &&
           isSum(*test.args[0]) && Tree::same(*test.args[0], *choice.args[test.negated ? 1 : 2]);
  }

  /// Whether keys alone choose between such a value and nothing, or another one.
  [[nodiscard]] bool isChoice(const Expression& choice) const {
    const auto isPart = [&](const Expression& part) {
      const bool nothing = part.kind == Kind::Literal && part.isNull;
      return nothing || isZero(part) || isLinear(part);
    };
    return isAnswered(*choice.args[0]) && isPart(*choice.args[1]) && isPart(*choice.args[2]);
  }

  [[nodiscard]] bool isSum(const Expression& value) const {
    return value.kind == Kind::Column && isLinear(value);
  }

  static bool isZero(const Expression& value) {
    const bool number = isWhole(value.type) || value.type == Type::Currency;
    return value.kind == Kind::Literal && number && !value.isNull && value.integer == 0;
  }

  /// Whether a sub-select asks for keys of the table alone.
  [[nodiscard]] bool readsKeysOnly(const Expression& expression) const {
    class Search final : public Walker {
     public:
      explicit Search(const Question& question) : question_(question) {}
      [[nodiscard]] bool found() const noexcept { return found_; }

     private:
      void visit(Expression& read) override {
        if (read.kind == Kind::Column && !question_.isAnswered(read)) found_ = true;
      }
      const Question& question_;
      bool found_ = false;
    };
    Search search(*this);
    search.walk(*expression.query);
    return !search.found();
  }

  const Place& place_;
  const Relation& totals_;
};

/// Puts columns of the totals in the place of the table's.
class ColumnChanger final : public Walker {
 public:
  ColumnChanger(const Question& question, const Source& from, Source& to)
      : question_(question), from_(from), to_(to) {}

 private:
  void visit(Expression& expression) override {
    if (expression.kind != Kind::Column || expression.source != &from_) return;
    std::optional<std::uint32_t> column = question_.find(expression, KeptColumn::Kind::Key);
    if (!column) column = question_.find(expression, KeptColumn::Kind::Sum);
    if (!column) return;
    expression.column = *column;
    expression.source = &to_;
  }

  const Question& question_;
  const Source& from_;
  Source& to_;
};

class TotalsReader final : public Walker {
 public:
  TotalsReader(const Query& whole, const Catalogue& catalogue, Arena& arena)
      : whole_(whole), catalogue_(catalogue), arena_(arena) {}

 private:
  void visit(Query& query) override {
    for (const Tree::Branch& branch : query.branches) {
      Select* const select = branch.select;
      if (select == nullptr || !select->grouped || select->from == nullptr) continue;
      std::vector<Place> places;
      collect(*select->from, false, places);
      for (const Place& place : places) {
        const Relation* const table = place.from->source->relation;
        if (table == nullptr) continue;
        for (const Relation* const totals : catalogue_.keptTotals(*table)) {
          if (read(query, *select, place, *totals)) break;
        }
      }
    }
  }

  /// Whether the totals are read instead of their table.
  bool read(Query& query, Select& select, const Place& place, const Relation& totals) {
    const Question question(place, totals);
    if (!everyRoot(query, select, [&](Expression& root) { return question.isAnswered(root); })) {
      return false;
    }
    std::vector<Expression*> conditions;
    collect(*select.from, conditions);
    for (Expression* const condition : conjuncts(select.where)) conditions.push_back(condition);
    const std::span<Expression*> groups =
        &query == &whole_ ? std::span<Expression*>() : select.groupBy;
    if (question.isAskedElsewhere(conditions, groups)) return false;
    const Source& table = *place.from->source;
    Source* const kept = arena_.make(Source{.name = table.name, .relation = &totals});
    const bool oneGroup = select.groupBy.empty();
    everyRoot(query, select, [&](Expression& root) {
      addUpRows(root, *question.find(root, KeptColumn::Kind::Rows), *kept, oneGroup);
      ColumnChanger(question, table, *kept).walk(root);
      return true;
    });
    place.from->source = kept;
    return true;
  }

  /// Puts the sum of the numbers of rows in place of COUNT(*); of no rows at all that is 0.
  void addUpRows(Expression& expression, std::uint32_t rows, Source& totals, bool oneGroup) {
    if (expression.kind != Kind::Aggregate || !expression.args.empty()) {
      for (Expression* const arg : expression.args) addUpRows(*arg, rows, totals, oneGroup);
      return;
    }
    Expression* const column = arena_.make(Expression{.kind = Kind::Column,
                                                      .type = expression.type,
                                                      .column = rows,
                                                      .word = expression.word,
                                                      .source = &totals});
    Expression sum = expression;
    sum.function = Function::Sum;
    sum.args = arena_.list(std::vector{column});
    if (!oneGroup) {
      expression = sum;
      return;
    }
    Expression* const zero =
        arena_.make(Expression{.kind = Kind::Literal, .type = expression.type});
    expression = {.kind = Kind::Call,
                  .type = expression.type,
                  .function = Function::Coalesce,
                  .word = expression.word,
                  .args = arena_.list(std::vector{arena_.make(sum), zero})};
  }

  const Query& whole_;
  const Catalogue& catalogue_;
  Arena& arena_;
};

}  // namespace

void useKeptTotals(Query& query, const Catalogue& catalogue, Arena& arena) {
  TotalsReader(query, catalogue, arena).walk(query);
}

}  // namespace QuorHost::Sql
