// The sample's short lists: company, fiscal calendar, currencies, segments, projects.
#pragma once

#include <cstdint>

#include "host/company/company.h"

namespace QuorHost::Sample {

inline constexpr std::int32_t kProjects = 8;

/// Whether work is done for a project (1 to `kProjects`) on a day.
bool projectRuns(std::int32_t project, int day);

/// Fills `CieInfo`, `FiscalYearHdr`, `FiscalYearDet`, `WorldCurrency`, `Segment` and `Proj`.
void writeLists(Store& store, Chart chart);

}  // namespace QuorHost::Sample
