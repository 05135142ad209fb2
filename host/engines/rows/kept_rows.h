// Rows of a recordset that are kept in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/engines/rows/cell.h"

namespace QuorHost::Rows {

/// Rows in their order, packed: numbers in sixteen bytes, texts end to end in one buffer.
class KeptRows {
 public:
  [[nodiscard]] std::size_t size() const noexcept { return rows_; }

  /// What the rows take in memory.
  [[nodiscard]] std::size_t bytes() const noexcept {
    return cells_.size() * sizeof(Packed) + texts_.size();
  }

  /// Adds a row of as many columns as all the others have; `cellAt` gives the cell in a column.
  template <class CellAt>
  void append(std::size_t columns, const CellAt& cellAt) {
    columns_ = columns;
    const std::size_t first = rows_ * columns_;
    cells_.resize(first + columns_);
    for (std::size_t column = 0; column < columns_; ++column) {
      cells_[first + column] = pack(cellAt(static_cast<std::int32_t>(column)));
    }
    ++rows_;
  }

  /// Puts the first row of `other` in place of one that is kept.
  void replace(std::size_t row, const KeptRows& other);

  /// The cell's text holds until rows are added, replaced or dropped.
  [[nodiscard]] Cell at(std::size_t row, int column) const noexcept;

  void clear() noexcept;

 private:
  struct Packed {
    Cell::Kind kind;
    std::uint32_t length;  // of a text
    std::int64_t bits;     // the integer, the floating number's bits, or the text's place
  };
  static_assert(sizeof(Packed) == 16);

  [[nodiscard]] Packed pack(const Cell& cell);

  std::size_t columns_ = 0;
  std::size_t rows_ = 0;
  std::vector<Packed> cells_;
  std::string texts_;
};

}  // namespace QuorHost::Rows
