// A platform in memory whose n-th call fails, and which remembers what the component did with it.
#pragma once

#include <cstdint>
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

/// A call that reached the platform, and what it gave where that can be told from other values: a
/// text, or a number of its own.
struct Call {
  std::string name;
  Value given;
};

struct Opened {
  std::string sql;
  std::int32_t mode, option, flag;
  Parameters parameters;
  std::string connection;
  std::int32_t timeout;
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
  std::map<std::string, Value> row;  // the row of every recordset; empty for no row
  int rowCount = 1;                  // how often it comes
  std::int32_t otherFields = 1;      // what fields hold that are not in the row; 0: each its own
  // Observations.
  int calls = 0;
  std::vector<Call> log;   // the calls that did not fail, without those of reports
  std::string failed;      // the last call that did
  int openRecordsets = 0;  // recordsets alive and not closed
  int retriesEnded = 0;
  std::vector<Report> reports;
  std::vector<Opened> opened;
  std::int32_t commandTimeout = 30;  // of every connection

  void enter(const char* call) {
    ++calls;
    if (failAt != 0 && calls >= failAt && calls < failAt + failures) {
      failed = call;
      throw Error(kFailure, "Fake", failed + " failed");
    }
    log.push_back({call, {}});
  }

  /// Notes what the last call gives, and gives it.
  template <class T>
  T give(T value) {
    log.back().given = value;
    return value;
  }

  /// A number of its own for everything that has a name.
  std::int32_t numberOf(const std::string& name) {
    constexpr std::int32_t kFirst = 1001;
    return numbers_.try_emplace(name, kFirst + static_cast<std::int32_t>(numbers_.size()))
        .first->second;
  }

 private:
  std::map<std::string, std::int32_t> numbers_;
};
using ScriptPtr = std::shared_ptr<Script>;

class FakeRecordset : public Recordset {
 public:
  explicit FakeRecordset(ScriptPtr script) : script_(std::move(script)) {
    ++script_->openRecordsets;
  }
  ~FakeRecordset() override { forget(); }

  bool AtEnd() override { return enter("AtEnd"), position_ >= rowCount(); }
  std::int32_t FieldCount() override {
    return enter("FieldCount"), static_cast<std::int32_t>(script_->columns.size());
  }
  std::string FieldName(std::int32_t index) override {
    enter("FieldName");
    return script_->give(script_->columns.at(static_cast<std::size_t>(index)));
  }
  ValueType FieldType(std::int32_t) override { return enter("FieldType"), ValueType::Long; }
  Value Field(std::int32_t index) override { return Field(std::to_string(index)); }
  Value Field(const std::string& name) override {
    enter("Field");
    const auto found = script_->row.find(name);
    if (found != script_->row.end()) return script_->give(found->second);
    if (script_->otherFields != 0) return script_->otherFields;
    return script_->give(Value(script_->numberOf(name)));
  }
  void MoveFirst() override { enter("MoveFirst"), position_ = 0; }
  void MoveNext() override { enter("MoveNext"), ++position_; }
  /// There is a row unless the criterion has a 2 in it, so that a search for what is free ends.
  bool Find(const std::string& criterion) override {
    enter("Find");
    position_ = criterion.find('2') == std::string::npos ? 0 : rowCount();
    return position_ < rowCount();
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
  int rowCount() const { return script_->row.empty() ? 0 : script_->rowCount; }

  ScriptPtr script_;
  int position_ = 0;
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
    script_->opened.push_back(
        {sql, mode, option, flag, parameters, name_, script_->commandTimeout});
    return make<FakeRecordset>(script_);
  }
  void Execute(const std::string&, std::int32_t& affected, std::int32_t,
               const Parameters&) override {
    script_->enter("Execute");
    affected = 1;
  }
  std::int32_t CommandTimeout() override {
    return script_->enter("CommandTimeout"), script_->commandTimeout;
  }
  void SetCommandTimeout(std::int32_t seconds) override {
    script_->enter("SetCommandTimeout");
    script_->commandTimeout = seconds;
  }

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
    if (script_->serviceRaises) throw Error(*script_->serviceRaises);
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
