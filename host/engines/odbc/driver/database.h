// One company behind a driver, shared by everything that still uses it.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "host/engines/odbc/driver/session.h"
#include "host/engines/odbc/opening.h"
#include "host/engines/rows/cursor.h"
#include "host/engines/store.h"

namespace QuorHost::Odbc {

/// The connections of one company. Store, connections, recordsets and transactions hold it
/// together; the last one to go closes them.
///
/// Queries and changes run on connections of their own, so that a change is kept when it returns
/// while recordsets lie open. In a transaction, and while a snapshot is held, everything runs on
/// one.
class Database {
 public:
  /// Connects. Raises 75 where it cannot.
  Database(Address address, Access access, CompareTexts compare);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database() = default;

  [[nodiscard]] const Address& address() const noexcept { return *address_; }
  [[nodiscard]] bool writable() const noexcept { return access_ == Access::Write; }
  [[nodiscard]] CompareTexts compareTexts() const noexcept { return compare_; }

  /// The connection on which a query can start now.
  [[nodiscard]] std::shared_ptr<Session> reading();
  /// The connection on which changes are made.
  [[nodiscard]] std::shared_ptr<Session> changing();
  /// Whether all runs on one connection, in a transaction or a snapshot.
  [[nodiscard]] bool pinned() const noexcept { return pinned_ != nullptr; }

  /// Begins a transaction, or a snapshot of this moment. Raises 5 when one is open already, or
  /// where the driver has none.
  void begin();
  void hold();
  /// Ends it; a commit of what has failed raises a refused statement and keeps nothing.
  void commit();
  void rollBack() noexcept;

 private:
  [[nodiscard]] std::shared_ptr<Session> connect(Access access);
  /// Has everything run on the connection that `connect` gives; one that turns out to be lost is
  /// made anew, once.
  template <class Connect>
  void pin(const Connect& connect, bool snapshot);

  std::shared_ptr<const Address> address_;
  Access access_;
  CompareTexts compare_;
  std::shared_ptr<const EnvironmentHandle> environment_;
  std::vector<std::shared_ptr<Session>> readers_;
  std::shared_ptr<Session> changer_;
  std::shared_ptr<Session> pinned_;
};

}  // namespace QuorHost::Odbc
