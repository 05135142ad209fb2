#include "host/engines/sqlite/store.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "host/engines/paths.h"
#include "host/engines/rows/refusal.h"
#include "host/engines/sqlite/connection.h"
#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/file/change_watch.h"
#include "host/engines/sqlite/file/copy.h"
#include "host/engines/sqlite/file/file_check.h"
#include "host/engines/sqlite/file/opening.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/engines/sqlite/stored_catalogue.h"
#include "host/engines/sqlite/stored_schema.h"
#include "host/engines/sqlite/table_remake.h"
#include "host/engines/sqlite/totals/kept_totals.h"
#include "host/engines/sqlite/transaction.h"
#include "host/engines/sqlite/write/sql_writer.h"
#include "host/engines/temporary_file.h"
#include "host/sql/front_end.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using Sql::StatementKind;

bool isDefinition(StatementKind kind) {
  return kind == StatementKind::CreateTable || kind == StatementKind::CreateView ||
         kind == StatementKind::CreateIndex;
}

}  // namespace

SqliteStore::SqliteStore(std::shared_ptr<Database> database) : database_(std::move(database)) {
  StoredCatalogue stored = readStoredCatalogue(*database_);
  requireKnownForms(*database_, stored.definitions);
  know(std::move(stored.catalogue));
}

void SqliteStore::know(Sql::Catalogue catalogue) {
  catalogue_ = std::move(catalogue);
  database_->keep(keptTotals(catalogue_));
}

std::vector<std::string> SqliteStore::definitions() const { return storedDefinitions(*database_); }

void SqliteStore::requireWritable() const { Rows::requireWritable(writable(), database_->path()); }

QuorDataLib::Ref<QuorDataLib::Connection> SqliteStore::connect(Sql::Dialect dialect) {
  return QuorDataLib::make<Connection>(std::static_pointer_cast<SqliteStore>(shared_from_this()),
                                       dialect);
}

void SqliteStore::define(std::string_view statement) {
  requireWritable();
  const Sql::Translation definition =
      Sql::translate(statement, Sql::Dialect::Server, catalogue_, SqlWriter());
  if (!isDefinition(definition.kind)) {
    refuseStatement("Only a CREATE statement defines a table, a view or an index");
  }
  database_->prepareForChange();
  // A savepoint holds the two together inside a transaction as well as outside.
  database_->run("SAVEPOINT Definition");
  try {
    Statement(database_->handle(), definition.sql, false, statement).step(statement);
    storeDefinition(*database_, statement, definition);
    Sql::Catalogue extended = catalogue_;
    Sql::enter(definition, extended);
    if (!definition.created.keptOf.empty()) {
      beginToKeep(*database_, KeptTotals(*extended.find(definition.created.name), extended));
    }
    database_->run("RELEASE Definition");
    know(std::move(extended));
  } catch (...) {
    database_->rollBackTo("Definition");
    throw;
  }
  database_->forgetStatements();
  definedInTransaction_ = database_->inTransaction();
}

void SqliteStore::redefine(std::string_view table, std::string_view statement) {
  requireWritable();
  database_->prepareForChange();
  remakeTable(*database_, catalogue_, table, statement);
  database_->forgetStatements();
  know(readStoredCatalogue(*database_).catalogue);
  definedInTransaction_ = database_->inTransaction();
}

void SqliteStore::forgetDefinitions() noexcept {
  if (!definedInTransaction_) return;
  try {
    database_->forgetStatements();
    know(readStoredCatalogue(*database_).catalogue);
    definedInTransaction_ = false;
  } catch (...) {  // NOLINT(bugprone-empty-catch): the engine refuses statements on what is gone
  }
}

std::unique_ptr<Transaction> SqliteStore::begin() {
  requireWritable();
  definedInTransaction_ = false;
  return std::make_unique<SqliteTransaction>(
      std::static_pointer_cast<SqliteStore>(shared_from_this()));
}

std::unique_ptr<Snapshot> SqliteStore::hold() {
  Rows::requireUnchanging(writable());
  return std::make_unique<SqliteSnapshot>(database_);
}

std::unique_ptr<RowWriter> SqliteStore::writer(const std::string& table,
                                               const std::vector<std::string>& columns) {
  requireWritable();
  const Sql::Relation* const relation = catalogue_.find(table);
  if (relation == nullptr) refuseStatement("There is no table " + table);
  if (database_->inTransaction()) {
    database_->prepareForChange();
    expectMany(*database_, relation->name);
  }
  return std::make_unique<SqliteRowWriter>(database_, *relation, columns);
}

std::unique_ptr<ChangeLog> SqliteStore::watch(const WatchedTable& watched) {
  requireWritable();
  database_->prepareForChange();
  return std::make_unique<ChangeWatch>(database_, watched);
}

std::vector<std::string> SqliteStore::integrityFindings() {
  database_->refresh();
  storeTotals(*database_);
  std::vector<std::string> findings = fileFindings(*database_);
  // In a damaged file nothing adds up.
  if (findings.empty()) findings = wrongTotals(*database_);
  return findings;
}

void SqliteStore::copyTo(
    const std::string& path,
    const std::function<void(std::int64_t done, std::int64_t total)>& progress) {
  copyDatabase(database_, path, progress);
}

std::string SqliteStore::engineName() const {
  return std::string("SQLite ") + sqlite3_libversion();
}

std::int64_t SqliteStore::sizeInBytes() const {
  return database_->number("PRAGMA page_count") * database_->number("PRAGMA page_size");
}

int SqliteStore::schemaVersion() const {
  return static_cast<int>(database_->number("PRAGMA user_version"));
}

void SqliteStore::setSchemaVersion(int version) {
  requireWritable();
  database_->run("PRAGMA user_version=" + std::to_string(version));
}

std::shared_ptr<Store> openFile(const std::string& path, Access access) {
  std::shared_ptr<Database> database = openDatabase(path, access);
  requireKnownObjects(*database);
  if (!hasCurrentTextOrder(*database)) {
    try {
      // Whoever only reads leaves the file as it is.
      if (access == Access::Read) return openFileCopy(path, {});
      renewTextOrder(*database);
    } catch (const QuorDataLib::Error& error) {
      Rows::raiseNaming(
          "The texts in the company file are in the order of another system and must be sorted "
          "anew",
          error);
    }
  }
  return std::make_shared<SqliteStore>(std::move(database));
}

std::shared_ptr<Store> openFileCopy(const std::string& path,
                                    const std::function<void(Store&)>& change) {
  const TemporaryFile file;
  copyDatabase(openDatabase(path, Access::Read), file.path(), {});
  {
    const std::shared_ptr<Store> copy = openFile(file.path(), Access::Write);
    if (change) change(*copy);
  }
  return std::make_shared<SqliteStore>(openPrivateCopy(file.path(), path));
}

std::shared_ptr<Store> createFile(const std::string& path, Durability durability) {
  std::shared_ptr<Database> database = createDatabase(path, durability);
  try {
    createStoredCatalogue(*database);
    return std::make_shared<SqliteStore>(database);
  } catch (...) {
    database.reset();
    std::error_code error;
    std::filesystem::remove(pathOf(path), error);
    throw;
  }
}

}  // namespace QuorHost::Sqlite
