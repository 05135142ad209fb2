#include "host/engines/postgres/write/kept_totals_text.h"

#include <span>
#include <string_view>
#include <vector>

#include "host/engines/postgres/write/postgres_form.h"
#include "host/engines/write/joined.h"
#include "host/engines/write/sql_text.h"

namespace QuorHost::Postgres {
namespace {

using Write::joined;
using Kind = Sql::KeptColumn::Kind;

std::string quoted(std::string_view name) {
  return Write::SqlText(postgresText()).name(name).take();
}

/// The pieces of the statements about one view of totals.
struct Totals {
  struct Piece {
    std::string name;    // quoted
    std::string column;  // of the table, quoted; none for the number of rows
  };

  Totals(std::string_view viewName, const std::vector<std::string_view>& columns,
         std::span<const Sql::KeptColumn> kept, const Sql::Relation& of)
      : view(quoted(viewName)), table(quoted(of.name)) {
    for (std::size_t i = 0; i < kept.size(); ++i) {
      Piece piece{.name = quoted(columns[i]), .column = {}};
      if (kept[i].kind == Kind::Rows) {
        rows = piece.name;
      } else {
        piece.column = quoted(of.columns[kept[i].column].name);
      }
      (kept[i].kind == Kind::Key ? keys : totals).push_back(piece);
    }
  }

  [[nodiscard]] std::string names(const std::vector<Piece>& pieces) const {
    return joined(pieces, ", ", [](const Piece& piece) { return piece.name; });
  }
  [[nodiscard]] std::string keyColumns() const {
    return joined(keys, ", ", [](const Piece& piece) { return piece.column; });
  }

  /// The sums over `from`, with each row counted as often as `sign` says.
  [[nodiscard]] std::string sums(const std::string& from) const {
    const auto total = [](const Piece& piece) {
      return (piece.column.empty() ? std::string("count(*)") : "sum(" + piece.column + ")") +
             " AS " + piece.name;
    };
    const auto key = [](const Piece& piece) { return piece.column + " AS " + piece.name; };
    return "SELECT " + joined(keys, ", ", key) + ", " + joined(totals, ", ", total) + " FROM " +
           from + " GROUP BY " + keyColumns();
  }

