// What an aging report says: blocks of documents, or a line for each party, and the totals.
#pragma once

#include <optional>
#include <string>

#include "cli/report/aging/grouping.h"
#include "cli/report/aging/source.h"
#include "cli/report/buckets.h"
#include "cli/report/company_facts.h"
#include "cli/report/report.h"

namespace QuorCli {

/// What is asked of the report, and what it says beside its figures.
struct AgingContext {
  const AgingSource* source = nullptr;
  QuorDataLib::Date asOf;
  AgeBy by = AgeBy::Document;
  AgeBuckets buckets;
  bool all = false;
  bool byCurrency = false;
  /// A line for each party and currency instead of one for each document.
  bool summary = false;
  CompanyFacts company;
  std::optional<std::int64_t> limit;
};

class AgingPage {
 public:
  AgingPage(const AgingContext& context, Report& report) : context_(context), report_(report) {}

  void begin();
  void block(const AgingBlock& block);
  void end(const AgingTotals& totals);

 private:
  [[nodiscard]] std::string title() const;
  [[nodiscard]] std::vector<Column> columns() const;
  void document(const AgingBlock& block, const AgedDocument& document);
  void party(const AgingBlock& block);
  /// A line of a balance and its parts; the columns before them stay blank.
  [[nodiscard]] Line totalLine(const AgedAmounts& amounts) const;
  [[nodiscard]] std::string counted(const CurrencyTotal& sum) const;

  const AgingContext& context_;
  Report& report_;
  std::size_t columns_ = 0;
  std::optional<std::int32_t> currency_;
};

}  // namespace QuorCli
