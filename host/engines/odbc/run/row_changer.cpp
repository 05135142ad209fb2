#include "host/engines/odbc/run/row_changer.h"

#include <algorithm>
#include <utility>

#include "host/engines/odbc/run/batch.h"
#include "host/engines/odbc/run/statement.h"
#include "host/engines/rows/refusal.h"
#include "host/engines/write/joined.h"
#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Odbc {
namespace {

using QuorDataLib::Value;
using Rows::FieldValue;
using Rows::KeptRows;
using Write::joined;

/// The value that is set for a column, or null.
const Value* valueFor(std::span<const FieldValue> fields, std::string_view column) {
  const auto found = std::ranges::find_if(
      fields, [&](const FieldValue& field) { return Sql::sameName(field.column, column); });
  return found == fields.end() || found->value.isNull() ? nullptr : &found->value;
}

std::vector<Value> valuesOf(std::span<const FieldValue> fields) {
  std::vector<Value> values;
  values.reserve(fields.size());
  for (const FieldValue& field : fields) values.push_back(field.value);
  return values;
}

std::string quoted(Session& session, std::string_view name) {
  const std::string quote = session.text(SQL_IDENTIFIER_QUOTE_CHAR);
  if (quote.empty() || quote == " ") return std::string(name);
  std::string text = quote;
  for (const char c : name) {
    text += c;
    if (c == quote.front()) text += c;
  }
  return text + quote;
}

}  // namespace

OdbcRowChanger::OdbcRowChanger(std::shared_ptr<Database> database, Sql::Relation table,
                               const std::vector<Sql::ResultColumn>& columns)
    : database_(std::move(database)), table_(std::move(table)), columns_(columns) {}

std::string OdbcRowChanger::tableName(Session& session) const {
  return quoted(session, table_.name);
}

std::string OdbcRowChanger::columnName(Session& session, std::string_view name) const {
  // As the database spells it: quoted names may tell upper from lower case.
  const Sql::Column* const column = table_.find(name);
  return quoted(session, column == nullptr ? name : column->name);
}

std::vector<const Sql::Column*> OdbcRowChanger::keyColumns() const {
  std::vector<const Sql::Column*> key;
  for (const Sql::Column& column : table_.columns) {
    if (column.primaryKey) key.push_back(&column);
  }
  return key;
}

std::string OdbcRowChanger::byKey(Session& session) const {
  return " WHERE " + joined(keyColumns(), " AND ", [&](const Sql::Column* column) {
           return quoted(session, column->name) + " = ?";
         });
}

KeptRows OdbcRowChanger::inTransaction(
    const std::function<KeptRows(const std::shared_ptr<Session>&)>& store) const {
  const std::shared_ptr<Session> session = database_->changing();
  if (session->inTransaction()) return store(session);
  session->begin(false);
  try {
    KeptRows stored = store(session);
    session->commit();
    return stored;
  } catch (...) {
    session->rollBack();
    throw;
  }
}

std::int32_t OdbcRowChanger::change(const std::shared_ptr<Session>& session,
                                    const std::string& text, const Values& values) const {
  Statement statement(session, text);
  statement.run(values, 0);
  return statement.rowsChanged();
}

KeptRows OdbcRowChanger::rowsOf(const std::shared_ptr<Session>& session, const std::string& text,
                                const Values& values) const {
  Statement statement(session, text);
  statement.run(values, 0);
  const std::vector<DrivenColumn> columns = statement.columns();
  Batch batch(statement, columns);
  batch.fetch(statement);
  KeptRows rows;
  for (std::size_t row = 0; row < batch.size(); ++row) {
    rows.append(columns.size(), [&](std::int32_t column) {
      return batch.cell(row, static_cast<std::size_t>(column));
    });
  }
  return rows;
}

KeptRows OdbcRowChanger::read(const std::shared_ptr<Session>& session, const Values& key) const {
  const std::string columns = joined(columns_, ", ", [&](const Sql::ResultColumn& column) {
    return columnName(*session, column.name);
  });
  KeptRows rows =
      rowsOf(session, "SELECT " + columns + " FROM " + tableName(*session) + byKey(*session), key);
  if (rows.size() == 0) {
    Rows::refuseStatement("The row of table " + table_.name +
                          " is no longer there: somebody has removed it");
  }
  return rows;
}

OdbcRowChanger::Values OdbcRowChanger::keyOf(const std::shared_ptr<Session>& session,
                                             std::span<const FieldValue> fields) const {
  Values key;
  for (const Sql::Column* const column : keyColumns()) {
    if (const Value* const value = valueFor(fields, column->name)) {
      key.push_back(*value);
      continue;
    }
    try {
      const KeptRows number = rowsOf(session, "SELECT @@IDENTITY", {});
      key.push_back(Rows::valueOf(number.at(0, 0), {column->name, Sql::Type::Unknown}));
    } catch (const QuorDataLib::Error& error) {
      Rows::raiseNaming(
          "The row was not added, as the database does not tell its new number: set "
          "column " +
              column->name + " of table " + table_.name,
          error);
    }
  }
  return key;
}

KeptRows OdbcRowChanger::insert(std::span<const FieldValue> fields) {
  return inTransaction([&](const std::shared_ptr<Session>& session) {
    std::string text = "INSERT INTO " + tableName(*session);
    if (fields.empty()) {
      text += " DEFAULT VALUES";
    } else {
      text += " (" +
              joined(fields, ", ",
                     [&](const FieldValue& field) { return columnName(*session, field.column); }) +
              ") VALUES (" + joined(fields, ", ", [](const FieldValue&) { return "?"; }) + ")";
    }
    change(session, text, valuesOf(fields));
    if (keyColumns().empty()) {
      Rows::refuseStatement("The row was not added: table " + table_.name +
                            " has no primary key by which it could be read again");
    }
    return read(session, keyOf(session, fields));
  });
}

KeptRows OdbcRowChanger::update(std::span<const FieldValue> fields,
                                std::span<const FieldValue> key) {
  return inTransaction([&](const std::shared_ptr<Session>& session) {
    Values values = valuesOf(fields);
    // The key comes in the order of the table's columns, as its condition does.
    for (const FieldValue& field : key) values.push_back(field.value);
    const std::string assignments = joined(fields, ", ", [&](const FieldValue& field) {
      return columnName(*session, field.column) + " = ?";
    });
    change(session, "UPDATE " + tableName(*session) + " SET " + assignments + byKey(*session),
           values);
    Values stored;
    for (const FieldValue& field : key) {
      const Value* const changed = valueFor(fields, field.column);
      stored.push_back(changed == nullptr ? field.value : *changed);
    }
    return read(session, stored);
  });
}

}  // namespace QuorHost::Odbc
