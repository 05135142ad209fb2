// What the operating system lets this process do with a file.
#pragma once

#include <string>

namespace QuorHost {

/// Whether the file at `path` may be read. It is not opened for that: closing it would drop the
/// locks that this process may have on it.
[[nodiscard]] bool mayRead(const std::string& path) noexcept;

/// Whether the file at `path` may be written.
[[nodiscard]] bool mayWrite(const std::string& path) noexcept;

/// Makes an empty file that belongs to this user alone; false when that is not possible, or when
/// something has the name already.
[[nodiscard]] bool makeOwnFile(const std::string& path) noexcept;

}  // namespace QuorHost
