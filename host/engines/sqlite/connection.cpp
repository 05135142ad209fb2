#include "host/engines/sqlite/connection.h"

#include <algorithm>
#include <utility>

#include "host/engines/rows/recordset.h"
#include "host/engines/rows/updatable_recordset.h"
#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/engines/sqlite/run/change.h"
#include "host/engines/sqlite/run/cursor.h"
#include "host/engines/sqlite/run/row_changer.h"
#include "host/engines/sqlite/totals/kept_totals.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using Sql::StatementKind;

constexpr std::int32_t kUpdateMode = 1;

void requireMode(std::int32_t mode) {
  switch (mode) {
    case 0:
    case kUpdateMode:
    case 2:
    case 4:
    case 6:
      return;
    default:
      raise(ErrorNumber::InvalidArgument, "A recordset cannot be opened with mode " +
                                              std::to_string(mode) +
                                              ": 0, 2, 4 and 6 read rows, 1 changes them");
  }
}

/// The table whose rows a query gives, when every column has its own name in the table; otherwise
/// null. A column under another name could be taken for one that it is not.
const Sql::Relation* updatableTable(const Sql::Translation& query,
                                    const Sql::Catalogue& catalogue) {
  const Sql::Relation* const table = catalogue.find(query.updatableTable);
  if (table == nullptr) return nullptr;
  const bool plain = std::ranges::all_of(query.columns, [&](const Sql::ResultColumn& column) {
    return table->find(column.name) != nullptr;
  });
  return plain ? table : nullptr;
}

}  // namespace

Connection::Connection(std::shared_ptr<SqliteStore> store, Sql::Dialect dialect)
    : store_(std::move(store)), dialect_(dialect) {}

QuorDataLib::Ref<QuorDataLib::Recordset> Connection::OpenRecordset(
    const std::string& sql, std::int32_t mode, std::int32_t /*option*/,
    const QuorDataLib::Parameters& parameters, std::int32_t /*flag*/) {
  requireMode(mode);
  const std::shared_ptr<Database>& database = store_->database();
  database->refresh();
  storeTotals(*database);
  StatementCache::Taken query = database->cache().take(sql, dialect_, store_->catalogue());
  const Sql::Translation& translation = query.source->translation;
  if (translation.kind != StatementKind::Select) {
    refuseStatement("A recordset needs a SELECT statement; run this one with Execute");
  }
  const Sql::Relation* table = nullptr;
  if (mode == kUpdateMode && database->writable()) {
    table = updatableTable(translation, store_->catalogue());
  }
  auto cursor = std::make_unique<SqliteCursor>(database, std::move(query), parameters.values(),
                                               TimeLimit(timeout_));
  if (table == nullptr) return QuorDataLib::make<Rows::Recordset>(std::move(cursor));
  auto changer = std::make_unique<SqliteRowChanger>(database, table->name, cursor->columns());
  return QuorDataLib::make<Rows::UpdatableRecordset>(std::move(cursor), std::move(changer), *table);
}

void Connection::Execute(const std::string& sql, std::int32_t& recordsAffected,
                         std::int32_t /*option*/, const QuorDataLib::Parameters& parameters) {
  Database& database = *store_->database();
  database.prepareForChange();
  StatementCache::Taken change = database.cache().take(sql, dialect_, store_->catalogue());
  switch (change.source->translation.kind) {
    case StatementKind::Insert:
    case StatementKind::Update:
    case StatementKind::Delete:
      break;
    case StatementKind::Select:
      refuseStatement("A SELECT statement changes nothing; open it as a recordset");
    default:
      refuseStatement("The company's tables cannot be changed over a connection");
  }
  store_->requireWritable();
  // Only a select in it can read totals.
  if (change.source->translation.sql.find("SELECT") != std::string::npos) storeTotals(database);
  bindMarkers(change.statement, change.source->translation.markers, parameters.values());
  recordsAffected = runChange(database, change.statement, sql, TimeLimit(timeout_));
  database.cache().giveBack(std::move(change));
}

std::int32_t Connection::CommandTimeout() { return timeout_; }

void Connection::SetCommandTimeout(std::int32_t seconds) {
  if (seconds < 0) {
    raise(ErrorNumber::InvalidArgument,
          "A command timeout is a number of seconds, or 0 for no limit");
  }
  timeout_ = seconds;
}

}  // namespace QuorHost::Sqlite
