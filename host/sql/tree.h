// The resolved tree: what a statement means. Every column belongs to a source, every expression has
// a type, every conversion is a node of its own, and nothing of either dialect is left but the few
// differences that fields name. Passes between resolution and writing work on this tree alone.
//
// Nodes live in an arena and may be changed and replaced; texts are slices of the statement, of the
// catalogue or of the arena, and live as long as these.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

#include "host/sql/catalogue.h"
#include "host/sql/dialect.h"
#include "host/sql/function_table.h"
#include "host/sql/syntax.h"

namespace QuorHost::Sql::Tree {

struct Query;
struct Select;

/// A table, a view or a derived table in FROM.
struct Source {
  /// What qualifies its columns: the alias, or the table's own name.
  std::string_view name;
  const Relation* relation = nullptr;
  Query* query = nullptr;  // of a derived table
  /// The table in front of a query whose rows these are, and whose `query` this has, too.
  const Source* shared = nullptr;

  [[nodiscard]] std::size_t size() const noexcept;
  [[nodiscard]] std::string_view columnName(std::size_t column) const noexcept;
  [[nodiscard]] Type columnType(std::size_t column) const noexcept;
  /// Index of the column of that name, matched without regard to case.
  [[nodiscard]] std::optional<std::uint32_t> find(std::string_view column) const noexcept;
};

struct Expression {
  enum class Kind : std::uint8_t {
    Column,      // source, column
    Literal,     // isNull; otherwise `text` of a text or a date, `number` of a double, or `integer`
    Marker,      // marker
    Negate,      // args: operand. Of a boolean: true becomes -1
    Arithmetic,  // op; args: left, right
    Compare,     // op; args: left, right
    Logic,       // op (And, Or); args: two or more conditions
    Not,         // args: condition
    IsNull,      // negated; args: operand
    Between,     // negated; args: value, low, high
    InList,      // negated; args: value, then the list
    InQuery,     // negated, query; args: value
    Exists,      // query
    Like,        // negated, wildcards; args: value, pattern
    Case,        // args: WHEN, THEN, WHEN, THEN, ...; one more for ELSE
    Call,        // function, unit; args
    Aggregate,   // function, distinct, rounding; args: operand, none for COUNT(*)
    Convert,     // rounding; args: operand of another type
    Query,       // query: a sub-select of one column that stands for a value
  };

