#include "host/engines/sqlite/write/sql_writer.h"

#include <string>
#include <variant>
#include <vector>

#include "host/engines/sqlite/write/kept_totals_text.h"
#include "host/engines/sqlite/write/sqlite_form.h"
#include "host/engines/write/expression_writer.h"
#include "host/engines/write/filter.h"
#include "host/engines/write/query_writer.h"
#include "host/engines/write/raising.h"
#include "host/sql/tree.h"

namespace QuorHost::Sqlite {
namespace {

using Sql::Type;
using Sql::Tree::Constraint;
using Write::ExpressionWriter;
using Write::QueryWriter;
using Write::SqlText;
using Write::termsOf;
using ConstraintKind = Sql::Syntax::Constraint::Kind;

/// Writes the statements around queries and expressions.
class StatementWriter {
 public:
  std::string run(const Sql::Tree::Statement& statement) {
    std::visit(*this, statement.body);
    return sql_.take();
  }

  void operator()(const Sql::Tree::Query* query) {
    QueryWriter(sql_, sqliteForm()).write(*query, false);
  }

  void operator()(const Sql::Tree::Insert& insert) {
    sql_.add("INSERT INTO ").name(insert.table->name).add(" (");
    list(insert.columns, [&](const Sql::Column* column) { sql_.name(column->name); });
    sql_.add(") ");
    if (insert.query != nullptr) return QueryWriter(sql_, sqliteForm()).write(*insert.query, false);
    sql_.add("VALUES (");
    list(insert.values, [&](const Sql::Tree::Expression* value) { write(*value); });
    sql_.add(")");
  }

  void operator()(const Sql::Tree::Update& update) {
    sql_.add("UPDATE ").name(update.source->name).add(" SET ");
    list(update.assignments, [&](const Sql::Tree::Assignment& assignment) {
      sql_.name(assignment.column->name).add(" = ");
      write(*assignment.value);
    });
    where(update.where);
  }

  void operator()(const Sql::Tree::Delete& erase) {
    sql_.add("DELETE FROM ").name(erase.source->name);
    where(erase.where);
  }

  void operator()(const Sql::Tree::CreateTable& table) {
    sql_.add("CREATE TABLE ").ownName(table.name).add(" (");
    list(table.columns, [&](const Sql::Tree::TableColumn& column) { tableColumn(table, column); });
    for (const Constraint& constraint : table.constraints) {
      const bool written = constraint.kind == ConstraintKind::PrimaryKey &&
                           constraint.columns.size() == 1 && hasRowNumber(table);
      if (!written) tableConstraint(constraint);
    }
    sql_.add(") STRICT");
  }

  void operator()(const Sql::Tree::CreateView& view) {
    if (view.keptOf != nullptr) return keptTable(view);
    sql_.add("CREATE VIEW ").ownName(view.name).add(" AS ");
    QueryWriter(sql_, sqliteForm()).write(*view.query, true);
  }

