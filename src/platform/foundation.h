// The contracts of the application foundation: company, currencies, settings and declarations.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/ref.h"
#include "platform/values/date.h"
#include "platform/values/value.h"

namespace QuorCastriaFoundation {

using QuorDataLib::ClassInfo;
using QuorDataLib::Contract;
using QuorDataLib::Date;
using QuorDataLib::Object;
using QuorDataLib::Ref;
using QuorDataLib::Value;

/// Application settings, by number.
class Settings : public Contract<Settings> {
 public:
  static constexpr std::string_view kClassName = "Settings";
  static const ClassInfo& info();

  /// The value of setting `number`; 133 tells whether helpers may keep recordsets in memory.
  /// An unknown setting is 0.
  virtual Value GetSetting(std::int16_t number) = 0;
};

/// How the company deals with currencies.
class CurrencyInfo : public Contract<CurrencyInfo> {
 public:
  static constexpr std::string_view kClassName = "CurrencyInfo";
  static const ClassInfo& info();

  /// True when the company trades in more than its home currency.
  virtual bool CieIsForeignCurrencyUsed() = 0;
  /// `WorldCurrency.InCurrencyId` of the home currency.
  virtual std::int32_t CieHomeCurrencyId() = 0;
};

/// The company whose books are open.
class Company : public Contract<Company> {
 public:
  static constexpr std::string_view kClassName = "Company";
  static const ClassInfo& info();

  /// First day of the fiscal year that contains `date`.
  virtual Date GetFiscalYearStartDate(Date date) = 0;
  /// The date that the user works at.
  virtual Date SessionDate() = 0;
  /// A company parameter; `defaultValue` when it was never set.
  virtual Value GetParam(const std::string& name, const Value& defaultValue) = 0;
  /// Sets a company parameter.
  virtual void SetParam(const std::string& name, const Value& value) = 0;
  /// 1 for the fixed chart of accounts, 2 for the French chart, any other value for a chart that
  /// the user defines.
  virtual std::int32_t CieAccountTypeChart() = 0;
  /// Never empty.
  virtual Ref<QuorCastriaFoundation::CurrencyInfo> CurrencyInfo() = 0;
};

/// Codes that the application declares for its data sets.
class Declares : public Contract<Declares> {
 public:
  static constexpr std::string_view kClassName = "Declares";
  static const ClassInfo& info();

  /// The data set of recurring transactions.
  virtual std::int32_t DATA_TRX_REC() = 0;
};

/// The foundation's application object. None of the objects returned is empty.
class CastriaApplication : public Contract<CastriaApplication> {
 public:
  static constexpr std::string_view kClassName = "CastriaApplication";
  static const ClassInfo& info();

  virtual Ref<QuorCastriaFoundation::Settings> Settings() = 0;
  virtual Ref<QuorCastriaFoundation::Company> Company() = 0;
  virtual Ref<QuorCastriaFoundation::Declares> Declares() = 0;
};

/// The foundation helper: the door to the foundation's application object.
class CCastriaHelper : public Contract<CCastriaHelper> {
 public:
  static constexpr std::string_view kClassName = "CCastriaHelper";
  static const ClassInfo& info();

  virtual Ref<CastriaApplication> Application() = 0;
};

}  // namespace QuorCastriaFoundation
