// Files in the making, and files that they replace, as the operating system sees them.
#pragma once

#include <cstdint>
#include <filesystem>

namespace QuorHost {

#ifdef _WIN32
using OpenFile = void*;
inline constexpr OpenFile kNoFile = nullptr;
/// Whether a file can be replaced while somebody has it open, who then goes on with the old one.
inline constexpr bool kOpenFilesGiveWay = false;
#else
using OpenFile = int;
inline constexpr OpenFile kNoFile = -1;
inline constexpr bool kOpenFilesGiveWay = true;
#endif

/// Whether a path and another, or the same at another time, name one file.
class FileIdentity {
 public:
  /// Of what `path` names itself, without following links; of no file where there is none.
  explicit FileIdentity(const std::filesystem::path& path);
  [[nodiscard]] bool exists() const noexcept { return exists_; }
  bool operator==(const FileIdentity&) const = default;

 private:
  bool exists_ = false;
  std::uint64_t device_ = 0;
  std::uint64_t number_ = 0;
};

/// A file that is about to be replaced, kept open. Nobody else in this process may have locked it:
/// closing it would drop the lock.
class OldFile {
 public:
  /// Raises 5 for a file that may not be written.
  explicit OldFile(const std::filesystem::path& path);
  ~OldFile();  // NOLINT(performance-trivially-destructible): one system has something to close
  OldFile(const OldFile&) = delete;
  OldFile& operator=(const OldFile&) = delete;

  /// Makes the file unreadable as a database when no name leads to it any longer.
  void spoilIfNameless() const noexcept;

 private:
  friend class PrivateFile;
  OpenFile descriptor_ = kNoFile;
};

/// An empty file of a name of its own, which only its owner may read or write. It is removed at the
/// end, unless it was given another name.
class PrivateFile {
 public:
  /// Makes the file beside `target`, under a name that no other process on any machine chooses, and
  /// removes those of the same target whose makers were ended. Raises 5 when the folder takes no
  /// file.
  explicit PrivateFile(const std::filesystem::path& target);
  ~PrivateFile();
  PrivateFile(const PrivateFile&) = delete;
  PrivateFile& operator=(const PrivateFile&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

  /// Forces what was written onto the disk. This and what follows raise 5 when it fails.
  void sync() const;
  /// Gives the file the mode and the owner of another.
  void takeModeAndOwner(const OldFile& other) const;
  /// Gives the file the name `target`, over what has that name, and forces the name onto the disk;
  /// false when it cannot be told whether that has worked.
  bool rename(const std::filesystem::path& target);
  /// The same where nothing may have that name; false when something has.
  [[nodiscard]] bool link(const std::filesystem::path& target);

 private:
  bool placed(const std::filesystem::path& target);

  std::filesystem::path path_;
  OpenFile descriptor_ = kNoFile;
};

}  // namespace QuorHost
