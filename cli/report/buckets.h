// The age buckets of an aging report.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/values/currency.h"

namespace QuorCli {

/// From which day on a document's age counts.
enum class AgeBy : std::uint8_t { Document, Due };

/// Ranges of days: from the document's day to the first limit, up to each further limit, and beyond
/// the last. By due date there is one more before them, for what is not overdue.
class AgeBuckets {
 public:
  /// Reads limits such as "30,60,90". Raises `UsageError` unless they are whole numbers above 0,
  /// each larger than the one before.
  static AgeBuckets parse(std::string_view text, AgeBy by = AgeBy::Document);

  [[nodiscard]] std::size_t count() const noexcept { return limits_.size() + 1; }

  /// The bucket of an age in days; documents dated later than the report count as new.
  [[nodiscard]] std::size_t bucketOf(std::int64_t days) const noexcept;

  /// The bucket's heading ("31-60", "over 90", "not due") and its column name ("Days31To60",
  /// "DaysOver90", "NotDue").
  [[nodiscard]] std::string title(std::size_t bucket) const;
  [[nodiscard]] std::string columnName(std::size_t bucket) const;

 private:
  AgeBuckets(std::vector<std::int32_t> limits, AgeBy by) : limits_(std::move(limits)), by_(by) {}

  /// First day of the bucket.
  [[nodiscard]] std::int32_t first(std::size_t bucket) const;

  /// The last day of each bucket but the last; by due date 0 is the first of them.
  std::vector<std::int32_t> limits_;
  AgeBy by_;
};

/// A balance and its parts by age. All in one currency.
struct AgedAmounts {
  explicit AgedAmounts(std::size_t buckets) : parts(buckets) {}

  /// Raises 6 when a sum does not fit.
  void add(std::size_t bucket, QuorDataLib::Currency amount) {
    balance += amount;
    parts[bucket] += amount;
  }

  QuorDataLib::Currency balance;
  std::vector<QuorDataLib::Currency> parts;
};

}  // namespace QuorCli
