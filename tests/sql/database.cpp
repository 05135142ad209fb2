#include "sql/database.h"

#include "host/company/schema.h"
#include "host/engines/rows/passed_value.h"
#include "host/engines/sqlite/functions/collation.h"
#include "host/engines/sqlite/functions/functions.h"
#include "host/engines/sqlite/write/kept_totals_text.h"
#include "platform/error.h"

namespace QuorHost::Sql::Testing {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;

struct Finalize {
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using Prepared = std::unique_ptr<sqlite3_stmt, Finalize>;

void bind(sqlite3_stmt* statement, int index, const Value& value, Type type) {
  if (value.isNull()) {
    sqlite3_bind_null(statement, index);
    return;
  }
  switch (type) {
    case Type::Boolean:
      sqlite3_bind_int(statement, index, value.toBoolean() ? 1 : 0);
      break;
    case Type::Integer:
    case Type::Long:
      sqlite3_bind_int(statement, index, value.toLong());
      break;
    case Type::Double:
      sqlite3_bind_double(statement, index, value.toDouble());
      break;
    case Type::Currency:
      sqlite3_bind_int64(statement, index, value.toCurrency().units());
      break;
    default: {
      const std::string text = type == Type::Date ? value.toDate().toText() : value.toText();
      sqlite3_bind_text(statement, index, text.c_str(), -1, SQLITE_TRANSIENT);
    }
  }
}

/// A value as people read it; what does not have the stored form of its type is marked.
std::string shown(sqlite3_stmt* statement, int column, Type type) {
  const int stored = sqlite3_column_type(statement, column);
  if (stored == SQLITE_NULL) return "-";
  const std::string text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  const int expected = type == Type::Double                       ? SQLITE_FLOAT
                       : type == Type::Date || type == Type::Text ? SQLITE_TEXT
                       : type == Type::Unknown                    ? stored
                                                                  : SQLITE_INTEGER;
  if (stored != expected) return "(" + std::string(typeName(type)) + "!)" + text;
  if (type == Type::Currency) {
    return Value(Currency::fromUnits(sqlite3_column_int64(statement, column))).toText();
  }
  return type == Type::Double ? Value(sqlite3_column_double(statement, column)).toText() : text;
}

}  // namespace

void Database::open(const std::string& path, int flags) {
  sqlite3* opened = nullptr;
  sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
  database_.reset(opened);
  Sqlite::registerFunctions(opened);
  Sqlite::registerCollation(opened);
}

Database::Database() { open(":memory:", SQLITE_OPEN_READWRITE); }

Database::Database(const std::string& path, Catalogue catalogue)
    : catalogue_(std::move(catalogue)) {
  open(path, SQLITE_OPEN_READONLY);
}

Database::Database(std::string_view schema) : Database() {
  for (const std::string& statement : splitStatements(schema)) rows(statement, kServer);
}

Translation Database::translate(std::string_view text, Dialect dialect, Rewriting rewriting) const {
  return Sql::translate(text, dialect, catalogue_, writer_, rewriting);
}

std::vector<std::string> Database::rows(std::string_view text, Dialect dialect,
                                        const Values& values) {
  return rows(translate(text, dialect), values);
}

std::vector<std::string> Database::rows(const Translation& translation, const Values& values) {
  const auto fail = [&] { Sql::refuse(sqlite3_errmsg(database_.get()), {}, translation.sql); };
  sqlite3_stmt* raw = nullptr;
  if (sqlite3_prepare_v2(database_.get(), translation.sql.c_str(), -1, &raw, nullptr) != 0) fail();
  const Prepared statement(raw);
  for (std::size_t i = 0; i < values.size(); ++i) {
    bind(raw, static_cast<int>(i) + 1, values[i], translation.markers.at(i));
  }
  std::vector<std::string> result;
  int code = sqlite3_step(raw);
  for (; code == SQLITE_ROW; code = sqlite3_step(raw)) {
    std::string row;
    for (std::size_t i = 0; i < translation.columns.size(); ++i) {
      if (i > 0) row += '|';
      row += shown(raw, static_cast<int>(i), translation.columns[i].type);
    }
    result.push_back(row);
  }
  if (code != SQLITE_DONE) fail();
  if (!translation.created.name.empty()) enter(translation, catalogue_);
  if (translation.kind != StatementKind::Select) addUpTotals();
  return result;
}

std::vector<std::string> Database::rows(const Write::TranslatedStatement& statement,
                                        const Values& values) {
  Values all;
  QuorHost::Rows::giveMarkers(
      statement.translation().markers.size(), statement.numbers, values,
      [&](std::size_t /*marker*/, const Value& value) { all.push_back(value); });
  return rows(statement.translation(), all);
}

void Database::addUpTotals() {
  for (const Sqlite::KeptTotals& totals : Sqlite::keptTotals(catalogue_)) {
    for (const std::string& sql : {totals.clear(), totals.fill()}) {
      if (sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) != 0) {
        Sql::refuse(sqlite3_errmsg(database_.get()), {}, sql);
      }
    }
  }
}

std::string Database::value(std::string_view expression, Dialect dialect, const Values& values) {
  return rows("SELECT " + std::string(expression), dialect, values).at(0);
}

std::string Database::refusal(std::string_view text, Dialect dialect) {
  try {
    rows(text, dialect);
    return {};
  } catch (const QuorDataLib::Error& error) {
    return error.description();
  }
}

std::string Database::preparationError(const Translation& translation) const {
  sqlite3_stmt* raw = nullptr;
  const int code = sqlite3_prepare_v2(database_.get(), translation.sql.c_str(), -1, &raw, nullptr);
  const Prepared statement(raw);
  if (code != SQLITE_OK) return sqlite3_errmsg(database_.get());
  const bool sameMarkers =
      static_cast<int>(translation.markers.size()) == sqlite3_bind_parameter_count(raw);
  return sameMarkers ? "" : "the markers are not those of the text";
}

std::string companySchema() {
  std::string schema;
  for (const std::string_view area : schemaTexts()) schema.append(area).append(";\n");
  return schema;
}

}  // namespace QuorHost::Sql::Testing
