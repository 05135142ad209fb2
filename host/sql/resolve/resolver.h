// Names and types: from the syntax tree to the resolved tree.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/sql/arena.h"
#include "host/sql/catalogue.h"
#include "host/sql/dialect.h"
#include "host/sql/resolve/typing.h"
#include "host/sql/statement_text.h"
#include "host/sql/syntax.h"
#include "host/sql/tree.h"

namespace QuorHost::Sql {

/// Resolves one statement against a catalogue. Every method raises a refused statement, with the
/// place and the word, for a name it cannot find and for types that do not go together.
class Resolver {
 public:
  /// The tree is made in `arena`; its texts are slices of `text` and of `catalogue`.
  Resolver(const StatementText& text, Dialect dialect, const Catalogue& catalogue, Arena& arena,
           std::uint32_t markers);

  Tree::Statement resolve(const Syntax::Statement& statement);

  /// The view that a statement makes or has made.
  Tree::CreateView resolveView(const Syntax::CreateView& create);

  /// The types of the markers, known once the statement is resolved.
  [[nodiscard]] const std::vector<Type>& markers() const noexcept { return markers_; }

 private:
  /// Names may lead to expressions that lead to names; the tree may be this deep.
  static constexpr int kDeepest = 300;
  /// Columns of a table or a result, keys of a group or an order.
  static constexpr std::size_t kMostColumns = 1000;

  /// What the names in one select can mean, and what its expressions may hold.
  struct Scope {
    const Scope* outer = nullptr;
    std::span<Tree::Source* const> sources;
    /// The select list whose aliases may be used, where the dialect has that.
    std::span<const Syntax::Item> aliases;
    /// The aliases being resolved, to notice one that leads to itself.
    std::vector<const Syntax::Item*> pending;
    /// Where aggregates cannot stand ("WHERE"), or null where they can.
    const char* noAggregates = nullptr;
    bool insideAggregate = false;
    /// An aggregate was found.
    bool aggregates = false;
  };

  /// A query within a query, or the outermost one.
  enum class Place : std::uint8_t { Statement, Inner };

  // Queries.
  Tree::Query* resolveQuery(const Syntax::Query& query, const Scope* outer, Place place);
  Tree::Query* resolveUnion(const Syntax::Query& query, const Scope* outer);
  Tree::Branch resolveBranch(const Syntax::Branch& branch, const Scope* outer,
                             std::span<Tree::OutputColumn>& columns);
  std::span<Tree::SortKey> resolveUnionOrder(const Syntax::Query& query,
                                             std::span<const Tree::OutputColumn> columns);
  std::optional<std::uint32_t> outputNumber(const Syntax::Expression& key, std::size_t count) const;
  std::optional<std::uint32_t> outputNamed(const Syntax::Expression& key,
                                           std::span<const Tree::OutputColumn> columns,
                                           std::span<const Tree::Output> outputs) const;
  Tree::SortKey sortKey(std::uint32_t output, Type type, bool descending) const;
  void convertColumn(Tree::Query& query, std::size_t column, Type to);
  void convertColumn(Tree::Branch& branch, std::size_t column, Type to);
  void requireNames(const Tree::Query& query, std::string_view owner, std::string_view word) const;
  void requireOneColumn(const Tree::Query& query, std::string_view word) const;
  void requireFew(std::size_t count, const char* what, std::string_view word) const;

  // Selects.
  /// The select; its columns and its order go to `query`, of which it is the only branch or, with
  /// an empty `orderBy`, one of several.
  Tree::Select* resolveSelect(const Syntax::Select& select, const Scope* outer,
                              std::span<const Syntax::OrderItem> orderBy, Tree::Query& query);
  void resolveOutputs(const Syntax::Select& select, Scope& scope,
                      std::vector<Tree::Output>& outputs);
  void expandStar(const Syntax::Item& item, const Scope& scope, std::vector<Tree::Output>& outputs);
  std::string_view outputName(const Syntax::Item& item, std::size_t position);
  std::span<Tree::Expression*> resolveGroupBy(const Syntax::Select& select, Scope& scope);
  Tree::SortKey resolveSortKey(const Syntax::OrderItem& item, const Tree::Select& select,
                               std::span<const Tree::OutputColumn> columns, Scope& scope);
  void requireGrouped(const Tree::Select& select, std::span<const Tree::SortKey> keys,
                      const Scope& scope) const;
  /// `inner` says that the value belongs to a sub-select, whose aggregates are not this select's.
  void requireGrouped(const Tree::Expression& value, std::span<Tree::Expression* const> keys,
                      const Scope& scope, bool inner) const;

