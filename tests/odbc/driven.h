// Companies behind the recording driver.
#pragma once

#include <string>
#include <vector>

#include "host/engines/store.h"
#include "odbc/recording.h"
#include "platform/values/value.h"

namespace QuorHost::Testing {

/// The recording of the driver, which is loaded with the first use.
[[nodiscard]] Recording& recording();

/// A connection through it.
[[nodiscard]] std::string driven(Sql::Dialect dialect, const std::string& more = "");

/// A value that reached the driver, as one of the data library.
[[nodiscard]] QuorDataLib::Value valueOf(const Bound& bound);

/// What a company answers to a statement in `dialect`, as a server that reads it would: also what
/// is in its catalogue, and the number that the last new row was given.
[[nodiscard]] Answer answerOf(Store& company, Sql::Dialect dialect, const Received& received);

}  // namespace QuorHost::Testing
