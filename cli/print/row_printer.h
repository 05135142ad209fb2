// Rows on their way out, in one of the output formats.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "cli/console.h"
#include "cli/print/json_text.h"
#include "platform/data_library.h"

namespace QuorCli {

enum class Format : std::uint8_t { Table, Csv, Json, Jsonl };

struct ColumnHead {
  std::string name;
  QuorDataLib::ValueType type = QuorDataLib::ValueType::Empty;
};

/// Prints rows as they come: `begin`, then each row, then `end`. No printer keeps more than a fixed
/// number of rows, so a result of any length can go through it.
class RowPrinter {
 public:
  virtual ~RowPrinter() = default;
  virtual void begin(std::vector<ColumnHead> columns) = 0;
  /// One value for each column.
  virtual void row(std::span<const QuorDataLib::Value> values) = 0;
  /// `complete` is false where a limit has left rows out. `outputs` are the arguments by reference
  /// of the call that made the rows; CSV and JSON lines have no place for them.
  virtual void end(bool complete, std::span<const NamedValue> outputs) = 0;
};

[[nodiscard]] std::unique_ptr<RowPrinter> makeRowPrinter(Format format, Console& console);

/// Prints the rows from the current one on, at most `limit`. Raises what the recordset raises.
void printRows(QuorDataLib::Recordset& rows, std::optional<std::int64_t> limit,
               std::span<const NamedValue> outputs, RowPrinter& printer);

/// A value as it stands in a table: `null` for Null, control characters written out.
[[nodiscard]] std::string tableText(const QuorDataLib::Value& value);

/// The printers of the formats, for `makeRowPrinter`.
[[nodiscard]] std::unique_ptr<RowPrinter> makeTablePrinter(Console& console);
[[nodiscard]] std::unique_ptr<RowPrinter> makeCsvPrinter(std::ostream& out);
[[nodiscard]] std::unique_ptr<RowPrinter> makeJsonPrinter(std::ostream& out);
[[nodiscard]] std::unique_ptr<RowPrinter> makeJsonLinesPrinter(std::ostream& out);

}  // namespace QuorCli
