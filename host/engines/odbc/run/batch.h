// Rows of a result on their way from a driver.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/engines/odbc/run/statement.h"
#include "host/engines/rows/cell.h"

namespace QuorHost::Odbc {

/// Fetches rows many at a time, into buffers that are bound by column. A result in which a text may
/// be of any length is fetched row by row, and its values one after the other. The rows that were
/// fetched last stay when the statement has gone.
class Batch {
 public:
  /// Prepares a statement that has run for fetching.
  Batch(Statement& statement, std::vector<DrivenColumn> columns);
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  /// Fetches the next rows. Raises what the driver reports, also of a single row.
  void fetch(Statement& statement);
  /// Rows that were fetched last.
  [[nodiscard]] std::size_t size() const noexcept { return fetched_; }
  /// Whether the driver has no further ones.
  [[nodiscard]] bool ended() const noexcept { return ended_; }
  /// Whether rows come many at a time.
  [[nodiscard]] bool bound() const noexcept { return bound_; }

  /// The value in a row and a column (from 0); its text holds until the next value of that column
  /// is asked for.
  [[nodiscard]] Rows::Cell cell(std::size_t row, std::size_t column) const;

 private:
  /// The values of one column in all rows, end to end, and what the driver says of each.
  struct Buffer {
    std::vector<std::byte> bytes;
    std::vector<SQLLEN> lengths;
  };

  void bind(Statement& statement);
  void requireRows(const Statement& statement) const;
  /// Fetches the values of the row that the statement stands on.
  void getValues(Statement& statement);
  /// Fetches again what was longer than its column was said to be.
  void getCutTexts(Statement& statement);
  [[nodiscard]] bool isCut(std::size_t row, std::size_t column) const;
  /// The whole of a text; its length in `length` where it is null.
  static std::string wholeText(Statement& statement, SQLUSMALLINT number, SQLLEN& length);

  std::vector<DrivenColumn> columns_;
  bool bound_;
  std::size_t rows_;  // at most in one go
  std::vector<Buffer> buffers_;
  std::vector<SQLUSMALLINT> states_;  // of the rows
  SQLULEN fetched_ = 0;
  bool ended_ = false;
  std::map<std::pair<std::size_t, std::size_t>, std::string> longTexts_;  // by row and column
  mutable std::vector<std::string> texts_;                                // handed out, by column
};

}  // namespace QuorHost::Odbc
