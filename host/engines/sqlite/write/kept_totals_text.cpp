#include "host/engines/sqlite/write/kept_totals_text.h"

#include "host/engines/sqlite/write/sqlite_form.h"
#include "host/engines/write/joined.h"
#include "host/engines/write/sql_text.h"

namespace QuorHost::Sqlite {
namespace {

using Write::joined;
using Kind = Sql::KeptColumn::Kind;

std::string quoted(std::string_view name) { return Write::SqlText(sqliteText()).name(name).take(); }

}  // namespace

std::string keptName(std::string_view name, const std::vector<Sql::Column>& table,
                     const Sql::KeptColumn& kept) {
  const bool maybeNull = kept.kind == Kind::Key && table[kept.column].nullable;
  return std::string(name) + (maybeNull ? ":key" : "");
}

std::array<std::string, 3> keptTriggerNames(std::string_view view) {
  const std::string name(view);
  return {name + ":insert", name + ":update", name + ":delete"};
}

KeptTotals::KeptTotals(const Sql::Relation& view, const Sql::Catalogue& catalogue)
    : view_(view.name), table_(view.keptOf) {
  const std::vector<Sql::Column>& columns = catalogue.find(table_)->columns;
  for (std::size_t i = 0; i < view.kept.size(); ++i) {
    const Sql::KeptColumn& kept = view.kept[i];
    const std::string& name = view.columns[i].name;
    Piece piece{.name = name, .stored = quoted(keptName(name, columns, kept)), .column = {}};
    if (kept.kind == Kind::Rows) {
      rowCount_ = totals_.size();
    } else {
      piece.column = quoted(columns[kept.column].name);
      piece.maybeNull = columns[kept.column].nullable;
    }
    (kept.kind == Kind::Key ? keys_ : totals_).push_back(std::move(piece));
  }
}

std::string KeptTotals::storedList() const {
  const auto name = [](const Piece& piece) { return piece.stored; };
  return joined(keys_, ", ", name) + ", " + joined(totals_, ", ", name);
}

/// The totals of all rows, as they are stored.
std::string KeptTotals::sums() const {
  const auto key = [](const Piece& piece) {
    return piece.maybeNull ? "ifnull(" + piece.column + ", x'')" : piece.column;
  };
  const auto total = [](const Piece& piece) {
    return piece.column.empty() ? std::string("count(*)") : "sum(" + piece.column + ")";
  };
  return "SELECT " + joined(keys_, ", ", key) + ", " + joined(totals_, ", ", total) + " FROM " +
         quoted(table_) + " GROUP BY " + joined(keys_, ", ", key);
}

std::string KeptTotals::sameGroup() const {
  return joined(keys_, " AND ", [](const Piece& piece) { return piece.stored + " = ?"; });
}

std::string KeptTotals::fill() const {
  return "INSERT INTO " + quoted(view_) + " (" + storedList() + ") " + sums();
}

std::string KeptTotals::clear() const { return "DELETE FROM " + quoted(view_); }

std::string KeptTotals::add() const {
  const auto marker = [](const Piece&) { return std::string("?"); };
  const auto more = [](const Piece& piece) {
    return piece.stored + " = " + piece.stored + " + excluded." + piece.stored;
  };
  return "INSERT INTO " + quoted(view_) + " (" + storedList() + ") VALUES (" +
         joined(keys_, ", ", marker) + ", " + joined(totals_, ", ", marker) +
         ") ON CONFLICT DO UPDATE SET " + joined(totals_, ", ", more);
}

std::string KeptTotals::removeEmpty() const {
  return "DELETE FROM " + quoted(view_) + " WHERE " + sameGroup() + " AND " +
         totals_[rowCount_].stored + " = 0";
}

/// Tells of a row that comes or goes.
std::string KeptTotals::call(bool comes) const {
  const std::string row = comes ? "NEW." : "OLD.";
  const auto key = [&](const Piece& piece) {
    return piece.maybeNull ? "ifnull(" + row + piece.column + ", x'')" : row + piece.column;
  };
  const auto value = [&](const Piece& piece) {
    return piece.column.empty() ? std::string("1") : row + piece.column;
  };
  return std::string(kTotalFunction) + "(" + Write::SqlText(sqliteText()).literal(view_).take() +
         ", " + std::to_string(keys_.size()) + (comes ? ", 1, " : ", -1, ") +
         joined(keys_, ", ", key) + ", " + joined(totals_, ", ", value) + ")";
}

std::array<std::string, 3> KeptTotals::triggers() const {
  std::vector<std::string> watched;
  for (const std::vector<Piece>* const pieces : {&keys_, &totals_}) {
    for (const Piece& piece : *pieces) {
      if (!piece.column.empty()) watched.push_back(piece.column);
    }
  }
  const std::string columns = joined(watched, ", ", [](const std::string& name) { return name; });
  const std::array<std::string, 3> names = keptTriggerNames(view_);
  const auto trigger = [&](const std::string& name, const std::string& when,
                           const std::string& calls) {
    return "CREATE TRIGGER " + quoted(name) + " AFTER " + when + " ON " + quoted(table_) +
           " BEGIN SELECT " + calls + "; END";
  };
  return {trigger(names[0], "INSERT", call(true)),
          trigger(names[1], "UPDATE OF " + columns, call(false) + ", " + call(true)),
          trigger(names[2], "DELETE", call(false))};
}

std::string KeptTotals::differences() const {
  const auto readable = [](const Piece& piece) {
    return "nullif(" + piece.stored + ", x'') AS " + quoted(piece.name);
  };
  return "WITH Kept AS (SELECT " + storedList() + " FROM " + quoted(view_) + "), Added (" +
         storedList() + ") AS (" + sums() + ") SELECT DISTINCT " + joined(keys_, ", ", readable) +
         " FROM (SELECT * FROM (SELECT * FROM Added EXCEPT SELECT * FROM Kept)"
         " UNION ALL SELECT * FROM (SELECT * FROM Kept EXCEPT SELECT * FROM Added)) ORDER BY 1, 2";
}

std::vector<KeptTotals> keptTotals(const Sql::Catalogue& catalogue) {
  std::vector<KeptTotals> all;
  for (const Sql::Relation& relation : catalogue.relations()) {
    if (!relation.keptOf.empty()) all.emplace_back(relation, catalogue);
  }
  return all;
}

}  // namespace QuorHost::Sqlite
