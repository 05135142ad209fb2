#include <fcntl.h>
#include <unistd.h>

#include "host/engines/file_access.h"

namespace QuorHost {

bool mayRead(const std::string& path) noexcept {
  return ::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

bool mayWrite(const std::string& path) noexcept { return ::access(path.c_str(), W_OK) == 0; }

bool makeOwnFile(const std::string& path) noexcept {
  constexpr mode_t kPrivate = 0600;
  const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kPrivate);
  if (descriptor >= 0) ::close(descriptor);
  return descriptor >= 0;
}

}  // namespace QuorHost
