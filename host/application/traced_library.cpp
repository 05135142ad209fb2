// The data library's objects with a trace.
#include <nlohmann/json.hpp>
#include <utility>

#include "host/application/trace.h"

namespace QuorHost {
namespace {

using nlohmann::ordered_json;
using QuorDataLib::Connection;
using QuorDataLib::Parameters;
using QuorDataLib::Ref;
using QuorDataLib::Value;

ordered_json parametersJson(const Parameters& parameters) {
  if (parameters.form() == Parameters::Form::None) return nullptr;
  ordered_json values = ordered_json::array();
  for (const Value& value : parameters.values()) values.push_back(typedJson(value));
  return values;
}

class TracedConnection final : public Connection {
 public:
  TracedConnection(SharedTrace trace, Ref<Connection> inner, const char* role)
      : trace_(std::move(trace)), inner_(std::move(inner)), role_(role) {}

  Ref<QuorDataLib::Recordset> OpenRecordset(const std::string& sql, std::int32_t mode,
                                            std::int32_t option, const Parameters& parameters,
                                            std::int32_t flag) override {
    // Written before the statement runs, so that one which is refused is there to be seen.
    trace_->write({{"event", "open"},
                   {"connection", role_},
                   {"sql", sql},
                   {"mode", mode},
                   {"option", option},
                   {"parameters", parametersJson(parameters)},
                   {"bare", parameters.form() == Parameters::Form::Single},
                   {"flag", flag}});
    return inner_->OpenRecordset(sql, mode, option, parameters, flag);
  }

  void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
               const Parameters& parameters) override {
    const auto write = [&](std::int32_t affected) {
      trace_->write({{"event", "execute"},
                     {"connection", role_},
                     {"sql", sql},
                     {"option", option},
                     {"parameters", parametersJson(parameters)},
                     {"affected", affected}});
    };
    try {
      inner_->Execute(sql, recordsAffected, option, parameters);
    } catch (...) {
      write(0);
      throw;
    }
    write(recordsAffected);
  }

  std::int32_t CommandTimeout() override { return inner_->CommandTimeout(); }
  void SetCommandTimeout(std::int32_t seconds) override { inner_->SetCommandTimeout(seconds); }

  [[nodiscard]] const Ref<Connection>& inner() const noexcept { return inner_; }

 private:
  SharedTrace trace_;
  Ref<Connection> inner_;
  const char* role_;
};

/// The connection without its trace: what the host reads through it is none of the component's
/// statements.
Ref<Connection> untraced(const Ref<Connection>& connection) {
  const Ref<TracedConnection> tracedConnection = connection.as<TracedConnection>();
  return tracedConnection ? tracedConnection->inner() : connection;
}

class TracedDataServices final : public QuorDataLib::DataServices {
 public:
  TracedDataServices(SharedTrace trace, Ref<QuorDataLib::DataServices> inner)
      : trace_(std::move(trace)), inner_(std::move(inner)) {}

  Ref<Connection> DefaultConnection() override { return inner_->DefaultConnection(); }
  std::int16_t EngineType() override { return inner_->EngineType(); }

  std::string GetParameter(const std::string& name, const std::string& key,
                           const std::string& table, Value& value,
                           const Ref<Connection>& connection, std::int32_t option) override {
    std::string text = inner_->GetParameter(name, key, table, value, untraced(connection), option);
    trace_->write(
        {{"event", "parameter"}, {"table", table}, {"name", name}, {"key", key}, {"value", text}});
    return text;
  }

  void NotifyDataChange(const std::string& code, std::int32_t scope, std::int32_t kind,
                        const Ref<QuorDataLib::Object>& object) override {
    trace_->write(
        {{"event", "notify"}, {"code", code}, {"values", ordered_json::array({scope, kind})}});
    inner_->NotifyDataChange(code, scope, kind, object);
  }

 private:
  SharedTrace trace_;
  Ref<QuorDataLib::DataServices> inner_;
};

class TracedSettingsReader final : public QuorDataLib::SettingsReader {
 public:
  TracedSettingsReader(SharedTrace trace, Ref<QuorDataLib::SettingsReader> inner)
      : trace_(std::move(trace)), inner_(std::move(inner)) {}

  std::string GetSetting(const std::string& name, const std::string& companyKey, std::int32_t kind,
                         const Ref<Connection>& connection,
                         const std::vector<Value>& arguments) override {
    std::string text = inner_->GetSetting(name, companyKey, kind, untraced(connection), arguments);
    trace_->write({{"event", "setting"}, {"name", name}, {"key", companyKey}, {"value", text}});
    return text;
  }

 private:
  SharedTrace trace_;
  Ref<QuorDataLib::SettingsReader> inner_;
};

class TracedErrorService final : public QuorDataLib::ErrorService {
 public:
  TracedErrorService(SharedTrace trace, Ref<QuorDataLib::ErrorService> inner)
      : trace_(std::move(trace)), inner_(std::move(inner)) {}

  std::int32_t ReportError(std::int32_t number, const std::string& description,
                           const std::string& component, const std::string& className,
                           const std::string& method, std::int32_t line) override {
    const auto write = [&](std::int32_t action) {
      trace_->write({{"event", "error"},
                     {"number", number},
                     {"description", description},
                     {"component", component},
                     {"class", className},
                     {"method", method},
                     {"line", line},
                     {"action", action}});
    };
    std::int32_t action = QuorDataLib::kLeaveMethod;
    try {
      action = inner_->ReportError(number, description, component, className, method, line);
    } catch (...) {
      // An error that is raised again leaves the method, too.
      write(QuorDataLib::kLeaveMethod);
      throw;
    }
    write(action);
    return action;
  }

  void RetryEnded(const std::string& className, const std::string& method,
                  std::int32_t line) override {
    inner_->RetryEnded(className, method, line);
  }

 private:
  SharedTrace trace_;
  Ref<QuorDataLib::ErrorService> inner_;
};

}  // namespace

Ref<Connection> traced(SharedTrace trace, Ref<Connection> connection, const char* role) {
  return QuorDataLib::make<TracedConnection>(std::move(trace), std::move(connection), role);
}

Ref<QuorDataLib::DataServices> traced(SharedTrace trace,
                                      Ref<QuorDataLib::DataServices> dataServices) {
  return QuorDataLib::make<TracedDataServices>(std::move(trace), std::move(dataServices));
}

Ref<QuorDataLib::SettingsReader> traced(SharedTrace trace,
                                        Ref<QuorDataLib::SettingsReader> settingsReader) {
  return QuorDataLib::make<TracedSettingsReader>(std::move(trace), std::move(settingsReader));
}

Ref<QuorDataLib::ErrorService> traced(SharedTrace trace,
                                      Ref<QuorDataLib::ErrorService> errorService) {
  return QuorDataLib::make<TracedErrorService>(std::move(trace), std::move(errorService));
}

}  // namespace QuorHost
