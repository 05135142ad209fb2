// A PostgreSQL server of the test's own: in a temporary folder, without a network, and gone with
// the test, also with one that is killed.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>

namespace QuorHost::Testing {

class Cluster {
 public:
  /// The cluster of this process, which is started with the first use; null where no server is
  /// installed.
  static Cluster* instance();

  ~Cluster();
  Cluster(const Cluster&) = delete;
  Cluster& operator=(const Cluster&) = delete;

  /// The connection of a company in the schema `name`, which may need to be written with `%XX`.
  [[nodiscard]] std::string company(const std::string& name) const;

  /// Runs a statement beside all companies; gives the first value of its result.
  std::string run(const std::string& sql) const;

 private:
  explicit Cluster(const std::filesystem::path& programs);

  std::filesystem::path folder_;
  pid_t server_ = -1;
};

}  // namespace QuorHost::Testing
