#include "host/engines/rows/updatable_recordset.h"

#include <utility>

#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Rows {
namespace {

using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using QuorDataLib::Value;

}  // namespace

UpdatableRecordset::UpdatableRecordset(std::unique_ptr<Cursor> cursor,
                                       std::unique_ptr<RowChanger> changer, Sql::Relation table)
    : Recordset(std::move(cursor)), changer_(std::move(changer)), table_(std::move(table)) {}

void UpdatableRecordset::forget() noexcept {
  pending_ = Pending::Nothing;
  set_.clear();
}

bool UpdatableRecordset::AtEnd() { return Recordset::AtEnd() && pending_ != Pending::NewRow; }

Value UpdatableRecordset::valueAt(std::int32_t column) const {
  const auto found = set_.find(column);
  if (found != set_.end()) return found->second;
  return pending_ == Pending::NewRow ? Value::null() : Recordset::valueAt(column);
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
  if (pending_ == Pending::NewRow) {
    showAlone(changer_->insert(changes()));
  } else {
    keepCurrent();
    showInPlace(changer_->update(changes(), key()));
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

FieldValue UpdatableRecordset::field(std::int32_t index, Value value) const {
  const Sql::ResultColumn& column = columns()[static_cast<std::size_t>(index)];
  return {column.name, column.type, std::move(value)};
}

std::vector<FieldValue> UpdatableRecordset::changes() const {
  std::vector<FieldValue> fields;
  fields.reserve(set_.size());
  for (const auto& [index, value] : set_) fields.push_back(field(index, value));
  return fields;
}

std::vector<FieldValue> UpdatableRecordset::key() const {
  std::vector<FieldValue> fields;
  for (const std::int32_t index : keyColumns()) {
    fields.push_back(field(index, Recordset::valueAt(index)));
  }
  return fields;
}

}  // namespace QuorHost::Rows
