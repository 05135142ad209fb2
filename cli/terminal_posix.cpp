#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

#include "cli/terminal.h"

namespace QuorCli {

void prepareStreams() { std::signal(SIGPIPE, SIG_IGN); }

bool isTerminal(int stream) { return ::isatty(stream) == 1; }

std::size_t terminalWidth() {
  winsize terminal{};
  return ::ioctl(kOutput, TIOCGWINSZ, &terminal) == 0 ? terminal.ws_col : 0;
}

std::vector<std::string> argumentsOf(int count, char** arguments) {
  return {arguments + 1, arguments + count};
}

}  // namespace QuorCli
