// The commands: each adds itself to the program's command line.
#pragma once

#include <CLI/App.hpp>
#include <functional>

#include "cli/console.h"

namespace QuorCli {

/// The work of the command that was parsed; it returns the exit code. Set by the chosen command.
using Action = std::function<int(Console&)>;

void addCompany(CLI::App& program, Action& action);
void addDescribe(CLI::App& program, Action& action);
void addCall(CLI::App& program, Action& action);
void addSql(CLI::App& program, Action& action);
void addAging(CLI::App& program, Action& action);
void addLedger(CLI::App& program, Action& action);
void addProjects(CLI::App& program, Action& action);
void addDue(CLI::App& program, Action& action);
/// The report of `stock`, whose other commands are added before it.
void addStockReport(CLI::App& program, Action& action);
void addManual(CLI::App& program, Action& action);
void addStock(CLI::App& program, Action& action);
/// `recost`, a command of `stock`.
void addRecost(CLI::App& stock, Action& action);

}  // namespace QuorCli
