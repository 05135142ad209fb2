// The connections on which the queries of a company on a server run.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <vector>

#include "host/engines/rows/cursor.h"
#include "platform/error.h"

namespace QuorHost::Rows {

/// What a recordset that lies open may take into memory so that another query can start on its
/// connection. It is less than a further connection costs the server.
inline constexpr Allowance kRest{.bytes = std::size_t{8} << 20U,
                                 .time = std::chrono::milliseconds(50)};

/// Connections for reading at the most. What more recordsets lie open and are large takes all their
/// rows into memory.
inline constexpr std::size_t kMostReaders = 4;

/// The session of `readers`, none of which is lost, on which a query can start now. One is added
/// where all are busy and there may be more.
/// @param settle  has the cursors of a session take as many rows as they may; true when the server
///                has no more of them
/// @param connect  makes a further session; where there is none to be had, those that are there do
/// @param connectAnew  makes the only one
template <class Session, class Settle, class Connect, class ConnectAnew>
[[nodiscard]] std::shared_ptr<Session> sessionToRead(std::vector<std::shared_ptr<Session>>& readers,
                                                     const Settle& settle, const Connect& connect,
                                                     const ConnectAnew& connectAnew) {
  for (const Allowance& allowance : {Allowance{.rows = 0}, kRest}) {
    for (const std::shared_ptr<Session>& session : readers) {
      if (settle(*session, allowance)) return session;
    }
  }
  if (readers.empty()) return readers.emplace_back(connectAnew());
  if (readers.size() < kMostReaders) {
    try {
      return readers.emplace_back(connect());
    } catch (const QuorDataLib::Error&) {  // NOLINT(bugprone-empty-catch)
      // The server gives no more of them: those that are there must do.
    }
  }
  settle(*readers.front(), Allowance{});
  return readers.front();
}

}  // namespace QuorHost::Rows