  Kind kind = Kind::Literal;
  Type type = Type::Unknown;
  Operator op = Operator::None;
  Function function = Function::Count;
  DateUnit unit = DateUnit::Day;
  Rounding rounding = Rounding::TowardsZero;
  /// Which dialect's wildcards a LIKE pattern may hold.
  Dialect wildcards = Dialect::Server;
  bool negated = false;
  bool distinct = false;
  bool isNull = false;
  /// True or false rather than a value; its type is Boolean.
  bool isCondition = false;
  std::uint32_t column = 0;
  std::uint32_t marker = 0;
  std::int64_t integer = 0;  // of a boolean 0 or 1, of a currency its ten-thousandths
  double number = 0;
  std::string_view text;
  /// The slice of the statement that the node comes from.
  std::string_view word;
  std::span<Expression*> args;
  Source* source = nullptr;
  Query* query = nullptr;
};

/// There are no right joins: the resolver turns them round.
enum class JoinKind : std::uint8_t { Inner, Left, Cross };

/// A source, or a join of two of these.
struct From {
  Source* source = nullptr;
  JoinKind join = JoinKind::Cross;
  From* left = nullptr;
  From* right = nullptr;
  Expression* condition = nullptr;  // null for a cross join
  /// An inner join whose left side is to be read before the right one.
  bool ordered = false;
};

/// A column of a result. The name may be empty at the top of a statement.
struct Output {
  std::string_view name;
  Expression* value = nullptr;
};

struct Select {
  bool distinct = false;
  /// Rows are grouped, if only into one group.
  bool grouped = false;
  std::optional<std::int64_t> top;
  std::span<Output> outputs;
  From* from = nullptr;
  Expression* where = nullptr;
  std::span<Expression*> groupBy;
  Expression* having = nullptr;
};

/// One of the selects of a union. Exactly one of the pointers is set.
struct Branch {
  Select* select = nullptr;
  Query* query = nullptr;
  /// Joined to the branches before it by UNION ALL.
  bool all = false;
};

struct OutputColumn {
  std::string_view name;
  Type type = Type::Unknown;
};

struct SortKey {
  /// Position of an output, from 1; 0 when `value` is the key.
  std::uint32_t output = 0;
  Expression* value = nullptr;
  bool descending = false;
  bool nullsFirst = true;
};

/// One select, or several joined by UNION, which have columns of the same types.
struct Query {
  std::span<Branch> branches;
  /// The columns of the whole: the names of the first branch.
  std::span<OutputColumn> columns;
  std::span<SortKey> orderBy;
  /// Derived tables that are computed once, whole, and read by several sources in the query. They
  /// come with the last of the passes: to visit the sources is to visit a shared query repeatedly.
  std::span<Source*> shared;
};

struct Insert {
  const Relation* table = nullptr;
  std::span<const Column*> columns;
  std::span<Expression*> values;  // of the columns' types
  Query* query = nullptr;         // instead of values
};

struct Assignment {
  const Column* column = nullptr;
  Expression* value = nullptr;  // of the column's type
};

struct Update {
  Source* source = nullptr;
  std::span<Assignment> assignments;
  Expression* where = nullptr;
};

struct Delete {
  Source* source = nullptr;
  Expression* where = nullptr;
};

struct TableColumn {
  std::string_view name;
  Type type = Type::Unknown;
  std::int32_t size = 0;
  bool nullable = true;
  bool primaryKey = false;
  bool identity = false;
  Expression* defaultValue = nullptr;  // a literal of the column's type
};

struct Constraint {
  Syntax::Constraint::Kind kind = Syntax::Constraint::Kind::PrimaryKey;
  std::span<std::string_view> columns;
  std::string_view table;  // what a foreign key points at
  std::span<std::string_view> target;
};

struct CreateTable {
  std::string_view name;
  std::span<TableColumn> columns;
  std::span<Constraint> constraints;
};

struct CreateView {
  std::string_view name;
  Query* query = nullptr;
  /// Of totals that are kept: the table, and what each column of the view is. Otherwise null.
  const Relation* keptOf = nullptr;
  std::span<KeptColumn> kept;
};

struct IndexColumn {
  std::string_view name;
  bool descending = false;
};

struct CreateIndex {
  std::string_view name;
  std::string_view table;
  const Relation* of = nullptr;  // the table
  bool unique = false;
  std::span<IndexColumn> columns;
  /// Columns that are kept in the index only to be read from it.
  std::span<std::string_view> included;
};

/// A resolved statement.
struct Statement {
  std::variant<Query*, Insert, Update, Delete, CreateTable, CreateView, CreateIndex> body;
};

/// Whether two expressions are the same: one may then stand for the other.
[[nodiscard]] bool same(const Expression& a, const Expression& b) noexcept;

/// Calls `visit` for every expression of `query` that is not part of another one: outputs,
/// conditions and keys, in all branches and in the derived tables of FROM. `visit` may change an
/// expression in place.
template <class Visit>
void forEachRoot(const Query& query, const Visit& visit);

/// The same for the conditions and derived tables of FROM.
template <class Visit>
void forEachRoot(const From& from, const Visit& visit) {
  if (from.source != nullptr) {
    if (from.source->query != nullptr) forEachRoot(*from.source->query, visit);
    return;
  }
  forEachRoot(*from.left, visit);
  forEachRoot(*from.right, visit);
  if (from.condition != nullptr) visit(*from.condition);
}

template <class Visit>
void forEachRoot(const Select& select, const Visit& visit) {
  for (const Output& output : select.outputs) visit(*output.value);
  if (select.from != nullptr) forEachRoot(*select.from, visit);
  if (select.where != nullptr) visit(*select.where);
  for (Expression* const key : select.groupBy) visit(*key);
  if (select.having != nullptr) visit(*select.having);
}

template <class Visit>
void forEachRoot(const Query& query, const Visit& visit) {
  for (const Branch& branch : query.branches) {
    if (branch.select != nullptr) {
      forEachRoot(*branch.select, visit);
    } else {
      forEachRoot(*branch.query, visit);
    }
  }
  for (const SortKey& key : query.orderBy) {
    if (key.value != nullptr) visit(*key.value);
  }
}

}  // namespace QuorHost::Sql::Tree
