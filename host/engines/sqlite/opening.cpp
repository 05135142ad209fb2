#include "host/engines/sqlite/opening.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <new>
#include <string_view>
#include <utility>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/functions/collation.h"
#include "host/engines/sqlite/functions/functions.h"
#include "host/engines/sqlite/run/binding.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

namespace fs = std::filesystem;

/// "QCie", by which a company file is known among the files of the storage engine.
constexpr std::int32_t kApplicationId = 0x51436965;

/// Automation's number for a path or a file that cannot be used.
constexpr std::int32_t kPathFileAccess = 75;

constexpr std::string_view kFileMagic{"SQLite format 3\0", 16};

/// How a file is addressed when it is opened.
enum class Form : std::uint8_t {
  Plain,
  /// As a file that nobody changes: no locks and no files beside it.
  Immutable,
};

[[noreturn]] void refuseFile(const std::string& path, std::string_view what) {
  throw QuorDataLib::Error(kPathFileAccess, "QuorDataLib", "'" + path + "' " + std::string(what));
}

/// Sees that there is a file at `path` which begins as the engine's files do.
void checkFile(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    refuseFile(path, "does not exist: check the path, or create the company first");
  }
  if (fs::is_directory(status)) {
    refuseFile(path, "is a folder: give the path of the company file in it");
  }
  if (!fs::is_regular_file(status)) {
    refuseFile(path, "is not a file that can be opened: check the path and its permissions");
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) refuseFile(path, "cannot be read: you need permission to read the file");
  std::array<char, kFileMagic.size()> start{};
  file.read(start.data(), start.size());
  if (std::string_view(start.data(), start.size()) != kFileMagic) {
    refuseFile(path, "is not a company file: check the path");
  }
}

/// `path` as the engine's URI of an immutable file.
std::string immutableUri(const std::string& path) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string uri = "file:";
  for (const char c : fs::absolute(path).generic_string()) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '%' || c == '?' || c == '#') {
      uri.append({'%', kHex[byte >> 4U], kHex[byte & 0xFU]});
    } else {
      uri += c;
    }
  }
  return uri + "?immutable=1";
}

Handle openHandle(const std::string& path, int flags, Form form, int busyTimeout) {
  // An absolute path, since the engine gives some names (":memory:") a meaning of their own.
  const std::string name =
      form == Form::Immutable ? immutableUri(path) : fs::absolute(path).string();
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(name.c_str(), &opened,
                                   flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE |
                                       (form == Form::Immutable ? SQLITE_OPEN_URI : 0),
                                   nullptr);
  Handle handle(opened);
  if (!handle) throw std::bad_alloc();
  if (code != SQLITE_OK && (code & 0xFF) != SQLITE_CANTOPEN) raiseEngineError(opened, code, {});
  sqlite3_busy_timeout(opened, busyTimeout);
  return handle;
}

/// Reads the beginning of the file and takes the locks that reading takes. The engine's code.
int probe(sqlite3* handle) {
  return sqlite3_exec(handle, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
}

/// True when a file beside the one at `path` holds changes that belong into it.
bool hasUnmergedChanges(const std::string& path) {
  for (const char* suffix : {"-wal", "-journal"}) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path + suffix, error);
    if (!error && size > 0) return true;
  }
  return false;
}

[[noreturn]] void refuseProbed(sqlite3* handle, int code, const std::string& path, Access access) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      refuseFile(path, "is locked by another program: close it there, or wait until it is done");
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      refuseFile(path, "is damaged or cut short: restore it from a copy");
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
      if (access == Access::Write) {
        refuseFile(path,
                   "cannot be written: you need permission to write to the file and its folder");
      }
      refuseFile(
          path,
          "has changes in a file beside it ('-wal' or '-journal') that can only be read where "
          "the folder can be written: copy both files to such a folder");
    default:
      raiseEngineError(handle, code, {});
  }
}

int flagsOf(Access access) {
  return access == Access::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
}

/// An open handle on whose file the first read has succeeded.
Handle openProbed(const std::string& path, Access access, int busyTimeout) {
  const int flags = flagsOf(access);
  Handle handle = openHandle(path, flags, Form::Plain, busyTimeout);
  int code = probe(handle.get());
  const int kind = code & 0xFF;
  if ((kind == SQLITE_READONLY || kind == SQLITE_CANTOPEN) && access == Access::Read &&
      !hasUnmergedChanges(path)) {
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
  checkFile(path);
  Handle handle = openProbed(path, access, busyTimeout);
  configure(handle.get(), access);
  auto database = std::make_shared<Database>(std::move(handle), path, access, Durability::Full);
  checkCompany(*database);
  if (access == Access::Write) database->run("PRAGMA journal_mode=WAL");
  allowMore(*database, access, busyTimeout);
  return database;
}

std::shared_ptr<Database> createDatabase(const std::string& path, Durability durability) {
  std::error_code error;
  if (fs::exists(fs::symlink_status(path, error))) {
    refuseFile(path, "exists already: choose another path, or remove the file first");
  }
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

void removeSideFiles(const std::string& path) noexcept {
  try {
    std::error_code error;
    if (!fs::exists(path + "-wal", error) || hasUnmergedChanges(path)) return;
    // Whoever may write and is the last to close removes them.
    const Handle handle = openHandle(path, SQLITE_OPEN_READWRITE, Form::Plain, 0);
    probe(handle.get());
  } catch (...) {  // NOLINT(bugprone-empty-catch): they do no harm where they are
  }
}

}  // namespace QuorHost::Sqlite
