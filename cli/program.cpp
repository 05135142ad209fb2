// The program: parsing, running the chosen command, and turning errors into messages and exit
// codes.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/print/standard_output.h"
#include "cli/words/names.h"
#include "cli/words/options.h"
#include "platform/error.h"

namespace QuorCli {
namespace {

constexpr std::string_view kBold = "\x1b[1m";
constexpr std::string_view kFaint = "\x1b[2m";
constexpr std::string_view kRed = "\x1b[1;31m";
constexpr std::string_view kPlain = "\x1b[0m";

std::string styled(bool colour, std::string_view style, std::string_view text) {
  std::string out;
  if (colour) out += style;
  out += text;
  if (colour) out += kPlain;
  return out;
}

/// A command of the program and its words, from the program's name on.
struct Command {
  const CLI::App* app;
  std::string words;
};

/// The command that the parser was in.
Command commandOf(const CLI::App& program) {
  Command command{&program, program.get_name()};
  while (!command.app->get_subcommands().empty()) {
    command.app = command.app->get_subcommands().front();
    command.words += " " + command.app->get_name();
  }
  return command;
}

/// What is wrong with a command line that has words which nothing takes, or too few of them.
std::string explain(const Command& command, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = command.app->remaining();
  const auto commands = command.app->get_subcommands([](const CLI::App*) { return true; });
  if (unknown.empty()) {
    return commands.empty() ? error.what() : "say which command of '" + command.words + "'";
  }
  const std::string word = plainArgument(unknown.front());
  std::vector<std::string> names;
  if (word.starts_with('-')) {
    for (const CLI::Option* const option : command.app->get_options()) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    return "there is no option '" + word + "'." + suggestion(word, {names.begin(), names.end()});
  }
  if (commands.empty()) return "'" + word + "' is one word too many.";
  for (const CLI::App* const subcommand : commands) names.push_back(subcommand->get_name());
  return "there is no command '" + word + "'." + suggestion(word, {names.begin(), names.end()});
}

std::string messageOf(const Command& command, const CLI::ParseError& error) {
  const bool structure = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr ||
                         dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
  return structure ? explain(command, error) : error.what();
}

/// Parses the command line. Returns an exit code when there is nothing more to do: help, version,
/// or a command line that is wrong.
std::optional<int> parse(CLI::App& program, const std::vector<std::string>& arguments,
                         Console& console) {
  std::vector<std::string> reversed;  // the parser takes its arguments from the back
  std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed),
                 guardedArgument);
  try {
    program.parse(reversed);
    return std::nullopt;
  } catch (const CLI::Success& asked) {
    return program.exit(asked, console.out, console.err);
  } catch (const CLI::ParseError& error) {
    const Command command = commandOf(program);
    console.err << "quoracc: " << messageOf(command, error) << "\nTry '" << command.words
                << " --help'.\n";
    return kWrongUse;
  }
}

void report(const QuorDataLib::Error& error, Console& console) {
  console.err << "quoracc: " << error.description();
  if (error.source().find('.') != std::string::npos) console.err << "\n  in " << error.source();
  console.err << '\n';
}

int perform(const Action& action, Console& console) {
  try {
    return action(console);
  } catch (const UsageError& error) {
    console.err << "quoracc: " << error.what() << '\n';
    return kWrongUse;
  } catch (const OutputError&) {
    throw;
  } catch (const std::exception&) {
    report(QuorDataLib::currentError(), console);
  }
  return kFailed;
}

}  // namespace

std::string Console::bold(std::string_view text) const { return styled(colour, kBold, text); }
std::string Console::faint(std::string_view text) const { return styled(colour, kFaint, text); }
std::string Console::alarming(std::string_view text) const { return styled(colour, kRed, text); }

int run(const std::vector<std::string>& arguments, Console& console) {
  CLI::App program("Runs the accounting queries and calculations of QuorAccQueries.", "quoracc");
  program.set_version_flag("--version", "quoracc " QUORACC_VERSION);
  program.require_subcommand(1);
  program.get_formatter()->column_width(30);
  Action action;
  addCompany(program, action);
  addDescribe(program, action);
  addCall(program, action);
  addSql(program, action);
  addAging(program, action);
  addLedger(program, action);
  addProjects(program, action);
  addDue(program, action);
  addStock(program, action);
  addManual(program, action);
  addStockReport(program, action);
  program.footer("'quoracc COMMAND --help' tells more about a command.");
  if (const auto done = parse(program, arguments, console)) return *done;
  return perform(action, console);
}

}  // namespace QuorCli
