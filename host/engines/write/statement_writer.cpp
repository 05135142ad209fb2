#include "host/engines/write/statement_writer.h"

#include <variant>

#include "host/engines/write/expression_writer.h"
#include "host/engines/write/filter.h"
#include "host/engines/write/query_writer.h"

namespace QuorHost::Write {

using ConstraintKind = Sql::Syntax::Constraint::Kind;

std::string StatementWriter::run(const Sql::Tree::Statement& statement) {
  std::visit([this](const auto& body) { add(body); }, statement.body);
  return sql_.take();
}

void StatementWriter::write(const Sql::Tree::Query& query, bool named) {
  QueryWriter(sql_, form_).write(query, named);
}

void StatementWriter::write(const Sql::Tree::Expression& expression) {
  ExpressionWriter(sql_, form_).write(expression);
}

void StatementWriter::add(const Sql::Tree::Insert& insert) {
  sql_.add("INSERT INTO ").name(insert.table->name).add(" (");
  list(insert.columns, [&](const Sql::Column* column) { sql_.name(column->name); });
  sql_.add(") ");
  if (insert.query != nullptr) return storedRows(insert);
  sql_.add("VALUES (");
  list(insert.values, [&](const Sql::Tree::Expression* value) { stored(*value); });
  sql_.add(")");
}

void StatementWriter::add(const Sql::Tree::Update& update) {
  sql_.add("UPDATE ").name(update.source->name).add(" SET ");
  list(update.assignments, [&](const Sql::Tree::Assignment& assignment) {
    sql_.name(assignment.column->name).add(" = ");
    stored(*assignment.value);
  });
  where(update.where);
}

void StatementWriter::add(const Sql::Tree::Delete& erase) {
  sql_.add("DELETE FROM ").name(erase.source->name);
  where(erase.where);
}

void StatementWriter::where(const Sql::Tree::Expression* condition) {
  if (condition == nullptr) return;
  sql_.add(" WHERE ");
  ExpressionWriter(sql_, form_).writeFilter({}, termsOf(condition));
}

void StatementWriter::add(const Sql::Tree::CreateView& view) {
  if (view.keptOf != nullptr) return createTotals(view);
  sql_.add("CREATE VIEW ").ownName(view.name).add(" AS ");
  write(*view.query, true);
}

void StatementWriter::add(const Sql::Tree::CreateIndex& index) {
  sql_.add(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ").ownName(index.name);
  sql_.add(" ON ").name(index.table).add(" (");
  list(index.columns, [&](const Sql::Tree::IndexColumn& column) { keyOfIndex(index, column); });
  endIndex(index);
}

void StatementWriter::writeConstraint(const Sql::Tree::Constraint& constraint) {
  sql_.add(constraint.kind == ConstraintKind::PrimaryKey ? "PRIMARY KEY"
           : constraint.kind == ConstraintKind::Unique   ? "UNIQUE"
                                                         : "FOREIGN KEY");
  names(constraint.columns);
  if (constraint.kind != ConstraintKind::ForeignKey) return;
  sql_.add(" REFERENCES ").name(constraint.table);
  names(constraint.target);
}

void StatementWriter::fits(const Sql::Tree::CreateTable& table,
                           const Sql::Tree::TableColumn& column, std::string_view before,
                           std::string_view after, std::string_view otherwise) {
  sql_.add(" CHECK (").add(before).name(column.name).add(after).add(" OR quor_misfit(");
  sql_.name(column.name).add(misfit_).add(", ").literal(column.name).add(", ");
  sql_.literal(table.name).add(", ").literal(otherwise).add("))");
}

}  // namespace QuorHost::Write
