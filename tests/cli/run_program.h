// Runs the program's command line on strings.
#pragma once

#include <string>
#include <vector>

#include "tests/cli/rows_in_memory.h"

namespace QuorTest {

struct Outcome {
  int code = 0;
  std::string out;
  std::string err;
};

inline Outcome runProgram(const std::vector<std::string>& arguments,
                          const std::string& input = {}) {
  TextConsole text;
  text.in.str(input);
  const int code = QuorCli::run(arguments, text.console);
  return {code, text.out.str(), text.err.str()};
}

}  // namespace QuorTest
