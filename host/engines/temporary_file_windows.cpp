#include <algorithm>
#include <filesystem>
#include <mutex>
#include <random>
#include <system_error>
#include <vector>

#include "host/engines/file_access.h"
#include "host/engines/paths.h"
#include "host/engines/temporary_file.h"
#include "platform/error.h"

namespace QuorHost {

namespace fs = std::filesystem;

namespace {

/// Whether the file and what an engine has put beside it is gone. A file that is open keeps its
/// name here.
bool removed(const std::string& path) {
  std::error_code error;
  bool gone = true;
  for (const char* const suffix : {"", "-journal", "-wal", "-shm"}) {
    fs::remove(pathOf(path + suffix), error);
    gone = gone && !error;
  }
  return gone;
}

/// Files that are still open: each is tried again whenever another one is done with, and at the end
/// of the program.
class Leftovers {
 public:
  ~Leftovers() { sweep(); }
  void add(const std::string& path) {
    const std::lock_guard lock(mutex_);
    paths_.push_back(path);
    sweep();
  }

 private:
  void sweep() { std::erase_if(paths_, removed); }

  std::mutex mutex_;
  std::vector<std::string> paths_;
};

Leftovers& leftovers() {
  static Leftovers all;
  return all;
}

std::string anyName() {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
  constexpr std::size_t kLength = 16;
  std::random_device source;
  std::uniform_int_distribution<std::size_t> letter(0, kLetters.size() - 1);
  std::string name = "quoracc-";
  for (std::size_t i = 0; i < kLength; ++i) name += kLetters[letter(source)];
  return name;
}

}  // namespace

TemporaryFile::TemporaryFile() {
  leftovers();  // is destroyed after whatever holds this file
  constexpr int kAttempts = 10;
  for (int i = 0; i < kAttempts; ++i) {
    path_ = textOf(fs::temp_directory_path() / anyName());
    if (makeOwnFile(path_)) return;
  }
  constexpr std::int32_t kPathFileAccess = 75;
  throw QuorDataLib::Error(kPathFileAccess, "QuorDataLib",
                           "No file can be made in the folder for temporary files '" +
                               textOf(fs::temp_directory_path()) + "'");
}

TemporaryFile::~TemporaryFile() { leftovers().add(path_); }

}  // namespace QuorHost
