// Completion for fish: a line for each word, with the commands that it belongs to.
#include <string_view>

#include "cli/manual/command_tree.h"

namespace QuorCli {
namespace {

std::string inQuotes(std::string_view text) {
  std::string out = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') out += '\\';
    out += c;
  }
  return out + "'";
}

/// That the words so far are those of a command, and of none below it.
std::string condition(const CommandNode& node) {
  const std::string text = "__quoracc_at " + node.path;
  return inQuotes(text);
}

void append(std::string& script, const CommandNode& node) {
  const std::string start = "complete -c quoracc -n " + condition(node);
  for (const CommandNode& command : node.commands) {
    script += start + " -f -a " + command.name + " -d " + inQuotes(command.help) + "\n";
  }
  for (const Word& word : node.words) {
    std::string choices;
    for (const std::string& choice : word.choices) choices += (choices.empty() ? "" : " ") + choice;
    if (word.isOption) {
      script += start + " -l " + word.name.substr(2) + " -d " + inQuotes(word.help);
      if (!word.value.empty()) script += word.isFile ? " -r -F" : " -x";
      if (!choices.empty()) script += " -a " + inQuotes(choices);
      script += "\n";
    } else if (!choices.empty()) {
      script += start + " -f -a " + inQuotes(choices) + " -d " + inQuotes(word.help) + "\n";
    }
  }
  for (const CommandNode& command : node.commands) append(script, command);
}

void appendPaths(std::string& script, const CommandNode& node) {
  for (const CommandNode& command : node.commands) {
    script += " " + inQuotes(command.path);
    appendPaths(script, command);
  }
}

}  // namespace

std::string fishCompletion(const CommandNode& program) {
  std::string script =
      "# Completion of quoracc for fish, written by 'quoracc completion fish'.\n"
      "function __quoracc_at\n"
      "  set -l path quoracc\n"
      "  for word in (commandline -opc)[2..-1]\n"
      "    contains -- \"$path $word\"";
  appendPaths(script, program);
  script +=
      "; and set path \"$path $word\"\n"
      "  end\n"
      "  test \"$path\" = \"$argv\"\n"
      "end\n";
  append(script, program);
  return script;
}

}  // namespace QuorCli
