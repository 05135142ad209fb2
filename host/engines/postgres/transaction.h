// A transaction and a snapshot.
#pragma once

#include <memory>

#include "host/engines/postgres/server/database.h"
#include "host/engines/postgres/store.h"

namespace QuorHost::Postgres {

class ServerTransaction final : public Transaction {
 public:
  /// Begins. Raises 5 when a transaction is open already.
  explicit ServerTransaction(std::shared_ptr<ServerStore> store);
  ~ServerTransaction() override;
  ServerTransaction(const ServerTransaction&) = delete;
  ServerTransaction& operator=(const ServerTransaction&) = delete;

  void commit() override;

 private:
  std::shared_ptr<ServerStore> store_;  // empty once committed
};

class ServerSnapshot final : public Snapshot {
 public:
  /// Begins. Raises 5 when a snapshot is held already.
  explicit ServerSnapshot(std::shared_ptr<Database> database);
  ~ServerSnapshot() override;
  ServerSnapshot(const ServerSnapshot&) = delete;
  ServerSnapshot& operator=(const ServerSnapshot&) = delete;

 private:
  std::shared_ptr<Database> database_;
};

}  // namespace QuorHost::Postgres
