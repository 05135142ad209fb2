// The sample's short lists: company, fiscal calendar, currencies, segments, projects.
#pragma once

#include <cstdint>

#include "host/company/company.h"
#include "platform/values/date.h"

namespace QuorHost::Sample {

/// Projects that work is done for at customers', and bought for.
inline constexpr std::int32_t kProjects = 8;
/// One of the company's own, that hours are put on and nothing is sold for; and one that is sold
/// for a fee, without hours.
inline constexpr std::int32_t kOwnProject = 9;
inline constexpr std::int32_t kFeeProject = 10;
inline constexpr std::int32_t kAllProjects = 10;

/// Whether work is done for a project (1 to `kAllProjects`) on a day, or on any day of a range.
bool projectRuns(std::int32_t project, int day);
bool projectRunsWithin(std::int32_t project, QuorDataLib::Date from, QuorDataLib::Date to);

/// Fills `CieInfo`, `FiscalYearHdr`, `FiscalYearDet`, `WorldCurrency`, `Segment` and `Proj`.
void writeLists(Store& store, Chart chart);

}  // namespace QuorHost::Sample
