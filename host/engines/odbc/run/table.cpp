#include "host/engines/odbc/run/table.h"

#include <string>
#include <vector>

#include "host/engines/odbc/run/batch.h"
#include "host/engines/odbc/run/statement.h"
#include "host/sql/names.h"

namespace QuorHost::Odbc {
namespace {

// The places of what is read in the answers, from 0; the standard says them.
constexpr std::size_t kSchema = 1;
constexpr std::size_t kTable = 2;
constexpr std::size_t kColumn = 3;

/// Calls `visit` for every row of an answer, with a function that gives the text in a column.
template <class Visit>
void forEachRow(Statement& statement, const Visit& visit) {
  const std::vector<DrivenColumn> columns = statement.columns();
  Batch batch(statement, columns);
  while (!batch.ended()) {
    batch.fetch(statement);
    for (std::size_t row = 0; row < batch.size(); ++row) {
      visit([&](std::size_t column) {
        // What a driver leaves out is empty.
        return std::string(column < columns.size() ? batch.cell(row, column).text : "");
      });
    }
  }
}

}  // namespace

bool hasTable(const std::shared_ptr<Session>& session, std::string_view name) {
  Statement question(session, {});
  question.askTables(session->catalogueName(name));
  bool found = false;
  // An underline in the name stands for any letter there.
  forEachRow(question,
             [&](const auto& text) { found = found || Sql::sameName(text(kTable), name); });
  return found;
}

std::optional<Sql::Relation> findTable(const std::shared_ptr<Session>& session,
                                       std::string_view name) {
  Sql::Relation table;
  std::string schema;
  bool several = false;
  {
    Statement question(session, {});
    question.askColumns(session->catalogueName(name));
    forEachRow(question, [&](const auto& text) {
      if (!Sql::sameName(text(kTable), name)) return;
      if (table.columns.empty()) schema = text(kSchema);
      several = several || text(kSchema) != schema;
      table.name = text(kTable);
      table.columns.push_back({.name = text(kColumn)});
    });
  }
  if (table.columns.empty() || several) return std::nullopt;
  Statement question(session, {});
  const std::size_t keyColumn = question.askPrimaryKey(schema, table.name);
  forEachRow(question, [&](const auto& text) {
    for (Sql::Column& column : table.columns) {
      if (column.name == text(keyColumn)) column.primaryKey = true;
    }
  });
  return table;
}

}  // namespace QuorHost::Odbc
