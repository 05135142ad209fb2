#include "host/engines/postgres/server/database.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "host/engines/postgres/run/cursor.h"
#include "host/engines/postgres/server/server_error.h"
#include "platform/error.h"

namespace QuorHost::Postgres {
namespace {

/// What a recordset that lies open may take into memory so that another query can start on its
/// connection. It is less than a further connection costs the server.
constexpr Rows::Allowance kRest{.bytes = std::size_t{8} << 20U,
                                .time = std::chrono::milliseconds(50)};

/// Connections for reading at the most. What more recordsets lie open and are large takes all their
/// rows into memory.
constexpr std::size_t kMostReaders = 4;

}  // namespace

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
  for (const Rows::Allowance& allowance : {Rows::Allowance{.rows = 0}, kRest}) {
    for (const std::shared_ptr<Session>& session : readers_) {
      if (settle(*session, allowance)) return session;
    }
  }
  if (readers_.empty()) return readers_.emplace_back(connectAnew());
  if (readers_.size() < kMostReaders) {
    try {
      return readers_.emplace_back(connect());
    } catch (const QuorDataLib::Error&) {  // NOLINT(bugprone-empty-catch)
      // The server gives no more of them: those that are there must do.
    }
  }
  settle(*readers_.front(), {});
  return readers_.front();
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
  if (pinned_) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "A transaction is open already: commit it before the next one begins");
  }
  const auto connect = [this] {
    static_cast<void>(changing());
    return changer_;
  };
  pin(connect, "BEGIN", true);
}

void Database::hold() {
  if (pinned_) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "A snapshot is held already: drop it before the next one is taken");
  }
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
  if (failed) {
    refuseStatement("The transaction was undone when a statement in it failed; nothing was kept");
  }
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
