// The options that `call`, `sql` and `aging` share.
#pragma once

#include <CLI/App.hpp>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/print/row_printer.h"
#include "host/application/host.h"
#include "host/sql/types.h"

namespace QuorCli {

/// How one run of the component is set up and printed.
struct RunOptions {
  /// The company file or a connection; empty for a dry run.
  std::string company;
  /// The dialect asked for; nothing for the company's own.
  std::optional<QuorHost::Sql::Dialect> dialect;
  /// `KEY=VALUE` texts of `--set`.
  std::vector<std::string> foundation;
  bool cache = false;
  bool defaultConnection = false;
  QuorHost::OnError onError = QuorHost::OnError::Raise;
  Format format = Format::Table;
  std::optional<std::int64_t> limit;
  /// Where the trace goes: a file, `-` for standard error, empty for none.
  std::string trace;
};

/// Adds the shared options to `command`; `options` must outlive it.
void addRunOptions(CLI::App& command, RunOptions& options, bool companyRequired);

/// Adds an option (or, without dashes, a positional) whose value is one of some words, each with
/// what it stands for; `value` must outlive the command.
template <class T>
CLI::Option* addChoice(CLI::App& command, const std::string& name, T& value,
                       std::vector<std::pair<std::string, T>> words, const std::string& help) {
  std::string list;
  for (const auto& [word, meaning] : words) list += (list.empty() ? "" : "|") + word;
  const CLI::callback_t choose = [&value, words = std::move(words), name,
                                  list](const CLI::results_t& given) {
    for (const auto& [word, meaning] : words) {
      if (word == given.front()) {
        value = meaning;
        return true;
      }
    }
    throw CLI::ValidationError(name, "'" + given.front() + "' is none of " + list);
  };
  return command.add_option(name, choose, help)->type_name(list);
}

/// A check for options that take a whole number from `least` to `most`.
[[nodiscard]] std::function<std::string(const std::string&)> wholeNumber(std::uint64_t least,
                                                                         std::uint64_t most);

/// The `KEY=VALUE` texts of `--set` by key. Raises `UsageError` for a text without `=` and for a
/// key given twice, matched without regard to case.
[[nodiscard]] std::map<std::string, std::string> foundationValues(
    const std::vector<std::string>& texts);

/// An argument of the command line as it must be handed to the parser, which would otherwise take
/// `[a,b]` for a list and `++` for the end of a command; `plainArgument` is its inverse.
[[nodiscard]] std::string guardedArgument(std::string argument);
[[nodiscard]] std::string plainArgument(std::string argument);

}  // namespace QuorCli
