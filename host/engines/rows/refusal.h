// What is refused, whatever engine refuses it.
#pragma once

#include <string>
#include <string_view>

namespace QuorHost::Rows {

/// Raises `QuorDataLib::kStatementRefused` with `description`.
[[noreturn]] void refuseStatement(const std::string& description);

/// The end of a message about `statement`, of which it quotes the beginning; empty for none.
[[nodiscard]] std::string inStatement(std::string_view statement);

/// Raises a refused statement unless `company`, as it may be shown, was opened for writing.
void requireWritable(bool writable, const std::string& company);
/// Raises 5 where a snapshot is to be held of a company that was opened for writing.
void requireUnchanging(bool writable);

/// Raise 5 for what is to begin while another is open, and for a commit after the commit.
[[noreturn]] void refuseSecondTransaction();
[[noreturn]] void refuseSecondSnapshot();
[[noreturn]] void refuseSecondCommit();
/// Raises a refused statement for the commit of a transaction in which a statement has failed.
[[noreturn]] void refuseFailedCommit();

}  // namespace QuorHost::Rows
