// One handle on a database file, and what is prepared and running on it.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <utility>
#include <vector>

#include "host/engines/sqlite/statement_cache.h"
#include "host/engines/sqlite/totals/pending_totals.h"

namespace QuorHost::Sqlite {

class SqliteCursor;

struct CloseHandle {
  void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
};
using Handle = std::unique_ptr<sqlite3, CloseHandle>;

/// All statements that run on one handle at the same time read the company as of one moment.
struct Session {
  explicit Session(Handle opened) : handle(std::move(opened)), cache(handle.get()) {
    totals.attach(handle.get());
  }

  /// What the open transaction has changed kept totals by.
  PendingTotals totals;
  Handle handle;
  StatementCache cache;
  /// The cursors that stand on a row.
  std::vector<SqliteCursor*> live;
};

}  // namespace QuorHost::Sqlite
