// A platform in memory whose n-th call fails, and which remembers what the component did with it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/fake_rows.h"
#include "platform/current_application.h"
#include "platform/foundation.h"

namespace fake {

/// All the platform's other objects in one: they differ in nothing that matters here.
class FakeServices : public DataServices, public SettingsReader, public Utility {
 public:
  explicit FakeServices(ScriptPtr script) : script_(std::move(script)) {}
  Ref<Connection> DefaultConnection() override {
    script_->enter("DefaultConnection");
    return make<FakeConnection>(script_, "default");
  }
  std::int16_t EngineType() override { return script_->enter("EngineType"), script_->engine; }
  std::string GetParameter(const std::string& name, const std::string& key, const std::string&,
                           Value& value, const Ref<Connection>&, std::int32_t) override {
    script_->enter("GetParameter");
    std::string text =
        script_->otherFields != 0 ? key : script_->give(std::to_string(script_->numberOf(name)));
    value = text;
    return text;
  }
  void NotifyDataChange(const std::string&, std::int32_t, std::int32_t,
                        const Ref<Object>&) override {
    script_->enter("NotifyDataChange");
  }
  std::string GetSetting(const std::string& name, const std::string&, std::int32_t,
                         const Ref<Connection>&, const std::vector<Value>&) override {
    return script_->enter("GetSetting"), name;
  }
  Parameters ParameterArray(const std::vector<Value>& values) override {
    return script_->enter("ParameterArray"), Parameters::array(values);
  }
  std::string NullSafe(const std::string& expression, std::int16_t, std::int32_t) override {
    return script_->enter("NullSafe"), script_->give("NullSafe(" + expression + ")");
  }
  std::int32_t DaysInMonth(std::int32_t, std::int32_t) override {
    return script_->enter("DaysInMonth"), 30;
  }
  std::string FurtherAccountTypes(std::int32_t) override {
    return script_->enter("FurtherAccountTypes"), "6";
  }
  std::string FormatCurrency(Currency amount) override {
    return script_->enter("FormatCurrency"), "$" + amount.toText(2);
  }
  std::string FormatNumber(Currency number) override {
    return script_->enter("FormatNumber"), Value(number).toText();
  }
  std::string DecimalSeparator() override { return script_->enter("DecimalSeparator"), "."; }

 private:
  ScriptPtr script_;
};

class FakeErrorService : public ErrorService {
 public:
  explicit FakeErrorService(ScriptPtr script) : script_(std::move(script)) {}
  std::int32_t ReportError(std::int32_t number, const std::string& description,
                           const std::string& component, const std::string& className,
                           const std::string& method, std::int32_t line) override {
    // Asking for this service was part of the report.
    script_->log.resize(script_->log.size() - 2);
    script_->reports.push_back({number, description, component, className, method, line});
    if (const std::optional<Error>& raised = script_->serviceRaises) throw Error(*raised);
    return script_->answer;
  }
  void RetryEnded(const std::string&, const std::string&, std::int32_t) override {
    ++script_->retriesEnded;
  }

 private:
  ScriptPtr script_;
};

class FakeFoundation : public QuorCastriaFoundation::Settings,
                       public QuorCastriaFoundation::CurrencyInfo,
                       public QuorCastriaFoundation::Declares,
                       public QuorCastriaFoundation::Company,
                       public QuorCastriaFoundation::CastriaApplication,
                       public std::enable_shared_from_this<FakeFoundation> {
 public:
  explicit FakeFoundation(ScriptPtr script) : script_(std::move(script)) {}
  Ref<QuorCastriaFoundation::Settings> Settings() override {
    script_->enter("Settings");
    return shared_from_this();
  }
  Ref<QuorCastriaFoundation::Company> Company() override {
    script_->enter("Company");
    return shared_from_this();
  }
  Ref<QuorCastriaFoundation::Declares> Declares() override {
    script_->enter("Declares");
    return shared_from_this();
  }
  Ref<QuorCastriaFoundation::CurrencyInfo> CurrencyInfo() override {
    script_->enter("CurrencyInfo");
    return shared_from_this();
  }
  Value GetSetting(std::int16_t) override {
    return script_->enter("GetSetting"), Value(script_->cacheAllowed);
  }
  bool CieIsForeignCurrencyUsed() override {
    return script_->enter("CieIsForeignCurrencyUsed"), script_->foreignCurrency;
  }
  std::int32_t CieHomeCurrencyId() override { return script_->enter("CieHomeCurrencyId"), 1; }
  Date GetFiscalYearStartDate(Date date) override {
    return script_->enter("GetFiscalYearStartDate"), Date::of(date.civil().year, 1, 1);
  }
  Date SessionDate() override { return script_->enter("SessionDate"), Date::of(2025, 6, 30); }
  Value GetParam(const std::string&, const Value& defaultValue) override {
    return script_->enter("GetParam"), defaultValue;
  }
  void SetParam(const std::string&, const Value&) override { script_->enter("SetParam"); }
  std::int32_t CieAccountTypeChart() override { return script_->enter("CieAccountTypeChart"), 1; }
  std::int32_t DATA_TRX_REC() override { return script_->enter("DATA_TRX_REC"), 77; }

 private:
  ScriptPtr script_;
};

class FakeHelper : public QuorCastriaFoundation::CCastriaHelper {
 public:
  explicit FakeHelper(ScriptPtr script) : script_(std::move(script)) {}
  Ref<QuorCastriaFoundation::CastriaApplication> Application() override {
    script_->enter("Application");
    return make<FakeFoundation>(script_);
  }

 private:
  ScriptPtr script_;
};

class FakeApplication : public Application,
                        public ApplicationContext,
                        public ObjectRegistry,
                        public ObjectFactory,
                        public std::enable_shared_from_this<FakeApplication> {
 public:
  explicit FakeApplication(ScriptPtr script) : script_(std::move(script)) {}
  Ref<ApplicationContext> Context() override {
    script_->enter("Context");
    return shared_from_this();
  }
  Ref<QuorDataLib::DataServices> DataServices() override {
    script_->enter("DataServices");
    return make<FakeServices>(script_);
  }
  Ref<QuorDataLib::ErrorService> ErrorService() override {
    script_->enter("ErrorService");
    return make<FakeErrorService>(script_);
  }
  Ref<ObjectRegistry> Registry() override {
    script_->enter("Registry");
    return shared_from_this();
  }
  Ref<ObjectFactory> Factory() override {
    script_->enter("Factory");
    return shared_from_this();
  }
  Ref<QuorDataLib::SettingsReader> SettingsReader() override {
    script_->enter("SettingsReader");
    return make<FakeServices>(script_);
  }
  Ref<QuorDataLib::Utility> Utility() override {
    script_->enter("Utility");
    return make<FakeServices>(script_);
  }
  Ref<Object> Find(const std::string&, const ClassInfo*) override {
    return script_->enter("FindObject"), nullptr;
  }
  Ref<Object> Create(const std::string&, std::int32_t, const ClassInfo*) override {
    script_->enter("Create");
    return make<FakeHelper>(script_);
  }

 private:
  ScriptPtr script_;
};

/// Installs a fresh fake platform on this thread for the life of the object.
class Platform {
 public:
  Platform() {
    installApplication([script = script_] { return make<FakeApplication>(script); });
  }
  ~Platform() { installApplication({}); }
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;

  Script* operator->() const { return script_.get(); }
  Ref<Connection> connection(const std::string& name) const {
    return make<FakeConnection>(script_, name);
  }

 private:
  ScriptPtr script_ = std::make_shared<Script>();
};

}  // namespace fake
