#include "host/engines/sqlite/database.h"

#include <algorithm>
#include <utility>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/file/opening.h"
#include "host/engines/sqlite/file/raw_handle.h"
#include "host/engines/sqlite/run/cursor.h"

namespace QuorHost::Sqlite {
namespace {

/// Forces what was written so far onto the disk.
void sync(sqlite3* handle) {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
  if (file == nullptr || file->pMethods == nullptr) return;
  const int code = file->pMethods->xSync(file, SQLITE_SYNC_FULL);
  if (code != SQLITE_OK) raiseEngineError(handle, code, {});
}

/// What a recordset that lies open may take into memory so that another statement can start. It is
/// less than a further handle costs, and most results are far smaller.
constexpr Rows::Allowance kRest{.bytes = std::size_t{8} << 20U,
                                .time = std::chrono::milliseconds(50)};

/// The same when it is opened, before anybody knows whether it will be left lying.
constexpr Rows::Allowance kAhead{.rows = 64, .time = std::chrono::milliseconds(1)};

/// Sessions of one database at the most: each has files open and pages in memory. What more
/// recordsets lie open and are large takes all their rows into memory.
constexpr std::size_t kMostSessions = 8;

}  // namespace

Database::Database(Handle handle, std::string path, Access access, Durability durability)
    : path_(std::move(path)), access_(access), durability_(durability) {
  sessions_.push_back(std::make_shared<Session>(std::move(handle)));
  loosen();
}

Database::~Database() {
  try {
    seal();
  } catch (...) {  // NOLINT(bugprone-empty-catch): a commit has sealed what anyone relies on
  }
  sessions_.clear();
  if (!writable()) mergeSideFiles(path_);
}

void Database::requireUsable() const {
  if (sessions_.empty()) {
    refuseStatement("The company file '" + path_ +
                    "' was closed because a change could not be undone; nothing of that change is "
                    "kept. Open the company again");
  }
}

void Database::run(std::string_view sql) {
  Statement statement(handle(), sql);
  while (statement.step()) {
  }
}

std::int64_t Database::number(std::string_view sql) {
  refresh();
  Statement statement(handle(), sql);
  return statement.step() ? sqlite3_column_int64(statement.get(), 0) : 0;
}

void Database::requirePlace() const {
  if (hasMoved(handle())) {
    refuseStatement("The company file '" + path_ +
                    "' was replaced, moved or removed while it was open: open the company again");
  }
}

bool Database::settle(const Rows::Allowance& allowance) noexcept {
  // A cursor takes itself off the list when its statement ends.
  const std::vector<SqliteCursor*>& live = sessions_.front()->live;
  for (std::size_t i = live.size(); i-- > 0;) live[i]->letKeep(allowance);
  return live.empty();
}

bool Database::moveOn() {
  const auto idle = std::ranges::find_if(
      sessions_, [](const std::shared_ptr<Session>& session) { return session->live.empty(); });
  if (idle != sessions_.end()) {
    std::iter_swap(sessions_.begin(), idle);
    return true;
  }
  if (sessions_.size() == kMostSessions) return false;
  Handle handle = open_();
  if (!handle) return false;
  requirePlace();  // or the new handle is on another file
  sessions_.insert(sessions_.begin(), std::make_shared<Session>(std::move(handle)));
  return true;
}

void Database::refresh() {
  if (inTransaction()) return;
  requirePlace();
  if (sessions_.front()->live.empty()) return;
  if (!settle(kRest) && open_ && !moveOn()) settle({});
}

void Database::prepareForChange() {
  refresh();
  if (!sessions_.front()->live.empty()) settle({});
}

Rows::Allowance Database::readAhead(const Statement& statement) const noexcept {
  // A statement that passes many rows over may have to pass as many until it finds the next one.
  constexpr int kFewPassed = 100;
  const bool slow =
      sqlite3_stmt_status(statement.get(), SQLITE_STMTSTATUS_FULLSCAN_STEP, 0) > kFewPassed;
  const bool pinned = sqlite3_get_autocommit(sqlite3_db_handle(statement.get())) == 0;
  return slow || pinned ? Rows::Allowance{.rows = 0} : kAhead;
}

void Database::rollBack() noexcept {
  if (sessions_.empty()) return;
  sqlite3* const handle = sessions_.front()->handle.get();
  settle({});
  if (sqlite3_get_autocommit(handle) == 0) {
    sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
  }
  if (sqlite3_get_autocommit(handle) == 0) giveUp();
}

void Database::rollBackTo(std::string_view savepoint) noexcept {
  try {
    run("ROLLBACK TO " + std::string(savepoint));
    run("RELEASE " + std::string(savepoint));
  } catch (...) {
    rollBack();
  }
}

void Database::giveUp() noexcept {
  const std::vector<std::shared_ptr<Session>> sessions = std::move(sessions_);
  sessions_.clear();
  for (const std::shared_ptr<Session>& session : sessions) {
    while (!session->live.empty()) session->live.back()->abandon();
    session->cache.clear();
  }
}

void Database::forgetStatements() noexcept {
  for (const std::shared_ptr<Session>& session : sessions_) session->cache.clear();
}

void Database::loosen() {
  if (durability_ != Durability::Bulk || !sealed_) return;
  run("PRAGMA journal_mode=MEMORY");
  run("PRAGMA synchronous=OFF");
  sealed_ = false;
}

void Database::seal() {
  if (sealed_) return;
  run("PRAGMA synchronous=FULL");
  // On a disk that cannot keep such a log the file stays with a journal, and is used with that.
  run("PRAGMA journal_mode=WAL");
  run("PRAGMA wal_checkpoint(TRUNCATE)");
  sync(handle());
  sealed_ = true;
}

}  // namespace QuorHost::Sqlite
