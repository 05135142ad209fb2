#include "host/engines/rows/recordset.h"

#include <limits>
#include <utility>

#include "platform/error.h"

namespace QuorHost::Rows {
namespace {

using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using QuorDataLib::Value;

constexpr std::size_t kMostRows = std::numeric_limits<std::size_t>::max() / 2;

[[noreturn]] void refuseUpdate() {
  raise(ErrorNumber::InvalidArgument,
        "The recordset was opened for reading: open it with mode 1 to add or change rows");
}

}  // namespace

Recordset::Recordset(std::unique_ptr<Cursor> cursor)
    : cursor_(std::move(cursor)), columns_(cursor_->columns()) {
  cursor_->setReader(*this);
  start();
}

Recordset::~Recordset() { Recordset::Close(); }

void Recordset::Close() {
  if (!std::exchange(open_, false)) return;
  stopReading();
  kept_ = {};
  indexes_.clear();
}

void Recordset::raiseClosed() { raise(ErrorNumber::ObjectClosed, "The recordset is closed"); }

void Recordset::start() {
  fetch();
  keepRows(cursor_->readAhead());
}

void Recordset::fetch() {
  live_ = false;
  try {
    live_ = cursor_->step();
  } catch (...) {
    // What is kept is not the whole result: going back has to start over.
    startsAtFirst_ = false;
    failure_ = std::current_exception();
    throw;
  }
}

void Recordset::keepAndFetch() {
  kept_.append(columns().size(), [&](std::int32_t column) { return cursor_->cell(column); });
  fetch();
}

void Recordset::stopReading() noexcept {
  live_ = false;
  cursor_->reset();
}

void Recordset::keepRows(const Allowance& allowance) noexcept {
  const std::size_t most = allowance.rows > kMostRows ? kMostRows : kept_.size() + allowance.rows;
  const bool timed = allowance.time != Allowance::Clock::duration::zero();
  Allowance::Clock::time_point end;
  try {
    for (std::size_t row = 0; live_ && kept_.size() < most && kept_.bytes() < allowance.bytes;
         ++row) {
      // Many results are of one row, for which nobody looks at the clock.
      if (timed && row == 1) end = Allowance::Clock::now() + allowance.time;
      if (timed && row > 1 && Allowance::Clock::now() >= end) break;
      keepAndFetch();
    }
  } catch (...) {
    startsAtFirst_ = false;
    failure_ = std::current_exception();
    stopReading();
  }
}

void Recordset::keepCurrent() {
  if (current_ < kept_.size() || !live_) return;
  keepRows({.rows = 1});
  if (current_ == kept_.size()) std::rethrow_exception(failure_);
}

void Recordset::rewind() {
  current_ = 0;
  if (startsAtFirst_) return;
  stopReading();
  kept_.clear();
  indexes_.clear();
  failure_ = nullptr;
  keeping_ = true;
  startsAtFirst_ = true;
  start();
}

bool Recordset::AtEnd() {
  requireOpen();
  return isAtEnd();
}

std::int32_t Recordset::FieldCount() {
  requireOpen();
  return static_cast<std::int32_t>(columns().size());
}

void Recordset::raiseNoColumn(std::int32_t index) const {
  raise(ErrorNumber::UnknownItem, "The recordset has no column " + std::to_string(index) +
                                      ": it has " + std::to_string(columns().size()));
}

std::int32_t Recordset::columnOf(std::string_view name) {
  const std::size_t found = finder_.find(columns(), name);
  if (found < columns().size()) return static_cast<std::int32_t>(found);
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

Value Recordset::Field(std::int32_t index) {
  requireOpen();
  requireColumn(index);
  return valueAt(index);
}

Value Recordset::valueAt(std::int32_t column) const {
  if (isAtEnd()) {
    raise(ErrorNumber::NoCurrentRow, "No current row: the recordset is at its end");
  }
  return valueOf(currentCell(column), columns()[static_cast<std::size_t>(column)]);
}

Value Recordset::Field(const std::string& name) {
  requireOpen();
  return valueAt(columnOf(name));
}

void Recordset::MoveFirst() {
  requireOpen();
  rewind();
}

void Recordset::MoveNext() {
  requireOpen();
  if (isAtEnd()) {
    raise(ErrorNumber::NoCurrentRow, "No next row: the recordset is at its end");
  }
  if (current_ < kept_.size()) {
    ++current_;
    if (!keeping_) {
      startsAtFirst_ = false;
      if (live_ && current_ == kept_.size()) {
        kept_.clear();
        current_ = 0;
      }
    }
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
    const auto compare = [this](std::string_view a, std::string_view b) {
      return cursor_->compareTexts(a, b);
    };
    found = indexes_.try_emplace(column, kept_, column, type, compare).first;
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
  if (failure_) std::rethrow_exception(failure_);
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

}  // namespace QuorHost::Rows
