#include "cli/manual/command_tree.h"

#include <algorithm>

namespace QuorCli {
namespace {

/// One line of what may stand on several.
std::string oneLine(std::string text) {
  std::ranges::replace(text, '\n', ' ');
  return text;
}

std::vector<std::string> choicesOf(const std::string& value) {
  std::vector<std::string> choices;
  const bool isList = value.find('|') != std::string::npos &&
                      value.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos;
  for (std::size_t start = 0; isList && start <= value.size();) {
    const std::size_t end = std::min(value.find('|', start), value.size());
    choices.push_back(value.substr(start, end - start));
    start = end + 1;
  }
  return choices;
}

Word wordOf(const CLI::Option& option) {
  Word word;
  word.isOption = !option.get_positional();
  word.name = word.isOption ? "--" + option.get_lnames().front() : option.get_name(true);
  if (option.get_expected_max() > 0 || !word.isOption) word.value = option.get_type_name();
  word.choices = choicesOf(word.value);
  word.isFile =
      word.value == "FILE" || word.name == "FILE" || word.name == "CSV" || word.name == "TO";
  word.help = oneLine(option.get_description());
  return word;
}

CommandNode nodeOf(const CLI::App& app, const std::string& before) {
  CommandNode node;
  node.name = app.get_name();
  node.path = before + node.name;
  node.help = oneLine(app.get_description());
  node.footer = oneLine(app.get_footer());
  for (const CLI::Option* const option : app.get_options()) node.words.push_back(wordOf(*option));
  for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; })) {
    node.commands.push_back(nodeOf(*command, node.path + " "));
  }
  return node;
}

}  // namespace

CommandNode commandTree(const CLI::App& program) { return nodeOf(program, ""); }

}  // namespace QuorCli
