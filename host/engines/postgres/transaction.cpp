#include "host/engines/postgres/transaction.h"

#include <utility>

#include "host/engines/rows/refusal.h"

namespace QuorHost::Postgres {

ServerTransaction::ServerTransaction(std::shared_ptr<ServerStore> store)
    : store_(std::move(store)) {
  store_->database()->begin();
}

ServerTransaction::~ServerTransaction() {
  if (!store_) return;
  store_->database()->rollBack();
  store_->afterRollBack();
}

void ServerTransaction::commit() {
  if (!store_) Rows::refuseSecondCommit();
  store_->beforeCommit();
  store_->database()->commit();
  std::exchange(store_, nullptr)->afterCommit();
}

ServerSnapshot::ServerSnapshot(std::shared_ptr<Database> database)
    : database_(std::move(database)) {
  database_->hold();
}

ServerSnapshot::~ServerSnapshot() {
  // Recordsets that lie open take their rows into memory.
  database_->rollBack();
}

}  // namespace QuorHost::Postgres
