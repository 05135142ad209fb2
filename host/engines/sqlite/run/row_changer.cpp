#include "host/engines/sqlite/run/row_changer.h"

#include <string_view>
#include <utility>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/run/binding.h"
#include "host/engines/sqlite/run/change.h"
#include "host/engines/sqlite/statement.h"
#include "host/engines/write/joined.h"

namespace QuorHost::Sqlite {
namespace {

using Rows::FieldValue;
using Rows::KeptRows;
using Write::joined;

std::string assignment(const FieldValue& field) { return quotedName(field.column) + " = ?"; }

}  // namespace

SqliteRowChanger::SqliteRowChanger(std::shared_ptr<Database> database, std::string table,
                                   const std::vector<Sql::ResultColumn>& columns)
    : database_(std::move(database)),
      table_(std::move(table)),
      columns_(columns.size()),
      returning_(" RETURNING " + joined(columns, ", ", [](const Sql::ResultColumn& column) {
                   return quotedName(column.name);
                 })) {}

KeptRows SqliteRowChanger::store(const std::string& text, std::span<const FieldValue> fields,
                                 std::span<const FieldValue> key) const {
  database_->prepareForChange();
  Statement change(database_->handle(), text);
  int marker = 0;
  for (const std::span<const FieldValue> values : {fields, key}) {
    for (const FieldValue& field : values) {
      try {
        bindValue(change, ++marker, field.value, field.type, Lifetime::Borrowed);
      } catch (const QuorDataLib::Error& error) {
        Rows::raiseNaming("Column " + std::string(field.column) + " of table " + table_, error);
      }
    }
  }
  KeptRows stored;
  runChange(*database_, change, text, {}, [&] {
    stored.append(columns_, [&](std::int32_t column) { return cellOf(change, column); });
  });
  return stored;
}

KeptRows SqliteRowChanger::insert(std::span<const FieldValue> fields) {
  const std::string into = "INSERT INTO " + quotedName(table_);
  if (fields.empty()) return store(into + " DEFAULT VALUES" + returning_, {}, {});
  const auto names = [](const FieldValue& field) { return quotedName(field.column); };
  const auto markers = [](const FieldValue&) { return std::string_view("?"); };
  return store(into + " (" + joined(fields, ", ", names) + ") VALUES (" +
                   joined(fields, ", ", markers) + ")" + returning_,
               fields, {});
}

KeptRows SqliteRowChanger::update(std::span<const FieldValue> fields,
                                  std::span<const FieldValue> key) {
  KeptRows stored =
      store("UPDATE " + quotedName(table_) + " SET " + joined(fields, ", ", assignment) +
                " WHERE " + joined(key, " AND ", assignment) + returning_,
            fields, key);
  if (stored.size() == 0) {
    refuseStatement("The row of table " + table_ + " is no longer there: somebody has removed it");
  }
  return stored;
}

}  // namespace QuorHost::Sqlite
