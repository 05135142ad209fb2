#include "host/engines/odbc/driver/database.h"

#include <cstddef>
#include <utility>

#include "host/engines/odbc/run/cursor.h"
#include "host/engines/odbc/run/statement.h"
#include "host/engines/rows/readers.h"
#include "host/engines/rows/refusal.h"
#include "platform/error.h"

namespace QuorHost::Odbc {
namespace {

/// Has the cursor of a session take rows into memory; true when the driver has no more of them.
bool settle(const Session& session, const Rows::Allowance& allowance) noexcept {
  // A cursor takes itself off when its rows have come to their end.
  if (session.live != nullptr) session.live->letKeep(allowance);
  return session.live == nullptr;
}

}  // namespace

Database::Database(Address address, Access access, CompareTexts compare)
    : address_(std::make_shared<const Address>(std::move(address))),
      access_(access),
      compare_(compare),
      environment_(makeEnvironment(*address_)) {
  readers_.push_back(connect(Access::Read));
}

std::shared_ptr<Session> Database::connect(Access access) {
  return std::make_shared<Session>(environment_, address_, access);
}

std::shared_ptr<Session> Database::reading() {
  if (pinned_) {
    pinned_->requireSound();
    settle(*pinned_, {});
    return pinned_;
  }
  std::erase_if(readers_, [](const auto& session) { return session->lost(); });
  const auto another = [this] { return connect(Access::Read); };
  return Rows::sessionToRead(readers_, settle, another, another);
}

std::shared_ptr<Session> Database::changing() {
  if (pinned_) return reading();
  if (!changer_ || changer_->lost()) changer_ = connect(Access::Write);
  return changer_;
}

template <class Connect>
void Database::pin(const Connect& connect, bool snapshot) {
  const auto beginOn = [&](std::shared_ptr<Session> session) {
    session->begin(snapshot);
    try {
      // Drivers begin with the first statement, whose moment a snapshot is of.
      Statement(session, "SELECT 1").run({}, 0);
    } catch (...) {
      session->rollBack();
      throw;
    }
    pinned_ = std::move(session);
  };
  try {
    beginOn(connect());
  } catch (const QuorDataLib::Error& error) {
    if (error.number() != kConnectionLost) throw;
    // It was lost since it was last used. Nothing has begun, so that another one serves.
    beginOn(connect());
  }
}

void Database::begin() {
  if (pinned_) Rows::refuseSecondTransaction();
  pin([this] { return changing(); }, false);
}

void Database::hold() {
  if (pinned_) Rows::refuseSecondSnapshot();
  pin([this] { return reading(); }, true);
}

void Database::commit() {
  settle(*pinned_, {});
  pinned_->commit();
  pinned_.reset();
}

void Database::rollBack() noexcept {
  if (!pinned_) return;
  settle(*pinned_, {});
  if (pinned_->live != nullptr) pinned_->live->reset();
  pinned_->rollBack();
  pinned_.reset();
}

}  // namespace QuorHost::Odbc
