// Measures the project against its storage engine used by hand.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "bench/cases.h"

namespace {

/// Takes `--name=value` out of the arguments; `fallback` when it is not there.
std::string option(std::vector<char*>& arguments, std::string_view name, std::string fallback) {
  const std::string prefix = "--" + std::string(name) + "=";
  std::erase_if(arguments, [&](const char* argument) {
    if (!std::string_view(argument).starts_with(prefix)) return false;
    fallback = argument + prefix.size();
    return true;
  });
  return fallback;
}

}  // namespace

/// Arguments: `--companies=FOLDER` keeps the sample companies, `--scales="10 100"` are the sizes of
/// the large ones in thousands of invoices, `--server=CONNECTION` names a server that is measured,
/// too; all others are Google Benchmark's.
int main(int argc, char** argv) try {
  std::vector<char*> arguments(argv, argv + argc);
  const std::string folder = option(arguments, "companies", "build/bench");
  QuorBench::Companies companies(folder);
  const std::string server = option(arguments, "server", "");
  std::istringstream text(option(arguments, "scales", "10 100"));
  std::vector<int> scales;
  for (int scale = 0; text >> scale;) scales.push_back(scale);
  if (!text.eof()) {
    std::fputs("quoracc_bench: --scales takes thousands of invoices, separated by blanks\n",
               stderr);
    return 2;
  }

  QuorBench::Suite suite;
  QuorBench::addAging(suite, companies, scales);
  if (!scales.empty()) {
    QuorBench::addAccounts(suite, companies, std::ranges::max(scales));
    QuorBench::addTraps(suite, companies, std::ranges::max(scales));
    QuorBench::addLedger(suite, companies, std::ranges::max(scales));
    QuorBench::addProjects(suite, companies, std::ranges::max(scales));
  }
  QuorBench::addRecordsets(suite, companies);
  if (!server.empty() && !scales.empty()) {
#ifdef QUORACC_POSTGRES
    QuorBench::addServer(suite, companies, std::ranges::max(scales), server);
#else
    std::fputs("quoracc_bench: this program was built without a client library for servers\n",
               stderr);
    return 2;
#endif
  }
  QuorBench::addInventory(suite, folder);
  return suite.run(static_cast<int>(arguments.size()), arguments.data());
} catch (const std::exception& error) {
  std::fprintf(stderr, "quoracc_bench: %s\n", error.what());
  return 1;
}
