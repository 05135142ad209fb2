// A document of the sample's trade, of either side.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/company/sample/ledger.h"
#include "host/company/sample/money.h"
#include "host/company/sample/trade/parties.h"

namespace QuorHost::Sample {

/// Types of documents; a customer's have the same numbers as a supplier's.
namespace DocType {
inline constexpr std::int32_t kGoods = 1;
inline constexpr std::int32_t kCounterSale = 2;
inline constexpr std::int32_t kExpense = 2;
inline constexpr std::int32_t kServices = 3;
inline constexpr std::int32_t kAdjustment = 4;
inline constexpr std::int32_t kOrder = 51;
inline constexpr std::int32_t kReception = 52;
}  // namespace DocType

/// What tells the two sides of the trade apart in the books.
struct Side {
  /// 1 for receivables, whose documents debit the control account, -1 for payables.
  int sign;
  std::int32_t SampleCurrency::* controlAccount;
  std::int32_t discountAccount;
  std::int32_t shippingAccount;
  std::string_view paymentSource;
};
extern const Side kReceivablesSide;
extern const Side kPayablesSide;

/// Numbers the documents and payments of one side, so that a key tells which one it is.
class Numbering {
 public:
  std::int32_t next() { return ++last_; }

 private:
  std::int32_t last_ = 0;
};

struct DocumentLine {
  std::int32_t item = 0;
  std::int32_t quantity = 0;
  Cents price = 0;
  /// The order's line that an invoice's line delivers.
  std::int32_t orderLine = 0;
  /// The project that goods are bought for.
  std::int32_t project = 0;

  [[nodiscard]] Cents amount() const { return quantity * price; }
};

/// Amounts are in the party's currency; a credit note has negative ones.
struct Document {
  std::int32_t id = 0;
  std::int32_t type = DocType::kGoods;
  std::string number;
  const Party* party = nullptr;
  int day = 0;
  std::int32_t project = 0;
  /// Its payment term.
  std::int32_t term = 0;
  /// Income or expense account of the lines.
  std::int32_t account = 0;
  std::vector<DocumentLine> lines;
  Cents shipping = 0;
  std::int32_t federalTaxAccount = 0;
  std::int32_t provincialTaxAccount = 0;
  /// Paid with the document itself, and where.
  Cents settled = 0;
  std::int32_t settledAccount = 0;

  // What `complete` works out.
  Rate rate = kParity;
  Cents net = 0;
  Cents federalTax = 0;
  Cents provincialTax = 0;
  Cents total = 0;

  // What writing and posting it gives.
  std::int32_t firstLine = 0;
  std::int32_t ledgerSequence = 0;

  [[nodiscard]] Cents tax() const { return federalTax + provincialTax; }
  [[nodiscard]] Cents balance() const { return total - settled; }
  /// The balance in home currency.
  [[nodiscard]] Cents balanceHome() const { return toHome(total, rate) - toHome(settled, rate); }
};

/// Works out the totals, taxing goods and shipping at the rates given, in thousandths of a percent.
void complete(Document& document, const Rates& rates, std::int32_t federalRate,
              std::int32_t provincialRate);

/// Posts a complete document, and notes its ledger transaction.
void post(Ledger& ledger, Document& document, const Side& side, std::string_view source);

/// What each line of a document comes to in home currency; together they come to what the whole
/// does.
std::vector<Cents> lineAmountsHome(const Document& document);

/// The values of a document's exchange rate and currency: null for a party without a currency.
QuorDataLib::Value rateValue(const Party& party, Rate rate);
QuorDataLib::Value currencyValue(const Party& party);

}  // namespace QuorHost::Sample
