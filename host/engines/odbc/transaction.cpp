#include "host/engines/odbc/transaction.h"

#include <utility>

#include "host/engines/rows/refusal.h"

namespace QuorHost::Odbc {

OdbcTransaction::OdbcTransaction(std::shared_ptr<Database> database)
    : database_(std::move(database)) {
  database_->begin();
}

OdbcTransaction::~OdbcTransaction() {
  if (database_) database_->rollBack();
}

void OdbcTransaction::commit() {
  if (!database_) Rows::refuseSecondCommit();
  database_->commit();
  database_.reset();
}

OdbcSnapshot::OdbcSnapshot(std::shared_ptr<Database> database) : database_(std::move(database)) {
  database_->hold();
}

OdbcSnapshot::~OdbcSnapshot() {
  // Recordsets that lie open take their rows into memory.
  database_->rollBack();
}

}  // namespace QuorHost::Odbc
