#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "host/engines/temporary_file.h"
#include "platform/error.h"

namespace QuorHost {

namespace fs = std::filesystem;

TemporaryFile::TemporaryFile() : path_((fs::temp_directory_path() / "quoracc-XXXXXX").string()) {
  const int descriptor = ::mkstemp(path_.data());
  if (descriptor < 0) {
    constexpr std::int32_t kPathFileAccess = 75;
    throw QuorDataLib::Error(kPathFileAccess, "QuorDataLib",
                             "No file can be made in the folder for temporary files '" +
                                 fs::temp_directory_path().string() +
                                 "': " + std::generic_category().message(errno));
  }
  ::close(descriptor);
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  for (const char* const suffix : {"", "-journal", "-wal", "-shm"}) {
    fs::remove(path_ + suffix, ignored);
  }
}

}  // namespace QuorHost
