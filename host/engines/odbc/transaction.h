// A transaction and a snapshot.
#pragma once

#include <memory>

#include "host/engines/odbc/driver/database.h"
#include "host/engines/store.h"

namespace QuorHost::Odbc {

class OdbcTransaction final : public Transaction {
 public:
  /// Begins. Raises 5 when a transaction is open already, or where the driver has none.
  explicit OdbcTransaction(std::shared_ptr<Database> database);
  ~OdbcTransaction() override;
  OdbcTransaction(const OdbcTransaction&) = delete;
  OdbcTransaction& operator=(const OdbcTransaction&) = delete;

  void commit() override;

 private:
  std::shared_ptr<Database> database_;  // empty once committed
};

class OdbcSnapshot final : public Snapshot {
 public:
  /// Begins. Raises 5 when a snapshot is held already,
  /// or where the driver has none.
  explicit OdbcSnapshot(std::shared_ptr<Database> database);
  ~OdbcSnapshot() override;
  OdbcSnapshot(const OdbcSnapshot&) = delete;
  OdbcSnapshot& operator=(const OdbcSnapshot&) = delete;

 private:
  std::shared_ptr<Database> database_;
};

}  // namespace QuorHost::Odbc
