#include "host/engines/postgres/store.h"

#include <utility>

#include "host/engines/postgres/connection.h"
#include "host/engines/postgres/run/change_watch.h"
#include "host/engines/postgres/run/row_buffer.h"
#include "host/engines/postgres/schema/growth.h"
#include "host/engines/postgres/schema/readers.h"
#include "host/engines/postgres/schema/stored_catalogue.h"
#include "host/engines/postgres/server/server_error.h"
#include "host/engines/postgres/transaction.h"
#include "host/engines/postgres/write/sql_writer.h"
#include "host/engines/rows/refusal.h"
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

ServerStore::ServerStore(std::shared_ptr<Database> database) : database_(std::move(database)) {
  Link& link = database_->reading()->link;
  if (writable()) renewFunctions(link, database_->address());
  requireCompany(link, database_->address());
  readDefinitions();
}

ServerStore::ServerStore(std::shared_ptr<Database> database, OnServer making)
    : database_(std::move(database)), making_(std::move(making)) {}

void ServerStore::readDefinitions() {
  StoredCatalogue stored = readStoredCatalogue(database_->reading()->link, database_->address());
  database_->catalogue() = std::move(stored.catalogue);
  definitions_ = std::move(stored.definitions);
  database_->cache().clear();
}

void ServerStore::requireWritable() const {
  Rows::requireWritable(writable(), database_->address().shown);
}

QuorDataLib::Ref<QuorDataLib::Connection> ServerStore::connect(Sql::Dialect dialect) {
  return QuorDataLib::make<ServerConnection>(
      std::static_pointer_cast<ServerStore>(shared_from_this()), dialect);
}

void ServerStore::define(std::string_view statement) {
  requireWritable();
  const Sql::Translation definition =
      Sql::translate(statement, Sql::Dialect::Server, database_->catalogue(), SqlWriter());
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
  Sql::enter(definition, database_->catalogue());
  definitions_.emplace_back(statement);
  database_->cache().clear();
  definedInTransaction_ = true;
}

void ServerStore::redefine(std::string_view table, std::string_view statement) {
  requireWritable();
  if (!database_->pinned()) {
    const std::unique_ptr<Transaction> transaction = begin();
    redefine(table, statement);
    transaction->commit();
    return;
  }
  growTable(database_->changing(), catalogue(), table, statement);
  definedInTransaction_ = true;
  readDefinitions();
}

void ServerStore::make(const OnServer& how) {
  Link& link = database_->changing();
  const Address& address = database_->address();
  const std::string schema = Link::quoted(address.schema);
  lockDefinitions(link, address);
  if (holdsCompany(link)) {
    if (!how.replace) {
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
  for (const std::string& role : how.readers) letRead(link, address, role);
}

std::unique_ptr<Transaction> ServerStore::begin() {
  requireWritable();
  definedInTransaction_ = false;
  auto transaction = std::make_unique<ServerTransaction>(
      std::static_pointer_cast<ServerStore>(shared_from_this()));
  if (making_) make(*making_);
  return transaction;
}

std::unique_ptr<Transaction> ServerStore::beginToDefine() {
  std::unique_ptr<Transaction> transaction = begin();
  if (making_) return transaction;
  lockDefinitions(database_->changing(), database_->address());
  requireCompany(database_->changing(), database_->address());
  readDefinitions();
  return transaction;
}

void ServerStore::beforeCommit() {
  if (definedInTransaction_) handDownReading(database_->changing(), catalogue());
}

void ServerStore::afterCommit() {
  making_.reset();
  if (!std::exchange(definedInTransaction_, false)) return;
  // New tables have no statistics yet, and plans without them are poor ones.
  std::string tables;
  for (const Sql::Relation& relation : catalogue().relations()) {
    if (relation.kind != Sql::Relation::Kind::Table && relation.keptOf.empty()) continue;
    tables += (tables.empty() ? "" : ", ") + Link::nameOf(relation.name);
  }
  database_->changing().run("ANALYZE " + tables);
}

void ServerStore::afterRollBack() noexcept {
  if (!std::exchange(definedInTransaction_, false)) return;
  try {
    if (!making_) return readDefinitions();
    database_->catalogue() = {};
    definitions_.clear();
    database_->cache().clear();
  } catch (...) {  // NOLINT(bugprone-empty-catch): the server refuses statements on what is gone
  }
}

std::unique_ptr<Snapshot> ServerStore::hold() {
  Rows::requireUnchanging(writable());
  return std::make_unique<ServerSnapshot>(database_);
}

std::unique_ptr<RowWriter> ServerStore::writer(const std::string& table,
                                               const std::vector<std::string>& columns) {
  requireWritable();
  const Sql::Relation* const relation = catalogue().find(table);
  if (relation == nullptr) refuseStatement("There is no table " + table);
  const auto order = static_cast<std::size_t>(relation - catalogue().relations().data());
  return std::make_unique<RowBuffer>(database_, *relation, order, columns);
}

std::unique_ptr<ChangeLog> ServerStore::watch(const WatchedTable& watched) {
  requireWritable();
  return std::make_unique<ChangeWatch>(database_, watched);
}

std::vector<std::string> ServerStore::integrityFindings() {
  return schemaFindings(database_->reading()->link, catalogue());
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
