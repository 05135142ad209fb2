#include "host/engines/sqlite/file/raw_handle.h"

#include <array>
#include <filesystem>
#include <new>

#include "host/engines/paths.h"
#include "host/engines/sqlite/engine_error.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {

namespace fs = std::filesystem;

namespace {

/// Automation's number for a path or a file that cannot be used.
constexpr std::int32_t kPathFileAccess = 75;

#ifdef _WIN32
constexpr const char* kWithoutLocks = "win32-none";
#else
constexpr const char* kWithoutLocks = "unix-none";
#endif

/// `path` as the engine's URI of an immutable file.
std::string immutableUri(const std::string& path) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  const std::u8string absolute = fs::absolute(pathOf(path)).generic_u8string();
  std::string uri = absolute.starts_with(u8'/') ? "file:" : "file:///";  // or a drive
  for (const char8_t byte : absolute) {
    const auto c = static_cast<char>(byte);
    if (c == '%' || c == '?' || c == '#') {
      uri.append({'%', kHex[byte >> 4U], kHex[byte & 0xFU]});
    } else {
      uri += c;
    }
  }
  return uri + "?immutable=1";
}

}  // namespace

Handle openHandle(const std::string& path, int flags, Form form, int busyTimeout) {
  // An absolute path, since the engine gives some names (":memory:") a meaning of their own.
  const std::string name =
      form != Form::Plain ? immutableUri(path) : QuorHost::textOf(fs::absolute(pathOf(path)));
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(name.c_str(), &opened,
                                   flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE |
                                       (form != Form::Plain ? SQLITE_OPEN_URI : 0),
                                   form == Form::Nameless ? kWithoutLocks : nullptr);
  Handle handle(opened);
  if (!handle) throw std::bad_alloc();
  if (code != SQLITE_OK && (code & 0xFF) != SQLITE_CANTOPEN) raiseEngineError(opened, code, {});
  sqlite3_busy_timeout(opened, busyTimeout);
  return handle;
}

bool hasMoved(sqlite3* handle) {
  int moved = 0;
  sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

bool isDatabase(sqlite3* handle) {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
  if (file == nullptr || file->pMethods == nullptr) return true;
  std::array<char, kFileMagic.size()> start{};
  return file->pMethods->xRead(file, start.data(), start.size(), 0) == SQLITE_OK &&
         std::string_view(start.data(), start.size()) == kFileMagic;
}

int probe(sqlite3* handle) {
  return sqlite3_exec(handle, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
}

[[noreturn]] void refuseFile(const std::string& path, std::string_view what) {
  throw QuorDataLib::Error(kPathFileAccess, "QuorDataLib", "'" + path + "' " + std::string(what));
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
          "has changes in a file beside it ('-wal' or '-journal') that can only be read where both "
          "may be written: have it opened once by somebody who may (quoracc company info), or copy "
          "both files to a folder of your own");
    default:
      raiseEngineError(handle, code, {});
  }
}

}  // namespace QuorHost::Sqlite
