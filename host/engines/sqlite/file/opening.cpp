#include "host/engines/sqlite/file/opening.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include "host/engines/file_access.h"
#include "host/engines/paths.h"
#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/file/raw_handle.h"
#include "host/engines/sqlite/functions/collation.h"
#include "host/engines/sqlite/functions/functions.h"
#include "host/engines/sqlite/run/binding.h"

namespace QuorHost::Sqlite {
namespace {

namespace fs = std::filesystem;

/// Sees that there is a file at `path` that can be read.
void checkFile(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(pathOf(path), error);
  if (status.type() == fs::file_type::not_found) {
    refuseFile(path, "does not exist: check the path, or create the company first");
  }
  if (fs::is_directory(status)) {
    refuseFile(path, "is a folder: give the path of the company file in it");
  }
  if (!fs::is_regular_file(status)) {
    refuseFile(path, "is not a file that can be opened: check the path and its permissions");
  }
  if (!mayRead(path)) {
    refuseFile(path, "cannot be read: you need permission to read the file");
  }
}

/// Makes an empty file for its owner alone, or takes one that is empty already.
void makePrivateFile(const std::string& path) {
  if (makeOwnFile(path)) return;
  std::error_code error;
  const fs::file_status status = fs::symlink_status(pathOf(path), error);
  if (!fs::exists(status)) {
    refuseFile(path, "cannot be created: see that its folder exists and that you may write to it");
  }
  if (!fs::is_regular_file(status) || fs::file_size(pathOf(path), error) > 0) {
    refuseFile(path, "exists already: choose another path, or remove the file first");
  }
}

/// True when a file beside the one at `path` holds changes that belong into it.
bool hasUnmergedChanges(const std::string& path) {
  for (const char* suffix : {"-wal", "-journal"}) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(pathOf(path + suffix), error);
    if (!error && size > 0) return true;
  }
  return false;
}

int flagsOf(Access access) {
  return access == Access::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
}

/// An open handle on whose file the first read has succeeded.
Handle openProbed(const std::string& path, Access access, int busyTimeout) {
  const int flags = flagsOf(access);
  Handle handle = openHandle(path, flags, Form::Plain, busyTimeout);
  if (!isDatabase(handle.get())) refuseFile(path, "is not a company file: check the path");
  int code = probe(handle.get());
  const auto isRefused = [&] {
    const int kind = code & 0xFF;
    return access == Access::Read && (kind == SQLITE_READONLY || kind == SQLITE_CANTOPEN);
  };
  if (isRefused() && hasUnmergedChanges(path)) {
    // Somebody was ended in the middle of a change, which only a writer can undo.
    mergeSideFiles(path);
    handle = openHandle(path, flags, Form::Plain, busyTimeout);
    code = probe(handle.get());
  }
  if (isRefused() && !hasUnmergedChanges(path)) {
    // The folder is write-protected, so that the engine cannot keep its lock file in it; nor can
    // anybody else who would change the file from this side.
    handle = openHandle(path, flags, Form::Immutable, busyTimeout);
    code = probe(handle.get());
  }
  if (code == SQLITE_OK && access == Access::Write &&
      sqlite3_db_readonly(handle.get(), "main") != 0) {
    code = SQLITE_READONLY;
  }
  if (code != SQLITE_OK) refuseProbed(handle.get(), code, path, access);
  return handle;
}

void execute(sqlite3* handle, const char* sql) {
  const int code = sqlite3_exec(handle, sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) raiseEngineError(handle, code, sql);
}

/// Everything that a handle needs before the first statement of a user.
void configure(sqlite3* handle) {
  // A company file may come from anywhere: nothing in it may call more than plain functions, damage
  // the file's own structure or bring in a second file.
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
  registerCollation(handle);
  registerFunctions(handle);
  execute(handle,
          "PRAGMA foreign_keys=ON; PRAGMA synchronous=FULL; PRAGMA temp_store=MEMORY;"
          "PRAGMA cache_size=-65536; PRAGMA mmap_size=0");
}

void configure(sqlite3* handle, Access access) {
  configure(handle);
  if (access == Access::Read) execute(handle, "PRAGMA query_only=ON");
}

/// Whether readers and a writer of the file leave each other alone: it is kept with a write-ahead
/// log. An immutable file is not, whatever it says.
bool isLogged(const Database& database) {
  Statement mode(database.handle(), "PRAGMA journal_mode");
  const sqlite3_filename name = sqlite3_db_filename(database.handle(), "main");
  if (sqlite3_uri_boolean(name, "immutable", 0) != 0 || !mode.step()) return false;
  return Rows::Cell::Kind::Text == cellOf(mode, 0).kind && cellOf(mode, 0).text == "wal";
}

/// Lets the database open further handles where they are of use.
void allowMore(Database& database, Access access, int busyTimeout) {
  if (!isLogged(database)) return;
  database.allowMore([path = database.path(), access, busyTimeout] {
    Handle handle = openHandle(path, flagsOf(access), Form::Plain, busyTimeout);
    if (probe(handle.get()) != SQLITE_OK) return Handle();
    configure(handle.get(), access);
    return handle;
  });
}

void checkCompany(Database& database) {
  const std::string& path = database.path();
  if (database.number("PRAGMA application_id") != kApplicationId) {
    refuseFile(path, "is a database of another program, not a company file: check the path");
  }
  // 0 is a company whose schema was never given a version.
  const std::int64_t version = database.number("PRAGMA user_version");
  if (version > kNewestSchemaVersion) {
    refuseFile(path, "was made by a newer version of this program (schema " +
                         std::to_string(version) + ", here " +
                         std::to_string(kNewestSchemaVersion) + "): update this program");
  }
}

}  // namespace

