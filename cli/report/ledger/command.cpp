// `ledger`: the reports that accountants open first.
#include <CLI/App.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/report/ledger/pages.h"
#include "cli/report/period.h"
#include "cli/words/options.h"

namespace QuorCli {

void addLedger(CLI::App& program, Action& action) {
  const auto options = std::make_shared<LedgerOptions>();
  CLI::App& ledger = *program.add_subcommand("ledger", "Print reports of the general ledger");
  ledger.require_subcommand(1);

  const auto add = [&](const std::string& name, const std::string& help,
                       int (*work)(const LedgerOptions&, Console&)) -> CLI::App& {
    CLI::App& command = *ledger.add_subcommand(name, help);
    command.callback([&action, options, work] {
      action = [options, work](Console& console) { return work(*options, console); };
    });
    return command;
  };
  const auto addAll = [&](CLI::App& command) {
    command.add_flag("--all", options->all, "Accounts of nothing, too");
  };
  const auto addPeriod = [&](CLI::App& command) {
    command
        .add_option("--from", options->from, "The first day [that of the last day's fiscal year]")
        ->type_name("DATE");
    command.add_option("--to", options->to, "The last day [the session date]")->type_name("DATE");
  };

  CLI::App& trial =
      add("trial-balance", "Every account's balance as debit or credit", printTrialBalance);
  addAsOf(trial, options->asOf);
  addAll(trial);
  CLI::App& sheet = add("balance-sheet", "Assets, liabilities and equity", printBalanceSheet);
  addAsOf(sheet, options->asOf);
  addAll(sheet);
  CLI::App& income =
      add("income-statement", "Revenue and expenses of a period", printIncomeStatement);
  addPeriod(income);
  addChoice<Comparison>(income, "--compare", options->comparison,
                        {{"budget", Comparison::Budget}, {"last-year", Comparison::LastYear}},
                        "Beside each amount, its budget or that of\nthe same days a year before");
  addAll(income);
  CLI::App& account =
      add("account", "The lines of an account with its running balance", printAccount);
  account.add_option("ACCOUNT,--account", options->account, "The account's number or key")
      ->type_name("CODE|KEY");
  addPeriod(account);
  CLI::App& checks = add("checks", "What is not reconciled on bank accounts", printChecks);
  addAsOf(checks, options->asOf);
  checks.add_option("--account", options->account, "Only the account with this number or key")
      ->type_name("CODE|KEY");
  checks.add_flag("--summary", options->summary, "One line for each account");
  for (CLI::App* const command : {&trial, &sheet, &income, &account, &checks}) {
    addRunOptions(*command, options->run, true);
  }
}

}  // namespace QuorCli
