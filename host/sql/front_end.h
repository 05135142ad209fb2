// The SQL front end: a statement in one of the two dialects in, the storage engine's SQL out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/sql/catalogue.h"
#include "host/sql/types.h"

namespace QuorHost::Sql {

class Writer;

enum class StatementKind : std::uint8_t {
  Select,
  Insert,
  Update,
  Delete,
  CreateTable,
  CreateView,
  CreateIndex,
};

/// A column of a query's result.
struct ResultColumn {
  std::string name;
  Type type = Type::Unknown;
};

/// A statement ready for the storage engine.
struct Translation {
  StatementKind kind = StatementKind::Select;
  /// The engine's SQL. Markers are numbered (`?1`, `?2`, ...) in the order in which the original
  /// text has them, so that each value is bound once.
  std::string sql;
  /// The result's columns; empty for anything but a query.
  std::vector<ResultColumn> columns;
  /// The type that each marker's value is converted to before it is bound, in marker order;
  /// `Unknown` where the text does not tell, and the value goes as it is.
  std::vector<Type> markers;
  /// The table that a query's rows come from, when the query reads one table's own columns, row for
  /// row, without grouping: such a recordset can be updated. Otherwise empty.
  std::string updatableTable;
  /// The table, view or index that a `CREATE` statement makes, with its columns; of an index only
  /// the first, and of `indexedTable`. `enter` adds it to the catalogue once the engine has it.
  Relation created;
  std::string indexedTable;
};

/// Whether a query is changed on the way so that the engine answers it faster. The rows are the
/// same, in the order that the query asks for. Either way nothing is computed that could end the
/// statement with an error and that it does not read.
enum class Rewriting : std::uint8_t { Faster, None };

/// Reads one statement in `dialect` against `catalogue` and writes it for the engine of `writer`.
///
/// Raises `QuorDataLib::kStatementRefused`, with the place and the word, for whatever the dialect
/// or the subset does not allow: a syntax error, the other dialect's words, an unknown table,
/// function or column, an ambiguous name, a wrong argument count, operands whose types do not go
/// together, a column outside its GROUP BY, several statements in one text.
[[nodiscard]] Translation translate(std::string_view text, Dialect dialect,
                                    const Catalogue& catalogue, const Writer& writer,
                                    Rewriting rewriting = Rewriting::Faster);

/// The table whose rows a query gives as they are, told by its words alone: the only one that it
/// reads, without groups, all columns by their own names. Empty for any other statement, and for
/// one that is not of the dialect's subset.
[[nodiscard]] std::string singleTable(std::string_view query, Dialect dialect);

/// Adds what a `CREATE` statement has made to the catalogue. Raises a refused statement when the
/// name is taken.
void enter(const Translation& definition, Catalogue& catalogue);

/// The statements of a schema text in their order, each without its final semicolon; comments stay
/// with the statement that follows them.
[[nodiscard]] std::vector<std::string> splitStatements(std::string_view text);

}  // namespace QuorHost::Sql
