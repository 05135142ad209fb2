#include "cli/session.h"

#include <filesystem>
#include <utility>

#include "host/company/company.h"
#include "host/engines/paths.h"

namespace QuorCli {

using QuorDataLib::Connection;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Ref;
using QuorHost::Access;

Session::Session(const RunOptions& options, Access access, Console& console)
    : defaultConnection_(options.defaultConnection) {
  QuorHost::HostOptions host;
  host.overrides = foundationValues(options.foundation);
  if (!options.company.empty()) store_ = QuorHost::openCompany(options.company, access);
  host.store = store_;
  host.dialect = options.dialect;
  host.onError = options.onError;
  host.trace = openTrace(options, console);
  try {
    host_ = std::make_unique<QuorHost::Host>(std::move(host));
  } catch (const Error& error) {
    if (error.is(ErrorNumber::InvalidArgument)) throw UsageError(error.description());
    throw;
  }
  host_->install();
}

Ref<Connection> Session::connection() const {
  if (defaultConnection_) {
    return host_->application()->Context()->DataServices()->DefaultConnection();
  }
  return host_->connection();
}

void Session::finish() {
  if (!traceFile_.is_open()) return;
  traceFile_.close();
  if (!traceFile_) throw Failure("the trace could not be written to " + traceName_);
}

std::ostream* Session::openTrace(const RunOptions& options, Console& console) {
  if (options.trace.empty()) return nullptr;
  if (options.trace == "-") return &console.err;
  std::error_code missing;  // one of the two files does not exist: they are not the same
  if (!options.company.empty() &&
      std::filesystem::equivalent(QuorHost::pathOf(options.trace),
                                  QuorHost::pathOf(options.company), missing)) {
    throw UsageError("--trace would overwrite the company file " + options.company);
  }
  traceName_ = options.trace;
  traceFile_.open(QuorHost::pathOf(traceName_), std::ios::out | std::ios::trunc | std::ios::binary);
  if (!traceFile_) throw Failure("the trace file " + traceName_ + " cannot be written");
  return &traceFile_;
}

}  // namespace QuorCli