std::shared_ptr<Database> openDatabase(const std::string& path, Access access, int busyTimeout) {
  Handle handle;
  // A file that is replaced while it is opened is no longer the company.
  do {
    checkFile(path);
    handle = openProbed(path, access, busyTimeout);
  } while (hasMoved(handle.get()));
  configure(handle.get(), access);
  auto database = std::make_shared<Database>(std::move(handle), path, access, Durability::Full);
  checkCompany(*database);
  if (access == Access::Write) database->run("PRAGMA journal_mode=WAL");
  allowMore(*database, access, busyTimeout);
  return database;
}

std::shared_ptr<Database> openPrivateCopy(const std::string& path, const std::string& original) {
  Handle handle = openHandle(path, SQLITE_OPEN_READONLY, Form::Nameless, kBusyTimeout);
  const int code = probe(handle.get());
  if (code != SQLITE_OK) refuseProbed(handle.get(), code, path, Access::Read);
  configure(handle.get());
  execute(handle.get(), "PRAGMA query_only=ON");
  return std::make_shared<Database>(std::move(handle), original, Access::Read, Durability::Full);
}

std::shared_ptr<Database> createDatabase(const std::string& path, Durability durability) {
  makePrivateFile(path);
  Handle handle =
      openHandle(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, Form::Plain, kBusyTimeout);
  if (probe(handle.get()) != SQLITE_OK) {
    refuseFile(path, "cannot be created: see that its folder exists and that you may write to it");
  }
  configure(handle.get());
  execute(handle.get(), "PRAGMA auto_vacuum=NONE; PRAGMA encoding='UTF-8'");
  if (durability == Durability::Full) execute(handle.get(), "PRAGMA journal_mode=WAL");
  auto database = std::make_shared<Database>(std::move(handle), path, Access::Write, durability);
  database->run("PRAGMA application_id=" + std::to_string(kApplicationId));
  if (durability == Durability::Full) allowMore(*database, Access::Write, kBusyTimeout);
  return database;
}

void mergeSideFiles(const std::string& path) noexcept {
  try {
    std::error_code error;
    if (!fs::exists(pathOf(path + "-wal"), error) && !hasUnmergedChanges(path)) return;
    // Whoever may write and is the last to close puts the log back and removes it.
    const Handle handle = openHandle(path, SQLITE_OPEN_READWRITE, Form::Plain, 0);
    static_cast<void>(probe(handle.get()));
  } catch (...) {  // NOLINT(bugprone-empty-catch): they do no harm where they are
  }
}

}  // namespace QuorHost::Sqlite
