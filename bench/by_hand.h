// What a program would write without the host: statements of the engine's own SQL through its C
// API.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>

#include "platform/data_library.h"

namespace QuorBench {

/// What reading all rows and columns of a result came to; equal for two ways to read the same rows.
struct Digest {
  std::int64_t rows = 0;
  /// Wrapping sum of everything that is stored as an integer: keys, numbers, amounts, booleans.
  std::uint64_t integers = 0;
  bool operator==(const Digest&) const = default;
};

/// A prepared statement that is run over and over.
class Query {
 public:
  /// Raises an error with the engine's own words when `sql` is not right.
  Query(sqlite3* database, const std::string& sql);

  /// Fills the marker at `index` (from 1); it keeps its value from run to run.
  void bind(int index, std::int64_t number);
  void bind(int index, const std::string& text);

  /// The text in the first column of the first row; empty without a row.
  std::string text();

  /// Runs to the end, reading every column in its stored form, texts where they lie.
  Digest read();

  /// Runs to the end, copying every column of every row into memory of its own.
  Digest copy();

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };

  template <class Text>
  Digest run(Text&& takeText);

  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/// Reads every field of every row through the contract and closes the recordset.
Digest read(const QuorDataLib::Ref<QuorDataLib::Recordset>& rows);

/// The program's memory in KiB, without the engine's page caches: these have a bound of their own,
/// and fill with whatever is read.
double memoryInUse();

/// Raises an error unless both ways read the same rows, and some.
void requireSame(const Digest& ours, const Digest& byHand);

}  // namespace QuorBench
