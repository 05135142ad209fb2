// The rows of a running statement, as every storage engine offers them.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "host/engines/rows/cell.h"
#include "host/sql/front_end.h"

namespace QuorHost::Rows {

/// How much of a result may be taken into memory in one go. The time counts from the first row that
/// is taken, and is looked at between rows.
struct Allowance {
  using Clock = std::chrono::steady_clock;
  std::size_t rows = std::numeric_limits<std::size_t>::max();
  std::size_t bytes = std::numeric_limits<std::size_t>::max();
  /// None means no limit.
  Clock::duration time = Clock::duration::zero();
};

/// Whoever reads the rows of a cursor.
class CursorReader {
 public:
  /// Takes rows that are still to come into memory, as many as `allowance` lets it, so that the
  /// statement comes to its end. What goes wrong is kept for the row at which it was met.
  virtual void keepRows(const Allowance& allowance) noexcept = 0;

 protected:
  ~CursorReader() = default;
};

/// The result of a statement, row after row. It stands before its first row until it is stepped. An
/// engine may ask the cursor's reader at any time to take rows into memory, which steps the cursor.
class Cursor {
 public:
  Cursor() = default;
  virtual ~Cursor() = default;
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  /// Names the reader, who must outlive the cursor.
  virtual void setReader(CursorReader& reader) noexcept = 0;

  /// The result's columns; they stay where they are as long as the cursor lives.
  [[nodiscard]] virtual const std::vector<Sql::ResultColumn>& columns() const noexcept = 0;

  /// Moves to the next row; false when there is none. Then, and after an error of the engine, which
  /// it raises, the cursor stands before its first row again: the next step runs the statement anew
  /// and sees the company as it is then.
  virtual bool step() = 0;

  /// The value in `column` (from 0) of the current row; its text holds until the cursor moves.
  [[nodiscard]] virtual Cell cell(std::int32_t column) const = 0;

  /// Ends the statement: the cursor stands before its first row.
  virtual void reset() noexcept = 0;

  /// What the reader had better take into memory as soon as it has the first row, so that a short
  /// result which is left lying open holds nothing of the engine.
  [[nodiscard]] virtual Allowance readAhead() const noexcept = 0;

  /// How the engine orders two texts: less than, equal to or greater than zero.
  [[nodiscard]] virtual int compareTexts(std::string_view a, std::string_view b) const noexcept = 0;
};

}  // namespace QuorHost::Rows
