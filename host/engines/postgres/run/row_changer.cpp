#include "host/engines/postgres/run/row_changer.h"

#include <utility>

#include "host/engines/postgres/run/values.h"
#include "host/engines/postgres/server/server_error.h"
#include "platform/error.h"

namespace QuorHost::Postgres {
namespace {

using Rows::FieldValue;
using Rows::KeptRows;

/// `piece` of each field and the number of its marker, with `separator` between them.
template <class Piece>
std::string joined(std::span<const FieldValue> fields, std::string_view separator,
                   std::size_t firstMarker, Piece piece) {
  std::string text;
  for (const FieldValue& field : fields) {
    if (!text.empty()) text += separator;
    text += piece(field, "$" + std::to_string(firstMarker++));
  }
  return text;
}

}  // namespace

ServerRowChanger::ServerRowChanger(std::shared_ptr<Database> database, std::string table,
                                   const std::vector<Sql::ResultColumn>& columns)
    : database_(std::move(database)), table_(std::move(table)), columns_(columns) {
  for (const Sql::ResultColumn& column : columns_) {
    returning_ += (returning_.empty() ? " RETURNING " : ", ") + Link::nameOf(column.name);
  }
}

void ServerRowChanger::addArguments(std::span<const FieldValue> fields,
                                    std::vector<Argument>& arguments) const {
  for (const FieldValue& field : fields) {
    try {
      arguments.push_back(argumentOf(field.value, field.type));
      // The column says, which is narrower for whole numbers, and keeps the blanks of texts.
      arguments.back().type = 0;
    } catch (const QuorDataLib::Error& error) {
      Rows::raiseNaming("Column " + std::string(field.column) + " of table " + table_, error);
    }
  }
}

KeptRows ServerRowChanger::store(const std::string& sql,
                                 const std::vector<Argument>& arguments) const {
  Link& link = database_->changing();
  link.limit(0);
  const Result result = link.run(sql, arguments, sql);
  KeptRows stored;
  for (int row = 0; row < PQntuples(result.get()); ++row) {
    stored.append(columns_.size(), [&](std::int32_t column) {
      return cellOf(result, row, column, columns_[static_cast<std::size_t>(column)].type);
    });
  }
  return stored;
}

KeptRows ServerRowChanger::insert(std::span<const FieldValue> fields) {
  const std::string into = "INSERT INTO " + Link::nameOf(table_);
  std::vector<Argument> arguments;
  addArguments(fields, arguments);
  if (fields.empty()) return store(into + " DEFAULT VALUES" + returning_, arguments);
  const auto name = [](const FieldValue& field, const std::string&) {
    return Link::nameOf(field.column);
  };
  const auto marker = [](const FieldValue&, const std::string& number) { return number; };
  return store(into + " (" + joined(fields, ", ", 1, name) + ") VALUES (" +
                   joined(fields, ", ", 1, marker) + ")" + returning_,
               arguments);
}

KeptRows ServerRowChanger::update(std::span<const FieldValue> fields,
                                  std::span<const FieldValue> key) {
  std::vector<Argument> arguments;
  addArguments(fields, arguments);
  addArguments(key, arguments);
  const auto assignment = [](const FieldValue& field, const std::string& marker) {
    return Link::nameOf(field.column) + " = " + marker;
  };
  const auto condition = [](const FieldValue& field, const std::string& marker) {
    const bool text = field.type == Sql::Type::Text;
    return Link::nameOf(field.column) +
           (text ? "::bpchar = " + marker + "::bpchar" : " = " + marker);
  };
  KeptRows stored =
      store("UPDATE " + Link::nameOf(table_) + " SET " + joined(fields, ", ", 1, assignment) +
                " WHERE " + joined(key, " AND ", fields.size() + 1, condition) + returning_,
            arguments);
  if (stored.size() == 0) {
    refuseStatement("The row of table " + table_ + " is no longer there: somebody has removed it");
  }
  return stored;
}

}  // namespace QuorHost::Postgres
