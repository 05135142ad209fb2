#include "cli/print/row_printer.h"

#include <utility>

namespace QuorCli {

using QuorDataLib::Value;

std::unique_ptr<RowPrinter> makeRowPrinter(Format format, Console& console) {
  switch (format) {
    case Format::Csv:
      return makeCsvPrinter(console.out);
    case Format::Json:
      return makeJsonPrinter(console.out);
    case Format::Jsonl:
      return makeJsonLinesPrinter(console.out);
    case Format::Table:
      break;
  }
  return makeTablePrinter(console);
}

void printRows(QuorDataLib::Recordset& rows, std::optional<std::int64_t> limit,
               std::span<const NamedValue> outputs, RowPrinter& printer) {
  const std::int32_t count = rows.FieldCount();
  std::vector<ColumnHead> columns;
  columns.reserve(static_cast<std::size_t>(count));
  for (std::int32_t index = 0; index < count; ++index) {
    columns.push_back({rows.FieldName(index), rows.FieldType(index)});
  }
  printer.begin(std::move(columns));
  std::vector<Value> values(static_cast<std::size_t>(count));
  for (std::int64_t printed = 0; !rows.AtEnd() && printed != limit; ++printed) {
    for (std::int32_t index = 0; index < count; ++index) {
      values[static_cast<std::size_t>(index)] = rows.Field(index);
    }
    printer.row(values);
    rows.MoveNext();
  }
  printer.end(rows.AtEnd(), outputs);
}

}  // namespace QuorCli
