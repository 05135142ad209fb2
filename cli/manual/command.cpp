// `manual` and `completion`: what the program says of itself, for `man` and for shells.
#include <CLI/App.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/manual/command_tree.h"
#include "cli/words/options.h"

namespace QuorCli {

void addManual(CLI::App& program, Action& action) {
  CLI::App& manual = *program.add_subcommand("manual", "Print the manual page, for man");
  manual.footer("'quoracc manual | man -l -' shows it.");
  manual.callback([&program, &action] {
    action = [&program](Console& console) {
      console.out << manualPage(commandTree(program), program.version());
      return kDone;
    };
  });

  using Writer = std::string (*)(const CommandNode&);
  const auto writer = std::make_shared<Writer>(nullptr);
  CLI::App& completion =
      *program.add_subcommand("completion", "Print what a shell loads to complete commands");
  addChoice<Writer>(completion, "SHELL", *writer,
                    {{"bash", bashCompletion}, {"zsh", zshCompletion}, {"fish", fishCompletion}},
                    "bash, zsh or fish")
      ->option_text(" ")
      ->required();
  completion.footer(
      "bash: source <(quoracc completion bash)\n"
      "zsh:  quoracc completion zsh >\"${fpath[1]}/_quoracc\"\n"
      "fish: quoracc completion fish >~/.config/fish/completions/quoracc.fish");
  completion.callback([&program, &action, writer] {
    action = [&program, writer](Console& console) {
      console.out << (*writer)(commandTree(program));
      return kDone;
    };
  });
}

}  // namespace QuorCli
