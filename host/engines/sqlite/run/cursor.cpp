#include "host/engines/sqlite/run/cursor.h"

#include <utility>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/functions/collation.h"
#include "host/engines/sqlite/run/binding.h"

namespace QuorHost::Sqlite {

SqliteCursor::SqliteCursor(std::shared_ptr<Database> database, StatementCache::Taken query,
                           std::vector<QuorDataLib::Value> values, TimeLimit limit)
    : database_(std::move(database)),
      source_(std::move(query.source)),
      values_(std::move(values)),
      limit_(limit),
      session_(database_->session()),
      statement_(std::move(query.statement)) {
  bindMarkers(statement_, *source_, values_);
}

SqliteCursor::~SqliteCursor() { SqliteCursor::reset(); }

void SqliteCursor::prepare() {
  database_->refresh();
  session_ = database_->session();
  statement_ = session_->cache.take(*source_);
  bindMarkers(statement_, *source_, values_);
  limit_ = TimeLimit(limit_.seconds);
}

bool SqliteCursor::step() {
  if (!statement_) prepare();
  try {
    if (statement_.step(source_->text, limit_)) {
      setLive(true);
      return true;
    }
  } catch (...) {
    reset();
    throw;
  }
  reset();
  return false;
}

Rows::Cell SqliteCursor::cell(std::int32_t column) const {
  if (!statement_) database_->requireUsable();
  return cellOf(statement_, column);
}

void SqliteCursor::reset() noexcept {
  setLive(false);
  if (statement_) session_->cache.giveBack({source_, std::move(statement_)});
  session_.reset();
}

void SqliteCursor::abandon() noexcept {
  setLive(false);
  statement_ = Statement();
  session_.reset();
}

void SqliteCursor::setLive(bool live) noexcept {
  if (std::exchange(live_, live) == live) return;
  if (live) {
    session_->live.push_back(this);
  } else {
    std::erase(session_->live, this);
  }
}

Rows::Allowance SqliteCursor::readAhead() const noexcept {
  return live_ ? database_->readAhead(statement_) : Rows::Allowance{.rows = 0};
}

int SqliteCursor::compareTexts(std::string_view a, std::string_view b) const noexcept {
  return Sqlite::compareTexts(a, b);
}

}  // namespace QuorHost::Sqlite
