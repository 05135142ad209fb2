// The syntax tree: a statement as it is written, before its names mean anything.
//
// Nodes live in an arena. `word` is always the slice of the statement that stands for the node in
// messages; the other texts are slices too, without their quotes.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

#include "host/sql/dialect.h"
#include "host/sql/types.h"

namespace QuorHost::Sql {
struct FunctionRule;
}

namespace QuorHost::Sql::Syntax {

struct Query;

/// A type as written in CAST, CONVERT and CREATE TABLE.
struct TypeName {
  std::string_view word;
  Type type = Type::Unknown;
  /// Longest text in characters; 0 for no limit.
  std::int32_t size = 0;
  /// Decimals of an exact number, at most four.
  std::uint8_t decimals = 4;
};

struct Expression {
  enum class Kind : std::uint8_t {
    Name,     // qualifier, text
    Number,   // word
    Text,     // text
    Date,     // text
    Boolean,  // truth
    Null,
    Marker,      // marker
    Negate,      // args: operand
    Arithmetic,  // op; args: left, right
    Compare,     // op; args: left, right
    Logic,       // op (And, Or); args: two or more
    Not,         // args: condition
    IsNull,      // negated; args: operand
    Between,     // negated; args: value, low, high
    InList,      // negated; args: value, then the list
    InQuery,     // negated, query; args: value
    Like,        // negated; args: value, pattern
    Exists,      // query
    Case,        // args: the operand (may be null), the ELSE (may be null), then WHEN, THEN, ...
    Cast,        // type; args: operand
    Call,        // function, distinct; args
    CountRows,   // COUNT(*)
    Query,       // query: a sub-select in parentheses
  };

  Kind kind = Kind::Null;
  Operator op = Operator::None;
  bool negated = false;
  bool distinct = false;
  bool truth = false;
  /// Levels of expressions from here to the lowest, sub-selects included.
  std::uint16_t depth = 1;
  std::uint32_t marker = 0;
  std::string_view word;
  std::string_view qualifier;
  std::string_view text;
  std::span<Expression*> args;
  const FunctionRule* function = nullptr;
  Query* query = nullptr;
  TypeName type;
};

/// An entry of a select list: an expression, `*` or `table.*`.
struct Item {
  Expression* value = nullptr;  // null for the stars
  std::string_view qualifier;   // of `table.*`
  std::string_view alias;
  std::string_view word;
};

enum class JoinKind : std::uint8_t { Inner, Left, Right, Cross };

/// A table, a derived table, or a join of two of these.
struct From {
  std::string_view word;
  std::string_view table;  // of a table or view
  std::string_view alias;
  Query* query = nullptr;  // of a derived table
  JoinKind join = JoinKind::Cross;
  From* left = nullptr;  // of a join
  From* right = nullptr;
  Expression* condition = nullptr;
};

struct Select {
  std::string_view word;
  bool distinct = false;
  std::optional<std::int64_t> top;
  std::span<Item> items;
  From* from = nullptr;
  Expression* where = nullptr;
  std::span<Expression*> groupBy;
  Expression* having = nullptr;
};

struct OrderItem {
  Expression* value = nullptr;
  bool descending = false;
};

/// One of the selects of a union. Exactly one of `select` and `query` (a select in parentheses) is
/// set.
struct Branch {
  Select* select = nullptr;
  Query* query = nullptr;
  /// Joined to the branches before it by UNION ALL.
  bool all = false;
};

/// One select, or several joined by UNION, with the order of the whole.
struct Query {
  std::string_view word;
  /// Levels of expressions and of queries in it.
  std::uint16_t depth = 1;
  std::span<Branch> branches;
  std::span<OrderItem> orderBy;
};

/// A name with its place.
struct Name {
  std::string_view text;
  std::string_view word;
};

struct Insert {
  Name table;
  std::span<Name> columns;
  std::span<Expression*> values;  // of VALUES
  Query* query = nullptr;         // of INSERT ... SELECT
};

struct Assignment {
  Name column;
  Expression* value = nullptr;
};

struct Update {
  Name table;
  std::span<Assignment> assignments;
  Expression* where = nullptr;
};

struct Delete {
  Name table;
  Expression* where = nullptr;
};

/// PRIMARY KEY, UNIQUE or FOREIGN KEY, of a column or of the table.
struct Constraint {
  enum class Kind : std::uint8_t { PrimaryKey, Unique, ForeignKey };
  Kind kind = Kind::PrimaryKey;
  std::string_view word;
  std::span<Name> columns;
  Name table;  // what a foreign key points at
  std::span<Name> target;
};

struct ColumnDefinition {
  Name name;
  TypeName type;
  std::optional<bool> nullable;
  bool identity = false;
  Expression* defaultValue = nullptr;
};

struct CreateTable {
  Name name;
  std::span<ColumnDefinition> columns;
  std::span<Constraint> constraints;
};

struct CreateView {
  Name name;
  Query* query = nullptr;
  /// WITH SCHEMABINDING: the rows of the view are kept.
  bool kept = false;
};

struct IndexColumn {
  Name name;
  bool descending = false;
};

struct CreateIndex {
  Name name;
  Name table;
  bool unique = false;
  std::span<IndexColumn> columns;
  std::span<Name> included;
};

using Statement =
    std::variant<Query*, Insert, Update, Delete, CreateTable, CreateView, CreateIndex>;

/// What the parser returns.
struct Parsed {
  Statement statement;
  std::uint32_t markers = 0;
};

}  // namespace QuorHost::Sql::Syntax
