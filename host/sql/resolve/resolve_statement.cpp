// Statements, and the changes of rows.
#include <variant>

#include "host/sql/names.h"
#include "host/sql/resolve/resolver.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};

}  // namespace

Tree::Statement Resolver::resolve(const Syntax::Statement& statement) {
  return std::visit(
      Overloaded{
          [&](const Syntax::Query* query) -> Tree::Statement {
            return {resolveQuery(*query, nullptr, Place::Statement)};
          },
          [&](const Syntax::Insert& insert) -> Tree::Statement { return {resolveInsert(insert)}; },
          [&](const Syntax::Update& update) -> Tree::Statement { return {resolveUpdate(update)}; },
          [&](const Syntax::Delete& erase) -> Tree::Statement { return {resolveDelete(erase)}; },
          [&](const Syntax::CreateTable& create) -> Tree::Statement {
            return {resolveCreateTable(create)};
          },
          [&](const Syntax::CreateView& create) -> Tree::Statement {
            requireFreeName(create.name);
            return {resolveView(create)};
          },
          [&](const Syntax::CreateIndex& create) -> Tree::Statement {
            return {resolveCreateIndex(create)};
          }},
      statement);
}

Tree::Insert Resolver::resolveInsert(const Syntax::Insert& syntax) {
  const Relation& table = findTable(syntax.table);
  std::vector<const Column*> columns;
  for (const Syntax::Name& name : syntax.columns) {
    const Column& column = columnOf(table, name);
    for (const Column* const other : columns) {
      if (other == &column)
        text_.refuse("Column " + quoted(name.text) + " is set twice", name.word);
    }
    columns.push_back(&column);
  }
  if (syntax.columns.empty()) {
    for (const Column& column : table.columns) columns.push_back(&column);
  }

  Tree::Insert insert{.table = &table, .columns = arena_.list(columns)};
  if (syntax.query != nullptr) insert.query = resolveQuery(*syntax.query, nullptr, Place::Inner);
  const std::size_t given =
      insert.query != nullptr ? insert.query->columns.size() : syntax.values.size();
  if (given != columns.size()) {
    text_.refuse("INSERT has " + std::to_string(columns.size()) + " columns and " +
                     std::to_string(given) + " values",
                 syntax.table.word);
  }
  if (insert.query != nullptr) {
    for (std::size_t i = 0; i < given; ++i) convertColumn(*insert.query, i, columns[i]->type);
    return insert;
  }
  Scope scope{.noAggregates = "VALUES"};
  std::vector<Expression*> row = values(syntax.values, scope);
  for (std::size_t i = 0; i < given; ++i) row[i] = typing_.convert(row[i], columns[i]->type);
  insert.values = arena_.list(row);
  return insert;
}

Tree::Update Resolver::resolveUpdate(const Syntax::Update& syntax) {
  const Relation& table = findTable(syntax.table);
  Tree::Update update{.source = tableSource(table)};
  Scope scope{.sources = {&update.source, 1}, .noAggregates = "UPDATE"};
  std::vector<Tree::Assignment> assignments;
  for (const Syntax::Assignment& syntaxAssignment : syntax.assignments) {
    const Column& column = columnOf(table, syntaxAssignment.column);
    for (const Tree::Assignment& other : assignments) {
      if (other.column == &column) {
        text_.refuse("Column " + quoted(column.name) + " is set twice",
                     syntaxAssignment.column.word);
      }
    }
    Expression* const assigned = value(*syntaxAssignment.value, scope);
    assignments.push_back({&column, typing_.convert(assigned, column.type)});
  }
  update.assignments = arena_.list(assignments);
  if (syntax.where != nullptr) update.where = condition(*syntax.where, scope);
  return update;
}

Tree::Delete Resolver::resolveDelete(const Syntax::Delete& syntax) {
  Tree::Delete erase{.source = tableSource(findTable(syntax.table))};
  Scope scope{.sources = {&erase.source, 1}, .noAggregates = "DELETE"};
  if (syntax.where != nullptr) erase.where = condition(*syntax.where, scope);
  return erase;
}

const Relation& Resolver::findTable(const Syntax::Name& name) const {
  const Relation& relation = findRelation(name.text, name.word);
  if (relation.kind == Relation::Kind::View) {
    text_.refuse(quoted(name.text) + " is a view; only tables can be changed", name.word);
  }
  return relation;
}

const Column& Resolver::columnOf(const Relation& table, const Syntax::Name& name) const {
  const Column* const column = table.find(name.text);
  if (column == nullptr) {
    text_.refuse("Unknown column " + quoted(name.text) + " of " + quoted(table.name), name.word);
  }
  return *column;
}

Tree::Source* Resolver::tableSource(const Relation& table) {
  return arena_.make(Tree::Source{.name = table.name, .relation = &table});
}

}  // namespace QuorHost::Sql
