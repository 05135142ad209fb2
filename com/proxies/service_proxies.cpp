// A host's application object, its context, and the services that it offers.
#include "com/proxies/proxies.h"
#include "platform/data_library.h"

namespace QuorCom {

using QuorDataLib::Application;
using QuorDataLib::ApplicationContext;
using QuorDataLib::ClassInfo;
using QuorDataLib::Connection;
using QuorDataLib::Currency;
using QuorDataLib::DataServices;
using QuorDataLib::ErrorService;
using QuorDataLib::Object;
using QuorDataLib::ObjectFactory;
using QuorDataLib::ObjectRegistry;
using QuorDataLib::Parameters;
using QuorDataLib::Ref;
using QuorDataLib::SettingsReader;
using QuorDataLib::Utility;
using QuorDataLib::Value;

namespace {

class DataServicesProxy final : public Proxy<DataServices> {
 public:
  using Proxy::Proxy;
  Ref<Connection> DefaultConnection() override {
    return host_.get<Ref<Connection>>("DefaultConnection");
  }
  std::int16_t EngineType() override { return host_.get<std::int16_t>("EngineType"); }
  std::string GetParameter(const std::string& name, const std::string& key,
                           const std::string& table, Value& value,
                           const Ref<Connection>& connection, std::int32_t option) override {
    return host_.call<std::string>("GetParameter", name, key, table, value, connection, option);
  }
  void NotifyDataChange(const std::string& code, std::int32_t scope, std::int32_t kind,
                        const Ref<Object>& object) override {
    host_.call<void>("NotifyDataChange", code, scope, kind, object);
  }
};

class ErrorServiceProxy final : public Proxy<ErrorService> {
 public:
  using Proxy::Proxy;
  std::int32_t ReportError(std::int32_t number, const std::string& description,
                           const std::string& component, const std::string& className,
                           const std::string& method, std::int32_t line) override {
    return host_.call<std::int32_t>("ReportError", number, description, component, className,
                                    method, line);
  }
  void RetryEnded(const std::string& className, const std::string& method,
                  std::int32_t line) override {
    host_.call<void>("RetryEnded", className, method, line);
  }
};

class RegistryProxy final : public Proxy<ObjectRegistry> {
 public:
  using Proxy::Proxy;
  Ref<Object> Find(const std::string& name, const ClassInfo* wanted) override {
    return host_.callFor(wanted, "Find", name);
  }
};

class FactoryProxy final : public Proxy<ObjectFactory> {
 public:
  using Proxy::Proxy;
  Ref<Object> Create(const std::string& classId, std::int32_t flag,
                     const ClassInfo* wanted) override {
    return host_.callFor(wanted, "Create", classId, flag);
  }
};

class SettingsReaderProxy final : public Proxy<SettingsReader> {
 public:
  using Proxy::Proxy;
  std::string GetSetting(const std::string& name, const std::string& companyKey, std::int32_t kind,
                         const Ref<Connection>& connection,
                         const std::vector<Value>& arguments) override {
    return host_.call<std::string>("GetSetting", name, companyKey, kind, connection, arguments);
  }
};

class UtilityProxy final : public Proxy<Utility> {
 public:
  using Proxy::Proxy;
  Parameters ParameterArray(const std::vector<Value>& values) override {
    return host_.call<Parameters>("ParameterArray", values);
  }
  std::string NullSafe(const std::string& expression, std::int16_t defaultValue,
                       std::int32_t flag) override {
    return host_.call<std::string>("NullSafe", expression, defaultValue, flag);
  }
  std::int32_t DaysInMonth(std::int32_t year, std::int32_t month) override {
    return host_.call<std::int32_t>("DaysInMonth", year, month);
  }
  std::string FurtherAccountTypes(std::int32_t accountClass) override {
    return host_.call<std::string>("FurtherAccountTypes", accountClass);
  }
  std::string FormatCurrency(Currency amount) override {
    return host_.call<std::string>("FormatCurrency", amount);
  }
  std::string FormatNumber(Currency number) override {
    return host_.call<std::string>("FormatNumber", number);
  }
  std::string DecimalSeparator() override { return host_.get<std::string>("DecimalSeparator"); }
};

class ContextProxy final : public Proxy<ApplicationContext> {
 public:
  using Proxy::Proxy;
  Ref<QuorDataLib::DataServices> DataServices() override {
    return host_.get<Ref<QuorDataLib::DataServices>>("DataServices");
  }
  Ref<QuorDataLib::ErrorService> ErrorService() override {
    return host_.get<Ref<QuorDataLib::ErrorService>>("ErrorService");
  }
  Ref<ObjectRegistry> Registry() override { return host_.get<Ref<ObjectRegistry>>("Registry"); }
  Ref<ObjectFactory> Factory() override { return host_.get<Ref<ObjectFactory>>("Factory"); }
  Ref<QuorDataLib::SettingsReader> SettingsReader() override {
    return host_.get<Ref<QuorDataLib::SettingsReader>>("SettingsReader");
  }
  Ref<QuorDataLib::Utility> Utility() override {
    return host_.get<Ref<QuorDataLib::Utility>>("Utility");
  }
};

class ApplicationProxy final : public Proxy<Application> {
 public:
  using Proxy::Proxy;
  Ref<ApplicationContext> Context() override {
    return host_.first<Ref<ApplicationContext>>("Context");
  }
};

}  // namespace

Ref<Object> newServiceProxy(const ComPtr<IDispatch>& object, std::string_view contract) {
  return oneOf<DataServicesProxy, ErrorServiceProxy, RegistryProxy, FactoryProxy,
               SettingsReaderProxy, UtilityProxy, ContextProxy, ApplicationProxy>(object, contract);
}

}  // namespace QuorCom
