#include "host/engines/postgres/server/database.h"

#include <algorithm>
#include <utility>

#include "host/engines/postgres/run/cursor.h"
#include "host/engines/postgres/server/server_error.h"
#include "host/engines/rows/readers.h"
#include "host/engines/rows/refusal.h"
#include "platform/error.h"

namespace QuorHost::Postgres {

Database::Database(Address address, Access access, CompareTexts compare)
    : address_(std::move(address)), access_(access), compare_(compare) {
  readers_.push_back(connect());
}

Database::~Database() = default;

std::shared_ptr<Session> Database::connect() const {
  return std::make_shared<Session>(address_, access_, catalogue_);
}

std::shared_ptr<Session> Database::connectAnew() const {
  try {
    return connect();
  } catch (const QuorDataLib::Error& error) {
    throw QuorDataLib::Error(
        kConnectionLost, error.source(),
        "The connection to the server was lost, and there is no new one: " + error.description());
  }
}

bool Database::settle(Session& session, const Rows::Allowance& allowance) noexcept {
  // A cursor takes itself off the list when the server has no more of its rows.
  const std::vector<ServerCursor*>& live = session.live;
  for (std::size_t i = live.size(); i-- > 0;) live[i]->letKeep(allowance);
  return live.empty();
}

std::shared_ptr<Session> Database::reading() {
  if (pinned_) {
    sendRows();
    return pinned_;
  }
  std::erase_if(readers_, [](const auto& session) { return session->link.lost(); });
  return Rows::sessionToRead(
      readers_, settle, [this] { return connect(); }, [this] { return connectAnew(); });
}

Link& Database::changing() {
  if (pinned_) {
    sendRows();
    return pinned_->link;
  }
  if (!changer_) {
    changer_ = connect();
  } else if (changer_->link.lost()) {
    changer_ = connectAnew();
  }
  return changer_->link;
}

void Database::drop(const std::shared_ptr<Session>& session) noexcept {
  std::erase(readers_, session);
}

template <class Connect>
void Database::pin(const Connect& connect, const char* begin, bool transaction) {
  const auto beginOn = [&](const std::shared_ptr<Session>& session) {
    session->link.limit(0);
    session->link.run(begin);
    pinned_ = session;
    transaction_ = transaction;
  };
  const std::shared_ptr<Session> session = connect();
  try {
    beginOn(session);
  } catch (const QuorDataLib::Error& error) {
    if (error.number() != kConnectionLost) throw;
    // It was lost since it was last used. Nothing has begun, so that another one serves.
    drop(session);
    beginOn(connect());
  }
}

void Database::begin() {
  if (pinned_) Rows::refuseSecondTransaction();
  const auto connect = [this] {
    static_cast<void>(changing());
    return changer_;
  };
  pin(connect, "BEGIN", true);
}

void Database::hold() {
  if (pinned_) Rows::refuseSecondSnapshot();
  // The moment is that of the first statement. It also keeps the company from being replaced.
  pin([this] { return reading(); },
      "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY; SELECT 1 FROM quor_catalogue LIMIT 1",
      false);
}

void Database::commit() {
  sendRows();
  pinned_->link.awaitCopy();
  settle(*pinned_, {});
  const bool failed = pinned_->link.failed();
  if (!failed) pinned_->link.run("COMMIT");
  if (failed) Rows::refuseFailedCommit();
  pinned_.reset();
}

void Database::rollBack() noexcept {
  if (!pinned_) return;
  for (const auto& waiting : waiting_) waiting->rows.clear();
  if (!pinned_->link.failed()) settle(*pinned_, {});
  while (!pinned_->live.empty()) pinned_->live.back()->abandon();
  pinned_->link.rollBack();
  pinned_.reset();
}

std::shared_ptr<WaitingRows> Database::waitingRows(std::size_t order, std::string statement) {
  auto waiting = std::make_shared<WaitingRows>(
      WaitingRows{.order = order, .statement = std::move(statement), .rows = {}});
  const auto orderOf = [](const auto& other) { return other->order; };
  waiting_.insert(std::ranges::upper_bound(waiting_, order, {}, orderOf), waiting);
  return waiting;
}

void Database::sendRows() {
  for (const std::shared_ptr<WaitingRows>& waiting : waiting_) {
    const std::string rows = std::exchange(waiting->rows, {});
    if (rows.empty()) continue;
    pinned_->link.copy(waiting->statement, rows);
  }
  std::erase_if(waiting_, [](const auto& waiting) { return waiting.use_count() == 1; });
}

}  // namespace QuorHost::Postgres
