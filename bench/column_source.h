// A connection without a database behind it.
#pragma once

#include <string>

#include "platform/data_library.h"

namespace QuorBench {

/// A connection that answers every query at once, with a recordset that has the columns of `sql` on
/// `connection` and no rows. What is measured over it is the caller's own work.
QuorDataLib::Ref<QuorDataLib::Connection> columnSource(
    const QuorDataLib::Ref<QuorDataLib::Connection>& connection, const std::string& sql);

}  // namespace QuorBench
