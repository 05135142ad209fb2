// Making and opening the files of the storage engine.
#pragma once

#include <memory>
#include <string>

#include "host/engines/sqlite/database.h"
#include "host/engines/store.h"

namespace QuorHost::Sqlite {

/// How long an operation waits for another program that holds the file, in milliseconds.
inline constexpr int kBusyTimeout = 5000;

/// Opens the company file at `path` and sees that it is one, whole, and of a schema version that
/// this build reads. Raises an error that names the file and says what to do when it is not.
[[nodiscard]] std::shared_ptr<Database> openDatabase(const std::string& path, Access access,
                                                     int busyTimeout = kBusyTimeout);

/// Makes a database without tables at `path`, where no file may be.
[[nodiscard]] std::shared_ptr<Database> createDatabase(const std::string& path,
                                                       Durability durability);

/// Removes the journal files that a read-only opening leaves beside a file, unless they hold
/// changes or somebody else uses them.
void removeSideFiles(const std::string& path) noexcept;

}  // namespace QuorHost::Sqlite
