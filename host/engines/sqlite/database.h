// One open database of the storage engine, shared by everything that still uses it.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/engines/rows/cursor.h"
#include "host/engines/sqlite/session.h"
#include "host/engines/sqlite/statement.h"
#include "host/engines/sqlite/write/kept_totals_text.h"
#include "host/engines/store.h"

namespace QuorHost::Sqlite {

/// Opens a further handle on the same file; gives none when the system lets it open no more.
using OpenHandle = std::function<Handle()>;

/// An open database. Store, connections, recordsets and transactions hold it together; the last one
/// to go closes it.
///
/// SQLite gives all statements that run on one handle the same moment of the company. So that a
/// recordset which lies open makes nobody read the past, every statement first has the rows of such
/// recordsets taken into memory; where they are too many, the recordset keeps the handle for
/// itself, and the database goes on with another one.
class Database {
 public:
  /// Takes over an open, configured handle.
  Database(Handle handle, std::string path, Access access, Durability durability);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  /// Allows further handles: the file is one that is changed while others read it.
  void allowMore(OpenHandle open) { open_ = std::move(open); }

  /// The session on which statements start now. It stays the same in a transaction and while a
  /// snapshot is held.
  [[nodiscard]] const std::shared_ptr<Session>& session() const {
    requireUsable();
    return sessions_.front();
  }
  [[nodiscard]] sqlite3* handle() const { return session()->handle.get(); }
  [[nodiscard]] StatementCache& cache() const { return session()->cache; }
  [[nodiscard]] const std::string& path() const noexcept { return path_; }
  [[nodiscard]] bool writable() const noexcept { return access_ == Access::Write; }
  [[nodiscard]] bool inTransaction() const { return sqlite3_get_autocommit(handle()) == 0; }

  /// False when the database was given up.
  [[nodiscard]] bool usable() const noexcept { return !sessions_.empty(); }

  /// The totals that are kept in the file.
  [[nodiscard]] const std::vector<KeptTotals>& kept() const noexcept { return kept_; }
  void keep(std::vector<KeptTotals> totals) { kept_ = std::move(totals); }

  /// Runs a statement of the host's own to its end.
  void run(std::string_view sql);
  /// The number in the first row and column of a statement of the host's own; 0 without a row.
  [[nodiscard]] std::int64_t number(std::string_view sql);

  /// Must come before every statement that reads: it will see the company as it is then. Raises an
  /// error when another file has taken the place of this one.
  void refresh();
  /// Must come before every change: none of the readers will see half of it, and none keeps an old
  /// view of the file open where it is changed.
  void prepareForChange();
  /// What a cursor that has its first row, with `statement`, should take into memory at once.
  [[nodiscard]] Rows::Allowance readAhead(const Statement& statement) const noexcept;

  /// Ends the open transaction without keeping anything of it. When even that fails, the database
  /// is given up.
  void rollBack() noexcept;
  /// The same back to a savepoint, or the whole transaction when that fails.
  void rollBackTo(std::string_view savepoint) noexcept;
  /// Raises when the database was given up: its handles are closed, and nothing can be read or
  /// changed any more.
  void requireUsable() const;

  /// Forgets the statements of all sessions, after a change of the catalogue.
  void forgetStatements() noexcept;

  /// A bulk store's way between its two states: loose while it is being filled, and sealed, which
  /// is in the journal mode in which it will be used, and on the disk. Other stores are always
  /// sealed.
  void loosen();
  void seal();

 private:
  void requirePlace() const;
  /// Has the cursors of the session take rows into memory; true when none stands on a row any more.
  bool settle(const Rows::Allowance& allowance) noexcept;
  /// Leaves the session to its cursors and goes on with another one; false when there is none.
  bool moveOn();
  void giveUp() noexcept;

  std::string path_;
  Access access_;
  Durability durability_;
  bool sealed_ = true;
  OpenHandle open_;
  std::vector<KeptTotals> kept_;
  std::vector<std::shared_ptr<Session>> sessions_;  // the one in use first; none when given up
};

}  // namespace QuorHost::Sqlite
