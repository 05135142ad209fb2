#include "host/engines/postgres/store.h"

#include <utility>

#include "host/engines/postgres/connection.h"
#include "host/engines/postgres/run/change_watch.h"
#include "host/engines/postgres/run/row_buffer.h"
#include "host/engines/postgres/schema/stored_catalogue.h"
#include "host/engines/postgres/server/server_error.h"
#include "host/engines/postgres/transaction.h"
#include "host/engines/postgres/write/sql_writer.h"
#include "host/sql/front_end.h"
#include "platform/error.h"

namespace QuorHost::Postgres {
namespace {

using Sql::StatementKind;

bool isDefinition(StatementKind kind) {
  return kind == StatementKind::CreateTable || kind == StatementKind::CreateView ||
         kind == StatementKind::CreateIndex;
}

}  // namespace

ServerStore::ServerStore(std::shared_ptr<Database> database, Making making)
    : database_(std::move(database)), making_(making) {
  if (making_ != Making::None) return;
  requireCompany(database_->reading()->link, database_->address());
  readDefinitions();
}

void ServerStore::readDefinitions() {
  StoredCatalogue stored = readStoredCatalogue(database_->reading()->link, database_->address());
  catalogue_ = std::move(stored.catalogue);
  definitions_ = std::move(stored.definitions);
  database_->cache().clear();
}

void ServerStore::requireWritable() const {
  if (!writable()) {
    refuseStatement("The company '" + database_->address().shown +
                    "' was opened for reading only: open it for writing to change it");
  }
}

QuorDataLib::Ref<QuorDataLib::Connection> ServerStore::connect(Sql::Dialect dialect) {
  return QuorDataLib::make<ServerConnection>(
      std::static_pointer_cast<ServerStore>(shared_from_this()), dialect);
}

void ServerStore::define(std::string_view statement) {
  requireWritable();
  const Sql::Translation definition =
      Sql::translate(statement, Sql::Dialect::Server, catalogue_, SqlWriter());
  if (!isDefinition(definition.kind)) {
    refuseStatement("Only a CREATE statement defines a table, a view or an index");
  }
  if (!database_->pinned()) {
    // The two together.
    const std::unique_ptr<Transaction> transaction = begin();
    define(statement);
    transaction->commit();
    return;
  }
  Link& link = database_->changing();
  link.run(definition.sql, statement);
  storeDefinition(link, statement, definition);
  Sql::enter(definition, catalogue_);
  definitions_.emplace_back(statement);
  database_->cache().clear();
  definedInTransaction_ = true;
}

void ServerStore::redefine(std::string_view table, std::string_view /*statement*/) {
  refuseStatement("The table " + std::string(table) +
                  " on a server cannot be made anew: copy the company to a file, and back to "
                  "another schema (quoracc company copy)");
}

void ServerStore::make() {
  Link& link = database_->changing();
  const Address& address = database_->address();
  const std::string schema = Link::quoted(address.schema);
  const std::string name = Link::literal(address.schema);
  // Two that make the same company at the same time come one after the other.
  link.run("SELECT pg_advisory_xact_lock(hashtext(" + name + "))");
  if (holdsCompany(link)) {
    if (making_ != Making::Replacing) {
      refuseServer(address.shown,
                   "holds a company already: choose another schema, or have it replaced (--force)");
    }
    // Whoever uses it is waited for, but not for ever.
    link.run("SET LOCAL lock_timeout = '10s'; DROP SCHEMA " + schema +
             " CASCADE; SET LOCAL lock_timeout = '60s'");
  }
  if (link.number("SELECT count(*) FROM pg_class WHERE relnamespace = to_regnamespace(" +
                  Link::literal(schema) + ")") > 0) {
    refuseServer(address.shown,
                 "holds tables in the schema that are no company's: choose another "
                 "schema (?schema=NAME)");
  }
  link.run("CREATE SCHEMA IF NOT EXISTS " + schema);
  createFoundations(link);
}

std::unique_ptr<Transaction> ServerStore::begin() {
  requireWritable();
  definedInTransaction_ = false;
  auto transaction = std::make_unique<ServerTransaction>(
      std::static_pointer_cast<ServerStore>(shared_from_this()));
  if (making_ != Making::None) make();
  return transaction;
}

void ServerStore::afterCommit() {
  making_ = Making::None;
  if (!std::exchange(definedInTransaction_, false)) return;
  // New tables have no statistics yet, and plans without them are poor ones.
  std::string tables;
  for (const Sql::Relation& relation : catalogue_.relations()) {
    if (relation.kind != Sql::Relation::Kind::Table && relation.keptOf.empty()) continue;
    tables += (tables.empty() ? "" : ", ") + Link::nameOf(relation.name);
  }
  database_->changing().run("ANALYZE " + tables);
}

void ServerStore::afterRollBack() noexcept {
  if (!std::exchange(definedInTransaction_, false)) return;
  try {
    if (making_ == Making::None) {
      readDefinitions();
    } else {
      catalogue_ = {};
      definitions_.clear();
      database_->cache().clear();
    }
  } catch (...) {  // NOLINT(bugprone-empty-catch): the server refuses statements on what is gone
  }
}

std::unique_ptr<Snapshot> ServerStore::hold() {
  if (writable()) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "A company that is open for writing is read as it changes: open it for "
                       "reading to hold a snapshot");
  }
  return std::make_unique<ServerSnapshot>(database_);
}

std::unique_ptr<RowWriter> ServerStore::writer(const std::string& table,
                                               const std::vector<std::string>& columns) {
  requireWritable();
  const Sql::Relation* const relation = catalogue_.find(table);
  if (relation == nullptr) refuseStatement("There is no table " + table);
  const auto order = static_cast<std::size_t>(relation - catalogue_.relations().data());
  return std::make_unique<RowBuffer>(database_, *relation, order, columns);
}

std::unique_ptr<ChangeLog> ServerStore::watch(const WatchedTable& watched) {
  requireWritable();
  return std::make_unique<ChangeWatch>(database_, watched);
}

std::vector<std::string> ServerStore::integrityFindings() {
  return schemaFindings(database_->reading()->link, catalogue_);
}

void ServerStore::copyTo(
    const std::string& /*path*/,
    const std::function<void(std::int64_t done, std::int64_t total)>& /*progress*/) {
  refuseStatement(
      "A company on a server is copied to a file with quoracc company copy, and backed "
      "up with the server's own tools");
}

std::string ServerStore::engineName() const {
  const Result version = database_->reading()->link.run("SHOW server_version");
  const std::string_view text = textAt(version, 0, 0);
  return "PostgreSQL " + std::string(text.substr(0, text.find(' ')));
}

std::int64_t ServerStore::sizeInBytes() const {
  return database_->reading()->link.number(
      "SELECT sum(pg_total_relation_size(oid)) FROM pg_class WHERE relkind = 'r' AND relnamespace "
      "= to_regnamespace(quote_ident(current_schema()))");
}

int ServerStore::schemaVersion() const { return storedVersion(database_->reading()->link); }

void ServerStore::setSchemaVersion(int version) {
  requireWritable();
  storeVersion(database_->changing(), version);
}

}  // namespace QuorHost::Postgres
