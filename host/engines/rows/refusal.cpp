#include "host/engines/rows/refusal.h"

#include "platform/data_library.h"
#include "platform/error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Rows {
namespace {

using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;

/// The longest description, and the longest piece of a statement in it, in bytes.
constexpr std::size_t kLongest = 1000;
constexpr std::size_t kLongestStatement = 80;

/// The beginning of a statement on one line.
std::string quoted(std::string_view statement) {
  std::string text;
  for (const char c : statement.substr(0, kLongest)) {
    const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (blank && (text.empty() || text.back() == ' ')) continue;
    text += blank ? ' ' : c;
  }
  if (!text.empty() && text.back() == ' ') text.pop_back();
  return QuorDataLib::shownText(text, kLongestStatement);
}

}  // namespace

void refuseStatement(const std::string& description) {
  throw QuorDataLib::Error(QuorDataLib::kStatementRefused, "QuorDataLib",
                           QuorDataLib::shownText(description, kLongest));
}

std::string inStatement(std::string_view statement) {
  return statement.empty() ? "" : " (in: " + quoted(statement) + ")";
}

void requireWritable(bool writable, const std::string& company) {
  if (writable) return;
  refuseStatement("The company '" + company +
                  "' was opened for reading only: open it for writing to change it");
}

void requireUnchanging(bool writable) {
  if (!writable) return;
  raise(ErrorNumber::InvalidArgument,
        "A company that is open for writing is read as it changes: open it for reading to hold a "
        "snapshot");
}

void refuseSecondTransaction() {
  raise(ErrorNumber::InvalidArgument,
        "A transaction is open already: commit it before the next one begins");
}

void refuseSecondSnapshot() {
  raise(ErrorNumber::InvalidArgument,
        "A snapshot is held already: drop it before the next one is taken");
}

void refuseSecondCommit() {
  raise(ErrorNumber::InvalidArgument, "The transaction was committed before");
}

void refuseFailedCommit() {
  refuseStatement("The transaction was undone when a statement in it failed; nothing was kept");
}

}  // namespace QuorHost::Rows
