#include "host/engines/odbc/run/cursor.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "host/engines/rows/refusal.h"
#include "platform/error.h"

namespace QuorHost::Odbc {
namespace {

/// What is read ahead of a result that comes row by row, so that a short one ends at once.
constexpr Rows::Allowance kShort{
    .rows = 64, .bytes = std::size_t{1} << 20U, .time = std::chrono::milliseconds(10)};

std::vector<Sql::ResultColumn> resultColumns(const std::vector<DrivenColumn>& columns) {
  std::vector<Sql::ResultColumn> result;
  result.reserve(columns.size());
  for (const DrivenColumn& column : columns) result.push_back({column.name, column.type});
  return result;
}

bool sameShape(const std::vector<Sql::ResultColumn>& a, const std::vector<Sql::ResultColumn>& b) {
  return std::ranges::equal(a, b, [](const Sql::ResultColumn& one, const Sql::ResultColumn& other) {
    return one.name == other.name && one.type == other.type;
  });
}

}  // namespace

OdbcCursor::OdbcCursor(std::shared_ptr<Database> database, std::string text,
                       std::vector<QuorDataLib::Value> values, std::int32_t limit)
    : database_(std::move(database)),
      text_(std::move(text)),
      values_(std::move(values)),
      limit_(limit) {
  try {
    start();
  } catch (...) {
    reset();
    throw;
  }
  started_ = true;
}

OdbcCursor::~OdbcCursor() { OdbcCursor::reset(); }

void OdbcCursor::start() {
  const std::shared_ptr<Session> session = database_->reading();
  try {
    startOn(session);
  } catch (const QuorDataLib::Error& error) {
    if (error.number() != kConnectionLost || database_->pinned()) throw;
    endStatement();
    // The database makes another one in the place of what was lost.
    startOn(database_->reading());
  }
}

void OdbcCursor::startOn(const std::shared_ptr<Session>& session) {
  batch_.reset();
  session_ = session;
  statement_ = std::make_unique<Statement>(session, text_);
  statement_->run(values_, limit_);
  session->live = this;
  const std::vector<DrivenColumn> columns = statement_->columns();
  if (columns.empty()) {
    Rows::refuseStatement("A recordset needs a SELECT statement; this one gives no rows" +
                          Rows::inStatement(text_));
  }
  std::vector<Sql::ResultColumn> described = resultColumns(columns);
  if (columns_.empty()) {
    columns_ = std::move(described);
  } else if (!sameShape(columns_, described)) {
    Rows::refuseStatement("The columns of the result have changed: open the recordset again" +
                          Rows::inStatement(text_));
  }
  batch_ = std::make_unique<Batch>(*statement_, columns);
  fetch();
  running_ = true;
}

void OdbcCursor::fetch() {
  session_->requireSound();
  batch_->fetch(*statement_);
  row_ = 0;
  if (batch_->ended()) endStatement();
}

void OdbcCursor::endStatement() noexcept {
  statement_.reset();
  if (session_ && session_->live == this) session_->live = nullptr;
  session_.reset();
}

bool OdbcCursor::step() {
  try {
    if (!std::exchange(started_, false)) {
      if (!running_) {
        start();
      } else if (++row_ == batch_->size() && statement_) {
        fetch();
      }
    }
  } catch (...) {
    reset();
    throw;
  }
  if (row_ < batch_->size()) return true;
  reset();
  return false;
}

Rows::Cell OdbcCursor::cell(std::int32_t column) const {
  if (!batch_) {
    Rows::refuseStatement(
        "The rows were those of a transaction or snapshot that has ended: open the recordset "
        "again");
  }
  return batch_->cell(row_, static_cast<std::size_t>(column));
}

void OdbcCursor::reset() noexcept {
  endStatement();
  started_ = false;
  running_ = false;
  batch_.reset();
  row_ = 0;
}

Rows::Allowance OdbcCursor::readAhead() const noexcept {
  return !batch_ || batch_->bound() ? Rows::Allowance{.rows = 0} : kShort;
}

}  // namespace QuorHost::Odbc
