#include "host/engines/postgres/run/cursor.h"

#include <algorithm>
#include <atomic>
#include <string_view>
#include <utility>

#include "host/engines/postgres/run/values.h"
#include "host/engines/postgres/server/server_error.h"
#include "platform/error.h"

namespace QuorHost::Postgres {
namespace {

/// Rows of the first batch, and of the largest one.
constexpr int kFirst = 64;
constexpr int kMost = 4096;

std::string nextName() {
  static std::atomic<std::uint64_t> number = 0;
  return "quor_" + std::to_string(++number);
}

/// Begins a transaction for a query. One that starts from a table of keys (WITH) adds up documents
/// by the hundred thousand: the server takes too little memory for granted that a total of each
/// needs, and is a sixth faster in the order of an index.
const char* begins(std::string_view sql) noexcept {
  return sql.starts_with("WITH ") ? "BEGIN READ ONLY; SET LOCAL enable_hashagg = off"
                                  : "BEGIN READ ONLY";
}

}  // namespace

ServerCursor::ServerCursor(std::shared_ptr<Database> database,
                           std::shared_ptr<const Write::TranslatedStatement> source,
                           const std::vector<QuorDataLib::Value>& values, std::int32_t limit)
    : database_(std::move(database)),
      source_(std::move(source)),
      arguments_(argumentsOf(*source_, values)),
      limit_(limit),
      name_(nextName()) {}

ServerCursor::~ServerCursor() { ServerCursor::reset(); }

void ServerCursor::start() {
  const std::shared_ptr<Session> session = database_->reading();
  try {
    startOn(session);
  } catch (const QuorDataLib::Error& error) {
    if (error.number() != kConnectionLost || database_->pinned()) throw;
    setLive(false);
    database_->drop(session);
    startOn(database_->reading());
  }
}

void ServerCursor::startOn(const std::shared_ptr<Session>& session) {
  own_ = !database_->pinned();
  Link& link = session->link;
  session_ = session;
  link.limit(limit_);
  if (own_) link.run(begins(source_->translation().sql));
  setLive(true);
  link.run("DECLARE " + name_ + " NO SCROLL CURSOR FOR " + source_->translation().sql, arguments_,
           source_->text);
  fetch(kFirst);
  running_ = true;
}

void ServerCursor::fetch(int rows) {
  session_->link.limit(limit_);
  batch_ = session_->link.run("FETCH " + std::to_string(rows) + " FROM " + name_, source_->text);
  row_ = 0;
  size_ = PQntuples(batch_.get());
  wanted_ = rows;
  if (size_ < rows) finish();
}

void ServerCursor::finish() {
  setLive(false);
  const std::shared_ptr<Session> session = std::move(session_);
  session->link.run(own_ ? "COMMIT" : "CLOSE " + name_);
}

bool ServerCursor::step() {
  try {
    if (!running_) {
      start();
    } else if (++row_ == size_ && session_) {
      fetch(std::min(wanted_ * 2, kMost));
    }
  } catch (...) {
    reset();
    throw;
  }
  if (row_ < size_) return true;
  reset();
  return false;
}

Rows::Cell ServerCursor::cell(std::int32_t column) const {
  if (!batch_) {
    refuseStatement(
        "The rows were those of a transaction or snapshot that has ended: open the "
        "recordset again");
  }
  return cellOf(batch_, row_, column, columns()[static_cast<std::size_t>(column)].type);
}

void ServerCursor::reset() noexcept {
  running_ = false;
  batch_.reset();
  row_ = size_ = 0;
  setLive(false);
  const std::shared_ptr<Session> session = std::move(session_);
  if (!session || session->link.lost()) return;
  if (own_) {
    session->link.tryTo("ROLLBACK");
  } else if (!session->link.failed()) {
    session->link.tryTo(("CLOSE " + name_).c_str());
  }
}

void ServerCursor::abandon() noexcept {
  setLive(false);
  session_.reset();
  batch_.reset();
  row_ = size_ = 0;
  running_ = false;
}

void ServerCursor::setLive(bool live) noexcept {
  if (std::exchange(live_, live) == live) return;
  if (live) {
    session_->live.push_back(this);
  } else {
    std::erase(session_->live, this);
  }
}

}  // namespace QuorHost::Postgres
