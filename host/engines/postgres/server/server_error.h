// What people read when the server reports an error.
#pragma once

#include <libpq-fe.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "host/engines/rows/refusal.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Postgres {

using Rows::inStatement;
using Rows::refuseStatement;

/// Raises 75 with the address and what is wrong with what is there.
[[noreturn]] void refuseServer(const std::string& address, const std::string& what);

/// Raises 75 with why there is no connection.
[[noreturn]] void raiseConnectionError(PGconn* connection, const std::string& address);

/// What a statement ran under.
struct Circumstances {
  /// The statement as its author wrote it.
  std::string_view statement;
  /// The seconds that it may take; 0 for as many as the server allows.
  std::int32_t limit = 0;
  /// Whether it may have changed something.
  bool mayChange = false;
  /// The company's definitions, by which tables and columns are spelled; the server has them in
  /// lower case.
  const Sql::Catalogue* catalogue = nullptr;
};

/// Raises what the server has just reported: 6 for an overflow, `kConnectionLost` when the
/// connection has ended, and a refused statement for everything else, with the table and the value
/// that it is about or with what to do.
[[noreturn]] void raiseServerError(PGconn* connection, const PGresult* result,
                                   const Circumstances& circumstances);

}  // namespace QuorHost::Postgres
