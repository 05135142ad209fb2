// The program `quoracc`: binds the command line to the process's own streams.
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>

#include "cli/console.h"
#include "cli/print/standard_output.h"

namespace {

/// Colour is for terminals, and not for everyone.
bool wantsColour() {
  const char* const refused = std::getenv("NO_COLOR");  // NOLINT(concurrency-mt-unsafe)
  const char* const terminal = std::getenv("TERM");     // NOLINT(concurrency-mt-unsafe)
  const bool dumb = terminal != nullptr && std::string_view(terminal) == "dumb";
  return (refused == nullptr || *refused == '\0') && !dumb;
}

/// Columns of a line: the terminal's, or what the environment says.
std::size_t lineWidth() {
  constexpr std::size_t kLeast = 40;
  constexpr std::size_t kMost = 1000;
  std::size_t width = 0;
  winsize terminal{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &terminal) == 0) width = terminal.ws_col;
  if (const char* const said = std::getenv("COLUMNS");  // NOLINT(concurrency-mt-unsafe)
      width == 0 && said != nullptr) {
    const std::string_view text(said);
    std::from_chars(text.data(), text.data() + text.size(), width);
  }
  return width == 0 ? 0 : std::clamp(width, kLeast, kMost);
}

int runOnStandardStreams(int count, char** arguments) {
  QuorCli::DescriptorBuffer buffer(STDOUT_FILENO);
  std::ostream out(&buffer);
  out.exceptions(std::ios::badbit);
  QuorCli::Console console{std::cin, out, std::cerr};
  console.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
  console.errIsTerminal = ::isatty(STDERR_FILENO) == 1;
  console.width = lineWidth();
  console.colour = console.outIsTerminal && wantsColour();
  try {
    const int code = QuorCli::run({arguments + 1, arguments + count}, console);
    out.flush();
    return code;
  } catch (const QuorCli::OutputError& error) {
    if (error.readerIsGone()) return QuorCli::kDone;
    std::cerr << "quoracc: " << error.what() << '\n';
  } catch (const std::exception& error) {
    std::cerr << "quoracc: " << error.what() << '\n';
  }
  return QuorCli::kFailed;
}

}  // namespace

int main(int count, char** arguments) {
  // A reader that goes away is an error of the write, so that the company file is closed in order.
  std::signal(SIGPIPE, SIG_IGN);
  std::ios::sync_with_stdio(false);
  return runOnStandardStreams(count, arguments);
}
