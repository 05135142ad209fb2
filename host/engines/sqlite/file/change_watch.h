// Notes which rows of a table change.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

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
  /// The name of something of this log.
  [[nodiscard]] std::string name(std::string_view what) const;

  std::shared_ptr<Database> database_;
  std::string table_;
};

}  // namespace QuorHost::Sqlite
