#include "host/engines/rows/recordset.h"

#include <utility>

#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using QuorDataLib::Value;

[[noreturn]] void refuseUpdate() {
  raise(ErrorNumber::InvalidArgument,
        "The recordset was opened for reading: open it with mode 1 to add or change rows");
}

}  // namespace

Recordset::Recordset(std::shared_ptr<Database> database, StatementCache::Taken query,
                     TimeLimit limit)
    : database_(std::move(database)), query_(std::move(query)), limit_(limit) {
  fetch();
}

Recordset::~Recordset() { Recordset::Close(); }

void Recordset::Close() {
  if (!std::exchange(open_, false)) return;
  stopReading();
  database_->cache().giveBack(std::move(query_));
  kept_ = {};
  indexes_.clear();
}

void Recordset::requireOpen() const {
  if (!open_) raise(ErrorNumber::ObjectClosed, "The recordset is closed");
}

void Recordset::fetch() {
  const bool wasLive = live_;
  live_ = false;
  try {
    live_ = query_.statement.step(query_.source->text, limit_);
  } catch (...) {
    // What is kept is not the whole result: going back has to start over.
    startsAtFirst_ = false;
    failure_ = std::current_exception();
    if (wasLive) database_->readingEnded(this);
    throw;
  }
  if (live_ && !wasLive) database_->readingBegins(this);
  if (!live_ && wasLive) database_->readingEnded(this);
}

void Recordset::keepAndFetch() {
  kept_.append(query_.statement);
  fetch();
}

void Recordset::stopReading() noexcept {
  if (std::exchange(live_, false)) database_->readingEnded(this);
  query_.statement.reset();
}

void Recordset::settle() noexcept {
  keeping_ = true;
  try {
    while (live_) keepAndFetch();
  } catch (...) {
    startsAtFirst_ = false;
    failure_ = std::current_exception();
    stopReading();
  }
}

void Recordset::rewind() {
  current_ = 0;
  if (startsAtFirst_) return;
  stopReading();
  kept_.clear();
  indexes_.clear();
  failure_ = nullptr;
  limit_ = TimeLimit(limit_.seconds);
  keeping_ = true;
  fetch();
  startsAtFirst_ = true;
}

bool Recordset::AtEnd() {
  requireOpen();
  return current_ == kept_.size() && !live_;
}

std::int32_t Recordset::FieldCount() {
  requireOpen();
  return static_cast<std::int32_t>(columns().size());
}

void Recordset::requireColumn(std::int32_t index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= columns().size()) {
    raise(ErrorNumber::UnknownItem, "The recordset has no column " + std::to_string(index) +
                                        ": it has " + std::to_string(columns().size()));
  }
}

std::int32_t Recordset::columnOf(std::string_view name) const {
  const std::vector<Sql::ResultColumn>& all = columns();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (Sql::sameName(all[i].name, name)) return static_cast<std::int32_t>(i);
  }
  raise(ErrorNumber::UnknownItem, "The recordset has no column " + std::string(name));
}

std::string Recordset::FieldName(std::int32_t index) {
  requireOpen();
  requireColumn(index);
  return columns()[static_cast<std::size_t>(index)].name;
}

QuorDataLib::ValueType Recordset::FieldType(std::int32_t index) {
  requireOpen();
  requireColumn(index);
  return Sql::valueType(columns()[static_cast<std::size_t>(index)].type);
}

Cell Recordset::currentCell(std::int32_t index) const {
  return current_ < kept_.size() ? kept_.at(current_, index) : cellOf(query_.statement, index);
}

Value Recordset::Field(std::int32_t index) {
  requireOpen();
  requireColumn(index);
  if (Recordset::AtEnd()) {
    raise(ErrorNumber::NoCurrentRow, "No current row: the recordset is at its end");
  }
  return valueOf(currentCell(index), columns()[static_cast<std::size_t>(index)]);
}

Value Recordset::Field(const std::string& name) {
  requireOpen();
  return Field(columnOf(name));
}

void Recordset::MoveFirst() {
  requireOpen();
  rewind();
}

void Recordset::MoveNext() {
  requireOpen();
  if (Recordset::AtEnd()) {
    raise(ErrorNumber::NoCurrentRow, "No next row: the recordset is at its end");
  }
  if (current_ < kept_.size()) {
    ++current_;
  } else if (keeping_) {
    keepAndFetch();
    ++current_;
  } else {
    startsAtFirst_ = false;
    fetch();
  }
  if (failure_ && current_ == kept_.size()) std::rethrow_exception(failure_);
}

const RowIndex& Recordset::indexOf(std::int32_t column) {
  auto found = indexes_.find(column);
  if (found == indexes_.end()) {
    const Sql::Type type = columns()[static_cast<std::size_t>(column)].type;
    found = indexes_.try_emplace(column, kept_, column, type).first;
  }
  return found->second;
}

bool Recordset::Find(const std::string& criterion) {
  requireOpen();
  const Criterion wanted = parseCriterion(criterion);
  const std::int32_t column = columnOf(wanted.column);
  const std::optional<FindKey> key =
      keyOf(wanted, columns()[static_cast<std::size_t>(column)].type);
  rewind();
  keeping_ = true;
  while (live_) keepAndFetch();
  const std::optional<std::size_t> row = key ? indexOf(column).find(*key) : std::nullopt;
  current_ = row.value_or(kept_.size());
  return row.has_value();
}

void Recordset::AddNew() {
  requireOpen();
  refuseUpdate();
}

void Recordset::SetField(const std::string& name, const Value& /*value*/) {
  requireOpen();
  static_cast<void>(columnOf(name));
  refuseUpdate();
}

void Recordset::Update() {
  requireOpen();
  refuseUpdate();
}

void Recordset::showAlone(KeptRows row) {
  stopReading();
  indexes_.clear();
  kept_ = std::move(row);
  current_ = 0;
  startsAtFirst_ = false;
}

void Recordset::showInPlace(const KeptRows& row) {
  indexes_.clear();
  kept_.replace(current_, row);
}

}  // namespace QuorHost::Sqlite
