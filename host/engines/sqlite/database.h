// One open database of the storage engine, shared by everything that still uses it.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/sqlite/statement.h"
#include "host/engines/sqlite/statement_cache.h"
#include "host/engines/store.h"

namespace QuorHost::Sqlite {

struct CloseHandle {
  void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
};
using Handle = std::unique_ptr<sqlite3, CloseHandle>;

/// Somebody who reads rows off a running statement.
class LiveReader {
 public:
  /// Fetches the rows that are still to come, so that the statement no longer runs. What goes wrong
  /// is raised to the reader when it gets there.
  virtual void settle() noexcept = 0;

 protected:
  ~LiveReader() = default;
};

/// An open database. Store, connections, recordsets and transactions hold it together; the last one
/// to go closes it.
class Database {
 public:
  /// Takes over an open, configured handle.
  Database(Handle handle, std::string path, Access access, Durability durability);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  [[nodiscard]] sqlite3* handle() const noexcept { return handle_.get(); }
  [[nodiscard]] const std::string& path() const noexcept { return path_; }
  [[nodiscard]] bool writable() const noexcept { return access_ == Access::Write; }
  [[nodiscard]] bool inTransaction() const noexcept {
    return sqlite3_get_autocommit(handle()) == 0;
  }
  [[nodiscard]] StatementCache& cache() noexcept { return cache_; }

  /// Runs a statement of the host's own to its end.
  void run(std::string_view sql);
  /// The number in the first row and column of a statement of the host's own; 0 without a row.
  [[nodiscard]] std::int64_t number(std::string_view sql);

  /// Registers a reader until it calls `readingEnded`.
  void readingBegins(LiveReader* reader) { readers_.push_back(reader); }
  void readingEnded(LiveReader* reader) noexcept;

  /// Must come before every change: it lets the readers finish, so that none of them sees half of
  /// the change, and none keeps an old view of the file open, over which nothing can be written.
  void prepareForChange() noexcept;

  /// A bulk store's way between its two states: loose while it is being filled, and sealed, which
  /// is in the journal mode in which it will be used, and on the disk. Other stores are always
  /// sealed.
  void loosen();
  void seal();

 private:
  Handle handle_;
  std::string path_;
  Access access_;
  Durability durability_;
  bool sealed_ = true;
  StatementCache cache_;
  std::vector<LiveReader*> readers_;
};

}  // namespace QuorHost::Sqlite
