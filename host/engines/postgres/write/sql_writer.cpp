#include "host/engines/postgres/write/sql_writer.h"

#include <algorithm>
#include <string_view>
#include <variant>

#include "host/engines/postgres/write/kept_totals_text.h"
#include "host/engines/postgres/write/postgres_form.h"
#include "host/engines/write/expression_writer.h"
#include "host/engines/write/filter.h"
#include "host/engines/write/query_writer.h"
#include "host/engines/write/raising.h"
#include "host/sql/names.h"
#include "host/sql/tree.h"

namespace QuorHost::Postgres {
namespace {

using Sql::Type;
using Sql::Tree::Constraint;
using Sql::Tree::CreateTable;
using Sql::Tree::TableColumn;
using Write::ExpressionWriter;
using Write::QueryWriter;
using ConstraintKind = Sql::Syntax::Constraint::Kind;

/// Writes the statements around queries and expressions.
class StatementWriter {
 public:
  /// @param before  a table that gains what the statement has beyond it
  explicit StatementWriter(const Sql::Relation* before = nullptr) : before_(before) {}

  std::string run(const Sql::Tree::Statement& statement) {
    std::visit(*this, statement.body);
    return sql_.take();
  }

  void operator()(const Sql::Tree::Query* query) { write(*query, false); }

  void operator()(const Sql::Tree::Insert& insert) {
    sql_.add("INSERT INTO ").name(insert.table->name).add(" (");
    list(insert.columns, [&](const Sql::Column* column) { sql_.name(column->name); });
    sql_.add(") ");
    if (insert.query == nullptr) {
      sql_.add("VALUES (");
      list(insert.values, [&](const Sql::Tree::Expression* value) { stored(*value); });
      sql_.add(")");
      return;
    }
    // The texts of the query become the stored ones under numbers for names.
    sql_.add("SELECT ");
    int number = 0;
    list(insert.columns, [&](const Sql::Column* column) {
      const bool text = column->type == Type::Text;
      if (text) sql_.add("quor_raw(");
      sql_.name(std::to_string(++number));
      if (text) sql_.add(")");
    });
    sql_.add(" FROM (");
    write(*insert.query, false);
    sql_.add(") AS \":rows\" (");
    number = 0;
    list(insert.columns, [&](const Sql::Column*) { sql_.name(std::to_string(++number)); });
    sql_.add(")");
  }

  void operator()(const Sql::Tree::Update& update) {
    sql_.add("UPDATE ").name(update.source->name).add(" SET ");
    list(update.assignments, [&](const Sql::Tree::Assignment& assignment) {
      sql_.name(assignment.column->name).add(" = ");
      stored(*assignment.value);
    });
    where(update.where);
  }

  void operator()(const Sql::Tree::Delete& erase) {
    sql_.add("DELETE FROM ").name(erase.source->name);
    where(erase.where);
  }

  void operator()(const CreateTable& table) {
    if (before_ != nullptr) return grow(table);
    sql_.add("CREATE TABLE ").ownName(table.name).add(" (");
    list(table.columns, [&](const TableColumn& column) { tableColumn(table, column); });
    for (const Constraint& constraint : table.constraints) {
      if (holdsText(table, constraint)) continue;
      sql_.add(", ");
      tableConstraint(constraint);
    }
    sql_.add(")");
    for (const Constraint& constraint : table.constraints) {
      if (holdsText(table, constraint)) textKey(table, constraint);
    }
    for (const TableColumn& column : table.columns) {
      if (isNumbered(table, column)) goesOn(table, column);
    }
  }

  void operator()(const Sql::Tree::CreateView& view) {
    if (view.keptOf != nullptr) {
      sql_.add(createsKeptTotals(view));
      return;
    }
    sql_.add("CREATE VIEW ").ownName(view.name).add(" AS ");
    write(*view.query, true);
  }

