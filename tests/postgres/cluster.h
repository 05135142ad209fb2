// A PostgreSQL server of the test's own: in a temporary folder, without a network, and gone with
// the test, also with one that is killed.
#pragma once

#include <libpq-fe.h>
#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

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
  /// The same for a role, whose name may need to be written so, too.
  [[nodiscard]] std::string companyAs(const std::string& role, const std::string& name) const;

  /// Runs statements beside all companies; gives the first value of the last one's result, or what
  /// the server has against them.
  std::string run(const std::string& sql) const;

  /// Ends the server at once, as a crash would; begins it anew.
  void stop();
  void start();

  /// Where the server's socket is.
  [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
  /// Runs one of the server's programs (`pg_basebackup`), or another one by its path, as the
  /// server's own user, and does not wait for it. It ends with this process.
  [[nodiscard]] pid_t launch(std::vector<std::string> words) const;

 private:
  struct Finish {
    void operator()(PGconn* connection) const noexcept { PQfinish(connection); }
  };

  explicit Cluster(const std::filesystem::path& programs);

  std::filesystem::path programs_;
  std::filesystem::path folder_;
  pid_t server_ = -1;
  mutable std::unique_ptr<PGconn, Finish> beside_;
};

}  // namespace QuorHost::Testing
