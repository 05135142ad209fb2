// The aging report on its way out.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "cli/console.h"
#include "cli/print/row_printer.h"
#include "cli/report/buckets.h"
#include "cli/report/grouping.h"

namespace QuorCli {

/// What the report says beside its figures.
struct AgingContext {
  const AgingSource* source = nullptr;
  QuorDataLib::Date asOf;
  AgeBuckets buckets;
  bool all = false;
  bool byCurrency = false;
  std::string companyName;
  std::int32_t homeCurrency = 1;
  std::map<std::int32_t, std::string> currencyCodes;
  /// Documents to print at most.
  std::optional<std::int64_t> limit;

  /// The currency's code, or its id where the company has no such currency.
  [[nodiscard]] std::string currencyCode(std::int32_t currencyId) const;
};

/// What a document is, in a word: "credit" for an open credit.
[[nodiscard]] std::string documentKind(const AgingSource& source, const AgedDocument& document);

class AgingPrinter {
 public:
  virtual ~AgingPrinter() = default;
  virtual void begin() = 0;
  virtual void block(const AgingBlock& block) = 0;
  /// False once nothing that could still come would be printed.
  [[nodiscard]] virtual bool wantsMore() const = 0;
  virtual void end(const AgingTotals& totals) = 0;
};

/// The report for people. With a limit it prints so many documents; its totals are of all of them.
[[nodiscard]] std::unique_ptr<AgingPrinter> makeAgingSheet(AgingContext context, Console& console);

/// A row for each document, in one of the formats for programs.
[[nodiscard]] std::unique_ptr<AgingPrinter> makeAgingRows(AgingContext context, Format format,
                                                          Console& console);

}  // namespace QuorCli
