// The sample company.
#pragma once

#include "host/company/company.h"

namespace QuorHost::Sample {

/// Fills an empty schema with a believable trading business in Québec: two languages, three
/// currencies, provincial taxes, three fiscal years up to the session date. Runs in the caller's
/// transaction.
void writeSample(Store& store, const CreateOptions& options, const Progress& progress);

}  // namespace QuorHost::Sample