  std::string view;
  std::string table;
  std::vector<Piece> keys;
  std::vector<Piece> totals;
  std::string rows;
};

/// What a trigger does: adds what the rows `now` bring, and takes away what those `before` brought.
std::string triggerBody(const Totals& of, bool now, bool before) {
  const auto part = [&](const char* from, const char* sign) {
    const auto total = [&](const Totals::Piece& piece) {
      return sign + (piece.column.empty() ? std::string("1") : piece.column) + " AS " + piece.name;
    };
    const auto key = [](const Totals::Piece& piece) { return piece.column + " AS " + piece.name; };
    return "SELECT " + joined(of.keys, ", ", key) + ", " + joined(of.totals, ", ", total) +
           " FROM " + from;
  };
  const auto sum = [](const Totals::Piece& piece) { return "sum(" + piece.name + ")"; };
  const auto changed = [](const Totals::Piece& piece) { return "sum(" + piece.name + ") <> 0"; };
  const auto more = [&](const Totals::Piece& piece) {
    return piece.name + " = " + of.view + "." + piece.name + " + excluded." + piece.name;
  };
  std::string source;
  if (now) source = part("quor_now", "");
  if (now && before) source += " UNION ALL ";
  if (before) source += part("quor_before", "-");
  // In one order of keys, so that two transactions do not wait for each other crosswise.
  std::string body =
      "INSERT INTO " + of.view + " (" + of.names(of.keys) + ", " + of.names(of.totals) +
      ") SELECT " + of.names(of.keys) + ", " + joined(of.totals, ", ", sum) + " FROM (" + source +
      ") AS \":rows\" GROUP BY " + of.names(of.keys) + " HAVING " +
      joined(of.totals, " OR ", changed) + " ORDER BY " + of.names(of.keys) + " ON CONFLICT (" +
      of.names(of.keys) + ") DO UPDATE SET " + joined(of.totals, ", ", more) + "; ";
  if (before) {
    const auto same = [&](const Totals::Piece& piece) {
      return of.view + "." + piece.name + " IS NOT DISTINCT FROM quor_before." + piece.column;
    };
    const std::string first =
        of.view + "." + of.keys.front().name + " = quor_before." + of.keys.front().column;
    body += "DELETE FROM " + of.view + " USING (SELECT DISTINCT " + of.keyColumns() +
            " FROM quor_before) AS quor_before WHERE " + of.rows + " = 0 AND " + first + " AND " +
            joined(of.keys, " AND ", same) + "; ";
  }
  return "BEGIN " + body + "RETURN NULL; END";
}

std::string storedType(Sql::Type type, Kind kind) {
  switch (kind) {
    case Kind::Rows:
      return "bigint";
    case Kind::Sum:
      return type == Sql::Type::Currency ? "numeric" : "bigint";
    case Kind::Key:
      break;
  }
  switch (type) {
    case Sql::Type::Integer:
      return "smallint";
    case Sql::Type::Long:
      return "integer";
    case Sql::Type::Date:
      return "timestamp(0)";
    default:
      return std::string(serverType(type));
  }
}

/// The trigger for one kind of change, which sees the tables `rows`, and its function.
std::string trigger(const Totals& of, std::string_view view, std::string_view event,
                    std::string_view rows) {
  const bool now = rows.find("quor_now") != std::string_view::npos;
  const bool before = rows.find("quor_before") != std::string_view::npos;
  const std::string name = quoted(std::string(view).append(":").append(event));
  std::string sql = "; CREATE FUNCTION " + name +
                    "() RETURNS trigger LANGUAGE plpgsql "
                    "SET search_path FROM CURRENT AS $quor$";
  sql += triggerBody(of, now, before);
  sql += "$quor$; CREATE TRIGGER " + name + " AFTER ";
  sql.append(event).append(" ON " + of.table + " REFERENCING ").append(rows);
  return sql + " FOR EACH STATEMENT EXECUTE FUNCTION " + name + "()";
}

}  // namespace

std::string createsKeptTotals(const Sql::Tree::CreateView& view) {
  std::vector<std::string_view> columns;
  columns.reserve(view.query->columns.size());
  for (const Sql::Tree::OutputColumn& column : view.query->columns) columns.push_back(column.name);
  const Totals of(view.name, columns, view.kept, *view.keptOf);

  std::string sql = "CREATE TABLE ";
  sql += Write::SqlText(postgresText()).ownName(view.name).take();
  std::string_view separator = " (";
  for (std::size_t i = 0; i < view.kept.size(); ++i) {
    sql += separator;
    sql += quoted(columns[i]);
    sql += ' ';
    sql += storedType(view.query->columns[i].type, view.kept[i].kind);
    separator = ", ";
  }
  sql += "); CREATE UNIQUE INDEX ON " + of.view + " (" + of.names(of.keys) +
         ") NULLS NOT DISTINCT; INSERT INTO " + of.view + " (" + of.names(of.keys) + ", " +
         of.names(of.totals) + ") " + of.sums(of.table);
  sql += trigger(of, view.name, "insert", "NEW TABLE AS quor_now");
  sql += trigger(of, view.name, "update", "OLD TABLE AS quor_before NEW TABLE AS quor_now");
  sql += trigger(of, view.name, "delete", "OLD TABLE AS quor_before");
  return sql;
}

std::string keptTotalsDifferences(const Sql::Relation& view, const Sql::Relation& table) {
  std::vector<std::string_view> columns;
  columns.reserve(view.columns.size());
  for (const Sql::Column& column : view.columns) columns.push_back(column.name);
  const Totals of(view.name, columns, view.kept, table);
  const std::string kept =
      "SELECT " + of.names(of.keys) + ", " + of.names(of.totals) + " FROM " + of.view;
  const std::string added = of.sums(of.table);
  return "SELECT DISTINCT " + of.names(of.keys) + " FROM ((" + kept + " EXCEPT " + added +
         ") UNION ALL (" + added + " EXCEPT " + kept + ")) AS \":wrong\" ORDER BY 1, 2";
}

}  // namespace QuorHost::Postgres