  void operator()(const Sql::Tree::CreateIndex& index) {
    sql_.add(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ").ownName(index.name);
    sql_.add(" ON ").name(index.table).add(" (");
    list(index.columns, [&](const Sql::Tree::IndexColumn& column) {
      sql_.name(column.name);
      if (column.descending) sql_.add(" DESC");
    });
    // Further columns would change what must be unique.
    if (!index.unique) {
      for (const std::string_view column : index.included) sql_.add(", ").name(column);
    }
    sql_.add(")");
  }

 private:
  void write(const Sql::Tree::Expression& expression) {
    ExpressionWriter(sql_, sqliteForm()).write(expression);
  }

  void where(const Sql::Tree::Expression* condition) {
    if (condition == nullptr) return;
    sql_.add(" WHERE ");
    ExpressionWriter(sql_, sqliteForm()).writeFilter({}, termsOf(condition));
  }

  template <class Items, class Write>
  void list(const Items& items, const Write& writeItem) {
    const char* separator = "";
    for (const auto& item : items) {
      sql_.add(separator);
      writeItem(item);
      separator = ", ";
    }
  }

  /// The engine numbers rows itself where the primary key is one whole number.
  static bool isRowNumber(const Sql::Tree::CreateTable& table,
                          const Sql::Tree::TableColumn& column) {
    const bool whole = column.type == Type::Long || column.type == Type::Integer;
    if (!whole || !column.primaryKey) return false;
    for (const Sql::Tree::TableColumn& other : table.columns) {
      if (other.primaryKey && &other != &column) return false;
    }
    return true;
  }

  static bool hasRowNumber(const Sql::Tree::CreateTable& table) {
    for (const Sql::Tree::TableColumn& column : table.columns) {
      if (isRowNumber(table, column)) return true;
    }
    return false;
  }

  void tableColumn(const Sql::Tree::CreateTable& table, const Sql::Tree::TableColumn& column) {
    sql_.name(column.name).add(" ").add(storedType(column.type));
    if (isRowNumber(table, column)) {
      sql_.add(" PRIMARY KEY");
    } else if (!column.nullable) {
      sql_.add(" NOT NULL");
    }
    if (column.type == Type::Text) sql_.add(" COLLATE QUOR");
    switch (column.type) {
      case Type::Boolean:
        fits(table, column, "", " BETWEEN 0 AND 1", "is neither true nor false");
        break;
      case Type::Integer:
        fits(table, column, "", " BETWEEN -32768 AND 32767",
             "is outside the type integer (-32768 to 32767)");
        break;
      case Type::Long:
        fits(table, column, "", " BETWEEN -2147483648 AND 2147483647",
             "is outside the type long (-2147483648 to 2147483647)");
        break;
      case Type::Double:
        fits(table, column, "abs", " <= 1.7976931348623157e+308", "is not finite");
        break;
      case Type::Text:
        if (column.size > 0) {
          const std::string size = std::to_string(column.size);
          fits(table, column, "length", " <= " + size, "is longer than " + size + " characters");
        }
        break;
      default:
        break;
    }
    if (column.defaultValue != nullptr) {
      sql_.add(" DEFAULT ");
      write(*column.defaultValue);
    }
  }

  /// A check that a value fits its column; what does not goes to the function that says so.
  void fits(const Sql::Tree::CreateTable& table, const Sql::Tree::TableColumn& column,
            std::string_view of, std::string_view condition, std::string_view otherwise) {
    sql_.add(" CHECK (").add(of).add("(").name(column.name).add(")").add(condition);
    sql_.add(" OR quor_misfit(").name(column.name).add(", ").literal(column.name).add(", ");
    sql_.literal(table.name).add(", ").literal(otherwise).add("))");
  }

  /// The table of totals that are kept. A primary key of this kind of table holds no null, so that
  /// a key that may be one stands in a column of its own, where an empty blob is the null.
  void keptTable(const Sql::Tree::CreateView& view) {
    using Kind = Sql::KeptColumn::Kind;
    sql_.add("CREATE TABLE ").ownName(view.name).add(" (");
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < view.kept.size(); ++i) {
      const Sql::Tree::OutputColumn& column = view.query->columns[i];
      const Sql::KeptColumn& kept = view.kept[i];
      const std::string stored = keptName(column.name, view.keptOf->columns, kept);
      const bool maybeNull = stored != column.name;
      sql_.name(stored).add(" ").add(maybeNull ? "ANY" : storedType(column.type));
      sql_.add(" NOT NULL, ");
      if (kept.kind == Kind::Key) keys.push_back(stored);
    }
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const Sql::Tree::OutputColumn& column = view.query->columns[i];
      if (keys[i] == column.name) continue;
      sql_.name(column.name).add(" ").add(storedType(column.type)).add(" AS (nullif(");
      sql_.name(keys[i]).add(", x'')) VIRTUAL, ");
    }
    sql_.add("PRIMARY KEY (");
    list(keys, [&](const std::string& key) { sql_.name(key); });
    sql_.add(")) STRICT, WITHOUT ROWID");
  }

  static std::string_view storedType(Type type) {
    switch (type) {
      case Type::Double:
        return "REAL";
      case Type::Date:
      case Type::Text:
        return "TEXT";
      default:
        return "INTEGER";
    }
  }

  void names(std::span<const std::string_view> columns) {
    sql_.add(" (");
    list(columns, [&](std::string_view column) { sql_.name(column); });
    sql_.add(")");
  }

  void tableConstraint(const Constraint& constraint) {
    sql_.add(constraint.kind == ConstraintKind::PrimaryKey ? ", PRIMARY KEY"
             : constraint.kind == ConstraintKind::Unique   ? ", UNIQUE"
                                                           : ", FOREIGN KEY");
    names(constraint.columns);
    if (constraint.kind != ConstraintKind::ForeignKey) return;
    sql_.add(" REFERENCES ").name(constraint.table);
    names(constraint.target);
  }

  SqlText sql_{sqliteText()};
};

}  // namespace

std::string SqlWriter::write(const Sql::Tree::Statement& statement) const {
  return StatementWriter().run(statement);
}

bool SqlWriter::mayRaise(const Sql::Tree::Query& query) const { return Write::columnRaises(query); }

}  // namespace QuorHost::Sqlite
