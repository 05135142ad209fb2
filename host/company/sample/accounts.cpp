#include "host/company/sample/accounts.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "host/company/sample/money.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

struct Type {
  std::int32_t id;
  const char* prefix;
  const char* description;
  std::int32_t definition;  // 1 balance sheet, 2 income statement
  bool reverse;
};

/// The fixed chart: a type is the first digit of its accounts' numbers.
constexpr std::array<Type, 7> kFixedTypes{{
    {1, "1", "Assets", 1, false},
    {2, "2", "Liabilities", 1, true},
    {3, "3", "Equity", 1, true},
    {4, "4", "Revenue", 2, true},
    {5, "5", "Cost of sales", 2, false},
    {6, "6", "Operating expenses", 2, false},
    {7, "7", "Other expenses", 2, false},
}};

/// The French chart, by the classes that its numbers begin with.
constexpr std::array<Type, 14> kFrenchTypes{{
    {10, "10", "Capital", 1, true},
    {11, "11", "Report à nouveau", 1, true},
    {12, "12", "Résultat de l'exercice", 1, true},
    {16, "16", "Emprunts", 1, true},
    {21, "21", "Immobilisations", 1, false},
    {28, "28", "Amortissements", 1, true},
    {33, "33", "En-cours", 1, false},
    {37, "37", "Stocks de marchandises", 1, false},
    {40, "40", "Fournisseurs", 1, true},
    {41, "41", "Clients", 1, false},
    {44, "44", "État et organismes sociaux", 1, true},
    {51, "51", "Banques et caisse", 1, false},
    {60, "6", "Charges", 2, false},
    {70, "7", "Produits", 2, true},
}};

/// A chart of the user's own, with letters in its numbers.
constexpr std::array<Type, 7> kOwnTypes{{
    {110, "A", "Assets / Actif", 1, false},
    {120, "L", "Liabilities / Passif", 1, true},
    {130, "E", "Equity / Avoir", 1, true},
    {240, "R", "Revenue / Revenus", 2, true},
    {250, "C", "Cost of sales / Coût des ventes", 2, false},
    {260, "X", "Expenses / Frais", 2, false},
    {270, "Z", "Other expenses / Autres frais", 2, false},
}};

struct Account {
  std::int32_t key;
  const char* french;  // its number in the French chart
  const char* description;
  std::int32_t group;
  std::int32_t currency = 0;
  bool bank = false;
};

