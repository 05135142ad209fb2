// From aging rows to documents, parties and totals.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/report/aging/source.h"
#include "cli/report/buckets.h"
#include "cli/report/exchange.h"
#include "platform/values/date.h"

namespace QuorCli {

/// A document with everything applied to it, or an open credit.
struct AgedDocument {
  enum class Kind : std::uint8_t {
    Document,
    /// Payments applied to a document that is not there itself: it is dated after the report.
    Payment,
    /// A payment's credit that is tied to no document.
    Credit,
  };
  Kind kind = Kind::Document;
  std::int32_t id = 0;
  /// Number, type and date of the document, or of the payment.
  std::string number;
  std::int32_t type = 0;
  QuorDataLib::Date date;
  /// The day that its age counts from: its own, or the day that it is due.
  QuorDataLib::Date agesFrom;
  /// Days from there to the report's day; negative when that comes first.
  std::int64_t age = 0;
  std::size_t bucket = 0;
  /// What the document itself came to, before anything was applied to it.
  QuorDataLib::Currency amount;
  /// What is left of it, and the same in home currency at its exchange rate.
  QuorDataLib::Currency balance;
  HomeSum home;
};

/// What one party owes, or is owed, in one currency.
struct AgingBlock {
  explicit AgingBlock(std::size_t buckets) : total(buckets) {}

  std::int32_t partyId = 0;
  std::string partyCode;
  std::string partyName;
  std::int32_t currencyId = 0;
  std::vector<AgedDocument> documents;
  AgedAmounts total;
  /// The balance in home currency, each document at its own rate.
  QuorDataLib::Currency home;
};

/// Sums over parties, for one currency.
struct CurrencyTotal {
  explicit CurrencyTotal(std::size_t buckets) : amounts(buckets) {}

  AgedAmounts amounts;
  std::int64_t parties = 0;
  std::int64_t documents = 0;
};

struct AgingTotals {
  explicit AgingTotals(std::size_t buckets) : home(buckets) {}

  /// By currency id. Amounts of different currencies are never added.
  std::map<std::int32_t, CurrencyTotal> byCurrency;
  /// Everything in home currency.
  AgedAmounts home;
};

/// Groups rows that come by party, and within a party by document. One party is kept at a time.
class AgingGrouping {
 public:
  /// `ready` receives each block once it is complete.
  AgingGrouping(QuorDataLib::Date asOf, AgeBuckets buckets, std::int32_t homeCurrency,
                std::function<void(const AgingBlock&)> ready);

  /// Takes the next row. Raises 6 when a sum does not fit.
  void add(const AgingRow& row);

  /// Hands over the last party's blocks. The totals are complete then.
  void finish();

  [[nodiscard]] const AgingTotals& totals() const noexcept { return totals_; }

 private:
  /// A block being filled. Rows of one order id and date go to the document at `open`; open credits
  /// stand on their own.
  struct Filling {
    AgingBlock block;
    std::optional<std::size_t> open;
    QuorDataLib::Date openDate;
  };

  Filling& fillingFor(const AgingRow& row);
  AgedDocument& documentFor(Filling& filling, const AgingRow& row) const;
  AgedDocument& append(AgingBlock& block, const AgingRow& row, AgedDocument::Kind kind) const;

  QuorDataLib::Date asOf_;
  AgeBuckets buckets_;
  std::int32_t homeCurrency_;
  std::function<void(const AgingBlock&)> ready_;
  /// The blocks of the party whose rows are coming, in the order in which its currencies came.
  std::vector<Filling> party_;
  AgingTotals totals_;
};

}  // namespace QuorCli
