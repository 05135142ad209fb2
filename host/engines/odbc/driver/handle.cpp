#include "host/engines/odbc/driver/handle.h"

#include <algorithm>
#include <array>

#include "host/engines/odbc/driver/wide_text.h"

namespace QuorHost::Odbc {
namespace {

constexpr std::size_t kLongestMessage = 1024;
constexpr SQLSMALLINT kMostRecords = 16;

/// "[manager][driver]What happened" without what stands in brackets before it, and blanks behind.
std::string plainMessage(std::string message) {
  message.erase(message.find_last_not_of(" \r\n") + 1);
  while (message.starts_with('[')) {
    const std::size_t close = message.find(']');
    if (close == std::string::npos) break;
    message.erase(0, close + 1);
    message.erase(0, std::min(message.find_first_not_of(' '), message.size()));
  }
  return message;
}

}  // namespace

Diagnosis diagnose(SQLSMALLINT kind, SQLHANDLE handle) {
  Diagnosis found{.state = "HY000", .message = {}};
  bool any = false;
  for (SQLSMALLINT record = 1; record <= kMostRecords; ++record) {
    std::array<SQLWCHAR, SQL_SQLSTATE_SIZE + 1> state{};
    std::array<SQLWCHAR, kLongestMessage> message{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN result =
        SQLGetDiagRecW(kind, handle, record, state.data(), &native, message.data(),
                       static_cast<SQLSMALLINT>(message.size()), &length);
    if (!SQL_SUCCEEDED(result)) break;
    const std::size_t size =
        std::min(static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)), message.size() - 1);
    Diagnosis next{.state = narrow(state.data(), SQL_SQLSTATE_SIZE),
                   .message = plainMessage(narrow(message.data(), size))};
    const bool warning = next.state.starts_with("01");
    if (!any || !warning) found = std::move(next);
    any = true;
    if (!warning) break;
  }
  if (found.message.empty()) found.message = "the driver does not say why";
  return found;
}

}  // namespace QuorHost::Odbc
