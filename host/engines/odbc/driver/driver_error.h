// What people read when a driver reports an error.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/engines/odbc/driver/address.h"
#include "host/engines/odbc/driver/handle.h"

namespace QuorHost::Odbc {

/// Raises 75 with why there is no connection, and what to do.
[[noreturn]] void raiseConnectionError(const Diagnosis& diagnosis, const Address& address);

/// What is known of a statement that has failed.
struct Circumstances {
  /// The connection has ended.
  bool lost = false;
  /// Changes are made over it.
  bool mayChange = false;
  /// The text, of which the message quotes the beginning.
  std::string_view statement;
  /// Seconds that it may take; 0 for no limit.
  std::int32_t limit = 0;
};

/// Raises what a driver has reported about a statement or a transaction: 6 for an overflow, 7 where
/// there is no memory, `kConnectionLost` when the connection has ended, and a refused statement for
/// everything else.
[[noreturn]] void raiseDriverError(const Diagnosis& diagnosis, const Address& address,
                                   const Circumstances& circumstances);

}  // namespace QuorHost::Odbc
