#include "host/engines/odbc/connection.h"

#include <optional>
#include <utility>

#include "host/engines/odbc/run/cursor.h"
#include "host/engines/odbc/run/row_changer.h"
#include "host/engines/odbc/run/table.h"
#include "host/engines/odbc/run/text_look.h"
#include "host/engines/rows/passed_value.h"
#include "host/engines/rows/recordset.h"
#include "host/engines/rows/refusal.h"
#include "host/engines/rows/updatable_recordset.h"
#include "host/sql/front_end.h"

namespace QuorHost::Odbc {
namespace {

/// Looks at a statement that is about to be passed through. Raises a refused statement for what the
/// driver had better not get.
void require(TextKind kind, const std::string& sql, std::size_t values) {
  Rows::requireStorable(sql);
  const TextLook look = lookAt(sql);
  if (look.kind != kind) {
    if (kind == TextKind::Query) {
      Rows::refuseStatement("A recordset needs a SELECT statement; run this one with Execute");
    }
    if (look.kind == TextKind::Query) {
      Rows::refuseStatement("A SELECT statement changes nothing; open it as a recordset");
    }
    Rows::refuseStatement("The company's tables cannot be changed over a connection");
  }
  requireWhole(look, values);
}

}  // namespace

OdbcConnection::OdbcConnection(std::shared_ptr<OdbcStore> store) : store_(std::move(store)) {}

QuorDataLib::Ref<QuorDataLib::Recordset> OdbcConnection::open(const std::string& sql,
                                                              const Values& values,
                                                              bool forUpdate) {
  require(TextKind::Query, sql, values.size());
  const std::shared_ptr<Database>& database = store_->database();
  std::optional<Sql::Relation> table;
  if (forUpdate && database->writable()) {
    const std::string name = Sql::singleTable(sql, database->address().dialect);
    if (!name.empty()) table = findTable(database->reading(), name);
  }
  auto cursor = std::make_unique<OdbcCursor>(database, sql, values, CommandTimeout());
  if (!table || !hasColumns(*table, cursor->columns())) {
    return QuorDataLib::make<Rows::Recordset>(std::move(cursor));
  }
  auto changer = std::make_unique<OdbcRowChanger>(database, *table, cursor->columns());
  return QuorDataLib::make<Rows::UpdatableRecordset>(std::move(cursor), std::move(changer),
                                                     *std::move(table));
}

std::int32_t OdbcConnection::change(const std::string& sql, const Values& values) {
  require(TextKind::Change, sql, values.size());
  store_->requireWritable();
  Statement statement(store_->database()->changing(), sql);
  statement.run(values, CommandTimeout());
  return statement.rowsChanged();
}

}  // namespace QuorHost::Odbc
