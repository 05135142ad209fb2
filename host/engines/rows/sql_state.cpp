#include "host/engines/rows/sql_state.h"

#include "host/engines/rows/refusal.h"
#include "host/engines/store.h"
#include "platform/error.h"

namespace QuorHost::Rows {
namespace {

constexpr const char* kFailedBefore =
    "An earlier statement of the transaction or snapshot failed, and nothing goes on in it: drop "
    "it and begin anew; nothing of it is kept";

}  // namespace

bool isEndOfConnection(std::string_view state) noexcept {
  return state.starts_with("08") || state.starts_with("57P") || state == "HYT01";
}

void raiseConnectionLost(bool mayChange) {
  throw QuorDataLib::Error(
      kConnectionLost, "QuorDataLib",
      mayChange ? "The connection to the server was lost. Whether a change that was being made is "
                  "kept is not known: look before you make it again"
                : "The connection to the server was lost: open again what was being read");
}

std::string stateMessage(std::string_view state, std::int32_t limit) {
  const bool stopped = state == "57014" || state == "HYT00" || state == "HY008";
  if (stopped && limit > 0) {
    return "The statement was stopped: it took longer than its command timeout of " +
           std::to_string(limit) + (limit == 1 ? " second" : " seconds");
  }
  if (stopped) {
    return "The statement was stopped by an administrator of the server, or by a time limit that "
           "is set there";
  }
  if (state == "40P01" || state == "40001" || state == "55P03") {
    return "The company is being changed by another program at the same time; try again";
  }
  if (state == "25P02") return kFailedBefore;
  if (state == "25006") {
    return "The company cannot be changed: it was opened for reading only, or the server takes no "
           "changes";
  }
  if (state == "42501") {
    return "The role has no right to do this: have the owner of the schema grant it";
  }
  if (state == "53100") return "The disk of the server is full; make room and try again";
  if (state.starts_with("53")) {
    return "The server has no memory or no connection left; try again later";
  }
  return {};
}

void refuseInFailed() { refuseStatement(kFailedBefore); }

}  // namespace QuorHost::Rows
