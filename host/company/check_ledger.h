// Checks of the ledger's books.
#pragma once

#include <functional>
#include <string>

#include "host/engines/store.h"

namespace QuorHost {

/// Told every finding of a check, one line each.
using Finding = std::function<void(const std::string& finding)>;

/// The balance sheet of every fiscal period's last day: the accounts of the balance sheet, with the
/// earnings of the fiscal year on the current earnings account and those of all years before on the
/// retained earnings account, add up to zero, just as the ledger helper computes them. Lines on
/// accounts that belong to neither statement, and lines before 1900-12-31, make them differ.
void checkBalanceSheets(Store& store, const Finding& report);

/// Account numbers that several accounts have, and journal entries and deposits whose lines do not
/// add up.
void checkLedgerDocuments(Store& store, const Finding& report);

}  // namespace QuorHost
