#include <fcntl.h>
#include <io.h>
#include <windows.h>
// After it, since it stands on its types.
#include <shellapi.h>

#include <filesystem>

#include "cli/terminal.h"
#include "host/engines/paths.h"

namespace QuorCli {

void prepareStreams() {
  ::SetConsoleOutputCP(CP_UTF8);
  for (const int stream : {0, kOutput, kErrors}) ::_setmode(stream, _O_BINARY);
}

bool isTerminal(int stream) { return ::_isatty(stream) != 0; }

std::size_t terminalWidth() {
  CONSOLE_SCREEN_BUFFER_INFO console{};
  if (::GetConsoleScreenBufferInfo(::GetStdHandle(STD_OUTPUT_HANDLE), &console) == 0) return 0;
  return static_cast<std::size_t>(console.srWindow.Right - console.srWindow.Left) + 1;
}

std::vector<std::string> argumentsOf(int /*count*/, char** /*arguments*/) {
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(QuorHost::textOf(words[i]));
  ::LocalFree(static_cast<void*>(words));
  return arguments;
}

}  // namespace QuorCli
