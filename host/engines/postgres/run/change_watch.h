// Notes which rows of a table change.
#pragma once

#include <memory>

#include "host/engines/postgres/server/database.h"
#include "host/engines/store.h"

namespace QuorHost::Postgres {

/// A change log kept by triggers that are gone before the transaction ends, so that nobody else
/// meets them. It does not run outside a transaction.
class ChangeWatch final : public ChangeLog {
 public:
  ChangeWatch(std::shared_ptr<Database> database, const WatchedTable& watched);
  ~ChangeWatch() override;

  std::vector<Change> take() override;

 private:
  std::shared_ptr<Database> database_;
  std::string table_;  // quoted, as the others are
  std::string log_;
  std::string function_;
};

}  // namespace QuorHost::Postgres
