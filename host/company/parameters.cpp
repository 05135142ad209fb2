#include "host/company/parameters.h"

#include "host/company/sample/accounts.h"
#include "host/company/table.h"

namespace QuorHost {

void writeParameters(Store& store) {
  using namespace Sample;

  Table accounting(store, "QuorAcctParams", {"ParamName", "ParamValue"});
  accounting.add({"CustGLDiscSale", Acct::kSalesDiscounts});
  accounting.add({"GLCurntEarn", Acct::kCurrentEarnings});
  accounting.add({"GLRtainEarn", Acct::kRetainedEarnings});
  accounting.add({"SuppGLInvAcct", Acct::kInventory});
  accounting.add({"SuppGLPurchAcct", Acct::kPurchases});
  accounting.add({"WIPGLBankAccount", Acct::kProjectHours});
  accounting.add({"WIPGLUnrecordedServiceAccount", Acct::kUnrecordedServices});

  Table application(store, "QuorCastriaParams", {"ParamName", "ParamValue"});
  application.add({"Use6DigitAccounts", "0"});
  application.add({"UseAccountNumbers", "1"});

  Table company(store, "CieParam", {"ParamName", "ParamValue"});
  company.add({"CostCalculMeth", "0"});
  company.add({"InventGLToDate", "0"});
  company.add({"QtyCostAtSessionDate", "0"});

  Table texts(store, "CieSetting", {"SettingName", "SettingText"});
  texts.add({"1056", "The balance of account {0}{1} is {2}."});
  texts.add({"1057", "Le solde du compte {0}{1} est de {2}."});

  Table settings(store, "AppSetting", {"SettingNo", "SettingValue"});
  settings.add({133, 1});
}

}  // namespace QuorHost
