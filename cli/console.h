// Where a command reads and writes, and what kind of place that is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace QuorCli {

/// What the program answers to the shell.
enum ExitCode : std::uint8_t { kDone = 0, kFailed = 1, kWrongUse = 2 };

/// The command line itself is wrong: exit 2, with the message on standard error.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The work failed for a reason that lies outside the component and the host: exit 1.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The streams of one run. The real program binds them to the standard ones, a test to strings.
struct Console {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  bool outIsTerminal = false;
  bool errIsTerminal = false;
  /// Whether `out` takes colour: a terminal, unless the environment says otherwise.
  bool colour = false;
  /// Columns that fit on a line of `out`; 0 where nobody has said.
  std::size_t width = 0;

  /// `text` in bold, in faint or in red letters where `out` takes colour, as it is elsewhere.
  [[nodiscard]] std::string bold(std::string_view text) const;
  [[nodiscard]] std::string faint(std::string_view text) const;
  [[nodiscard]] std::string alarming(std::string_view text) const;
};

/// Runs the command line `arguments` (without the program's name) and returns its exit code. Every
/// message about what went wrong goes to `console.err`; only a failing `console.out` raises.
int run(const std::vector<std::string>& arguments, Console& console);

}  // namespace QuorCli
