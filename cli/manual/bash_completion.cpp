// Completion for bash: one function that finds the command it is in and offers its words.
#include "cli/manual/command_tree.h"

namespace QuorCli {
namespace {

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

/// The commands' names, so that the function can follow the words to the command it is in.
void appendSteps(std::string& script, const CommandNode& node) {
  for (const CommandNode& command : node.commands) {
    script += "      '" + command.path + "') path=\"$path $word\" ;;\n";
    appendSteps(script, command);
  }
}

/// What follows an option that takes a value.
void appendValues(std::string& script, const CommandNode& node) {
  for (const Word& word : node.words) {
    if (!word.isOption || word.value.empty()) continue;
    script += "    '" + node.path + " " + word.name + "')\n";
    if (!word.choices.empty()) {
      script += "      COMPREPLY=($(compgen -W '" + joined(word.choices) + "' -- \"$current\"))\n";
    } else if (!word.isFile) {
      script += "      compopt +o default 2>/dev/null\n";
    }
    script += "      return ;;\n";
  }
  for (const CommandNode& command : node.commands) appendValues(script, command);
}

/// The words of each command; files, where an argument is one, are the shell's own default.
void appendWords(std::string& script, const CommandNode& node) {
  std::vector<std::string> words;
  words.reserve(node.commands.size() + node.words.size());
  for (const CommandNode& command : node.commands) words.push_back(command.name);
  for (const Word& word : node.words) {
    if (word.isOption) words.push_back(word.name);
    words.insert(words.end(), word.isOption ? word.choices.end() : word.choices.begin(),
                 word.choices.end());
  }
  script += "    '" + node.path + "') words='" + joined(words) + "' ;;\n";
  for (const CommandNode& command : node.commands) appendWords(script, command);
}

}  // namespace

std::string bashCompletion(const CommandNode& program) {
  std::string script =
      "# Completion of quoracc for bash, written by 'quoracc completion bash'.\n"
      "_quoracc() {\n"
      "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}\n"
      "  local path=quoracc words= word index\n"
      "  COMPREPLY=()\n"
      "  for ((index = 1; index < COMP_CWORD; ++index)); do\n"
      "    word=${COMP_WORDS[index]}\n"
      "    case \"$path $word\" in\n";
  appendSteps(script, program);
  script +=
      "    esac\n"
      "  done\n"
      "  case \"$path $previous\" in\n";
  appendValues(script, program);
  script +=
      "  esac\n"
      "  case $path in\n";
  appendWords(script, program);
  script +=
      "  esac\n"
      "  COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
      "}\n"
      "complete -o default -F _quoracc quoracc\n";
  return script;
}

}  // namespace QuorCli
