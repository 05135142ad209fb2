// The ledger's reports, each a page of its own content.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/console.h"
#include "cli/words/options.h"

namespace QuorCli {

enum class Comparison : std::uint8_t { None, Budget, LastYear };

/// What the ledger's reports can be asked; each reads what it has an option for.
struct LedgerOptions {
  std::optional<std::string> asOf;
  std::optional<std::string> from;
  std::optional<std::string> to;
  std::optional<std::string> account;
  Comparison comparison = Comparison::None;
  /// Accounts of nothing, too; lines that are reconciled, too.
  bool all = false;
  bool summary = false;
  RunOptions run;
};

int printTrialBalance(const LedgerOptions& options, Console& console);
int printBalanceSheet(const LedgerOptions& options, Console& console);
int printIncomeStatement(const LedgerOptions& options, Console& console);
int printAccount(const LedgerOptions& options, Console& console);
int printChecks(const LedgerOptions& options, Console& console);

}  // namespace QuorCli
