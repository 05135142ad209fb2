// Making and opening the files of the storage engine.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/engines/sqlite/database.h"
#include "host/engines/store.h"

namespace QuorHost::Sqlite {

/// How long an operation waits for another program that holds the file, in milliseconds.
inline constexpr int kBusyTimeout = 5000;

/// Opens the company file at `path` and sees that it is one, whole, and of a schema version that
/// this build reads. Raises an error that names the file and says what to do when it is not.
[[nodiscard]] std::shared_ptr<Database> openDatabase(const std::string& path, Access access,
                                                     int busyTimeout = kBusyTimeout);

/// Opens for reading a copy at `path` that nobody else knows of and that may lose its name; to
/// users it is the file `original`.
[[nodiscard]] std::shared_ptr<Database> openPrivateCopy(const std::string& path,
                                                        const std::string& original);

/// `takeAlone` of this engine. It waits only as long as somebody else may take to open a file.
[[nodiscard]] std::unique_ptr<SoleUse> takeDatabaseAlone(const std::string& path);

/// `isCompanyHeader` of this engine.
[[nodiscard]] bool isCompanyStart(std::string_view header) noexcept;

/// Makes a database without tables at `path`, where nothing or an empty file may be.
[[nodiscard]] std::shared_ptr<Database> createDatabase(const std::string& path,
                                                       Durability durability);

/// Puts the log that stands beside a file back into it and removes the files beside it, as far as
/// nobody else uses them and the file may be written. Waits for nobody.
void mergeSideFiles(const std::string& path) noexcept;

}  // namespace QuorHost::Sqlite
