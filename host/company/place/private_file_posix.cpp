#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

#include "host/company/place/private_file.h"
#include "host/engines/paths.h"
#include "host/engines/store.h"
#include "platform/error.h"

namespace QuorHost {

namespace {

namespace fs = std::filesystem;

/// Files that the storage engine keeps beside one that is in the making.
constexpr std::array<const char*, 3> kSideFiles = {"-journal", "-wal", "-shm"};

constexpr std::string_view kUnfinished = ".unfinished-";
constexpr std::size_t kDigits = 32;
constexpr std::string_view kHex = "0123456789abcdef";

[[noreturn]] void raiseFailed(const std::string& what, const fs::path& file, int code) {
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                     what + " '" + textOf(file) + "': " + std::generic_category().message(code));
}

/// The beginning that the names of a target's unfinished files share.
std::string startOfName(const fs::path& target) {
  constexpr std::size_t kLongest = 200;  // names end at 255 bytes
  return textOf(target.filename()).substr(0, kLongest).append(kUnfinished);
}

std::string digits() {
  std::random_device source;
  std::uniform_int_distribution<std::size_t> digit(0, kHex.size() - 1);
  std::string text;
  for (std::size_t i = 0; i < kDigits; ++i) text += kHex[digit(source)];
  return text;
}

bool isNameOf(const std::string& name, const std::string& start) {
  return name.size() == start.size() + kDigits && name.starts_with(start) &&
         name.find_first_not_of(kHex, start.size()) == std::string::npos;
}

void removeWithSideFiles(const fs::path& file) noexcept {
  std::error_code ignored;
  for (const char* const suffix : kSideFiles) fs::remove(fs::path(file).concat(suffix), ignored);
  fs::remove(file, ignored);
}

/// Whether an open file is one that this program has begun: empty yet, or a company.
bool isBegun(int descriptor, const struct stat& file) {
  if (!S_ISREG(file.st_mode) || file.st_uid != ::geteuid()) return false;
  std::array<char, kCompanyHeaderSize> header{};
  return file.st_size == 0 ||
         (::pread(descriptor, header.data(), header.size(), 0) == ssize_t{kCompanyHeaderSize} &&
          isCompanyHeader({header.data(), header.size()}));
}

/// Removes an unfinished file when nobody is at work on it: whoever is holds its lock.
void removeIfAbandoned(const fs::path& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat file{};
  if (::fstat(descriptor, &file) == 0 && isBegun(descriptor, file) &&
      ::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
    removeWithSideFiles(path);
  }
  ::close(descriptor);
}

void removeAbandoned(const fs::path& target) {
  const std::string start = startOfName(target);
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(target.parent_path(), error)) {
    if (isNameOf(textOf(entry.path().filename()), start)) removeIfAbandoned(entry.path());
  }
}

/// Locks a new file for as long as it is open; false when somebody took it for abandoned before.
bool claim(int descriptor) {
  struct stat file{};
  // A file system without such locks has no one either who could take it away.
  if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
  return ::fstat(descriptor, &file) == 0 && file.st_nlink > 0;
}

}  // namespace

FileIdentity::FileIdentity(const fs::path& path) {
  struct stat file{};
  if (::lstat(path.c_str(), &file) != 0) return;
  exists_ = true;
  device_ = file.st_dev;
  number_ = file.st_ino;
}

OldFile::OldFile(const fs::path& path)
    : descriptor_(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)) {
  if (descriptor_ < 0) raiseFailed("You cannot replace", path, errno);
}

OldFile::~OldFile() { ::close(descriptor_); }

void OldFile::spoilIfNameless() const noexcept {
  struct stat file{};
  if (::fstat(descriptor_, &file) != 0 || file.st_nlink > 0) return;
  const std::array<char, kCompanyHeaderSize> nothing{};
  static_cast<void>(::pwrite(descriptor_, nothing.data(), nothing.size(), 0) < 0);
}

PrivateFile::PrivateFile(const fs::path& target) {
  removeAbandoned(target);
  do {
    if (descriptor_ >= 0) ::close(descriptor_);
    path_ = target.parent_path() / (startOfName(target) + digits());
    constexpr mode_t kPrivate = 0600;
    descriptor_ =
        ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kPrivate);
    if (descriptor_ < 0 && errno != EEXIST) raiseFailed("A file cannot be made as", target, errno);
  } while (descriptor_ < 0 || !claim(descriptor_));
}

PrivateFile::~PrivateFile() {
  if (!path_.empty()) removeWithSideFiles(path_);
  ::close(descriptor_);
}

void PrivateFile::sync() const {
  if (::fsync(descriptor_) != 0) raiseFailed("The disk does not keep", path_, errno);
}

void PrivateFile::takeModeAndOwner(const OldFile& other) const {
  constexpr mode_t kModes = 07777;
  struct stat theirs{};
  struct stat mine{};
  if (::fstat(other.descriptor_, &theirs) != 0 || ::fstat(descriptor_, &mine) != 0 ||
      ((theirs.st_uid != mine.st_uid || theirs.st_gid != mine.st_gid) &&
       ::fchown(descriptor_, theirs.st_uid, theirs.st_gid) != 0) ||
      ::fchmod(descriptor_, theirs.st_mode & kModes) != 0) {
    raiseFailed("The owner of the old file cannot be kept for", path_, errno);
  }
}

bool PrivateFile::rename(const fs::path& target) {
  if (::rename(path_.c_str(), target.c_str()) != 0) {
    raiseFailed("The company cannot be put in place as", target, errno);
  }
  return placed(target);
}

bool PrivateFile::link(const fs::path& target) {
  if (::link(path_.c_str(), target.c_str()) == 0) {
    ::unlink(path_.c_str());
    placed(target);
    return true;
  }
  // A file system without links can only be asked first.
  struct stat named{};
  if (errno == EEXIST || ::lstat(target.c_str(), &named) == 0) return false;
  rename(target);
  return true;
}

bool PrivateFile::placed(const fs::path& target) {
  path_.clear();
  // A file system that cannot sync folders keeps names safe by itself.
  const int folder = ::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return false;
  const bool synced = ::fsync(folder) == 0;
  ::close(folder);
  return synced;
}

}  // namespace QuorHost
