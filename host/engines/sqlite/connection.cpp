#include "host/engines/sqlite/connection.h"

#include <utility>

#include "host/engines/rows/recordset.h"
#include "host/engines/rows/updatable_recordset.h"
#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/engines/sqlite/run/change.h"
#include "host/engines/sqlite/run/cursor.h"
#include "host/engines/sqlite/run/row_changer.h"
#include "host/engines/sqlite/totals/kept_totals.h"

namespace QuorHost::Sqlite {

Connection::Connection(std::shared_ptr<SqliteStore> store, Sql::Dialect dialect)
    : store_(std::move(store)), dialect_(dialect) {}

QuorDataLib::Ref<QuorDataLib::Recordset> Connection::open(const std::string& sql,
                                                          const Values& values, bool forUpdate) {
  const std::shared_ptr<Database>& database = store_->database();
  database->refresh();
  storeTotals(*database);
  StatementCache::Taken query = database->cache().take(sql, dialect_, store_->catalogue());
  const Sql::Translation& translation = query.source->translation();
  requireQuery(translation);
  const Sql::Relation* table = nullptr;
  if (forUpdate && database->writable()) table = updatableTable(translation, store_->catalogue());
  auto cursor = std::make_unique<SqliteCursor>(database, std::move(query), values,
                                               TimeLimit(CommandTimeout()));
  if (table == nullptr) return QuorDataLib::make<Rows::Recordset>(std::move(cursor));
  auto changer = std::make_unique<SqliteRowChanger>(database, table->name, cursor->columns());
  return QuorDataLib::make<Rows::UpdatableRecordset>(std::move(cursor), std::move(changer), *table);
}

std::int32_t Connection::change(const std::string& sql, const Values& values) {
  Database& database = *store_->database();
  database.prepareForChange();
  StatementCache::Taken change = database.cache().take(sql, dialect_, store_->catalogue());
  requireChange(change.source->translation());
  store_->requireWritable();
  // Only a select in it can read totals.
  if (change.source->translation().sql.find("SELECT") != std::string::npos) storeTotals(database);
  bindMarkers(change.statement, *change.source, values);
  const std::int32_t changed =
      runChange(database, change.statement, sql, TimeLimit(CommandTimeout()));
  database.cache().giveBack(std::move(change));
  return changed;
}

}  // namespace QuorHost::Sqlite
