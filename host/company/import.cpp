#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "host/company/company.h"
#include "host/company/csv/field_text.h"
#include "host/company/csv/reader.h"
#include "host/company/csv/spool.h"
#include "host/company/stock/recost.h"
#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost {

namespace {

using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Value;
using Sql::Column;
using Sql::Relation;

const Relation& tableNamed(const Store& store, const std::string& name) {
  const Relation* const relation = store.catalogue().find(name);
  if (relation == nullptr) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument, "The company has no table " + name);
  }
  if (relation->kind == Relation::Kind::View) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument,
                       relation->name + " is a view: import into the tables that it reads");
  }
  return *relation;
}

std::string namesOf(const Relation& table) {
  std::string names;
  for (const Column& column : table.columns) names += (names.empty() ? "" : ", ") + column.name;
  return names;
}

/// The columns that the header row names, in its order.
std::vector<const Column*> readHeader(Csv::Reader& reader, const Relation& table) {
  std::vector<Csv::Field> fields;
  if (!reader.next(fields)) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument,
                       "The CSV is empty: its first row names columns of " + table.name);
  }
  std::vector<const Column*> columns;
  for (const Csv::Field& field : fields) {
    const std::string name(field.text);
    const Column* const column = table.find(name);
    if (column == nullptr) {
      QuorDataLib::raise(ErrorNumber::InvalidArgument, "Line 1 of the CSV: table " + table.name +
                                                           " has no column \"" + name +
                                                           "\"; its columns are " + namesOf(table));
    }
    if (std::ranges::find(columns, column) != columns.end()) {
      QuorDataLib::raise(ErrorNumber::InvalidArgument,
                         "Line 1 of the CSV: column " + column->name + " is named twice");
    }
    columns.push_back(column);
  }
  return columns;
}

std::vector<std::string> namesOf(const std::vector<const Column*>& columns) {
  std::vector<std::string> names;
  names.reserve(columns.size());
  for (const Column* const column : columns) names.push_back(column->name);
  return names;
}

/// Raises the error being handled, its place put before it.
[[noreturn]] void raiseAt(std::int64_t line, const std::string& column) {
  const Error error = QuorDataLib::currentError();
  throw Error(error.number(), error.source(),
              "Line " + std::to_string(line) + " of the CSV" +
                  (column.empty() ? "" : ", column " + column) + ": " + error.description());
}

std::vector<Value> valuesOf(const std::vector<Csv::Field>& fields,
                            const std::vector<const Column*>& columns) {
  std::vector<Value> row;
  row.reserve(fields.size());
  for (std::size_t i = 0; i < fields.size(); ++i) {
    try {
      row.push_back(Csv::fieldValue(*columns[i], fields[i]));
    } catch (...) {
      raiseAt(fields[i].line, columns[i]->name);
    }
  }
  return row;
}

/// A column that follows from two others of its row where a CSV leaves it out.
struct Difference {
  std::string_view table;
  std::string_view column;
  std::string_view of;
  std::string_view less;
};

constexpr std::array<Difference, 2> kDifferences{
    {{"InvoiHdr", "Balance", "TotAmnt", "RecAmnt"}, {"PurcHdr", "Balance", "TotAmnt", "PaidAmnt"}}};

/// Completes the rows of a CSV by such a column, if the table has one and the CSV has it not.
class Completion {
 public:
  /// Adds the column to `columns`, those of the CSV.
  Completion(const Relation& table, std::vector<const Column*>& columns) {
    const auto named = [&](std::string_view name) {
      return std::ranges::find(columns, table.find(name));
    };
    for (const Difference& difference : kDifferences) {
      if (difference.table != table.name || named(difference.column) != columns.end()) continue;
      of_ = named(difference.of) - columns.begin();
      less_ = named(difference.less) - columns.begin();
      given_ = static_cast<std::ptrdiff_t>(columns.size());
      columns.push_back(table.find(difference.column));
    }
  }

  /// Adds the column's value to a row of the CSV.
  void complete(std::vector<Value>& row) const {
    if (!given_) return;
    row.push_back(amount(row, of_) - amount(row, less_));
  }

 private:
  [[nodiscard]] QuorDataLib::Currency amount(const std::vector<Value>& row,
                                             std::ptrdiff_t index) const {
    // A column that the CSV does not name is stored as its default, zero.
    return given_ == index ? QuorDataLib::Currency()
                           : row[static_cast<std::size_t>(index)].toCurrency();
  }

  std::optional<std::ptrdiff_t> given_;  // columns of the CSV, where one is added
  std::ptrdiff_t of_ = 0;
  std::ptrdiff_t less_ = 0;
};

void removeRows(Store& store, const Relation& table) {
  std::int32_t removed = 0;
  try {
    store.connect(Sql::Dialect::Server)
        ->Execute("DELETE FROM [" + table.name + "]", removed, -1, {});
  } catch (...) {
    const Error error = QuorDataLib::currentError();
    throw Error(error.number(), error.source(),
                "The rows of " + table.name + " cannot be replaced: " + error.description());
  }
}

/// Whether the rows bring running costs that hold, with their marks: nothing else is in the table.
bool bringsCosts(Store& store, const Relation& table, const std::vector<const Column*>& columns) {
  for (const char* const name : {"RunningLastCost", "RunningAvgCost", "RunningValuesDirty"}) {
    if (std::ranges::find(columns, table.find(name)) == columns.end()) return false;
  }
  return store.connect(Sql::Dialect::Server)
      ->OpenRecordset("SELECT TOP 1 InTrxId FROM InvenDet", 4, 0, {}, 0)
      ->AtEnd();
}

}  // namespace

std::int64_t importCsv(Store& store, const std::string& table, std::istream& csv, bool replace) {
  const Relation& relation = tableNamed(store, table);
  Csv::Spool spool(csv);
  Csv::Reader reader(spool.text());
  std::vector<const Column*> columns = readHeader(reader, relation);
  const std::size_t width = columns.size();
  const Completion completion(relation, columns);

  const std::unique_ptr<Transaction> transaction = store.begin();
  const bool movements = Sql::sameName(relation.name, kMovements);
  // With all movements go all costs.
  if (replace && movements) removeRows(store, relation);
  std::optional<CostWatch> costs;
  if (movesCosts(relation.name) && !(movements && bringsCosts(store, relation, columns))) {
    costs.emplace(store);
  }
  if (replace && !movements) removeRows(store, relation);
  const std::unique_ptr<RowWriter> writer = store.writer(relation.name, namesOf(columns));
  std::int64_t rows = 0;
  std::vector<Csv::Field> fields;
  while (reader.next(fields)) {
    const bool blank = fields.size() == 1 && fields[0].text.empty() && !fields[0].quoted;
    if (blank && width > 1) continue;
    const std::int64_t line = fields[0].line;
    if (fields.size() != width) {
      QuorDataLib::raise(ErrorNumber::InvalidArgument,
                         "Line " + std::to_string(line) +
                             " of the CSV: " + std::to_string(fields.size()) +
                             " fields where the header row has " + std::to_string(width));
    }
    std::vector<Value> row = valuesOf(fields, columns);
    try {
      completion.complete(row);
      writer->add(row);
    } catch (...) {
      raiseAt(line, {});
    }
    ++rows;
  }
  if (costs) costs->markStale();
  transaction->commit();
  return rows;
}

}  // namespace QuorHost
