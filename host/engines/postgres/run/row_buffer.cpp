#include "host/engines/postgres/run/row_buffer.h"

#include <algorithm>
#include <utility>

#include "host/engines/postgres/run/values.h"
#include "host/engines/postgres/server/server_error.h"
#include "platform/error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Postgres {
namespace {

using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;

/// As many bytes of rows are sent in one go.
constexpr std::size_t kMostBytes = std::size_t{1} << 20U;

std::int64_t characters(std::string_view text) {
  return std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
}

/// A text as COPY reads it.
void appendEscaped(std::string& rows, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '\\':
        rows += "\\\\";
        break;
      case '\t':
        rows += "\\t";
        break;
      case '\n':
        rows += "\\n";
        break;
      case '\r':
        rows += "\\r";
        break;
      default:
        rows += c;
    }
  }
}

}  // namespace

RowBuffer::RowBuffer(std::shared_ptr<Database> database, const Sql::Relation& table,
                     std::size_t order, const std::vector<std::string>& columns)
    : database_(std::move(database)), table_(table.name) {
  if (table.kind != Sql::Relation::Kind::Table) {
    refuseStatement("Rows cannot be added to the view " + table.name);
  }
  std::string names;
  for (const std::string& name : columns) {
    const Sql::Column* const column = table.find(name);
    if (column == nullptr) refuseStatement("Table " + table.name + " has no column " + name);
    columns_.push_back(*column);
    names += (names.empty() ? "" : ", ") + Link::nameOf(column->name);
  }
  if (columns_.empty()) refuseStatement("Rows of table " + table.name + " need a column");
  rows_ = database_->waitingRows(
      order, "COPY " + Link::nameOf(table.name) + " (" + names + ") FROM STDIN");
}

void RowBuffer::add(std::span<const QuorDataLib::Value> values) {
  if (!database_->inTransaction()) {
    raise(ErrorNumber::InvalidArgument, "Rows are added inside a transaction: begin one first");
  }
  if (values.size() != columns_.size()) {
    raise(ErrorNumber::InvalidArgument, "A row of table " + table_ + " needs " +
                                            std::to_string(columns_.size()) + " values, not " +
                                            std::to_string(values.size()));
  }
  std::string& rows = rows_->rows;
  const std::size_t before = rows.size();
  try {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i > 0) rows += '\t';
      append(values[i], columns_[i]);
    }
    rows += '\n';
  } catch (...) {
    rows.resize(before);
    throw;
  }
  if (rows.size() < kMostBytes) return;
  try {
    database_->sendRows();
  } catch (const Error& error) {
    Rows::raiseNaming("Among the rows up to this one", error);
  }
}

void RowBuffer::append(const QuorDataLib::Value& value, const Sql::Column& column) {
  Argument argument;
  try {
    argument = argumentOf(value, column.type);
  } catch (const Error& error) {
    Rows::raiseNaming("Column " + column.name + " of table " + table_, error);
  }
  if (!argument.text) {
    if (!column.nullable) {
      refuseStatement("A value is missing in " + column.name + " of table " + table_ +
                      ", which cannot be null");
    }
    rows_->rows += "\\N";
    return;
  }
  if (column.size > 0 && characters(*argument.text) > column.size) {
    refuseStatement("Column " + column.name + " of table " + table_ + " cannot hold '" +
                    QuorDataLib::shownText(*argument.text) + "', which is longer than " +
                    std::to_string(column.size) + " characters");
  }
  appendEscaped(rows_->rows, *argument.text);
}

}  // namespace QuorHost::Postgres
