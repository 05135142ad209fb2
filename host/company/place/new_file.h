// A file that is made beside its place and then takes it, whole.
#pragma once

#include <filesystem>
#include <string>

#include "host/company/place/private_file.h"
#include "host/engines/paths.h"

namespace QuorHost {

/// What is made in it appears under the target's name complete or not at all; what was there before
/// stays until then, with its log. Where the target is a link, the file that it leads to is meant.
class NewFile {
 public:
  /// Makes an empty file beside `target` that only its owner may read or write. First removes what
  /// processes that were ended have left of the same target. Raises 5 when the target is neither
  /// free nor, with `replace`, a regular file.
  NewFile(const std::string& target, bool replace);

  /// Where the file is made.
  [[nodiscard]] std::string path() const { return textOf(file_.path()); }

  /// Forces the file onto the disk and gives it the target's name. One that is replaced leaves it
  /// mode and owner, and has to be in nobody else's use: its log is put back into it first. Raises
  /// 5 for a target that has come into use or into being meanwhile, and then leaves it as it is.
  void putInPlace();

 private:
  /// Replaces the target; false when there is nothing to replace.
  bool replaceTarget();

  std::filesystem::path target_;
  bool replace_;
  PrivateFile file_;
};

}  // namespace QuorHost
