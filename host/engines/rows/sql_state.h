// The states that servers report with their errors: five characters, of which many mean the same on
// all of them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace QuorHost::Rows {

/// Whether the state says that the connection has ended.
[[nodiscard]] bool isEndOfConnection(std::string_view state) noexcept;

/// Raises `kConnectionLost`. Where something may have been changed over the connection, nobody
/// knows whether it was.
[[noreturn]] void raiseConnectionLost(bool mayChange);

/// What the state of the server is that it reports, in words; empty for what a statement is to
/// blame for. `limit` are the seconds that the statement was allowed, 0 for no limit.
[[nodiscard]] std::string stateMessage(std::string_view state, std::int32_t limit);

/// Raises a refused statement: an earlier one has ended the transaction or the snapshot that it
/// would run in.
[[noreturn]] void refuseInFailed();

}  // namespace QuorHost::Rows
