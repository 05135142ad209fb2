// The sample's chart of accounts, and the ledger keys that its postings name.
#pragma once

#include <cstdint>

#include "host/company/company.h"

namespace QuorHost::Sample {

/// Keys of ledger accounts. A key is the account's number in the fixed chart, so that a ledger line
/// can be read. Bank and control accounts are listed with their currency.
namespace Acct {
inline constexpr std::int32_t kHomeBank = 1010;
inline constexpr std::int32_t kDollarBank = 1020;
inline constexpr std::int32_t kEuroBank = 1030;
inline constexpr std::int32_t kTill = 1040;
inline constexpr std::int32_t kInventory = 1200;
inline constexpr std::int32_t kProjectHours = 1300;
inline constexpr std::int32_t kUnrecordedServices = 1310;
inline constexpr std::int32_t kFederalTaxPaid = 1400;
inline constexpr std::int32_t kQuebecTaxPaid = 1410;
inline constexpr std::int32_t kEquipment = 1500;
inline constexpr std::int32_t kDepreciated = 1510;
inline constexpr std::int32_t kGoodsReceived = 2150;
inline constexpr std::int32_t kFederalTax = 2200;
inline constexpr std::int32_t kQuebecTax = 2210;
inline constexpr std::int32_t kProvincialTax = 2220;
inline constexpr std::int32_t kFederalDeductions = 2310;
inline constexpr std::int32_t kQuebecDeductions = 2320;
inline constexpr std::int32_t kLoan = 2500;
inline constexpr std::int32_t kCurrentEarnings = 3100;
inline constexpr std::int32_t kRetainedEarnings = 3200;
inline constexpr std::int32_t kShareCapital = 3300;
inline constexpr std::int32_t kSales = 4010;
inline constexpr std::int32_t kServiceSales = 4020;
inline constexpr std::int32_t kShippingCharged = 4030;
inline constexpr std::int32_t kSundryIncome = 4040;
inline constexpr std::int32_t kSalesDiscounts = 4090;
inline constexpr std::int32_t kCostOfSales = 5000;
inline constexpr std::int32_t kPurchases = 5010;
inline constexpr std::int32_t kSubcontractors = 5020;
inline constexpr std::int32_t kShippingPaid = 5030;
inline constexpr std::int32_t kMaterialsUsed = 5040;
inline constexpr std::int32_t kCountDifferences = 5050;
inline constexpr std::int32_t kInventoryVariance = 5060;
inline constexpr std::int32_t kPurchaseDiscounts = 5090;
inline constexpr std::int32_t kWages = 6010;
inline constexpr std::int32_t kContributions = 6015;
inline constexpr std::int32_t kRent = 6020;
inline constexpr std::int32_t kSupplies = 6030;
inline constexpr std::int32_t kInsurance = 6040;
inline constexpr std::int32_t kAdvertising = 6050;
inline constexpr std::int32_t kDepreciation = 6060;
/// Made by the user and not used yet.
inline constexpr std::int32_t kTraining = 6070;
inline constexpr std::int32_t kExchangeDifferences = 7010;
inline constexpr std::int32_t kInterest = 7020;
}  // namespace Acct

/// One past the greatest account key.
inline constexpr std::int32_t kAccountsEnd = 8000;

/// Fills `AccountType` and `GLAcct`: the same accounts under the numbers and types of a chart.
void writeAccounts(Store& store, Chart chart);

}  // namespace QuorHost::Sample
