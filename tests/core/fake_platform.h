// A platform in memory whose n-th call fails, and which remembers what the component did with it.
#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/current_application.h"
#include "platform/data_library.h"
#include "platform/foundation.h"

namespace fake {

using namespace QuorDataLib;

inline constexpr std::int32_t kFailure = 4711;

struct Report {
  std::int32_t number;
  std::string description, component, className, method;
  std::int32_t line;
};

struct Opened {
  std::string sql;
  std::int32_t mode, option, flag;
  Parameters parameters;
  std::string connection;
};

/// What the platform is told to do, and what it saw.
struct Script {
  // Orders.
  int failAt = 0;    // number of the call that fails; 0 for none
  int failures = 1;  // how many calls fail from there on
  std::int32_t answer = kLeaveMethod;
  std::optional<Error> serviceRaises;
  std::int16_t engine = kServerEngine;
  bool foreignCurrency = true;
  bool cacheAllowed = true;
  std::vector<std::string> columns{"A"};
  std::map<std::string, Value> row;  // the one row of every recordset; empty for no row
  // Observations.
  int calls = 0;
  int openRecordsets = 0;  // recordsets alive and not closed
  std::vector<Report> reports;
  std::vector<Opened> opened;

  void enter(const char* call) {
    ++calls;
    if (failAt != 0 && calls >= failAt && calls < failAt + failures) {
      throw Error(kFailure, "Fake", std::string(call) + " failed");
    }
  }
};
using ScriptPtr = std::shared_ptr<Script>;

class FakeRecordset : public Recordset {
 public:
  explicit FakeRecordset(ScriptPtr script) : script_(std::move(script)) {
    ++script_->openRecordsets;
  }
  ~FakeRecordset() override { forget(); }

  bool AtEnd() override { return enter("AtEnd"), past_ || script_->row.empty(); }
  std::int32_t FieldCount() override {
    return enter("FieldCount"), static_cast<std::int32_t>(script_->columns.size());
  }
  std::string FieldName(std::int32_t index) override {
    return enter("FieldName"), script_->columns.at(static_cast<std::size_t>(index));
  }
  ValueType FieldType(std::int32_t) override { return enter("FieldType"), ValueType::Long; }
  Value Field(std::int32_t) override { return enter("Field"), Value(std::int32_t{1}); }
  Value Field(const std::string& name) override {
    enter("Field");
    const auto found = script_->row.find(name);
    return found == script_->row.end() ? Value(std::int32_t{1}) : found->second;
  }
  void MoveFirst() override { enter("MoveFirst"), past_ = false; }
  void MoveNext() override { enter("MoveNext"), past_ = true; }
  bool Find(const std::string&) override {
    enter("Find"), past_ = false;
    return !script_->row.empty();
  }
  void AddNew() override { enter("AddNew"); }
  void SetField(const std::string&, const Value&) override { enter("SetField"); }
  void Update() override { enter("Update"); }
  void Close() override {
    script_->enter("Close");
    forget();
  }

 private:
  void enter(const char* call) {
    script_->enter(call);
    if (closed_) raise(ErrorNumber::ObjectClosed, "The recordset is closed");
  }
  void forget() {
    if (!closed_) --script_->openRecordsets;
    closed_ = true;
  }
  ScriptPtr script_;
  bool closed_ = false;
  bool past_ = false;  // behind the one row
};

class FakeConnection : public Connection {
 public:
  FakeConnection(ScriptPtr script, std::string name)
      : script_(std::move(script)), name_(std::move(name)) {}
  Ref<Recordset> OpenRecordset(const std::string& sql, std::int32_t mode, std::int32_t option,
                               const Parameters& parameters, std::int32_t flag) override {
    script_->enter("OpenRecordset");
    script_->opened.push_back({sql, mode, option, flag, parameters, name_});
    return make<FakeRecordset>(script_);
  }
  void Execute(const std::string&, std::int32_t& affected, std::int32_t,
               const Parameters&) override {
    script_->enter("Execute");
    affected = 1;
  }
  std::int32_t CommandTimeout() override { return script_->enter("CommandTimeout"), 0; }
  void SetCommandTimeout(std::int32_t) override { script_->enter("SetCommandTimeout"); }

 private:
  ScriptPtr script_;
  std::string name_;
};

/// All the platform's other objects in one: they differ in nothing that matters here.
class FakeServices : public DataServices, public SettingsReader, public Utility {
 public:
  explicit FakeServices(ScriptPtr script) : script_(std::move(script)) {}
  Ref<Connection> DefaultConnection() override {
    script_->enter("DefaultConnection");
    return make<FakeConnection>(script_, "default");
  }
  std::int16_t EngineType() override { return script_->enter("EngineType"), script_->engine; }
  std::string GetParameter(const std::string&, const std::string& key, const std::string&,
                           Value& value, const Ref<Connection>&, std::int32_t) override {
    script_->enter("GetParameter");
    value = key;
    return key;
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
    return script_->enter("NullSafe"), expression;
  }
  std::int32_t DaysInMonth(std::int32_t, std::int32_t) override {
    return script_->enter("DaysInMonth"), 30;
  }
  std::string FurtherAccountTypes(std::int32_t) override {
    return script_->enter("FurtherAccountTypes"), "6";
  }

 private:
  ScriptPtr script_;
};

class FakeErrorService : public ErrorService {
 public:
  explicit FakeErrorService(ScriptPtr script) : script_(std::move(script)) {}
  std::int32_t ReportError(std::int32_t number, const std::string& description,
                           const std::string& component, const std::string& className,
                           const std::string& method, std::int32_t line) override {
    script_->reports.push_back({number, description, component, className, method, line});
    if (script_->serviceRaises) throw Error(*script_->serviceRaises);
    return script_->answer;
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
  Ref<Object> Find(const std::string&) override { return script_->enter("Find"), nullptr; }
  Ref<Object> Create(const std::string&, std::int32_t) override {
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
