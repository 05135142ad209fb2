#include "host/engines/sqlite/database.h"

#include <algorithm>
#include <utility>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/opening.h"

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

}  // namespace

Database::Database(Handle handle, std::string path, Access access, Durability durability)
    : handle_(std::move(handle)),
      path_(std::move(path)),
      access_(access),
      durability_(durability),
      cache_(handle_.get()) {
  loosen();
}

Database::~Database() {
  try {
    seal();
  } catch (...) {  // NOLINT(bugprone-empty-catch): a commit has sealed what anyone relies on
  }
  cache_.clear();
  handle_.reset();
  if (!writable()) removeSideFiles(path_);
}

void Database::run(std::string_view sql) {
  Statement statement(handle(), sql);
  while (statement.step()) {
  }
}

std::int64_t Database::number(std::string_view sql) {
  Statement statement(handle(), sql);
  return statement.step() ? sqlite3_column_int64(statement.get(), 0) : 0;
}

void Database::readingEnded(LiveReader* reader) noexcept { std::erase(readers_, reader); }

void Database::prepareForChange() noexcept {
  // A reader takes itself off the list when its statement ends.
  const std::vector<LiveReader*> readers = std::exchange(readers_, {});
  for (LiveReader* reader : readers) reader->settle();
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
