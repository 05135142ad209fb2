// Puts the reference host together: the application object for one company and one thread.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "host/engines/store.h"
#include "host/sql/types.h"
#include "platform/data_library.h"

namespace QuorHost {

/// What the host's error service answers to a failing step.
enum class OnError : std::uint8_t {
  /// Raises the error again to the caller, its source extended by component, class, method and
  /// line.
  Raise,
  Leave,
  Continue,
  /// Retries a step at most three times for one error, then leaves.
  Retry,
};

struct HostOptions {
  /// The company; empty for a dry run, in which every statement is answered with no rows and every
  /// parameter with "0".
  std::shared_ptr<Store> store{};
  /// What the component's statements are to be in; nothing for the company's only dialect, and for
  /// the server's where it reads both.
  std::optional<Sql::Dialect> dialect{};
  OnError onError = OnError::Raise;
  /// Foundation values that stand over what the company file says, by key: "Company.SessionDate",
  /// "Company.Param.NAME", "CurrencyInfo.CieIsForeignCurrencyUsed", "Settings.133",
  /// "Param.TABLE.NAME" and so on. Keys are matched without regard to case.
  std::map<std::string, std::string> overrides{};
  /// Where the trace goes, one JSON object a line; null for none. It must outlive the host.
  std::ostream* trace = nullptr;
};

/// The reference host of one company on this thread.
class Host {
 public:
  /// Checks `options.overrides`: raises 5, naming the key, for an unknown key or a value that it
  /// cannot hold, and for a dialect that the company does not read.
  explicit Host(const HostOptions& options);
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// Makes this host's application object the one of the calling thread, until the host ends or
  /// another one is installed.
  void install();

  [[nodiscard]] QuorDataLib::Ref<QuorDataLib::Application> application() const;

  /// The dialect that the company presents to the component.
  [[nodiscard]] Sql::Dialect dialect() const;

  /// A connection for `CustomConnection`; the trace shows it as "custom", while the application's
  /// own is "default".
  [[nodiscard]] QuorDataLib::Ref<QuorDataLib::Connection> connection() const;

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace QuorHost
