// `call`: one member of the component, its arguments from the command line.
#include <CLI/App.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/result.h"
#include "cli/session.h"
#include "cli/words/invocation.h"
#include "cli/words/options.h"

namespace QuorCli {
namespace {

struct CallOptions {
  std::string path;
  std::vector<std::string> arguments;
  RunOptions run;
};

int call(const CallOptions& options, Console& console) {
  const Target target = findTarget(options.path);
  std::vector<QuorDataLib::Value> values = parseArguments(target, options.arguments);
  checkOptions(target, options.run);
  Session session(options.run, QuorHost::accessAllowed(options.run.company), console);
  printAnswer(callMember(target, std::move(values), options.run, session), options.run, console);
  session.finish();
  return kDone;
}

}  // namespace

void addCall(CLI::App& program, Action& action) {
  const auto options = std::make_shared<CallOptions>();
  CLI::App& command =
      *program.add_subcommand("call", "Call a member of the component and print its result");
  command.add_option("CLASS.MEMBER", options->path, "The method, or the property to read")
      ->option_text(" ")
      ->required();
  command
      .add_option("ARGUMENT", options->arguments,
                  "The member's arguments as NAME=VALUE; one that is\nleft out is 0, empty, no "
                  "date or false")
      ->option_text("...");
  addRunOptions(command, options->run, false);
  command.footer(
      "Without --company it is a dry run: every statement is answered with no rows and every\n"
      "parameter with 0. 'quoracc describe CLASS' shows the members and their arguments.");
  command.callback([&action, options] {
    action = [options](Console& console) { return call(*options, console); };
  });
}

}  // namespace QuorCli
