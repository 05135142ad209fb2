// Here a file that somebody has open cannot be replaced, and what a new file's owner and rights are
// its folder says: much that is to be seen to elsewhere sees to itself.
#include <windows.h>

#include <array>
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

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::string_view kUnfinished = ".unfinished-";
constexpr std::size_t kDigits = 32;
constexpr std::string_view kHex = "0123456789abcdef";

/// What the system says of an error, in UTF-8 (the standard library gives its own encoding).
std::string systemMessage(DWORD code) {
  constexpr DWORD kLongest = 512;
  std::wstring text(kLongest, L'\0');
  text.resize(::FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
      nullptr, code, 0, text.data(), kLongest, nullptr));
  return textOf(text);
}

[[noreturn]] void raiseFailed(const std::string& what, const fs::path& file) {
  const DWORD code = ::GetLastError();
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                     what + " '" + textOf(file) + "': " + systemMessage(code));
}

OpenFile open(const fs::path& path, DWORD access, DWORD share, DWORD how) noexcept {
  const HANDLE file = ::CreateFileW(path.c_str(), access, share, nullptr, how,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  return file == INVALID_HANDLE_VALUE ? kNoFile : file;
}

void close(OpenFile file) noexcept {
  if (file != kNoFile) ::CloseHandle(file);
}

std::string startOfName(const fs::path& target) {
  return textOf(target.filename()).append(kUnfinished);
}

std::string digits() {
  std::random_device source;
  std::uniform_int_distribution<std::size_t> digit(0, kHex.size() - 1);
  std::string text;
  for (std::size_t i = 0; i < kDigits; ++i) text += kHex[digit(source)];
  return text;
}

void removeWithSideFiles(const fs::path& file) noexcept {
  std::error_code ignored;
  for (const char* const suffix : {"-journal", "-wal", "-shm", ""}) {
    fs::remove(fs::path(file).concat(suffix), ignored);
  }
}

/// Whether an open file is one that this program has begun: empty yet, or a company.
bool isBegun(OpenFile file) {
  std::array<char, kCompanyHeaderSize> header{};
  DWORD read = 0;
  if (::ReadFile(file, header.data(), static_cast<DWORD>(header.size()), &read, nullptr) == 0) {
    return false;
  }
  return read == 0 || isCompanyHeader({header.data(), read});
}

/// Removes what processes that were ended have left: whoever is at work on a file has it open.
void removeAbandoned(const fs::path& target) {
  const std::string start = startOfName(target);
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(target.parent_path(), error)) {
    const std::string name = textOf(entry.path().filename());
    if (name.size() != start.size() + kDigits || !name.starts_with(start)) continue;
    const OpenFile alone = open(entry.path(), GENERIC_READ, 0, OPEN_EXISTING);
    const bool begun = alone != kNoFile && isBegun(alone);
    close(alone);
    if (begun) removeWithSideFiles(entry.path());
  }
}

}  // namespace

FileIdentity::FileIdentity(const fs::path& path) {
  const OpenFile file = open(path, 0, kShareAll, OPEN_EXISTING);
  BY_HANDLE_FILE_INFORMATION about{};
  exists_ = file != kNoFile && ::GetFileInformationByHandle(file, &about) != 0;
  close(file);
  if (!exists_) return;
  constexpr unsigned kHalf = 32;
  device_ = about.dwVolumeSerialNumber;
  number_ = std::uint64_t{about.nFileIndexHigh} << kHalf | about.nFileIndexLow;
}

OldFile::OldFile(const fs::path& path) {
  const OpenFile file = open(path, GENERIC_READ | GENERIC_WRITE, kShareAll, OPEN_EXISTING);
  if (file == kNoFile) raiseFailed("You cannot replace", path);
  close(file);  // open, it could not be replaced
}

OldFile::~OldFile() = default;

void OldFile::spoilIfNameless() const noexcept {}

PrivateFile::PrivateFile(const fs::path& target) {
  removeAbandoned(target);
  do {
    path_ = target.parent_path() / (startOfName(target) + digits());
    descriptor_ = open(path_, GENERIC_READ | GENERIC_WRITE, kShareAll, CREATE_NEW);
    if (descriptor_ == kNoFile && ::GetLastError() != ERROR_FILE_EXISTS) {
      raiseFailed("A file cannot be made as", target);
    }
  } while (descriptor_ == kNoFile);
}

PrivateFile::~PrivateFile() {
  close(descriptor_);
  if (!path_.empty()) removeWithSideFiles(path_);
}

void PrivateFile::sync() const {
  if (::FlushFileBuffers(descriptor_) == 0) raiseFailed("The disk does not keep", path_);
}

void PrivateFile::takeModeAndOwner(const OldFile& /*other*/) const {}

bool PrivateFile::rename(const fs::path& target) {
  if (::MoveFileExW(path_.c_str(), target.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
    raiseFailed("The company cannot be put in place (close it in other programs) as", target);
  }
  return placed(target);
}

bool PrivateFile::link(const fs::path& target) {
  if (::MoveFileExW(path_.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0) {
    return placed(target);
  }
  if (::GetLastError() == ERROR_ALREADY_EXISTS || ::GetLastError() == ERROR_FILE_EXISTS) {
    return false;
  }
  raiseFailed("The company cannot be put in place as", target);
}

bool PrivateFile::placed(const fs::path& /*target*/) {
  path_.clear();
  return true;
}

}  // namespace QuorHost
