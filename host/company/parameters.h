// The parameters and settings that every company has from the start.
#pragma once

#include "host/engines/store.h"

namespace QuorHost {

/// Fills the parameter tables. The accounts that accounting parameters name are those of the fixed
/// chart that the sample company uses.
void writeParameters(Store& store);

}  // namespace QuorHost
