#include "host/company/sample/accounts.h"

#include <array>
#include <string>

#include "host/company/sample/money.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

struct Type {
  std::int32_t id;
  const char* description;
  std::int32_t definition;  // 1 balance sheet, 2 income statement
  bool reverse;
};

constexpr std::array<Type, 7> kTypes{{
    {1, "Assets", 1, false},
    {2, "Liabilities", 1, true},
    {3, "Equity", 1, true},
    {4, "Revenue", 2, true},
    {5, "Cost of sales", 2, false},
    {6, "Operating expenses", 2, false},
    {7, "Other expenses", 2, false},
}};

struct Account {
  std::int32_t key;
  const char* description;
  std::int32_t group;
  std::int32_t currency = 0;
  bool bank = false;
};

// An account's type is the first digit of its number. Groups: 1 a heading's first account, 2 one
// that follows it, 4 one of a subtotal, 6 one of the income statement.
constexpr std::array<Account, 42> kAccounts{{
    {Acct::kHomeBank, "Banque, dollars canadiens", 1, 0, true},
    {1020, "Banque, dollars américains", 2, kDollar, true},
    {1030, "Banque, euros", 2, kEuro, true},
    {Acct::kTill, "Till and undeposited funds", 2},
    {1100, "Accounts receivable", 4},
    {1110, "Accounts receivable, US dollars", 4, kDollar},
    {1120, "Accounts receivable, euros", 4, kEuro},
    {Acct::kInventory, "Inventory", 4},
    {Acct::kProjectHours, "Work in progress, project hours", 4},
    {Acct::kUnrecordedServices, "Work in progress, services not recorded", 4},
    {Acct::kFederalTaxPaid, "GST/HST paid on purchases", 4},
    {Acct::kQuebecTaxPaid, "TVQ payée sur les achats", 4},
    {1500, "Equipment", 4},
    {1510, "Accumulated depreciation", 4},
    {2100, "Accounts payable", 4},
    {2110, "Accounts payable, US dollars", 4, kDollar},
    {2120, "Accounts payable, euros", 4, kEuro},
    {Acct::kFederalTax, "GST/HST charged on sales", 4},
    {Acct::kQuebecTax, "TVQ perçue sur les ventes", 4},
    {Acct::kProvincialTax, "PST charged on sales", 4},
    {2300, "Wages and deductions payable", 4},
    {2500, "Bank loan", 4},
    {Acct::kCurrentEarnings, "Current earnings", 2},
    {Acct::kRetainedEarnings, "Retained earnings", 2},
    {Acct::kShareCapital, "Share capital", 2},
    {Acct::kSales, "Sales of goods", 6},
    {Acct::kServiceSales, "Services rendered", 6},
    {Acct::kShippingCharged, "Shipping charged to customers", 6},
    {Acct::kSundryIncome, "Sundry income", 6},
    {Acct::kSalesDiscounts, "Discounts given to customers", 6},
    {Acct::kPurchases, "Purchases of goods", 6},
    {Acct::kSubcontractors, "Subcontractors", 6},
    {Acct::kShippingPaid, "Shipping and customs", 6},
    {Acct::kPurchaseDiscounts, "Discounts taken from suppliers", 6},
    {Acct::kWages, "Wages", 6},
    {Acct::kRent, "Rent", 6},
    {Acct::kSupplies, "Office supplies and services", 6},
    {6040, "Insurance", 6},
    {6050, "Advertising", 6},
    {6060, "Depreciation", 6},
    {Acct::kExchangeDifferences, "Exchange gains and losses", 6},
    {7020, "Interest and bank charges", 6},
}};

}  // namespace

void writeAccounts(Store& store) {
  Table types(store, "AccountType",
              {"ID", "AcctPrefix", "Description", "ExAcctTypeDefId", "ReverseBalance"});
  for (const Type& type : kTypes) {
    types.add({type.id, std::to_string(type.id), type.description, type.definition, type.reverse});
  }
  Table accounts(store, "GLAcct",
                 {"InGLAcctId", "GLAcctId", "Descr", "AcctType", "ChqAcct", "GroupType",
                  "ExCurrencyId", "CreatedByUser"});
  for (const Account& account : kAccounts) {
    accounts.add({account.key, std::to_string(account.key), account.description, account.key / 1000,
                  account.bank, account.group, keyOrNull(account.currency), false});
  }
}

}  // namespace QuorHost::Sample
