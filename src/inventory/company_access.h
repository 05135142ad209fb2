// The company whose books are open.
#pragma once

#include "core/mutils.h"
#include "platform/foundation.h"

namespace QuorAccQueries {

/// The company of the application's foundation.
inline QuorDataLib::Ref<QuorCastriaFoundation::Company> company() {
  return MUtils::QuorCastriaFoundation()->Application()->Company();
}

}  // namespace QuorAccQueries
