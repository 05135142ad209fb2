// The manual page, in the macros of `man`.
#include <string_view>

#include "cli/manual/command_tree.h"

namespace QuorCli {
namespace {

/// Text that the formatter takes as it stands.
std::string plain(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\') {
      out += "\\e";
    } else if (c == '-') {
      out += "\\-";
    } else {
      out += c;
    }
  }
  // A line that begins with a point or a quote would be a request.
  return out.starts_with('.') || out.starts_with('\'') ? "\\&" + out : out;
}

std::string bold(std::string_view text) { return "\\fB" + plain(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + plain(text) + "\\fR"; }

std::string synopsis(const CommandNode& node) {
  std::string text = bold(node.path);
  if (!node.commands.empty()) text += " " + italic("COMMAND");
  for (const Word& word : node.words) {
    if (!word.isOption) text += " " + italic(word.choices.empty() ? word.name : word.value);
  }
  return text + " [" + italic("OPTION") + "]...\n";
}

void appendWords(std::string& page, const CommandNode& node) {
  for (const Word& word : node.words) {
    page += ".TP\n" + (word.isOption ? bold(word.name) : italic(word.name));
    if (!word.value.empty() && (word.isOption || !word.choices.empty())) {
      page += " " + italic(word.value);
    }
    page += "\n" + plain(word.help) + "\n";
  }
}

void appendCommand(std::string& page, const CommandNode& node) {
  page += ".SS " + plain(node.path) + "\n" + synopsis(node) + ".PP\n" + plain(node.help) + ".\n";
  if (node.commands.empty()) appendWords(page, node);
  if (!node.footer.empty()) page += ".PP\n" + plain(node.footer) + "\n";
  for (const CommandNode& command : node.commands) appendCommand(page, command);
}

}  // namespace

std::string manualPage(const CommandNode& program, const std::string& version) {
  std::string page = ".TH QUORACC 1 \"\" \"" + plain(version) + "\" \"User Commands\"\n";
  page += ".SH NAME\nquoracc \\- run the accounting queries and calculations of QuorAccQueries\n";
  page += ".SH SYNOPSIS\n" + synopsis(program);
  page += ".SH DESCRIPTION\n" + plain(program.help) + "\n";
  page += ".SH OPTIONS\n";
  appendWords(page, program);
  page += ".SH COMMANDS\n";
  for (const CommandNode& command : program.commands) appendCommand(page, command);
  page +=
      ".SH EXIT STATUS\n"
      ".TP\n0\nDone.\n"
      ".TP\n1\nThe work failed; a message on standard error says what to do.\n"
      ".TP\n2\nThe command line is wrong; the message says what would be right.\n"
      ".SH ENVIRONMENT\n"
      ".TP\nCOLUMNS\nThe width of reports where they go to no terminal.\n"
      ".TP\nNO_COLOR\nNo colour, whatever its value.\n";
  return page;
}

}  // namespace QuorCli
