// The process's own streams and arguments, as the operating system has them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace QuorCli {

inline constexpr int kOutput = 1;
inline constexpr int kErrors = 2;

/// Sees that texts leave as they are written, and that a reader who goes away is an error of the
/// write, so that the company file is closed in order.
void prepareStreams();

[[nodiscard]] bool isTerminal(int stream);

/// Columns of the terminal that output goes to; 0 where it goes to none.
[[nodiscard]] std::size_t terminalWidth();

/// The words after the program's name, in UTF-8.
[[nodiscard]] std::vector<std::string> argumentsOf(int count, char** arguments);

}  // namespace QuorCli
