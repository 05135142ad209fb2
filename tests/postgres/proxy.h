// A way to the server that breaks off when it is told to.
#pragma once

#include <atomic>
#include <filesystem>
#include <map>
#include <string>
#include <thread>

namespace QuorHost::Testing {

/// Hands on what clients and the server say, over a socket beside the server's own, and counts
/// their messages; of rows, every sixteenth.
class Proxy {
 public:
  explicit Proxy(const std::filesystem::path& folder);
  ~Proxy();
  Proxy(const Proxy&) = delete;
  Proxy& operator=(const Proxy&) = delete;

  /// A company's connection that goes this way.
  [[nodiscard]] static std::string through(const std::string& company);

  /// Breaks the connection over which the message after the next `count` ones would go, in either
  /// direction; later connections are served.
  void cutAfter(int count) {
    passed_ = 0;
    cutAt_ = count;
  }
  /// Messages since then.
  [[nodiscard]] int passed() const { return passed_; }

 private:
  /// What one side has sent of a message that is not whole yet.
  struct Side {
    int other = -1;
    bool startup = false;  // the message without a kind comes first
    int rows = 0;
    std::string waiting;
  };

  void serve();
  void connect();
  /// Hands on what has come; false where the connection has ended or is to end.
  bool handOn(int from);
  void close(int either);

  std::string server_;
  int listening_ = -1;
  int stop_[2] = {-1, -1};
  std::map<int, Side> sides_;
  std::atomic<int> passed_ = 0;
  std::atomic<int> cutAt_ = -1;
  std::thread thread_;
};

}  // namespace QuorHost::Testing
