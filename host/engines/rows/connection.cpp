#include "host/engines/rows/connection.h"

#include <algorithm>

#include "host/engines/rows/refusal.h"
#include "platform/error.h"

namespace QuorHost::Rows {
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

}  // namespace

QuorDataLib::Ref<QuorDataLib::Recordset> Connection::OpenRecordset(
    const std::string& sql, std::int32_t mode, std::int32_t /*option*/,
    const QuorDataLib::Parameters& parameters, std::int32_t /*flag*/) {
  requireMode(mode);
  return open(sql, parameters.values(), mode == kUpdateMode);
}

void Connection::Execute(const std::string& sql, std::int32_t& recordsAffected,
                         std::int32_t /*option*/, const QuorDataLib::Parameters& parameters) {
  recordsAffected = change(sql, parameters.values());
}

void Connection::SetCommandTimeout(std::int32_t seconds) {
  if (seconds < 0) {
    raise(ErrorNumber::InvalidArgument,
          "A command timeout is a number of seconds, or 0 for no limit");
  }
  timeout_ = seconds;
}

void Connection::requireQuery(const Sql::Translation& translation) {
  if (translation.kind == StatementKind::Select) return;
  refuseStatement("A recordset needs a SELECT statement; run this one with Execute");
}

void Connection::requireChange(const Sql::Translation& translation) {
  switch (translation.kind) {
    case StatementKind::Insert:
    case StatementKind::Update:
    case StatementKind::Delete:
      return;
    case StatementKind::Select:
      refuseStatement("A SELECT statement changes nothing; open it as a recordset");
    default:
      refuseStatement("The company's tables cannot be changed over a connection");
  }
}

bool Connection::hasColumns(const Sql::Relation& table,
                            const std::vector<Sql::ResultColumn>& columns) {
  return std::ranges::all_of(
      columns, [&](const Sql::ResultColumn& column) { return table.find(column.name) != nullptr; });
}

const Sql::Relation* Connection::updatableTable(const Sql::Translation& query,
                                                const Sql::Catalogue& catalogue) {
  const Sql::Relation* const table = catalogue.find(query.updatableTable);
  return table != nullptr && hasColumns(*table, query.columns) ? table : nullptr;
}

}  // namespace QuorHost::Rows
