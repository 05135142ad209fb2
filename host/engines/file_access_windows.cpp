// Who may read a new file, its folder says: the folders of a user are closed to others.
#include <windows.h>

#include <filesystem>

#include "host/engines/file_access.h"
#include "host/engines/paths.h"

namespace QuorHost {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Whether a file can be opened so. Locks belong to handles, so that closing drops no other's.
bool opens(const std::string& path, DWORD access, DWORD how) noexcept {
  try {
    const HANDLE file = ::CreateFileW(pathOf(path).c_str(), access, kShareAll, nullptr, how,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) ::CloseHandle(file);
    return file != INVALID_HANDLE_VALUE;
  } catch (...) {  // a name that is no text
    return false;
  }
}

}  // namespace

bool mayRead(const std::string& path) noexcept { return opens(path, GENERIC_READ, OPEN_EXISTING); }

bool mayWrite(const std::string& path) noexcept {
  return opens(path, GENERIC_WRITE, OPEN_EXISTING);
}

bool makeOwnFile(const std::string& path) noexcept {
  return opens(path, GENERIC_READ | GENERIC_WRITE, CREATE_NEW);
}

}  // namespace QuorHost
