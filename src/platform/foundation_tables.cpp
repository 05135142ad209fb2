// The member tables of the foundation's contracts.
#include "platform/foundation.h"
#include "platform/member_table.h"

namespace QuorCastriaFoundation {

using QuorDataLib::describeContract;
using QuorDataLib::method;
using QuorDataLib::propertyGet;

const ClassInfo& Settings::info() {
  static const ClassInfo info = describeContract<Settings>(
      "Application settings, by number.",
      {method<&Settings::GetSetting>("GetSetting", {"Number"}, "The value of a setting.")});
  return info;
}

const ClassInfo& CurrencyInfo::info() {
  static const ClassInfo info = describeContract<CurrencyInfo>(
      "How the company deals with currencies.",
      {
          propertyGet<&CurrencyInfo::CieIsForeignCurrencyUsed>(
              "CieIsForeignCurrencyUsed", "Whether there is more than the home currency."),
          propertyGet<&CurrencyInfo::CieHomeCurrencyId>("CieHomeCurrencyId",
                                                        "Key of the home currency."),
      });
  return info;
}

const ClassInfo& Company::info() {
  static const ClassInfo info = describeContract<Company>(
      "The company whose books are open.",
      {
          method<&Company::GetFiscalYearStartDate>("GetFiscalYearStartDate", {"AtDate"},
                                                   "First day of the fiscal year of a date."),
          propertyGet<&Company::SessionDate>("SessionDate", "The date that the user works at."),
          method<&Company::GetParam>("GetParam", {"Name", "DefaultValue"}, "A company parameter."),
          method<&Company::SetParam>("SetParam", {"Name", "Value"}, "Sets a company parameter."),
          propertyGet<&Company::CieAccountTypeChart>("CieAccountTypeChart",
                                                     "The kind of chart of accounts."),
          propertyGet<&Company::CurrencyInfo>("CurrencyInfo", "The company's currencies."),
      });
  return info;
}

const ClassInfo& Declares::info() {
  static const ClassInfo info = describeContract<Declares>(
      "Codes that the application declares for its data sets.",
      {propertyGet<&Declares::DATA_TRX_REC>("DATA_TRX_REC", "Recurring transactions.")});
  return info;
}

const ClassInfo& CastriaApplication::info() {
  static const ClassInfo info = describeContract<CastriaApplication>(
      "The foundation's application object.",
      {
          propertyGet<&CastriaApplication::Settings>("Settings", "The application settings."),
          propertyGet<&CastriaApplication::Company>("Company", "The open company."),
          propertyGet<&CastriaApplication::Declares>("Declares", "The codes of data sets."),
      });
  return info;
}

const ClassInfo& CCastriaHelper::info() {
  static const ClassInfo info = describeContract<CCastriaHelper>(
      "The door to the foundation's application object.",
      {propertyGet<&CCastriaHelper::Application>("Application", "The application object.")});
  return info;
}

}  // namespace QuorCastriaFoundation
