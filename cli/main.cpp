// The program `quoracc`: binds the command line to the process's own streams.
#include <unistd.h>

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

int runOnStandardStreams(int count, char** arguments) {
  QuorCli::DescriptorBuffer buffer(STDOUT_FILENO);
  std::ostream out(&buffer);
  out.exceptions(std::ios::badbit);
  QuorCli::Console console{std::cin, out, std::cerr};
  console.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
  console.errIsTerminal = ::isatty(STDERR_FILENO) == 1;
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
