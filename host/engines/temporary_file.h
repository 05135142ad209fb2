// Files that nobody else knows of.
#pragma once

#include <string>

namespace QuorHost {

/// A file in the folder for temporary files (`TMPDIR`) that only its owner may read. Its name, and
/// what an engine has put beside it, is gone with the object; the file when nobody has it open.
class TemporaryFile {
 public:
  /// Raises 75 when the folder takes no file.
  TemporaryFile();
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] const std::string& path() const noexcept { return path_; }

 private:
  std::string path_;
};

}  // namespace QuorHost
