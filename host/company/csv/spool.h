// An input that has been read to its end.
#pragma once

#include <fstream>
#include <istream>
#include <sstream>

namespace QuorHost::Csv {

/// All that an input had to say, so that whoever reads it here waits for nobody. It rests in memory
/// while it is small, and otherwise in a file that has no name.
class Spool {
 public:
  /// Reads the input to its end. Raises 5 when it cannot be read or there is no room for it.
  explicit Spool(std::istream& input);

  [[nodiscard]] std::istream& text() {
    if (file_.is_open()) return file_;
    return memory_;
  }

 private:
  std::stringstream memory_;
  std::fstream file_;
};

}  // namespace QuorHost::Csv
