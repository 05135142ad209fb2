// Notes which rows of a table change.
#pragma once

#include <memory>

#include "host/engines/sqlite/database.h"
#include "host/engines/store.h"

namespace QuorHost::Sqlite {

/// A change log kept by triggers and a table of the connection's own, which nobody else sees.
class ChangeWatch final : public ChangeLog {
 public:
  ChangeWatch(std::shared_ptr<Database> database, const WatchedTable& watched);
  ~ChangeWatch() override;

  std::vector<Change> take() override;

 private:
  void end() noexcept;

  std::shared_ptr<Database> database_;
};

}  // namespace QuorHost::Sqlite
