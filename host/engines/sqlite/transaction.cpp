#include "host/engines/sqlite/transaction.h"

#include <utility>

#include "host/engines/rows/refusal.h"
#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/engines/sqlite/run/change.h"
#include "host/engines/sqlite/totals/kept_totals.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;

std::string insertText(const std::string& table, const std::vector<Sql::Column>& columns) {
  std::string names;
  std::string markers;
  for (const Sql::Column& column : columns) {
    names += (names.empty() ? "" : ", ") + quotedName(column.name);
    markers += markers.empty() ? "?" : ", ?";
  }
  return "INSERT INTO " + quotedName(table) + " (" + names + ") VALUES (" + markers + ")";
}

}  // namespace

SqliteTransaction::SqliteTransaction(std::shared_ptr<SqliteStore> store)
    : store_(std::move(store)) {
  Database& database = *store_->database();
  if (database.inTransaction()) Rows::refuseSecondTransaction();
  database.prepareForChange();
  database.loosen();
  database.run("BEGIN IMMEDIATE");
}

SqliteTransaction::~SqliteTransaction() {
  if (!store_) return;
  store_->database()->rollBack();
  store_->forgetDefinitions();
}

void SqliteTransaction::commit() {
  if (!store_) Rows::refuseSecondCommit();
  Database& database = *store_->database();
  if (!database.inTransaction()) Rows::refuseFailedCommit();
  database.prepareForChange();
  storeTotals(database);
  database.run("COMMIT");
  std::exchange(store_, nullptr)->database()->seal();
}

SqliteSnapshot::SqliteSnapshot(std::shared_ptr<Database> database)
    : database_(std::move(database)) {
  database_->refresh();
  if (database_->inTransaction()) Rows::refuseSecondSnapshot();
  database_->run("BEGIN");
  try {
    // The moment is that of the first read.
    static_cast<void>(database_->number("SELECT count(*) FROM sqlite_schema"));
  } catch (...) {
    end();
    throw;
  }
}

SqliteSnapshot::~SqliteSnapshot() { end(); }

void SqliteSnapshot::end() noexcept {
  try {
    // Recordsets that lie open go on reading.
    database_->run("COMMIT");
  } catch (...) {
    database_->rollBack();
  }
}

SqliteRowWriter::SqliteRowWriter(std::shared_ptr<Database> database, const Sql::Relation& table,
                                 const std::vector<std::string>& columns)
    : database_(std::move(database)), table_(table.name) {
  if (table.kind != Sql::Relation::Kind::Table) {
    refuseStatement("Rows cannot be added to the view " + table.name);
  }
  for (const std::string& name : columns) {
    const Sql::Column* const column = table.find(name);
    if (column == nullptr) refuseStatement("Table " + table.name + " has no column " + name);
    columns_.push_back(*column);
  }
  if (columns_.empty()) refuseStatement("Rows of table " + table.name + " need a column");
  prepare();
}

void SqliteRowWriter::prepare() {
  session_ = database_->session();
  const std::string text = insertText(table_, columns_);
  insert_ = Statement(session_->handle.get(), text, true, text);
}

void SqliteRowWriter::add(std::span<const QuorDataLib::Value> values) {
  if (!database_->inTransaction()) {
    raise(ErrorNumber::InvalidArgument, "Rows are added inside a transaction: begin one first");
  }
  if (values.size() != columns_.size()) {
    raise(ErrorNumber::InvalidArgument, "A row of table " + table_ + " needs " +
                                            std::to_string(columns_.size()) + " values, not " +
                                            std::to_string(values.size()));
  }
  database_->prepareForChange();
  if (session_ != database_->session()) prepare();
  for (std::size_t i = 0; i < values.size(); ++i) {
    try {
      bindValue(insert_, static_cast<int>(i) + 1, values[i], columns_[i].type, Lifetime::Borrowed);
    } catch (const Error& error) {
      Rows::raiseNaming("Column " + columns_[i].name + " of table " + table_, error);
    }
  }
  runChange(*database_, insert_, sqlite3_sql(insert_.get()));
  insert_.reset();
}

}  // namespace QuorHost::Sqlite
