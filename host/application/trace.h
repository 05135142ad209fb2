// The trace of what crosses from the component to the host.
#pragma once

#include <iosfwd>
#include <memory>
#include <nlohmann/json_fwd.hpp>

#include "platform/data_library.h"
#include "platform/foundation.h"
#include "platform/values/value.h"

namespace QuorHost {

/// A value as JSON: a currency as text with four decimals, a date as ISO text ("" for no date),
/// null for Null and Empty.
[[nodiscard]] nlohmann::ordered_json plainJson(const QuorDataLib::Value& value);

/// `{"type": ..., "value": ...}`.
[[nodiscard]] nlohmann::ordered_json typedJson(const QuorDataLib::Value& value);

/// Writes events, one JSON object a line.
class Trace {
 public:
  explicit Trace(std::ostream& out) : out_(out) {}
  void write(const nlohmann::ordered_json& event);

 private:
  std::ostream& out_;
};
using SharedTrace = std::shared_ptr<Trace>;

// Each of these answers as the object it is given does, and writes an event for what crosses it.

/// `role` is "custom" or "default".
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Connection> traced(
    SharedTrace trace, QuorDataLib::Ref<QuorDataLib::Connection> connection, const char* role);
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::DataServices> traced(
    SharedTrace trace, QuorDataLib::Ref<QuorDataLib::DataServices> dataServices);
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::SettingsReader> traced(
    SharedTrace trace, QuorDataLib::Ref<QuorDataLib::SettingsReader> settingsReader);
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::ErrorService> traced(
    SharedTrace trace, QuorDataLib::Ref<QuorDataLib::ErrorService> errorService);
[[nodiscard]] QuorDataLib::Ref<QuorCastriaFoundation::Settings> traced(
    SharedTrace trace, QuorDataLib::Ref<QuorCastriaFoundation::Settings> settings);
[[nodiscard]] QuorDataLib::Ref<QuorCastriaFoundation::CurrencyInfo> traced(
    SharedTrace trace, QuorDataLib::Ref<QuorCastriaFoundation::CurrencyInfo> currencyInfo);
[[nodiscard]] QuorDataLib::Ref<QuorCastriaFoundation::Company> traced(
    SharedTrace trace, QuorDataLib::Ref<QuorCastriaFoundation::Company> company);
[[nodiscard]] QuorDataLib::Ref<QuorCastriaFoundation::Declares> traced(
    SharedTrace trace, QuorDataLib::Ref<QuorCastriaFoundation::Declares> declares);

}  // namespace QuorHost
