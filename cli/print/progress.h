// Long work: a bar for the one who waits, and an orderly end for the one who does not.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "cli/console.h"

namespace QuorCli {

/// A bar on standard error, drawn only where that is a terminal and removed at its end.
class ProgressBar {
 public:
  explicit ProgressBar(Console& console) : console_(console) {}
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Draws the bar when it looks different from the last time. `done` and `total` are in any unit;
  /// a total of 0 stands for work of unknown length.
  void show(std::string_view what, std::int64_t done, std::int64_t total);

 private:
  Console& console_;
  std::string shown_;
};

/// While it lives, an interrupt (Ctrl-C) or a request to end does not kill the program: it is seen
/// by `check`, so that the work can clean up behind itself. One at a time.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  /// Raises `Failure` once a signal has come.
  static void check();

 private:
  /// What was done about the signals before.
  struct Before;
  std::unique_ptr<Before> before_;
};

}  // namespace QuorCli
