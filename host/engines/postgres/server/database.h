// One company on a server, shared by everything that still uses it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/postgres/opening.h"
#include "host/engines/postgres/server/address.h"
#include "host/engines/postgres/server/link.h"
#include "host/engines/rows/cursor.h"
#include "host/engines/store.h"
#include "host/engines/write/translation_cache.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Postgres {

class ServerCursor;

/// A connection with what runs on it. Outside a transaction, at most one cursor stands open on one:
/// an error ends everything in its transaction.
struct Session {
  Session(const Address& address, Access access, const Sql::Catalogue& catalogue)
      : link(address, access, catalogue) {}
  Link link;
  /// The cursors whose rows the server still has.
  std::vector<ServerCursor*> live;
};

/// Rows on their way into a table, as COPY reads them.
struct WaitingRows {
  /// The table's place among those of the company: no row points at one of a later table.
  std::size_t order = 0;
  std::string statement;
  std::string rows;
};

/// The connections of one company. Store, connections, recordsets and transactions hold it
/// together; the last one to go closes them.
///
/// Queries and changes run on connections of their own, so that a change is committed when it
/// returns while recordsets lie open. In a transaction, and while a snapshot is held, everything
/// runs on one.
class Database {
 public:
  /// Connects. Raises 75 where it cannot.
  Database(Address address, Access access, CompareTexts compare);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  [[nodiscard]] const Address& address() const noexcept { return address_; }
  [[nodiscard]] bool writable() const noexcept { return access_ == Access::Write; }
  [[nodiscard]] CompareTexts compareTexts() const noexcept { return compare_; }
  [[nodiscard]] Write::TranslationCache<Write::Nothing>& cache() noexcept { return cache_; }
  /// What the company holds, as far as it has been read.
  [[nodiscard]] Sql::Catalogue& catalogue() noexcept { return catalogue_; }

  /// The connection on which a query can start now. What it is to see is on the server. One that
  /// has been lost is made anew; raises `kConnectionLost` where it cannot be.
  [[nodiscard]] std::shared_ptr<Session> reading();
  /// The connection on which changes are made; the same holds.
  [[nodiscard]] Link& changing();
  /// Whether all runs on one connection, in a transaction or a snapshot.
  [[nodiscard]] bool pinned() const noexcept { return pinned_ != nullptr; }
  [[nodiscard]] bool inTransaction() const noexcept { return pinned_ != nullptr && transaction_; }
  /// Forgets a connection that was lost.
  void drop(const std::shared_ptr<Session>& session) noexcept;

  /// Begins a transaction, or a snapshot of this moment. Raises 5 when one is open already.
  void begin();
  void hold();
  /// Ends it; a commit of what has failed raises a refused statement and keeps nothing.
  void commit();
  void rollBack() noexcept;

  /// A place for rows that are to be sent in the transaction; what is in it is sent also when its
  /// holder has gone.
  [[nodiscard]] std::shared_ptr<WaitingRows> waitingRows(std::size_t order, std::string statement);
  /// Sends what waits, in the order of the tables.
  void sendRows();

 private:
  [[nodiscard]] std::shared_ptr<Session> connect() const;
  /// In the place of one that was lost.
  [[nodiscard]] std::shared_ptr<Session> connectAnew() const;
  /// Has everything run on the connection that `connect` gives.
  template <class Connect>
  void pin(const Connect& connect, const char* begin, bool transaction);
  /// Has the cursors of a session take rows into memory; true when the server has none any more.
  static bool settle(Session& session, const Rows::Allowance& allowance) noexcept;

  Address address_;
  Access access_;
  CompareTexts compare_;
  Sql::Catalogue catalogue_;  // outlives the connections
  Write::TranslationCache<Write::Nothing> cache_;
  std::vector<std::shared_ptr<Session>> readers_;
  std::shared_ptr<Session> changer_;
  std::shared_ptr<Session> pinned_;
  bool transaction_ = false;
  std::vector<std::shared_ptr<WaitingRows>> waiting_;  // in the order of their tables
};

}  // namespace QuorHost::Postgres
