#include "host/application/company_tables.h"

#include <utility>

#include "host/sql/names.h"

namespace QuorHost {
namespace {

using QuorDataLib::Connection;
using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

constexpr std::int32_t kReadRows = 4;
constexpr std::int32_t kExecute = -1;

/// The first field of the first row; nothing without a row, and for null. The texts are the same in
/// both dialects.
std::optional<Value> firstField(const Ref<Connection>& connection, const std::string& sql,
                                std::vector<Value> values) {
  const Ref<Recordset> rows =
      connection->OpenRecordset(sql, kReadRows, 0, Parameters::array(std::move(values)), 0);
  std::optional<Value> value;
  if (!rows->AtEnd()) value = rows->Field(0);
  rows->Close();
  if (value && value->isNull()) value.reset();
  return value;
}

std::string text(std::initializer_list<std::string_view> pieces) {
  std::string joined;
  for (const std::string_view piece : pieces) joined += piece;
  return joined;
}

}  // namespace

bool isParameterTable(std::string_view name) {
  return Sql::sameName(name, "QuorAcctParams") || Sql::sameName(name, "QuorCastriaParams");
}

CompanyTables::CompanyTables(std::shared_ptr<Store> store) : store_(std::move(store)) {
  if (store_) connection_ = store_->connectInEither();
}

bool CompanyTables::has(std::string_view table) const { return store_ && store_->hasTable(table); }

std::optional<Value> CompanyTables::find(const KeyedTable& table, const Value& key,
                                         const Ref<Connection>& connection) const {
  if (!has(table.table)) return std::nullopt;
  return firstField(
      connection ? connection : connection_,
      text({"SELECT ", table.value, " FROM ", table.table, " WHERE ", table.key, " = ?"}), {key});
}

std::optional<Value> CompanyTables::first(std::string_view table, const std::string& expression,
                                          const std::string& condition,
                                          std::vector<Value> values) const {
  if (!has(table)) return std::nullopt;
  return firstField(connection_,
                    text({"SELECT ", expression, " AS FirstValue FROM ", table,
                          condition.empty() ? "" : " WHERE ", condition}),
                    std::move(values));
}

bool CompanyTables::put(const KeyedTable& table, const Value& key, const Value& value) const {
  if (!has(table.table) || !store_->writable()) return false;
  std::int32_t affected = 0;
  connection_->Execute(
      text({"UPDATE ", table.table, " SET ", table.value, " = ? WHERE ", table.key, " = ?"}),
      affected, kExecute, Parameters::array({value, key}));
  if (affected == 0) {
    connection_->Execute(
        text({"INSERT INTO ", table.table, " (", table.value, ", ", table.key, ") VALUES (?, ?)"}),
        affected, kExecute, Parameters::array({value, key}));
  }
  return true;
}

}  // namespace QuorHost