// Groups: 1 a heading's first account, 2 one that follows it, 4 one of a subtotal, 6 one of the
// income statement.
constexpr std::array<Account, 51> kAccounts{{
    {Acct::kHomeBank, "512000", "Banque, dollars canadiens", 1, 0, true},
    {Acct::kDollarBank, "512100", "Banque, dollars américains", 2, kDollar, true},
    {Acct::kEuroBank, "512200", "Banque, euros", 2, kEuro, true},
    {Acct::kTill, "511000", "Till and undeposited funds", 2},
    {1100, "411000", "Accounts receivable", 4},
    {1110, "411100", "Accounts receivable, US dollars", 4, kDollar},
    {1120, "411200", "Accounts receivable, euros", 4, kEuro},
    {Acct::kInventory, "370000", "Inventory", 4},
    {Acct::kProjectHours, "335000", "Work in progress, project hours", 4},
    {Acct::kUnrecordedServices, "335100", "Work in progress, services not recorded", 4},
    {Acct::kFederalTaxPaid, "445660", "GST/HST paid on purchases", 4},
    {Acct::kQuebecTaxPaid, "445670", "TVQ payée sur les achats", 4},
    {Acct::kEquipment, "215000", "Equipment", 4},
    {Acct::kDepreciated, "281500", "Accumulated depreciation", 4},
    {2100, "401000", "Accounts payable", 4},
    {2110, "401100", "Accounts payable, US dollars", 4, kDollar},
    {2120, "401200", "Accounts payable, euros", 4, kEuro},
    {Acct::kGoodsReceived, "408000", "Marchandises reçues non facturées", 4},
    {Acct::kFederalTax, "445710", "GST/HST charged on sales", 4},
    {Acct::kQuebecTax, "445720", "TVQ perçue sur les ventes", 4},
    {Acct::kProvincialTax, "445730", "PST charged on sales", 4},
    {2300, "442000", "Wages payable", 4},
    {Acct::kFederalDeductions, "443100", "Source deductions payable, federal", 4},
    {Acct::kQuebecDeductions, "443200", "Retenues à la source à payer, Québec", 4},
    {Acct::kLoan, "164000", "Bank loan", 4},
    {Acct::kCurrentEarnings, "120000", "Current earnings", 2},
    {Acct::kRetainedEarnings, "110000", "Retained earnings", 2},
    {Acct::kShareCapital, "101000", "Share capital", 2},
    {Acct::kSales, "707000", "Sales of goods", 6},
    {Acct::kServiceSales, "706000", "Services rendered", 6},
    {Acct::kShippingCharged, "708500", "Shipping charged to customers", 6},
    {Acct::kSundryIncome, "758000", "Sundry income", 6},
    {Acct::kSalesDiscounts, "709000", "Discounts given to customers", 6},
    {Acct::kCostOfSales, "603000", "Cost of goods sold", 6},
    {Acct::kPurchases, "607000", "Purchases of goods", 6},
    {Acct::kSubcontractors, "611000", "Subcontractors", 6},
    {Acct::kShippingPaid, "624000", "Shipping and customs", 6},
    {Acct::kMaterialsUsed, "602000", "Matériaux utilisés", 6},
    {Acct::kCountDifferences, "603100", "Stock counts, differences", 6},
    {Acct::kInventoryVariance, "603200", "Écarts d'inventaire / Inventory variances", 6},
    {Acct::kPurchaseDiscounts, "609000", "Discounts taken from suppliers", 6},
    {Acct::kWages, "641000", "Wages", 6},
    {Acct::kContributions, "645000", "Cotisations de l'employeur", 6},
    {Acct::kRent, "613000", "Rent", 6},
    {Acct::kSupplies, "606000", "Office supplies and services", 6},
    {Acct::kInsurance, "616000", "Insurance", 6},
    {Acct::kAdvertising, "623000", "Advertising", 6},
    {Acct::kDepreciation, "681000", "Depreciation", 6},
    {Acct::kTraining, "631000", "Formation / Training", 6},
    {Acct::kExchangeDifferences, "666000", "Exchange gains and losses", 6},
    {Acct::kInterest, "661000", "Interest and bank charges", 6},
}};

std::span<const Type> typesOf(Chart chart) {
  if (chart == Chart::French) return kFrenchTypes;
  if (chart == Chart::Own) return kOwnTypes;
  return kFixedTypes;
}

std::string numberOf(const Account& account, Chart chart) {
  if (chart == Chart::French) return account.french;
  std::string number = std::to_string(account.key);
  if (chart == Chart::Own) {
    number.front() = *kOwnTypes.at(static_cast<std::size_t>(account.key / 1000) - 1).prefix;
  }
  return number;
}

std::int32_t typeOf(std::string_view number, Chart chart) {
  for (const Type& type : typesOf(chart)) {
    if (number.starts_with(type.prefix)) return type.id;
  }
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InternalError,
                     "The sample has no account type for " + std::string(number));
}

}  // namespace

void writeAccounts(Store& store, Chart chart) {
  Table types(store, "AccountType",
              {"ID", "AcctPrefix", "Description", "ExAcctTypeDefId", "ReverseBalance"});
  for (const Type& type : typesOf(chart)) {
    types.add({type.id, type.prefix, type.description, type.definition, type.reverse});
  }
  Table accounts(store, "GLAcct",
                 {"InGLAcctId", "GLAcctId", "Descr", "AcctType", "ChqAcct", "GroupType",
                  "ExCurrencyId", "CreatedByUser"});
  for (const Account& account : kAccounts) {
    const std::string number = numberOf(account, chart);
    accounts.add({account.key, number, account.description, typeOf(number, chart), account.bank,
                  account.group, keyOrNull(account.currency), account.key == Acct::kTraining});
  }
}

}  // namespace QuorHost::Sample
