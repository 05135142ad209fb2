#include "odbc/driven.h"

#include <dlfcn.h>

#include <algorithm>
#include <stdexcept>

#include "host/engines/odbc/driver/api.h"
#include "platform/error.h"

namespace QuorHost::Testing {
namespace {

using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

/// Texts come in all the ways that there are: row by row, in batches, and longer than they are said
/// to be.
AnsweredColumn columnOf(std::string name, ValueType type, std::uint64_t textSize) {
  switch (type) {
    case ValueType::Boolean:
      return {.name = std::move(name), .type = SQL_BIT, .size = 1};
    case ValueType::Integer:
      return {.name = std::move(name), .type = SQL_SMALLINT, .size = 5};
    case ValueType::Long:
      return {.name = std::move(name), .type = SQL_INTEGER, .size = 10};
    case ValueType::Double:
      return {.name = std::move(name), .type = SQL_DOUBLE, .size = 15};
    case ValueType::Currency:
      return {.name = std::move(name), .type = SQL_DECIMAL, .size = 19, .decimals = 4};
    case ValueType::Date:
      return {.name = std::move(name), .type = SQL_TYPE_TIMESTAMP, .size = 19};
    default:
      return {.name = std::move(name), .type = SQL_WVARCHAR, .size = textSize};
  }
}

std::optional<std::string> textOf(const Value& value) {
  if (value.isNull() || value.isEmpty()) return std::nullopt;
  if (value.type() == ValueType::Boolean) return value.toBoolean() ? "1" : "0";
  return value.toText();
}

Answer rowsOf(const Ref<Recordset>& rows, std::uint64_t textSize) {
  Answer answer;
  for (std::int32_t i = 0; i < rows->FieldCount(); ++i) {
    answer.columns.push_back(columnOf(rows->FieldName(i), rows->FieldType(i), textSize));
  }
  for (; !rows->AtEnd(); rows->MoveNext()) {
    auto& row = answer.rows.emplace_back();
    for (std::int32_t i = 0; i < rows->FieldCount(); ++i) row.push_back(textOf(rows->Field(i)));
  }
  return answer;
}

/// A query for the number that the newest row of a table was given.
std::string newestNumber(Store& company, const std::string& table) {
  const auto& columns = company.catalogue().find(table)->columns;
  const auto numbered = std::ranges::find_if(columns, &Sql::Column::identity);
  return "SELECT MAX(" + numbered->name + ") AS NewNumber FROM " + table;
}

/// The answer of a catalogue: rows of catalogue, schema, table and column.
Answer catalogueAnswer(Store& company, const std::string& name, bool tables, bool keys) {
  Answer answer;
  for (const char* const column : {"TABLE_CAT", "TABLE_SCHEM", "TABLE_NAME", "COLUMN_NAME"}) {
    answer.columns.push_back(columnOf(column, ValueType::Text, 128));
  }
  const Sql::Relation* const table = company.catalogue().find(name);
  if (table == nullptr) return answer;
  for (const Sql::Column& column : table->columns) {
    if (!keys || column.primaryKey) {
      answer.rows.push_back({std::nullopt, "dbo", table->name, column.name});
    }
    if (tables) break;
  }
  return answer;
}

}  // namespace

Recording& recording() {
  // As the driver manager loads it; it stays, so that what it has leaked can be told.
  static Recording* const found = [] {
    void* const library = ::dlopen(RECORDING_DRIVER, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(::dlerror());
    return reinterpret_cast<Recording* (*)()>(::dlsym(library, "quorRecording"))();
  }();
  return *found;
}

std::string driven(Sql::Dialect dialect, const std::string& more) {
  return std::string("odbc:Driver=") + RECORDING_DRIVER + ";" + more +
         (dialect == Sql::Dialect::Server ? "dialect=server" : "dialect=desktop");
}

Value valueOf(const Bound& bound) {
  if (!bound.text) return Value::null();
  Value text(*bound.text);
  switch (bound.type) {
    case SQL_BIT:
      return Value(*bound.text != "0");
    case SQL_SMALLINT:
      return Value(text.toInteger());
    case SQL_INTEGER:
      return Value(text.toLong());
    case SQL_DOUBLE:
      return Value(text.toDouble());
    case SQL_DECIMAL:
      return Value(text.toCurrency());
    case SQL_TYPE_TIMESTAMP:
      return Value(text.toDate());
    default:
      return text;
  }
}

Answer answerOf(Store& company, Sql::Dialect dialect, const Received& received) {
  const auto asked = [&](const std::string& what) -> std::optional<std::string> {
    if (!received.text.starts_with(what + " ")) return std::nullopt;
    return received.text.substr(what.size() + 1);
  };
  if (const auto name = asked("SQLTables")) return catalogueAnswer(company, *name, true, false);
  if (const auto name = asked("SQLColumns")) return catalogueAnswer(company, *name, false, false);
  if (const auto name = asked("SQLPrimaryKeys"))
    return catalogueAnswer(company, *name, false, true);
  try {
    const auto connection = company.connect(dialect);
    std::vector<Value> values;
    values.reserve(received.values.size());
    for (const Bound& bound : received.values) values.push_back(valueOf(bound));
    const Parameters parameters = Parameters::array(std::move(values));
    std::string text = received.text;
    static std::string lastTable;
    if (text == "SELECT @@IDENTITY") text = newestNumber(company, lastTable);
    constexpr std::string_view kInto = "INSERT INTO ";
    if (text.starts_with(kInto)) {
      lastTable = text.substr(kInto.size(), text.find(' ', kInto.size()) - kInto.size());
      std::erase(lastTable, '"');
    }
    if (text.starts_with("INSERT") || text.starts_with("UPDATE") || text.starts_with("DELETE")) {
      std::int32_t changed = 0;
      connection->Execute(text, changed, -1, parameters);
      return {.changed = changed};
    }
    constexpr std::uint64_t kSizes[] = {0, 5, 200};
    return rowsOf(connection->OpenRecordset(text, 4, 0, parameters, 0), kSizes[text.size() % 3]);
  } catch (const QuorDataLib::Error& error) {
    const bool overflow = error.is(QuorDataLib::ErrorNumber::Overflow);
    return {.state = overflow ? "22003" : "42000", .message = error.description()};
  }
}

}  // namespace QuorHost::Testing
