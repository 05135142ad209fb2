// Where the columns of a sheet stand.
#pragma once

#include <cstddef>
#include <vector>

#include "cli/report/column.h"

namespace QuorCli {

/// The widths of a sheet's columns. Columns only ever grow, so that a report of any length can be
/// laid out part by part. Where the sheet is too narrow for all of them, gaps close first, then
/// names are cut, and at last the columns fold onto further lines: an amount is never cut.
class Layout {
 public:
  /// Lines begin at `indent` and should end before `width`; without `mayFold` a line that needs
  /// more goes beyond it.
  Layout(std::vector<Column> columns, std::size_t indent, std::size_t width, bool mayFold);

  /// Makes room for a text of `width` in a column.
  void grow(std::size_t column, std::size_t width);
  /// Makes room for a quantity of that many decimals.
  void growDecimals(std::size_t column, int decimals);

  /// Decides the places from the widths so far.
  void settle();

  struct Place {
    std::size_t column = 0;
    /// Where the column begins, counted from the left edge of the sheet, and how wide it is.
    std::size_t start = 0;
    std::size_t width = 0;
  };
  /// The printed lines of which one line of the report consists, each with its columns.
  [[nodiscard]] const std::vector<std::vector<Place>>& lines() const noexcept { return lines_; }

  [[nodiscard]] const Column& column(std::size_t index) const { return columns_[index]; }
  [[nodiscard]] std::size_t count() const noexcept { return columns_.size(); }
  [[nodiscard]] int decimals(std::size_t column) const { return needs_[column].decimals; }
  [[nodiscard]] bool standsRight(std::size_t column) const;

 private:
  /// What a column needs: its widest text so far, and the least that will do.
  struct Need {
    std::size_t natural = 0;
    std::size_t least = 0;
    int decimals = 0;
  };

  /// Columns `first` to before `end` side by side.
  [[nodiscard]] std::size_t leastWidth(std::size_t first, std::size_t end) const;
  void place(std::size_t first, std::size_t end);

  std::vector<Column> columns_;
  std::size_t indent_;
  std::size_t width_;
  bool mayFold_;
  std::size_t gap_ = 2;
  std::vector<Need> needs_;
  std::vector<std::vector<Place>> lines_;
};

}  // namespace QuorCli
