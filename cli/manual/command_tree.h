// The program's commands as data, read off its own parser: what the manual and the shells'
// completions are made of, so that neither can say anything else than the help does.
#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

namespace QuorCli {

/// An option or an argument of a command.
struct Word {
  /// "--limit", or the name of an argument.
  std::string name;
  bool isOption = false;
  /// What follows an option ("FILE", "desktop|server"); empty for a flag.
  std::string value;
  /// The words that it can be; empty where it can be anything.
  std::vector<std::string> choices;
  bool isFile = false;
  std::string help;
};

struct CommandNode {
  /// "create"; the root has the program's name.
  std::string name;
  /// All words up to it: "quoracc company create".
  std::string path;
  std::string help;
  std::string footer;
  std::vector<Word> words;
  std::vector<CommandNode> commands;
};

[[nodiscard]] CommandNode commandTree(const CLI::App& program);

/// The manual page, for `man`.
[[nodiscard]] std::string manualPage(const CommandNode& program, const std::string& version);

/// What the shells load to complete the program's words.
[[nodiscard]] std::string bashCompletion(const CommandNode& program);
[[nodiscard]] std::string zshCompletion(const CommandNode& program);
[[nodiscard]] std::string fishCompletion(const CommandNode& program);

}  // namespace QuorCli
