// What the sample's projects were planned to sell, spend and work.
#pragma once

#include <cstdint>

#include "host/engines/store.h"

namespace QuorHost::Sample {

/// Fills `ProjBudgets`: each project as a whole and by segment, for every fiscal period that it
/// runs in. What is planned grows with the company's `scale`; some projects go over it.
void writeProjectBudgets(Store& store, std::int32_t scale);

}  // namespace QuorHost::Sample
