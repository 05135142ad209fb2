// One run of the component: the company open, the host installed, the trace running.
#pragma once

#include <fstream>
#include <memory>

#include "cli/console.h"
#include "cli/words/options.h"
#include "host/application/host.h"
#include "host/engines/store.h"

namespace QuorCli {

class Session {
 public:
  /// Opens the company and installs the host. Raises `UsageError` for a foundation value that the
  /// host does not take and for a trace that would overwrite the company file, `Failure` for a
  /// trace file that cannot be written, and what opening the company raises.
  Session(const RunOptions& options, QuorHost::Access access, Console& console);

  /// The connection that statements run on: the host's own for objects, or the application's
  /// default one with `--default-connection`.
  [[nodiscard]] QuorDataLib::Ref<QuorDataLib::Connection> connection() const;

  /// The dialect that the company presents.
  [[nodiscard]] QuorHost::Sql::Dialect dialect() const { return host_->dialect(); }

  /// The company, or null in a dry run.
  [[nodiscard]] const std::shared_ptr<QuorHost::Store>& store() const { return store_; }

  /// Completes the trace. Raises `Failure` when part of it could not be written.
  void finish();

 private:
  std::ostream* openTrace(const RunOptions& options, Console& console);

  bool defaultConnection_;
  std::string traceName_;
  std::ofstream traceFile_;
  std::shared_ptr<QuorHost::Store> store_;
  std::unique_ptr<QuorHost::Host> host_;
};

}  // namespace QuorCli
