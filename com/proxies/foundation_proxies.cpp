// A host's foundation.
#include "com/proxies/proxies.h"
#include "platform/foundation.h"

namespace QuorCom {

using QuorCastriaFoundation::CastriaApplication;
using QuorCastriaFoundation::CCastriaHelper;
using QuorCastriaFoundation::Company;
using QuorCastriaFoundation::CurrencyInfo;
using QuorCastriaFoundation::Declares;
using QuorCastriaFoundation::Settings;
using QuorDataLib::Date;
using QuorDataLib::Object;
using QuorDataLib::Ref;
using QuorDataLib::Value;

namespace {

class SettingsProxy final : public Proxy<Settings> {
 public:
  using Proxy::Proxy;
  Value GetSetting(std::int16_t number) override { return host_.call<Value>("GetSetting", number); }
};

class CurrencyInfoProxy final : public Proxy<CurrencyInfo> {
 public:
  using Proxy::Proxy;
  bool CieIsForeignCurrencyUsed() override { return host_.get<bool>("CieIsForeignCurrencyUsed"); }
  std::int32_t CieHomeCurrencyId() override { return host_.get<std::int32_t>("CieHomeCurrencyId"); }
};

class CompanyProxy final : public Proxy<Company> {
 public:
  using Proxy::Proxy;
  Date GetFiscalYearStartDate(Date date) override {
    return host_.call<Date>("GetFiscalYearStartDate", date);
  }
  Date SessionDate() override { return host_.get<Date>("SessionDate"); }
  Value GetParam(const std::string& name, const Value& defaultValue) override {
    return host_.call<Value>("GetParam", name, defaultValue);
  }
  void SetParam(const std::string& name, const Value& value) override {
    host_.call<void>("SetParam", name, value);
  }
  std::int32_t CieAccountTypeChart() override {
    return host_.get<std::int32_t>("CieAccountTypeChart");
  }
  Ref<QuorCastriaFoundation::CurrencyInfo> CurrencyInfo() override {
    return host_.get<Ref<QuorCastriaFoundation::CurrencyInfo>>("CurrencyInfo");
  }
};

class DeclaresProxy final : public Proxy<Declares> {
 public:
  using Proxy::Proxy;
  std::int32_t DATA_TRX_REC() override { return host_.get<std::int32_t>("DATA_TRX_REC"); }
};

class CastriaApplicationProxy final : public Proxy<CastriaApplication> {
 public:
  using Proxy::Proxy;
  Ref<QuorCastriaFoundation::Settings> Settings() override {
    return host_.get<Ref<QuorCastriaFoundation::Settings>>("Settings");
  }
  Ref<QuorCastriaFoundation::Company> Company() override {
    return host_.get<Ref<QuorCastriaFoundation::Company>>("Company");
  }
  Ref<QuorCastriaFoundation::Declares> Declares() override {
    return host_.get<Ref<QuorCastriaFoundation::Declares>>("Declares");
  }
};

class HelperProxy final : public Proxy<CCastriaHelper> {
 public:
  using Proxy::Proxy;
  Ref<CastriaApplication> Application() override {
    return host_.first<Ref<CastriaApplication>>("Application");
  }
};

}  // namespace

Ref<Object> newFoundationProxy(const ComPtr<IDispatch>& object, std::string_view contract) {
  return oneOf<SettingsProxy, CurrencyInfoProxy, CompanyProxy, DeclaresProxy,
               CastriaApplicationProxy, HelperProxy>(object, contract);
}

}  // namespace QuorCom
