// Completion for zsh: a function for each command.
#include <string_view>

#include "cli/manual/command_tree.h"

namespace QuorCli {
namespace {

/// Text within single quotes in which `[`, `]` and `:` have no meaning of their own.
std::string inQuotes(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '\'') {
      out += "'\\''";
    } else {
      if (c == '[' || c == ']' || c == ':' || c == '\\') out += '\\';
      out += c;
    }
  }
  return out;
}

std::string functionOf(const CommandNode& node) {
  std::string name = "_" + node.path;
  for (char& c : name) c = c == ' ' ? '_' : c;
  return name;
}

std::string actionOf(const Word& word) {
  if (word.isFile) return "_files";
  if (word.choices.empty()) return " ";
  std::string list = "(";
  for (const std::string& choice : word.choices) list += (list.size() > 1 ? " " : "") + choice;
  return list + ")";
}

void appendFunction(std::string& script, const CommandNode& node) {
  script += functionOf(node) + "() {\n  local context curcontext=\"$curcontext\" state line\n";
  script += "  _arguments -C";
  for (const Word& word : node.words) {
    script += " \\\n    '";
    if (word.isOption) {
      script += word.name + "[" + inQuotes(word.help) + "]";
      if (!word.value.empty()) script += ":" + inQuotes(word.value) + ":" + actionOf(word);
    } else {
      script += (word.name == "VALUE" || word.name == "ARGUMENT" ? "*:" : ":") +
                inQuotes(word.name) + ":" + actionOf(word);
    }
    script += "'";
  }
  if (!node.commands.empty()) {
    script += " \\\n    '1:command:((";
    for (const CommandNode& command : node.commands) {
      script += " " + command.name + "\\:\"" + inQuotes(command.help) + "\"";
    }
    script += " ))' \\\n    '*::argument:->rest'\n  case $line[1] in\n";
    for (const CommandNode& command : node.commands) {
      script += "    " + command.name + ") " + functionOf(command) + " ;;\n";
    }
    script += "  esac";
  }
  script += "\n}\n\n";
  for (const CommandNode& command : node.commands) appendFunction(script, command);
}

}  // namespace

std::string zshCompletion(const CommandNode& program) {
  std::string script =
      "#compdef quoracc\n"
      "# Completion of quoracc for zsh, written by 'quoracc completion zsh'.\n\n";
  appendFunction(script, program);
  return script + "_quoracc \"$@\"\n";
}

}  // namespace QuorCli
