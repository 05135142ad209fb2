// The schema language.
#include <algorithm>

#include "host/sql/names.h"
#include "host/sql/resolve/resolver.h"

namespace QuorHost::Sql {
namespace {

using Kind = Syntax::Constraint::Kind;
using Tree::TableColumn;

TableColumn* findTableColumn(std::span<TableColumn> columns, std::string_view name) {
  const auto found = std::ranges::find_if(
      columns, [&](const TableColumn& column) { return sameName(column.name, name); });
  return found == columns.end() ? nullptr : &*found;
}

}  // namespace

Tree::CreateTable Resolver::resolveCreateTable(const Syntax::CreateTable& syntax) {
  requireFreeName(syntax.name);
  std::vector<TableColumn> columns;
  for (const Syntax::ColumnDefinition& definition : syntax.columns) {
    if (findTableColumn(columns, definition.name.text) != nullptr) {
      text_.refuse("The table has two columns called " + quoted(definition.name.text),
                   definition.name.word);
    }
    columns.push_back(resolveTableColumn(definition));
    requireFew(columns.size(), "A table", definition.name.word);
  }
  Tree::CreateTable table{.name = syntax.name.text, .columns = arena_.list(columns)};

  std::vector<Tree::Constraint> constraints;
  for (const Syntax::Constraint& constraint : syntax.constraints) {
    const bool second = constraint.kind == Kind::PrimaryKey &&
                        std::ranges::find(constraints, Kind::PrimaryKey, &Tree::Constraint::kind) !=
                            constraints.end();
    if (second) text_.refuse("A table has one PRIMARY KEY", constraint.word);
    constraints.push_back(resolveConstraint(constraint, table));
  }
  table.constraints = arena_.list(constraints);

  for (std::size_t i = 0; i < columns.size(); ++i) {
    const TableColumn& column = table.columns[i];
    const bool single =
        column.primaryKey && std::ranges::count(table.columns, true, &TableColumn::primaryKey) == 1;
    const bool whole = column.type == Type::Long || column.type == Type::Integer;
    if (column.identity && !(single && whole)) {
      text_.refuse("An IDENTITY column is a whole number and the only column of the PRIMARY KEY",
                   syntax.columns[i].name.word);
    }
  }
  return table;
}

TableColumn Resolver::resolveTableColumn(const Syntax::ColumnDefinition& definition) {
  TableColumn column{.name = definition.name.text,
                     .type = definition.type.type,
                     .size = std::max(definition.type.size, 0),
                     .nullable = definition.nullable.value_or(!definition.identity),
                     .identity = definition.identity};
  if (definition.defaultValue != nullptr) {
    Scope scope{.noAggregates = "DEFAULT"};
    Tree::Expression* const literal = value(*definition.defaultValue, scope);
    column.defaultValue = typing_.convert(literal, column.type);
    if (column.defaultValue->kind != Tree::Expression::Kind::Literal) {
      text_.refuse("The default is no value of type " + std::string(typeName(column.type)),
                   definition.defaultValue->word);
    }
  }
  return column;
}

Tree::Constraint Resolver::resolveConstraint(const Syntax::Constraint& syntax,
                                             Tree::CreateTable& table) {
  Tree::Constraint constraint{.kind = syntax.kind};
  std::vector<std::string_view> names;
  std::vector<Type> types;
  for (const Syntax::Name& name : syntax.columns) {
    TableColumn* const column = findTableColumn(table.columns, name.text);
    if (column == nullptr) text_.refuse("Unknown column " + quoted(name.text), name.word);
    if (syntax.kind == Kind::PrimaryKey) {
      column->primaryKey = true;
      column->nullable = false;
    }
    names.push_back(column->name);
    types.push_back(column->type);
  }
  constraint.columns = arena_.list(names);
  if (syntax.kind != Kind::ForeignKey) return constraint;

  const bool self = sameName(syntax.table.text, table.name);
  const Relation* const target = self ? nullptr : &findTable(syntax.table);
  constraint.table = self ? table.name : std::string_view(target->name);
  if (syntax.target.size() != types.size()) {
    text_.refuse("A foreign key has as many columns as the key that it points at", syntax.word);
  }
  std::vector<std::string_view> targetNames;
  for (std::size_t i = 0; i < types.size(); ++i) {
    const Syntax::Name& name = syntax.target[i];
    Type type = Type::Unknown;
    if (self) {
      const TableColumn* const column = findTableColumn(table.columns, name.text);
      if (column == nullptr) text_.refuse("Unknown column " + quoted(name.text), name.word);
      type = column->type;
    } else {
      type = columnOf(*target, name).type;
    }
    if (type != types[i]) {
      text_.refuse("A foreign key has the type of the column that it points at, " +
                       std::string(typeName(type)),
                   name.word);
    }
    targetNames.push_back(name.text);
  }
  constraint.target = arena_.list(targetNames);
  return constraint;
}

Tree::CreateView Resolver::resolveView(const Syntax::CreateView& syntax) {
  if (!markers_.empty()) text_.refuse("A view takes no markers", syntax.name.word);
  Tree::CreateView view{.name = syntax.name.text};
  view.query = resolveQuery(*syntax.query, nullptr, Place::Inner);
  requireNames(*view.query, syntax.name.text, syntax.name.word);
  if (syntax.kept) resolveKept(syntax, view);
  return view;
}

/// Sees that the view is one of totals that can be kept true by small steps, each exact: what is
/// taken away later must leave what was there before.
void Resolver::resolveKept(const Syntax::CreateView& syntax, Tree::CreateView& view) {
  const auto refuse = [&](const std::string& what) {
    text_.refuse("The rows of a view WITH SCHEMABINDING are kept: " + what, syntax.name.word);
  };
  const Tree::Select* const select =
      view.query->branches.size() == 1 ? view.query->branches.front().select : nullptr;
  const Tree::Source* const source =
      select != nullptr && select->from != nullptr ? select->from->source : nullptr;
  if (source == nullptr || source->relation == nullptr ||
      source->relation->kind != Relation::Kind::Table || select->distinct || select->top ||
      select->where != nullptr || select->having != nullptr || select->groupBy.empty()) {
    refuse("it groups all rows of one table");
  }
  const std::vector<Column>& columns = source->relation->columns;
  std::vector<KeptColumn> kept;
  bool counted = false;
  for (std::size_t i = 0; i < select->outputs.size(); ++i) {
    const Tree::Expression& value = *select->outputs[i].value;
    if (i < select->groupBy.size()) {
      const bool exact = value.type != Type::Text && value.type != Type::Double;
      if (!Tree::same(value, *select->groupBy[i]) || !exact ||
          value.kind != Tree::Expression::Kind::Column) {
        refuse("its keys come first, in the order of GROUP BY, and are no texts and no floats");
      }
      kept.push_back({KeptColumn::Kind::Key, value.column});
    } else if (value.kind == Tree::Expression::Kind::Aggregate && value.args.empty()) {
      kept.push_back({});
      counted = true;
    } else {
      const Tree::Expression* const of = value.args.size() == 1 ? value.args[0] : nullptr;
      const bool sum = of != nullptr && value.kind == Tree::Expression::Kind::Aggregate &&
                       !value.distinct && value.function == Function::Sum &&
                       of->kind == Tree::Expression::Kind::Column &&
                       !columns[of->column].nullable && of->type != Type::Double &&
                       std::ranges::find(kept, of->column, &KeptColumn::column) == kept.end();
      if (!sum)
        refuse("behind the keys stand SUMs of exact numbers that are NOT NULL, and COUNT(*)");
      kept.push_back({KeptColumn::Kind::Sum, of->column});
    }
  }
  if (!counted) refuse("it needs COUNT(*), which tells when a group has no more rows");
  if (columns[kept.front().column].nullable) refuse("its first key is NOT NULL");
  view.keptOf = source->relation;
  view.kept = arena_.list(kept);
}

Tree::CreateIndex Resolver::resolveCreateIndex(const Syntax::CreateIndex& syntax) {
  requireFreeName(syntax.name);
  const Relation& table = findTable(syntax.table);
  Tree::CreateIndex index{
      .name = syntax.name.text, .table = table.name, .of = &table, .unique = syntax.unique};
  std::vector<std::string_view> taken;
  const auto take = [&](const Syntax::Name& name) -> std::string_view {
    const std::string_view column = columnOf(table, name).name;
    if (std::ranges::find(taken, column) != taken.end()) {
      text_.refuse("The index has column " + quoted(name.text) + " twice", name.word);
    }
    return taken.emplace_back(column);
  };
  std::vector<Tree::IndexColumn> columns;
  for (const Syntax::IndexColumn& column : syntax.columns) {
    columns.push_back({take(column.name), column.descending});
  }
  std::vector<std::string_view> included;
  for (const Syntax::Name& name : syntax.included) included.push_back(take(name));
  index.columns = arena_.list(columns);
  index.included = arena_.list(included);
  return index;
}

void Resolver::requireFreeName(const Syntax::Name& name) const {
  if (name.text.size() > Catalogue::kLongestName) text_.refuse("The name is too long", name.word);
  if (catalogue_.find(name.text) != nullptr) {
    text_.refuse("There is a table or view called " + quoted(name.text) + " already", name.word);
  }
}

}  // namespace QuorHost::Sql
