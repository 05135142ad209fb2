// The program itself: exit codes as the shell sees them, its streams, and readers that go away.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/cli/temporary_path.h"

namespace {

struct Ended {
  int code = -1;
  std::string out;
};

/// Runs a line of shell, in which `$Q` is the program and `$F` the company file of the tests.
Ended shell(const std::string& line) {
  const std::string script =
      "Q='" QUORACC_PROGRAM "'; F='" + temporaryPath("binary") + "'; set -o pipefail; " + line;
  ::setenv("SCRIPT", script.c_str(), 1);  // NOLINT(concurrency-mt-unsafe): one thread
  FILE* const pipe = ::popen("bash -c \"$SCRIPT\"", "r");  // NOLINT(cert-env33-c): a fixed command
  Ended ended;
  std::array<char, 4096> part{};
  while (const std::size_t size = std::fread(part.data(), 1, part.size(), pipe)) {
    ended.out.append(part.data(), size);
  }
  const int status = ::pclose(pipe);
  if (WIFEXITED(status)) ended.code = WEXITSTATUS(status);
  return ended;
}

class Binary : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(shell("$Q company create \"$F\" --sample --force").code, 0);
  }
  static void TearDownTestSuite() { shell("rm -f \"$F\""); }
};

TEST_F(Binary, exitsAsTheShellExpects) {
  EXPECT_EQ(shell("$Q describe >/dev/null").code, 0);
  EXPECT_EQ(shell("$Q company info \"$F\" >/dev/null").code, 0);
  EXPECT_EQ(shell("$Q company info \"$F-missing\" 2>/dev/null").code, 1);
  EXPECT_EQ(shell("$Q company info 2>/dev/null").code, 2);
  EXPECT_EQ(shell("$Q company create \"$F\" 2>/dev/null").code, 1);
}

TEST_F(Binary, endsQuietlyWhenItsReaderGoesAway) {
  const Ended ended =
      shell("$Q sql 'SELECT * FROM GLDet' --company \"$F\" --format csv 2>&1 | head -n 1 | wc -l");
  EXPECT_EQ(ended.code, 0);
  EXPECT_EQ(ended.out, "1\n");
  EXPECT_EQ(shell("$Q sql 'SELECT * FROM GLDet' --company \"$F\" 2>&1 >/dev/full | cat").out,
            "quoracc: the output cannot be written: No space left on device\n");
  EXPECT_EQ(shell("$Q sql 'SELECT * FROM GLDet' --company \"$F\" >/dev/full 2>/dev/null").code, 1);
}

TEST_F(Binary, keepsColourAndProgressForTerminals) {
  EXPECT_EQ(shell("$Q aging customers --company \"$F\" | grep -c $'\\x1b'").out, "0\n");
  EXPECT_EQ(
      shell("$Q company create \"$F-2\" --sample --force 2>&1 >/dev/null; rm -f \"$F-2\"").out, "");
}

TEST_F(Binary, fitsReportsToTheWidthSaid) {
  const std::string longest = " $Q aging customers --company \"$F\" | wc -L";
  const int natural = std::stoi(shell("COLUMNS=200" + longest).out);
  EXPECT_LE(std::stoi(shell("COLUMNS=60" + longest).out), 60);
  EXPECT_GT(natural, 60);
  EXPECT_LE(natural, 200);
}

TEST_F(Binary, completesItsCommandsInBash) {
  const auto completed = [](const std::string& words) {
    return shell("source <($Q completion bash); COMP_WORDS=(quoracc " + words +
                 "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _quoracc; echo \"${COMPREPLY[*]}\"")
        .out;
  };
  EXPECT_EQ(completed("comp"), "company completion\n");
  EXPECT_EQ(completed("company cr"), "create\n");
  EXPECT_EQ(completed("company create books --sa"), "--sample\n");
  EXPECT_EQ(completed("aging cu"), "customers\n");
  EXPECT_EQ(completed("aging customers --engine d"), "desktop\n");
  EXPECT_EQ(completed("aging customers --as-of --a"), "\n");
}

TEST_F(Binary, everyFormatHasTheSameRows) {
  const std::string query = "$Q sql 'SELECT InInvoiId FROM InvoiHdr' --company \"$F\" --format ";
  EXPECT_EQ(shell(query + "csv | tail -n +2 | tr -d '\\r'").out,
            shell(query + "jsonl | tr -dc '0-9\\n'").out);
  EXPECT_EQ(shell(query + "csv --limit 7 | wc -l").out, "8\n");
}

}  // namespace
