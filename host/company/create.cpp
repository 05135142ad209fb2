#include <array>
#include <filesystem>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#endif

#include "host/company/company.h"
#include "host/company/parameters.h"
#include "host/company/sample/sample.h"
#include "host/company/schema.h"
#include "platform/error.h"

namespace QuorHost {

namespace {

namespace fs = std::filesystem;
using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;

/// Names of the files that the storage engine may keep beside a company file.
constexpr std::array<const char*, 3> kSideFiles = {"-journal", "-wal", "-shm"};

void removeSideFiles(const fs::path& file) noexcept {
  for (const char* const suffix : kSideFiles) {
    std::error_code ignored;
    fs::remove(fs::path(file).concat(suffix), ignored);
  }
}

/// Removes the unfinished file at the end, unless it was put in place.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(fs::path path) : path_(std::move(path)) { remove(); }
  ~UnfinishedFile() { remove(); }
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  [[nodiscard]] const fs::path& path() const noexcept { return path_; }

 private:
  void remove() noexcept {
    std::error_code ignored;
    fs::remove(path_, ignored);
    removeSideFiles(path_);
  }

  fs::path path_;
};

/// Forces a file or a folder onto the disk. A file system that cannot sync folders keeps the rename
/// safe by itself.
void sync([[maybe_unused]] const fs::path& path) noexcept {
#ifndef _WIN32
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
#endif
}

fs::path folderOf(const fs::path& target) {
  return target.has_parent_path() ? target.parent_path() : fs::path(".");
}

constexpr const char* kUnfinished = ".unfinished-";

/// A name beside the target that no other running process uses.
fs::path unfinishedName(const fs::path& target) {
#ifdef _WIN32
  return fs::path(target).concat(kUnfinished);
#else
  return fs::path(target).concat(kUnfinished + std::to_string(::getpid()));
#endif
}

/// Removes what processes have left that were ended before they could finish the same company.
void removeAbandoned([[maybe_unused]] const fs::path& target) {
#ifndef _WIN32
  const std::string start = target.filename().string() + kUnfinished;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folderOf(target), error)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with(start)) continue;
    const pid_t process = std::atoi(name.c_str() + start.size());
    if (process > 0 && ::kill(process, 0) != 0 && errno == ESRCH) fs::remove(entry.path(), error);
  }
#endif
}

void requirePlace(const fs::path& target, bool force) {
  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  if (fs::is_directory(status)) {
    raise(ErrorNumber::InvalidArgument,
          "'" + target.string() + "' is a folder: name a file for the company");
  }
  if (fs::exists(status) && !force) {
    raise(ErrorNumber::InvalidArgument,
          "The file '" + target.string() +
              "' exists already: choose another name, or have it replaced (--force)");
  }
  const fs::path folder = folderOf(target);
  if (!fs::is_directory(folder, error)) {
    raise(ErrorNumber::InvalidArgument,
          "There is no folder '" + folder.string() + "': make it first");
  }
}

void fill(Store& store, const CreateOptions& options, const Progress& progress) {
  const std::unique_ptr<Transaction> transaction = store.begin();
  defineRelations(store);
  writeParameters(store);
  if (options.sample) Sample::writeSample(store, options, progress);
  defineIndexes(store, [&](int done, int total) {
    if (progress) progress("building the indexes", done, total);
  });
  store.setSchemaVersion(kNewestSchemaVersion);
  transaction->commit();
}

}  // namespace

void createCompany(const std::string& path, const CreateOptions& options,
                   const Progress& progress) {
  if (options.scale < 1 || options.scale > kLargestScale) {
    raise(ErrorNumber::InvalidArgument,
          "The scale must be from 1 to " + std::to_string(kLargestScale));
  }
  const fs::path target(path);
  requirePlace(target, options.force);
  removeAbandoned(target);
  const UnfinishedFile unfinished(unfinishedName(target));
  {
    const std::shared_ptr<Store> store =
        createCompanyFile(unfinished.path().string(), Durability::Bulk);
    fill(*store, options, progress);
  }
  sync(unfinished.path());
  requirePlace(target, options.force);
  // What an old file left behind must not be taken for part of the new one.
  removeSideFiles(target);
  std::error_code error;
  fs::rename(unfinished.path(), target, error);
  if (error) {
    raise(ErrorNumber::InvalidArgument,
          "The company cannot be put in place as '" + target.string() + "': " + error.message());
  }
  sync(folderOf(target));
}

}  // namespace QuorHost
