// The foundation's objects with a trace. Values go by the keys under which they can be overridden.
#include <nlohmann/json.hpp>
#include <utility>

#include "host/application/trace.h"

namespace QuorHost {
namespace {

using QuorDataLib::Date;
using QuorDataLib::Ref;
using QuorDataLib::Value;

/// Writes the event of a foundation value and passes the value on.
template <class T>
T noted(Trace& trace, const std::string& name, T value) {
  trace.write({{"event", "foundation"}, {"name", name}, {"value", plainJson(value)}});
  return value;
}

class TracedSettings final : public QuorCastriaFoundation::Settings {
 public:
  TracedSettings(SharedTrace trace, Ref<QuorCastriaFoundation::Settings> inner)
      : trace_(std::move(trace)), inner_(std::move(inner)) {}
  Value GetSetting(std::int16_t number) override {
    return noted(*trace_, "Settings." + std::to_string(number), inner_->GetSetting(number));
  }

 private:
  SharedTrace trace_;
  Ref<QuorCastriaFoundation::Settings> inner_;
};

class TracedCurrencyInfo final : public QuorCastriaFoundation::CurrencyInfo {
 public:
  TracedCurrencyInfo(SharedTrace trace, Ref<QuorCastriaFoundation::CurrencyInfo> inner)
      : trace_(std::move(trace)), inner_(std::move(inner)) {}
  bool CieIsForeignCurrencyUsed() override {
    return noted(*trace_, "CurrencyInfo.CieIsForeignCurrencyUsed",
                 inner_->CieIsForeignCurrencyUsed());
  }
  std::int32_t CieHomeCurrencyId() override {
    return noted(*trace_, "CurrencyInfo.CieHomeCurrencyId", inner_->CieHomeCurrencyId());
  }

 private:
  SharedTrace trace_;
  Ref<QuorCastriaFoundation::CurrencyInfo> inner_;
};

class TracedCompany final : public QuorCastriaFoundation::Company {
 public:
  TracedCompany(SharedTrace trace, Ref<QuorCastriaFoundation::Company> inner)
      : trace_(std::move(trace)), inner_(std::move(inner)) {}
  Date GetFiscalYearStartDate(Date date) override {
    return noted(*trace_, "Company.FiscalYearStart", inner_->GetFiscalYearStartDate(date));
  }
  Date SessionDate() override {
    return noted(*trace_, "Company.SessionDate", inner_->SessionDate());
  }
  Value GetParam(const std::string& name, const Value& defaultValue) override {
    return noted(*trace_, "Company.Param." + name, inner_->GetParam(name, defaultValue));
  }
  void SetParam(const std::string& name, const Value& value) override {
    inner_->SetParam(name, value);
    noted(*trace_, "Company.Param." + name, value);
  }
  std::int32_t CieAccountTypeChart() override {
    return noted(*trace_, "Company.CieAccountTypeChart", inner_->CieAccountTypeChart());
  }
  /// Its own values are what is traced.
  Ref<QuorCastriaFoundation::CurrencyInfo> CurrencyInfo() override {
    return inner_->CurrencyInfo();
  }

 private:
  SharedTrace trace_;
  Ref<QuorCastriaFoundation::Company> inner_;
};

class TracedDeclares final : public QuorCastriaFoundation::Declares {
 public:
  TracedDeclares(SharedTrace trace, Ref<QuorCastriaFoundation::Declares> inner)
      : trace_(std::move(trace)), inner_(std::move(inner)) {}
  std::int32_t DATA_TRX_REC() override {
    return noted(*trace_, "Declares.DATA_TRX_REC", inner_->DATA_TRX_REC());
  }

 private:
  SharedTrace trace_;
  Ref<QuorCastriaFoundation::Declares> inner_;
};

}  // namespace

Ref<QuorCastriaFoundation::Settings> traced(SharedTrace trace,
                                            Ref<QuorCastriaFoundation::Settings> settings) {
  return QuorDataLib::make<TracedSettings>(std::move(trace), std::move(settings));
}

Ref<QuorCastriaFoundation::CurrencyInfo> traced(
    SharedTrace trace, Ref<QuorCastriaFoundation::CurrencyInfo> currencyInfo) {
  return QuorDataLib::make<TracedCurrencyInfo>(std::move(trace), std::move(currencyInfo));
}

Ref<QuorCastriaFoundation::Company> traced(SharedTrace trace,
                                           Ref<QuorCastriaFoundation::Company> company) {
  return QuorDataLib::make<TracedCompany>(std::move(trace), std::move(company));
}

Ref<QuorCastriaFoundation::Declares> traced(SharedTrace trace,
                                            Ref<QuorCastriaFoundation::Declares> declares) {
  return QuorDataLib::make<TracedDeclares>(std::move(trace), std::move(declares));
}

}  // namespace QuorHost
