// What the front end knows of a company's tables and views.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/sql/types.h"

namespace QuorHost::Sql {

/// One column of a table or view.
struct Column {
  std::string name;
  Type type = Type::Unknown;
  /// Longest text in characters; 0 for no limit and for every other type.
  std::int32_t size = 0;
  bool nullable = true;
  bool primaryKey = false;
  /// The engine numbers new rows itself.
  bool identity = false;
  /// An index of the table, its primary key among them, begins with the column.
  bool leadsIndex = false;
  /// A foreign key of this one column points at a row of another table.
  bool reference = false;
};

/// What a column of kept totals is: a key of the groups, the sum of a column, or the number of
/// rows.
struct KeptColumn {
  enum class Kind : std::uint8_t { Key, Sum, Rows };
  Kind kind = Kind::Rows;
  /// Of a key or a sum: the column of the table, by its place.
  std::uint32_t column = 0;
};

/// A table or a view, its columns in their declared order.
struct Relation {
  enum class Kind : std::uint8_t { Table, View };
  std::string name;
  Kind kind = Kind::Table;
  std::vector<Column> columns;
  /// Of a view: the `CREATE VIEW` that made it, in the server dialect.
  std::string definition;
  /// Of a view of totals whose rows are kept, and kept true with every change: the table that they
  /// are of, and what each column is, the keys first. They are found by the first key.
  std::string keptOf;
  std::vector<KeptColumn> kept;

  /// The column of that name, matched without regard to case, or null.
  [[nodiscard]] const Column* find(std::string_view columnName) const noexcept;
};

/// The tables and views of one company, by name without regard to case.
class Catalogue {
 public:
  /// Length of the longest name, in bytes.
  static constexpr std::size_t kLongestName = 128;

  /// The relation of that name, or null. The pointer holds until the catalogue is changed.
  [[nodiscard]] const Relation* find(std::string_view name) const noexcept;

  /// Adds a relation. Raises a refused statement when the name is taken or too long.
  void add(Relation relation);

  /// Notes an index of `table` that begins with `column`; both are known.
  void addIndex(std::string_view table, std::string_view column);

  /// All but one of the relations, whose name is free then.
  [[nodiscard]] Catalogue without(std::string_view name) const;

  /// The views of totals of `table` that are kept.
  [[nodiscard]] std::vector<const Relation*> keptTotals(const Relation& table) const;

  /// All relations, in the order in which they were added.
  [[nodiscard]] const std::vector<Relation>& relations() const noexcept { return relations_; }

 private:
  std::vector<Relation> relations_;
  std::map<std::string, std::size_t, std::less<>> byName_;  // lower case to index
};

}  // namespace QuorHost::Sql
