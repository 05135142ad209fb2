#include "host/company/place/new_file.h"

#include <system_error>

#include "host/engines/paths.h"
#include "host/engines/store.h"
#include "platform/error.h"

namespace QuorHost {

namespace {

namespace fs = std::filesystem;
using QuorDataLib::ErrorNumber;

[[noreturn]] void refuse(const fs::path& target, const std::string& what) {
  QuorDataLib::raise(ErrorNumber::InvalidArgument, "'" + textOf(target) + "' " + what);
}

/// The file that `name` means, through links if it is one.
fs::path resolved(const std::string& name) {
  if (name.empty()) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument, "Name a file: the name given is empty");
  }
  const fs::path target = pathOf(name);
  std::error_code error;
  if (!fs::is_symlink(fs::symlink_status(target, error))) return fs::absolute(target);
  const fs::path file = fs::canonical(target, error);
  if (error)
    refuse(fs::absolute(target), "is a link that leads nowhere: remove it, or name a file");
  return file;
}

[[noreturn]] void refuseTaken(const fs::path& target) {
  QuorDataLib::raise(ErrorNumber::InvalidArgument,
                     "The file '" + textOf(target) +
                         "' exists already: choose another name, or have it replaced (--force)");
}

/// The place that `target` means, where a file can be put.
fs::path placeOf(const std::string& target, bool replace) {
  const fs::path path = resolved(target);
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) refuse(path, "is a folder: name a file for the company");
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    refuse(path, "is a device, a pipe or the like: name a file for the company");
  }
  if (fs::exists(status) && !replace) refuseTaken(path);
  const fs::path folder = path.parent_path();
  if (!fs::is_directory(folder, error)) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument,
                       "There is no folder '" + textOf(folder) + "': make it first");
  }
  return path;
}

/// A log that belongs to no company here would be taken for the new one's.
void requireNoStrangeLog(const fs::path& target) {
  for (const char* const suffix : {"-wal", "-journal"}) {
    const fs::path log = fs::path(target).concat(suffix);
    std::error_code error;
    const std::uintmax_t size = fs::file_size(log, error);
    if (error || size == 0) continue;
    refuse(log, "is the log of a company that is not there or cannot be read: move it away");
  }
}

}  // namespace

NewFile::NewFile(const std::string& target, bool replace)
    : target_(placeOf(target, replace)), replace_(replace), file_(target_) {}

bool NewFile::replaceTarget() {
  for (;;) {
    const FileIdentity before(target_);
    if (!before.exists()) return false;
    std::unique_ptr<SoleUse> use = takeAlone(textOf(target_));
    // Somebody else may have replaced it while this waited for it: then it is that one's turn.
    if (FileIdentity(target_) != before) continue;
    if (!use) requireNoStrangeLog(target_);
    const OldFile old(target_);
    file_.takeModeAndOwner(old);
    // Where it would be in the way of replacing it, so is everybody else's use.
    if (!kOpenFilesGiveWay) use.reset();
    // Whoever has opened the old file and waits for it must not go on with what nobody sees.
    if (file_.rename(target_)) old.spoilIfNameless();
    return true;
  }
}

void NewFile::putInPlace() {
  file_.sync();
  for (;;) {
    static_cast<void>(placeOf(textOf(target_), replace_));
    if (replace_ && replaceTarget()) return;
    requireNoStrangeLog(target_);
    if (file_.link(target_)) return;
    if (!replace_) refuseTaken(target_);
  }
}

}  // namespace QuorHost
