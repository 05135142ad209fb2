#include "host/engines/sqlite/file/copy.h"

#include <optional>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/file/opening.h"
#include "host/engines/sqlite/transaction.h"

namespace QuorHost::Sqlite {
namespace {

/// Pages that are copied between two reports.
constexpr int kPagesAtATime = 4096;

struct FinishBackup {
  void operator()(sqlite3_backup* backup) const noexcept { sqlite3_backup_finish(backup); }
};
using Backup = std::unique_ptr<sqlite3_backup, FinishBackup>;

}  // namespace

void copyDatabase(const std::shared_ptr<Database>& source, const std::string& path,
                  const std::function<void(std::int64_t done, std::int64_t total)>& progress) {
  // All pages are of one moment: that of a snapshot that is held already, or of one taken now.
  std::optional<SqliteSnapshot> snapshot;
  if (!source->inTransaction()) snapshot.emplace(source);
  const std::shared_ptr<Database> copy = createDatabase(path, Durability::Bulk);
  {
    const Backup backup(sqlite3_backup_init(copy->handle(), "main", source->handle(), "main"));
    if (!backup) raiseEngineError(copy->handle(), sqlite3_errcode(copy->handle()), {});
    int code = SQLITE_OK;
    while (code == SQLITE_OK) {
      code = sqlite3_backup_step(backup.get(), kPagesAtATime);
      const int pages = sqlite3_backup_pagecount(backup.get());
      if (progress) progress(pages - sqlite3_backup_remaining(backup.get()), pages);
    }
    if (code != SQLITE_DONE) raiseEngineError(copy->handle(), code, {});
  }
  copy->seal();
}

}  // namespace QuorHost::Sqlite
