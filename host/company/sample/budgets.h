// The sample's budgets.
#pragma once

#include <cstdint>

#include "host/engines/store.h"

namespace QuorHost::Sample {

/// Fills `GLAcctBudget` and `GLAcctSegmentBudget`: income and expenses of every month, growing with
/// the years and with the company's `scale`. The segments of an account add up to the account.
void writeBudgets(Store& store, std::int32_t scale);

}  // namespace QuorHost::Sample
