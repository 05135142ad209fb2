#include "host/engines/rows/updatable_recordset.h"

#include <utility>

#include "host/engines/sqlite/engine_error.h"
#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using QuorDataLib::Value;

/// What `piece` makes of each of `items`, with `separator` between them.
template <class Items, class Piece>
std::string joined(const Items& items, std::string_view separator, Piece piece) {
  std::string text;
  for (const auto& item : items) {
    if (!text.empty()) text += separator;
    text += piece(item);
  }
  return text;
}

}  // namespace

UpdatableRecordset::UpdatableRecordset(std::shared_ptr<Database> database,
                                       StatementCache::Taken query, TimeLimit limit,
                                       Sql::Relation table)
    : Recordset(std::move(database), std::move(query), limit), table_(std::move(table)) {}

void UpdatableRecordset::forget() noexcept {
  pending_ = Pending::Nothing;
  set_.clear();
}

bool UpdatableRecordset::AtEnd() { return Recordset::AtEnd() && pending_ != Pending::NewRow; }

Value UpdatableRecordset::Field(std::int32_t index) {
  requireOpen();
  requireColumn(index);
  const auto found = set_.find(index);
  if (found != set_.end()) return found->second;
  return pending_ == Pending::NewRow ? Value::null() : Recordset::Field(index);
}

void UpdatableRecordset::MoveFirst() {
  forget();
  Recordset::MoveFirst();
}

void UpdatableRecordset::MoveNext() {
  forget();
  Recordset::MoveNext();
}

bool UpdatableRecordset::Find(const std::string& criterion) {
  forget();
  return Recordset::Find(criterion);
}

void UpdatableRecordset::AddNew() {
  requireOpen();
  forget();
  pending_ = Pending::NewRow;
}

void UpdatableRecordset::SetField(const std::string& name, const Value& value) {
  requireOpen();
  const std::int32_t index = columnOf(name);
  const Sql::ResultColumn& column = columns()[static_cast<std::size_t>(index)];
  if (pending_ == Pending::Nothing) {
    static_cast<void>(keyColumns());
    if (AtEnd()) raise(ErrorNumber::NoCurrentRow, "No current row: call AddNew to add one");
  }
  try {
    const bool missing = value.isNull() || value.isEmpty();
    set_[index] = missing ? Value::null() : value.convertedTo(Sql::valueType(column.type));
  } catch (const Error& error) {
    raiseNaming("Column " + column.name + " of table " + table_.name, error);
  }
  if (pending_ == Pending::Nothing) pending_ = Pending::ChangedRow;
}

void UpdatableRecordset::Update() {
  requireOpen();
  if (pending_ == Pending::Nothing) {
    raise(ErrorNumber::InvalidArgument, "Nothing to store: call AddNew or SetField before Update");
  }
  database()->prepareForChange();
  if (pending_ == Pending::NewRow) {
    showAlone(insertRow());
  } else {
    showInPlace(updateRow());
  }
  forget();
}

std::vector<std::int32_t> UpdatableRecordset::keyColumns() const {
  std::vector<std::int32_t> key;
  for (const Sql::Column& column : table_.columns) {
    if (!column.primaryKey) continue;
    const auto& all = columns();
    std::size_t index = 0;
    while (index < all.size() && !Sql::sameName(all[index].name, column.name)) ++index;
    if (index == all.size()) {
      raise(ErrorNumber::InvalidArgument, "The row cannot be changed: the statement leaves out " +
                                              column.name + ", the primary key of table " +
                                              table_.name);
    }
    key.push_back(static_cast<std::int32_t>(index));
  }
  if (key.empty()) {
    raise(ErrorNumber::InvalidArgument,
          "The row cannot be changed: table " + table_.name + " has no primary key");
  }
  return key;
}

std::string UpdatableRecordset::quotedColumn(std::int32_t index) const {
  return quotedName(columns()[static_cast<std::size_t>(index)].name);
}

std::string UpdatableRecordset::returning() const {
  return " RETURNING " +
         joined(columns(), ", ", [](const auto& column) { return quotedName(column.name); });
}

std::string UpdatableRecordset::insertText() const {
  const std::string text = "INSERT INTO " + quotedName(table_.name);
  if (set_.empty()) return text + " DEFAULT VALUES" + returning();
  return text + " (" +
         joined(set_, ", ", [&](const auto& set) { return quotedColumn(set.first); }) +
         ") VALUES (" + joined(set_, ", ", [](const auto&) { return "?"; }) + ")" + returning();
}

std::string UpdatableRecordset::updateText(const std::vector<std::int32_t>& key) const {
  return "UPDATE " + quotedName(table_.name) + " SET " +
         joined(set_, ", ", [&](const auto& set) { return quotedColumn(set.first) + " = ?"; }) +
         " WHERE " +
         joined(key, " AND ", [&](std::int32_t index) { return quotedColumn(index) + " = ?"; }) +
         returning();
}

void UpdatableRecordset::bindSet(const Statement& statement) const {
  int number = 0;
  for (const auto& [index, value] : set_) {
    bindValue(statement, ++number, value, columns()[static_cast<std::size_t>(index)].type,
              Lifetime::Borrowed);
  }
}

KeptRows UpdatableRecordset::storedRow(Statement& statement) const {
  KeptRows stored;
  while (statement.step()) stored.append(statement);
  return stored;
}

KeptRows UpdatableRecordset::insertRow() const {
  Statement insert(database()->handle(), insertText());
  bindSet(insert);
  return storedRow(insert);
}

KeptRows UpdatableRecordset::updateRow() {
  const std::vector<std::int32_t> key = keyColumns();
  Statement update(database()->handle(), updateText(key));
  bindSet(update);
  auto number = static_cast<int>(set_.size());
  for (const std::int32_t index : key) {
    bindValue(update, ++number, Recordset::Field(index),
              columns()[static_cast<std::size_t>(index)].type, Lifetime::Copied);
  }
  KeptRows stored = storedRow(update);
  if (stored.size() == 0) {
    refuseStatement("The row of table " + table_.name +
                    " is no longer there: somebody has removed it");
  }
  return stored;
}

}  // namespace QuorHost::Sqlite
