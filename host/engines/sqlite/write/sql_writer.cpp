#include "host/engines/sqlite/write/sql_writer.h"

#include <algorithm>
#include <string>
#include <vector>

#include "host/engines/sqlite/write/kept_totals_text.h"
#include "host/engines/sqlite/write/sqlite_form.h"
#include "host/engines/write/raising.h"
#include "host/engines/write/statement_writer.h"
#include "host/sql/tree.h"

namespace QuorHost::Sqlite {
namespace {

using Sql::Type;
using Sql::Tree::Constraint;
using Sql::Tree::CreateTable;
using Sql::Tree::TableColumn;
using ConstraintKind = Sql::Syntax::Constraint::Kind;

class SqliteStatementWriter final : public Write::StatementWriter {
 public:
  SqliteStatementWriter() : StatementWriter(sqliteForm()) {}

 private:
  void createTable(const CreateTable& table) override {
    sql().add("CREATE TABLE ").ownName(table.name).add(" (");
    list(table.columns, [&](const TableColumn& column) { tableColumn(table, column); });
    const bool numbered = std::ranges::any_of(
        table.columns, [&](const TableColumn& column) { return isNumbered(table, column); });
    for (const Constraint& constraint : table.constraints) {
      const bool written =
          constraint.kind == ConstraintKind::PrimaryKey && constraint.columns.size() == 1;
      if (written && numbered) continue;
      sql().add(", ");
      writeConstraint(constraint);
    }
    sql().add(") STRICT");
  }

  void keyOfIndex(const Sql::Tree::CreateIndex& /*index*/,
                  const Sql::Tree::IndexColumn& column) override {
    sql().name(column.name);
    if (column.descending) sql().add(" DESC");
  }

  void endIndex(const Sql::Tree::CreateIndex& index) override {
    // Further columns would change what must be unique.
    if (!index.unique) {
      for (const std::string_view column : index.included) sql().add(", ").name(column);
    }
    sql().add(")");
  }

  void tableColumn(const CreateTable& table, const TableColumn& column) {
    sql().name(column.name).add(" ").add(storedType(column.type));
    if (isNumbered(table, column)) {
      sql().add(" PRIMARY KEY");
    } else if (!column.nullable) {
      sql().add(" NOT NULL");
    }
    if (column.type == Type::Text) sql().add(" COLLATE QUOR");
    switch (column.type) {
      case Type::Boolean:
        fits(table, column, "(", ") BETWEEN 0 AND 1", "is neither true nor false");
        break;
      case Type::Integer:
        fits(table, column, "(", ") BETWEEN -32768 AND 32767",
             "is outside the type integer (-32768 to 32767)");
        break;
      case Type::Long:
        fits(table, column, "(", ") BETWEEN -2147483648 AND 2147483647",
             "is outside the type long (-2147483648 to 2147483647)");
        break;
      case Type::Double:
        fits(table, column, "abs(", ") <= 1.7976931348623157e+308", "is not finite");
        break;
      case Type::Text:
        if (column.size > 0) {
          const std::string size = std::to_string(column.size);
          fits(table, column, "length(", ") <= " + size, "is longer than " + size + " characters");
        }
        break;
      default:
        break;
    }
    if (column.defaultValue != nullptr) {
      sql().add(" DEFAULT ");
      write(*column.defaultValue);
    }
  }

  /// The table of totals that are kept. A primary key of this kind of table holds no null, so that
  /// a key that may be one stands in a column of its own, where an empty blob is the null.
  void createTotals(const Sql::Tree::CreateView& view) override {
    using Kind = Sql::KeptColumn::Kind;
    sql().add("CREATE TABLE ").ownName(view.name).add(" (");
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < view.kept.size(); ++i) {
      const Sql::Tree::OutputColumn& column = view.query->columns[i];
      const Sql::KeptColumn& kept = view.kept[i];
      const std::string stored = keptName(column.name, view.keptOf->columns, kept);
      const bool maybeNull = stored != column.name;
      sql().name(stored).add(" ").add(maybeNull ? "ANY" : storedType(column.type));
      sql().add(" NOT NULL, ");
      if (kept.kind == Kind::Key) keys.push_back(stored);
    }
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const Sql::Tree::OutputColumn& column = view.query->columns[i];
      if (keys[i] == column.name) continue;
      sql().name(column.name).add(" ").add(storedType(column.type)).add(" AS (nullif(");
      sql().name(keys[i]).add(", x'')) VIRTUAL, ");
    }
    sql().add("PRIMARY KEY (");
    list(keys, [&](const std::string& key) { sql().name(key); });
    sql().add(")) STRICT, WITHOUT ROWID");
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
};

}  // namespace

std::string SqlWriter::write(const Sql::Tree::Statement& statement) const {
  return SqliteStatementWriter().run(statement);
}

bool SqlWriter::mayRaise(const Sql::Tree::Query& query) const { return Write::columnRaises(query); }

}  // namespace QuorHost::Sqlite
