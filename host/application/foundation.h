// The application foundation of the reference host, over the company file and the overrides.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/application/company_tables.h"
#include "host/application/overrides.h"
#include "platform/foundation.h"

namespace QuorHost {

/// Where foundation values come from; shared by the objects that answer them.
struct FoundationSources {
  CompanyTables tables;
  Overrides overrides;
};
using SharedSources = std::shared_ptr<const FoundationSources>;

/// Application settings, from the table `AppSetting`; 0 for one that is nowhere.
class FoundationSettings final : public QuorCastriaFoundation::Settings {
 public:
  explicit FoundationSettings(SharedSources sources) : sources_(std::move(sources)) {}
  QuorDataLib::Value GetSetting(std::int16_t number) override;

 private:
  SharedSources sources_;
};

/// The currencies, from the row of `CieInfo`; without it, home currency 1 and no other.
class FoundationCurrencyInfo final : public QuorCastriaFoundation::CurrencyInfo {
 public:
  explicit FoundationCurrencyInfo(SharedSources sources) : sources_(std::move(sources)) {}
  bool CieIsForeignCurrencyUsed() override;
  std::int32_t CieHomeCurrencyId() override;

 private:
  SharedSources sources_;
};

/// The company, from `CieInfo`, `FiscalYearHdr` and `CieParam`.
class FoundationCompany final : public QuorCastriaFoundation::Company {
 public:
  FoundationCompany(SharedSources sources,
                    QuorDataLib::Ref<QuorCastriaFoundation::CurrencyInfo> currencyInfo);

  /// The first day of the fiscal year in `FiscalYearHdr` that contains the date; where none does,
  /// the last day on or before it with the month and day on which the first fiscal year begins (1
  /// January without any).
  QuorDataLib::Date GetFiscalYearStartDate(QuorDataLib::Date date) override;
  /// Today, as the host was made, when the company does not say.
  QuorDataLib::Date SessionDate() override;
  QuorDataLib::Value GetParam(const std::string& name,
                              const QuorDataLib::Value& defaultValue) override;
  /// Stores the parameter; in a company that was opened for reading it is kept for this run.
  void SetParam(const std::string& name, const QuorDataLib::Value& value) override;
  std::int32_t CieAccountTypeChart() override;
  QuorDataLib::Ref<QuorCastriaFoundation::CurrencyInfo> CurrencyInfo() override;

 private:
  SharedSources sources_;
  QuorDataLib::Ref<QuorCastriaFoundation::CurrencyInfo> currencyInfo_;
  QuorDataLib::Date today_;
  /// Parameters set in this run, by lower-case name: they stand over everything else.
  std::map<std::string, QuorDataLib::Value> set_;
};

/// The codes of data sets: numbers of this host.
class FoundationDeclares final : public QuorCastriaFoundation::Declares {
 public:
  std::int32_t DATA_TRX_REC() override;
};

/// The foundation's application object, made of its parts.
class FoundationApplication final : public QuorCastriaFoundation::CastriaApplication {
 public:
  FoundationApplication(QuorDataLib::Ref<QuorCastriaFoundation::Settings> settings,
                        QuorDataLib::Ref<QuorCastriaFoundation::Company> company,
                        QuorDataLib::Ref<QuorCastriaFoundation::Declares> declares);
  QuorDataLib::Ref<QuorCastriaFoundation::Settings> Settings() override { return settings_; }
  QuorDataLib::Ref<QuorCastriaFoundation::Company> Company() override { return company_; }
  QuorDataLib::Ref<QuorCastriaFoundation::Declares> Declares() override { return declares_; }

 private:
  QuorDataLib::Ref<QuorCastriaFoundation::Settings> settings_;
  QuorDataLib::Ref<QuorCastriaFoundation::Company> company_;
  QuorDataLib::Ref<QuorCastriaFoundation::Declares> declares_;
};

class CastriaHelper final : public QuorCastriaFoundation::CCastriaHelper {
 public:
  explicit CastriaHelper(QuorDataLib::Ref<QuorCastriaFoundation::CastriaApplication> application)
      : application_(std::move(application)) {}
  QuorDataLib::Ref<QuorCastriaFoundation::CastriaApplication> Application() override {
    return application_;
  }

 private:
  QuorDataLib::Ref<QuorCastriaFoundation::CastriaApplication> application_;
};

}  // namespace QuorHost
