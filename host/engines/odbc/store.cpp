#include "host/engines/odbc/store.h"

#include <utility>

#include "host/engines/odbc/connection.h"
#include "host/engines/odbc/run/table.h"
#include "host/engines/odbc/transaction.h"
#include "host/engines/rows/refusal.h"
#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Odbc {
namespace {

using QuorDataLib::ErrorNumber;
using Sql::Dialect;

/// @param what  what cannot be done ("Rows cannot be loaded")
[[noreturn]] void refuseWithoutDefinitions(const std::string& what) {
  QuorDataLib::raise(ErrorNumber::InvalidArgument,
                     what +
                         " over ODBC, which passes statements through and does not know how the "
                         "company's tables are defined: use the server's own tools");
}

std::string nameOf(Dialect dialect) { return dialect == Dialect::Server ? "server" : "desktop"; }

}  // namespace

OdbcStore::OdbcStore(std::shared_ptr<Database> database) : database_(std::move(database)) {}

QuorDataLib::Ref<QuorDataLib::Connection> OdbcStore::connect(Dialect dialect) {
  if (dialect != database_->address().dialect) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument,
                       "'" + database_->address().shown + "' reads the " +
                           nameOf(database_->address().dialect) +
                           " dialect alone, and statements of the " + nameOf(dialect) +
                           " dialect are not for it: leave the dialect to the connection, or name "
                           "the right one there (dialect=" +
                           nameOf(dialect) + ")");
  }
  return QuorDataLib::make<OdbcConnection>(std::static_pointer_cast<OdbcStore>(shared_from_this()));
}

bool OdbcStore::hasTable(std::string_view name) {
  const std::string key = Sql::lowerName(name);
  const auto found = tables_.find(key);
  if (found != tables_.end()) return found->second;
  const bool there = Odbc::hasTable(database_->reading(), name);
  tables_.emplace(key, there);
  return there;
}

const Sql::Catalogue& OdbcStore::catalogue() const {
  refuseWithoutDefinitions("This cannot be done");
}

std::vector<std::string> OdbcStore::definitions() const {
  refuseWithoutDefinitions("The company cannot be copied");
}

void OdbcStore::requireWritable() const {
  Rows::requireWritable(writable(), database_->address().shown);
}

void OdbcStore::define(std::string_view /*statement*/) {
  refuseWithoutDefinitions("Tables, views and indexes cannot be made");
}

void OdbcStore::redefine(std::string_view /*table*/, std::string_view /*statement*/) {
  refuseWithoutDefinitions("A table cannot be made anew");
}

std::unique_ptr<Transaction> OdbcStore::begin() {
  requireWritable();
  return std::make_unique<OdbcTransaction>(database_);
}

std::unique_ptr<Snapshot> OdbcStore::hold() {
  Rows::requireUnchanging(writable());
  return std::make_unique<OdbcSnapshot>(database_);
}

std::unique_ptr<RowWriter> OdbcStore::writer(const std::string& table,
                                             const std::vector<std::string>& /*columns*/) {
  refuseWithoutDefinitions("Rows cannot be loaded into " + table);
}

std::unique_ptr<ChangeLog> OdbcStore::watch(const WatchedTable& watched) {
  refuseWithoutDefinitions("Changes of " + watched.table +
                           ", on which costs depend, cannot be noted");
}

std::vector<std::string> OdbcStore::integrityFindings() {
  refuseWithoutDefinitions("The company cannot be checked");
}

void OdbcStore::copyTo(
    const std::string& /*path*/,
    const std::function<void(std::int64_t done, std::int64_t total)>& /*progress*/) {
  refuseWithoutDefinitions("The company cannot be backed up");
}

std::string OdbcStore::engineName() const {
  const std::shared_ptr<Session> session = database_->reading();
  return session->text(SQL_DBMS_NAME) + " " + session->text(SQL_DBMS_VER) + " over ODBC";
}

std::int64_t OdbcStore::sizeInBytes() const {
  refuseWithoutDefinitions("The size of the company cannot be told");
}

void OdbcStore::setSchemaVersion(int /*version*/) {
  refuseWithoutDefinitions("The version of the schema cannot be noted");
}

}  // namespace QuorHost::Odbc
