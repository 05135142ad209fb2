#include <memory>
#include <string>
#include <vector>

#include "host/company/company.h"
#include "host/company/place/new_file.h"
#include "host/company/schema.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using Sql::Relation;

/// Copies the rows of one table in the order in which they stand. Returns how many there are.
std::int64_t copyRows(Store& from, Store& to, const Relation& table) {
  std::vector<std::string> columns;
  std::string list;
  for (const Sql::Column& column : table.columns) {
    columns.push_back(column.name);
    list += (list.empty() ? "[" : ", [") + column.name + "]";
  }
  const auto rows =
      from.connect(Sql::Dialect::Server)
          ->OpenRecordset("SELECT " + list + " FROM [" + table.name + "]", 4, 0, {}, 0);
  const std::unique_ptr<RowWriter> writer = to.writer(table.name, columns);
  std::vector<QuorDataLib::Value> row(columns.size());
  std::int64_t count = 0;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      row[i] = rows->Field(static_cast<std::int32_t>(i));
    }
    writer->add(row);
    ++count;
  }
  return count;
}

/// Makes what `from` has, in an order in which rows are loaded fast: tables and views, rows, and
/// then what is made of rows.
void fill(Store& from, Store& to, const Progress& progress) {
  const std::unique_ptr<Transaction> transaction = to.begin();
  const std::vector<std::string> definitions = from.definitions();
  for (const std::string& definition : definitions) {
    if (!holdsRows(definition)) to.define(definition);
  }
  const std::vector<Relation>& relations = from.catalogue().relations();
  const auto total = static_cast<std::int64_t>(relations.size());
  std::int64_t done = 0;
  for (const Relation& relation : relations) {
    if (progress) progress("copying " + relation.name, done, total);
    ++done;
    if (relation.kind == Relation::Kind::Table) copyRows(from, to, relation);
  }
  for (const std::string& definition : definitions) {
    if (holdsRows(definition)) to.define(definition);
  }
  to.setSchemaVersion(from.schemaVersion());
  transaction->commit();
}

}  // namespace

void copyCompany(const std::string& from, const std::string& to, bool force,
                 const Progress& progress, const std::vector<std::string>& readers) {
  const OnServer onServer{.replace = force, .readers = readers};
  if (isServer(to) && from == to) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "'" + shownCompany(to) + "' is the company itself: name another schema");
  }
  const std::shared_ptr<Store> source = openCompany(from, Access::Read);
  const std::unique_ptr<Snapshot> moment = source->hold();
  if (isServer(to)) {
    fill(*source, *createCompanyFile(to, Durability::Full, onServer), progress);
    return;
  }
  NewFile file(to, force);
  fill(*source, *createCompanyFile(file.path(), Durability::Bulk, onServer), progress);
  file.putInPlace();
}

}  // namespace QuorHost
