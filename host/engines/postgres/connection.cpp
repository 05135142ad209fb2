#include "host/engines/postgres/connection.h"

#include <string_view>
#include <utility>

#include "host/engines/postgres/run/cursor.h"
#include "host/engines/postgres/run/row_changer.h"
#include "host/engines/postgres/run/values.h"
#include "host/engines/postgres/write/sql_writer.h"
#include "host/engines/rows/recordset.h"
#include "host/engines/rows/updatable_recordset.h"
#include "host/sql/number_text.h"

namespace QuorHost::Postgres {

ServerConnection::ServerConnection(std::shared_ptr<ServerStore> store, Sql::Dialect dialect)
    : store_(std::move(store)), dialect_(dialect) {}

QuorDataLib::Ref<QuorDataLib::Recordset> ServerConnection::open(const std::string& sql,
                                                                const Values& values,
                                                                bool forUpdate) {
  const std::shared_ptr<Database>& database = store_->database();
  const auto source =
      database->cache().take(sql, dialect_, store_->catalogue(), SqlWriter()).source;
  requireQuery(source->translation());
  const Sql::Relation* table = nullptr;
  if (forUpdate && database->writable()) {
    table = updatableTable(source->translation(), store_->catalogue());
  }
  auto cursor = std::make_unique<ServerCursor>(database, source, values, CommandTimeout());
  if (table == nullptr) return QuorDataLib::make<Rows::Recordset>(std::move(cursor));
  auto changer = std::make_unique<ServerRowChanger>(database, table->name, cursor->columns());
  return QuorDataLib::make<Rows::UpdatableRecordset>(std::move(cursor), std::move(changer), *table);
}

std::int32_t ServerConnection::change(const std::string& sql, const Values& values) {
  Database& database = *store_->database();
  const auto source = database.cache().take(sql, dialect_, store_->catalogue(), SqlWriter()).source;
  requireChange(source->translation());
  store_->requireWritable();
  const std::vector<Argument> arguments = argumentsOf(*source, values);
  Link& link = database.changing();
  link.limit(CommandTimeout());
  const Result result = link.run(source->translation().sql, arguments, sql);
  return Sql::readNumber<std::int32_t>(PQcmdTuples(result.get())).value_or(0);
}

}  // namespace QuorHost::Postgres
