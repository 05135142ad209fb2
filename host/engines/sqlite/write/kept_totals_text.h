// SQLite's SQL by which kept totals are filled, kept true and compared with their rows.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/sql/catalogue.h"

namespace QuorHost::Sqlite {

/// The function that the triggers of kept totals call, which only this program has: where another
/// program would change rows, the engine refuses it, and the totals stay true. Its arguments are
/// the name of the totals, the number of keys, 1 for a row that comes or -1 for one that goes, the
/// keys (an empty blob for null), and what the row adds to each other column.
inline constexpr const char* kTotalFunction = "quor_total";

/// The stored column of the kept totals' column `name`: a key that may be null has another one, as
/// the engine's primary key takes no null. `table` are the columns of the table that is totalled.
[[nodiscard]] std::string keptName(std::string_view name, const std::vector<Sql::Column>& table,
                                   const Sql::KeptColumn& kept);

/// The names of the triggers that belong to the totals called `view`.
[[nodiscard]] std::array<std::string, 3> keptTriggerNames(std::string_view view);

/// The statements about one view of totals. Their markers are for its keys, as they are stored, and
/// then for the columns behind them.
class KeptTotals {
 public:
  KeptTotals(const Sql::Relation& view, const Sql::Catalogue& catalogue);

  [[nodiscard]] const std::string& view() const noexcept { return view_; }
  [[nodiscard]] const std::string& table() const noexcept { return table_; }
  /// The place of the number of rows among the columns behind the keys.
  [[nodiscard]] std::size_t rowCount() const noexcept { return rowCount_; }

  /// Adds all rows of the table up into the empty totals.
  [[nodiscard]] std::string fill() const;
  [[nodiscard]] std::string clear() const;
  /// Adds to the totals of one group.
  [[nodiscard]] std::string add() const;
  /// Removes a group that has no more rows; its markers are for the keys alone.
  [[nodiscard]] std::string removeEmpty() const;

  /// A trigger for each kind of change; they are called as `keptTriggerNames` has it.
  [[nodiscard]] std::array<std::string, 3> triggers() const;

  /// A query of the keys of those totals that are not what the rows add up to.
  [[nodiscard]] std::string differences() const;

 private:
  struct Piece {
    std::string name;    // in the result
    std::string stored;  // quoted
    std::string column;  // of the table, quoted; none for the number of rows
    bool maybeNull = false;
  };

  [[nodiscard]] std::string storedList() const;
  [[nodiscard]] std::string sums() const;
  [[nodiscard]] std::string sameGroup() const;
  [[nodiscard]] std::string call(bool comes) const;

  std::string view_;
  std::string table_;
  std::vector<Piece> keys_;
  std::vector<Piece> totals_;
  std::size_t rowCount_ = 0;
};

/// The statements about all kept totals of a company.
[[nodiscard]] std::vector<KeptTotals> keptTotals(const Sql::Catalogue& catalogue);

}  // namespace QuorHost::Sqlite