  void operator()(const Sql::Tree::CreateIndex& index) {
    sql_.add(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ").ownName(index.name);
    sql_.add(" ON ").name(index.table).add(" (");
    list(index.columns, [&](const Sql::Tree::IndexColumn& column) {
      sql_.name(column.name);
      if (isText(index, column.name)) sql_.add(" bpchar_ops");
      sql_.add(column.descending ? " DESC NULLS LAST" : " NULLS FIRST");
    });
    sql_.add(")");
    if (index.included.empty()) return;
    sql_.add(" INCLUDE");
    names(index.included);
  }

 private:
  void grow(const CreateTable& table) {
    std::string_view start = "ALTER TABLE ";
    const auto begin = [&] {
      sql_.add(start);
      if (start != ",") sql_.name(table.name);
      start = ",";
    };
    for (const TableColumn& column : table.columns) {
      if (before_->find(column.name) != nullptr) continue;
      begin();
      sql_.add(" ADD COLUMN ");
      tableColumn(table, column);
    }
    for (const Constraint& constraint : table.constraints) {
      const bool old = std::ranges::any_of(constraint.columns, [&](std::string_view name) {
        return before_->find(name) != nullptr;
      });
      if (old || constraint.kind != ConstraintKind::ForeignKey) continue;
      begin();
      sql_.add(" ADD ");
      tableConstraint(constraint);
    }
  }

  void write(const Sql::Tree::Query& query, bool named) {
    QueryWriter(sql_, postgresForm()).write(query, named);
  }
  void write(const Sql::Tree::Expression& expression) {
    ExpressionWriter(sql_, postgresForm()).write(expression);
  }

  /// A value as it is stored: a text with its blanks.
  void stored(const Sql::Tree::Expression& value) {
    const bool text = value.type == Type::Text;
    if (text) sql_.add("quor_raw(");
    write(value);
    if (text) sql_.add(")");
  }

  void where(const Sql::Tree::Expression* condition) {
    if (condition == nullptr) return;
    sql_.add(" WHERE ");
    ExpressionWriter(sql_, postgresForm()).writeFilter({}, Write::termsOf(condition));
  }

  template <class Items, class WriteItem>
  void list(const Items& items, const WriteItem& writeItem) {
    const char* separator = "";
    for (const auto& item : items) {
      sql_.add(separator);
      writeItem(item);
      separator = ", ";
    }
  }

  /// The engine numbers rows itself where the primary key is one whole number.
  static bool isNumbered(const CreateTable& table, const TableColumn& column) {
    const bool whole = column.type == Type::Long || column.type == Type::Integer;
    if (!whole || !column.primaryKey) return false;
    return std::ranges::count(table.columns, true, &TableColumn::primaryKey) == 1;
  }

  static bool holdsText(const CreateTable& table, const Constraint& constraint) {
    if (constraint.kind == ConstraintKind::ForeignKey) return false;
    return std::ranges::any_of(constraint.columns, [&](std::string_view name) {
      return std::ranges::any_of(table.columns, [&](const TableColumn& column) {
        return column.type == Type::Text && Sql::sameName(column.name, name);
      });
    });
  }

  static bool isText(const Sql::Tree::CreateIndex& index, std::string_view column) {
    const Sql::Column* const found = index.of->find(column);
    return found != nullptr && found->type == Type::Text;
  }

  void tableColumn(const CreateTable& table, const TableColumn& column) {
    sql_.name(column.name).add(" ").add(storedType(column.type));
    if (isNumbered(table, column)) sql_.add(" GENERATED BY DEFAULT AS IDENTITY");
    if (!column.nullable || column.primaryKey) sql_.add(" NOT NULL");
    switch (column.type) {
      case Type::Double:
        fits(table, column, "abs(", ") < 'Infinity'", "is not finite");
        break;
      case Type::Currency:
        fits(table, column, "(", ") BETWEEN -922337203685477.5808 AND 922337203685477.5807",
             "is outside the type currency");
        break;
      case Type::Date:
        fits(table, column, "(", ") BETWEEN '0100-01-01' AND '9999-12-31 23:59:59'",
             "is no date from 0100-01-01 to 9999-12-31");
        break;
      case Type::Text:
        if (column.size > 0) {
          const std::string size = std::to_string(column.size);
          fits(table, column, "char_length(", ") <= " + size,
               "is longer than " + size + " characters");
        }
        break;
      default:
        break;
    }
    if (column.defaultValue == nullptr) return;
    sql_.add(" DEFAULT ");
    stored(*column.defaultValue);
  }

  /// A check that a value fits its column; what does not goes to the function that says so.
  void fits(const CreateTable& table, const TableColumn& column, std::string_view before,
            std::string_view after, std::string_view otherwise) {
    sql_.add(" CHECK (").add(before).name(column.name).add(after).add(" OR quor_misfit(");
    sql_.name(column.name).add("::text, ").literal(column.name).add(", ").literal(table.name);
    sql_.add(", ").literal(otherwise).add("))");
  }

  static std::string_view storedType(Type type) {
    switch (type) {
      case Type::Boolean:
        return "boolean";
      case Type::Integer:
        return "smallint";
      case Type::Long:
        return "integer";
      case Type::Double:
        return "double precision";
      case Type::Currency:
        return "numeric(19,4)";
      case Type::Date:
        return "timestamp(0)";
      default:
        return "varchar COLLATE \"quor\"";
    }
  }

  template <class Names>
  void names(const Names& columns) {
    sql_.add(" (");
    list(columns, [&](std::string_view column) { sql_.name(column); });
    sql_.add(")");
  }

  void tableConstraint(const Constraint& constraint) {
    sql_.add(constraint.kind == ConstraintKind::PrimaryKey ? "PRIMARY KEY"
             : constraint.kind == ConstraintKind::Unique   ? "UNIQUE"
                                                           : "FOREIGN KEY");
    names(constraint.columns);
    if (constraint.kind != ConstraintKind::ForeignKey) return;
    sql_.add(" REFERENCES ").name(constraint.table);
    names(constraint.target);
  }

  /// A key with texts in it: only an index can compare them as texts are compared.
  void textKey(const CreateTable& table, const Constraint& constraint) {
    sql_.add("; CREATE UNIQUE INDEX ON ").name(table.name).add(" (");
    list(constraint.columns, [&](std::string_view name) {
      sql_.name(name);
      const auto column = std::ranges::find_if(
          table.columns, [&](const TableColumn& each) { return Sql::sameName(each.name, name); });
      if (column->type == Type::Text) sql_.add(" bpchar_ops");
    });
    sql_.add(")");
  }

  /// After rows that bring numbers of their own, the identity goes on behind the largest one.
  void goesOn(const CreateTable& table, const TableColumn& column) {
    sql_.add("; CREATE TRIGGER ").name("go_on").add(" AFTER INSERT ON ").name(table.name);
    sql_.add(" EXECUTE FUNCTION quor_go_on(").literal(Sql::lowerName(column.name)).add(")");
  }

  const Sql::Relation* before_;
  Write::SqlText sql_{postgresText()};
};

}  // namespace

std::string SqlWriter::write(const Sql::Tree::Statement& statement) const {
  return StatementWriter().run(statement);
}

bool SqlWriter::mayRaise(const Sql::Tree::Query& query) const { return Write::columnRaises(query); }

std::string GrowthWriter::write(const Sql::Tree::Statement& statement) const {
  return StatementWriter(before_).run(statement);
}

bool GrowthWriter::mayRaise(const Sql::Tree::Query& query) const {
  return Write::columnRaises(query);
}

}  // namespace QuorHost::Postgres
