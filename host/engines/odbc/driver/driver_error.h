// What people read when a driver reports an error.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/engines/odbc/driver/address.h"
#include "host/engines/odbc/driver/handle.h"

namespace QuorHost::Odbc {

/// Raises 75 with why there is no connection, and what to do.
[[noreturn]] void raiseConnectionError(const Diagnosis& diagnosis, const Address& address);

/// Raises what a driver has reported about a statement or a transaction: 6 for an overflow, 7 where
/// there is no memory, `kConnectionLost` when the connection has ended (which `lost` says, too),
/// and a refused statement for everything else. `statement` is quoted; `limit` are the seconds that
/// it may take.
[[noreturn]] void raiseDriverError(const Diagnosis& diagnosis, const Address& address, bool lost,
                                   std::string_view statement, std::int32_t limit);

}  // namespace QuorHost::Odbc
