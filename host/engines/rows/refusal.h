// Refused statements, whatever engine refuses them.
#pragma once

#include <string>
#include <string_view>

namespace QuorHost::Rows {

/// Raises `QuorDataLib::kStatementRefused` with `description`.
[[noreturn]] void refuseStatement(const std::string& description);

/// The end of a message about `statement`, of which it quotes the beginning; empty for none.
[[nodiscard]] std::string inStatement(std::string_view statement);

}  // namespace QuorHost::Rows
