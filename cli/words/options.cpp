#include "cli/words/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "cli/words/names.h"

namespace QuorCli {
namespace {

using QuorHost::OnError;
using QuorHost::Sql::Dialect;

/// No argument of a command line can hold this character, so it marks those that are guarded.
constexpr char kGuard = '\0';

}  // namespace

void addRunOptions(CLI::App& command, RunOptions& options, bool companyRequired) {
  command
      .add_option("--company", options.company,
                  "The company file, or a connection to a "
                  "server\n(postgresql://user@host/db?schema=NAME, odbc:DSN=NAME;dialect=server)")
      ->type_name("FILE")
      ->required(companyRequired);
  addChoice<std::optional<Dialect>>(
      command, "--engine", options.dialect,
      {{"desktop", Dialect::Desktop}, {"server", Dialect::Server}},
      "The SQL dialect that the company presents [server, or that of an\nodbc: connection]");
  command
      .add_option("--set", options.foundation, "A foundation value for this run; may be repeated")
      ->type_name("KEY=VALUE")
      ->allow_extra_args(false);
  command.add_flag("--cache", options.cache, "Set CacheRecordsets before the call");
  command.add_flag("--default-connection", options.defaultConnection,
                   "Use the application's default connection");
  addChoice(command, "--on-error", options.onError,
            {{"raise", OnError::Raise},
             {"leave", OnError::Leave},
             {"continue", OnError::Continue},
             {"retry", OnError::Retry}},
            "What the host's error service answers [raise]");
  addChoice(command, "--format", options.format,
            {{"table", Format::Table},
             {"csv", Format::Csv},
             {"json", Format::Json},
             {"jsonl", Format::Jsonl}},
            "How rows are printed [table]");
  command.add_option("--limit", options.limit, "Print at most N rows")
      ->type_name("N")
      ->check(wholeNumber(0, std::numeric_limits<std::int64_t>::max()));
  command
      .add_option(
          "--trace", options.trace,
          "Write what crosses to the data library, one\nJSON object a line; - is standard error")
      ->type_name("FILE");
}

std::function<std::string(const std::string&)> wholeNumber(std::uint64_t least,
                                                           std::uint64_t most) {
  return [least, most](const std::string& text) -> std::string {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc() && stop == end && number >= least && number <= most) return {};
    return "'" + text + "' is no whole number from " + std::to_string(least) + " to " +
           std::to_string(most);
  };
}

std::map<std::string, std::string> foundationValues(const std::vector<std::string>& texts) {
  std::map<std::string, std::string> values;
  for (const std::string& text : texts) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
      throw UsageError("--set wants KEY=VALUE, not '" + text + "'");
    }
    std::string key = text.substr(0, equals);
    const auto isKey = [&](const auto& entry) { return sameName(entry.first, key); };
    if (std::ranges::any_of(values, isKey)) throw UsageError("--set " + key + " is given twice");
    values.emplace(std::move(key), text.substr(equals + 1));
  }
  return values;
}

std::string guardedArgument(std::string argument) {
  const bool list = argument.starts_with('[') && argument.ends_with(']');
  if (list || argument == "++") argument += kGuard;
  return argument;
}

std::string plainArgument(std::string argument) {
  if (argument.ends_with(kGuard)) argument.pop_back();
  return argument;
}

}  // namespace QuorCli
