// The program `quoracc`: binds the command line to the process's own streams.
#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/console.h"
#include "cli/print/standard_output.h"
#include "cli/terminal.h"

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
  std::size_t width = QuorCli::terminalWidth();
  if (const char* const said = std::getenv("COLUMNS");  // NOLINT(concurrency-mt-unsafe)
      width == 0 && said != nullptr) {
    const std::string_view text(said);
    std::from_chars(text.data(), text.data() + text.size(), width);
  }
  return width == 0 ? 0 : std::clamp(width, kLeast, kMost);
}

int runOnStandardStreams(const std::vector<std::string>& arguments) {
  QuorCli::DescriptorBuffer buffer(QuorCli::kOutput);
  std::ostream out(&buffer);
  out.exceptions(std::ios::badbit);
  QuorCli::Console console{std::cin, out, std::cerr};
  console.outIsTerminal = QuorCli::isTerminal(QuorCli::kOutput);
  console.errIsTerminal = QuorCli::isTerminal(QuorCli::kErrors);
  console.width = lineWidth();
  console.colour = console.outIsTerminal && wantsColour();
  try {
    const int code = QuorCli::run(arguments, console);
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
  QuorCli::prepareStreams();
  std::ios::sync_with_stdio(false);
  return runOnStandardStreams(QuorCli::argumentsOf(count, arguments));
}