  // FROM.
  Tree::From* resolveFrom(const Syntax::From& from, const Scope* outer,
                          std::vector<Tree::Source*>& sources);
  Tree::Source* resolveSource(const Syntax::From& from, const Scope* outer);
  const Relation& findRelation(std::string_view name, std::string_view word) const;

  // Expressions.
  /// A value; conditions are refused where the dialect has no such values.
  Tree::Expression* value(const Syntax::Expression& expression, Scope& scope);
  /// A condition; values are refused, or compared with zero, by dialect.
  Tree::Expression* condition(const Syntax::Expression& expression, Scope& scope);
  Tree::Expression* any(const Syntax::Expression& expression, Scope& scope);
  Tree::Expression* dispatch(const Syntax::Expression& expression, Scope& scope);
  std::vector<Tree::Expression*> values(std::span<Syntax::Expression* const> list, Scope& scope);
  Tree::Expression* makeCondition(Tree::Expression node, std::span<Tree::Expression* const> args);
  Tree::Expression* makeCondition(const Tree::Expression& node,
                                  std::initializer_list<Tree::Expression*> args) {
    return makeCondition(node, std::span(args.begin(), args.size()));
  }
  Tree::Expression* negation(Tree::Expression* operand, std::string_view word);
  Tree::Expression* resolveName(const Syntax::Expression& name, Scope& scope);
  Tree::Expression* resolveQualified(const Syntax::Expression& name, const Scope& scope);
  Tree::Expression* resolveAlias(const Syntax::Expression& name, Scope& scope);
  Tree::Expression* findColumn(const Syntax::Expression& name, const Scope& scope);
  Tree::Expression* column(Tree::Source* source, std::uint32_t index, std::string_view word);
  Tree::Expression* resolveLogic(const Syntax::Expression& logic, Scope& scope);
  void foldIntoLists(std::vector<Tree::Expression*>& conditions, Operator op);
  Tree::Expression* resolveBetween(const Syntax::Expression& between, Scope& scope);
  Tree::Expression* resolveInList(const Syntax::Expression& in, Scope& scope);
  Tree::Expression* resolveInQuery(const Syntax::Expression& in, Scope& scope);
  Tree::Expression* resolveLike(const Syntax::Expression& like, Scope& scope);
  Tree::Expression* resolveCase(const Syntax::Expression& choice, Scope& scope);
  Tree::Expression* resolveCast(const Syntax::Expression& cast, Scope& scope);
  Tree::Expression* resolveSubSelect(const Syntax::Expression& select, const Scope& scope);
  /// A CASE of conditions and values, one more value for ELSE.
  Tree::Expression* makeCase(std::vector<Tree::Expression*> args, std::string_view what,
                             std::string_view word);

  // Calls.
  Tree::Expression* resolveCall(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolvePlainCall(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolveAggregate(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolveChoose(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolveSwitch(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolveReplaceNull(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolveNullToZero(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolveNullIf(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolveIsNumeric(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* resolveFind(const Syntax::Expression& call, Scope& scope);
  Tree::Expression* argument(const Syntax::Expression& call, std::size_t index, char letter,
                             Scope& scope);
  DateUnit dateUnit(const Syntax::Expression& unit) const;
  void requireOwnColumns(const Tree::Expression& aggregate, const Scope& scope) const;

  // Statements that change rows.
  Tree::Insert resolveInsert(const Syntax::Insert& insert);
  Tree::Update resolveUpdate(const Syntax::Update& update);
  Tree::Delete resolveDelete(const Syntax::Delete& erase);
  const Relation& findTable(const Syntax::Name& name) const;
  const Column& columnOf(const Relation& table, const Syntax::Name& name) const;
  Tree::Source* tableSource(const Relation& table);

  // Definitions.
  Tree::CreateTable resolveCreateTable(const Syntax::CreateTable& create);
  Tree::TableColumn resolveTableColumn(const Syntax::ColumnDefinition& definition);
  Tree::Constraint resolveConstraint(const Syntax::Constraint& constraint,
                                     Tree::CreateTable& table);
  void resolveKept(const Syntax::CreateView& create, Tree::CreateView& view);
  Tree::CreateIndex resolveCreateIndex(const Syntax::CreateIndex& create);
  void requireFreeName(const Syntax::Name& name) const;

  const StatementText& text_;
  const Dialect dialect_;
  const DialectRules& rules_;
  const Catalogue& catalogue_;
  Arena& arena_;
  std::vector<Type> markers_;
  Typing typing_;
  int level_ = 0;  // how deep `any` is in itself
};

}  // namespace QuorHost::Sql
