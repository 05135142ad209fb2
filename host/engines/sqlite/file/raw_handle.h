// Handles on files before anybody knows what is in them.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "host/engines/sqlite/session.h"
#include "host/engines/store.h"

namespace QuorHost::Sqlite {

/// "QCie", by which a company file is known among the files of the storage engine.
inline constexpr std::int32_t kApplicationId = 0x51436965;

/// The beginning of every file of the engine's.
inline constexpr std::string_view kFileMagic{"SQLite format 3\0", 16};

/// How a file is addressed when it is opened.
enum class Form : std::uint8_t {
  Plain,
  /// As a file that nobody changes: no locks and no files beside it.
  Immutable,
  /// The same, and it may lose its name.
  Nameless,
};

/// Opens the file at `path`. Only the first use of the handle tells whether that has worked:
/// `probe`.
[[nodiscard]] Handle openHandle(const std::string& path, int flags, Form form, int busyTimeout);

/// Whether the path of an open file names another one by now.
[[nodiscard]] bool hasMoved(sqlite3* handle);

/// Whether an open file begins as the engine's files do. One that could not be opened may.
[[nodiscard]] bool isDatabase(sqlite3* handle);

/// Reads the beginning of the file and takes the locks that reading takes. The engine's code.
[[nodiscard]] int probe(sqlite3* handle);

/// Raises 75 with a sentence about the file: its path, and `what`.
[[noreturn]] void refuseFile(const std::string& path, std::string_view what);

/// Raises what the engine's `code` means for somebody who opens the file for `access`.
[[noreturn]] void refuseProbed(sqlite3* handle, int code, const std::string& path, Access access);

}  // namespace QuorHost::Sqlite
