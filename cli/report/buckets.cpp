#include "cli/report/buckets.h"

#include <algorithm>
#include <charconv>
#include <ranges>
#include <utility>

#include "cli/console.h"

namespace QuorCli {

AgeBuckets AgeBuckets::parse(std::string_view text, AgeBy by) {
  const auto refuse = [&] {
    throw UsageError("--buckets wants ascending numbers of days such as 30,60,90, not '" +
                     std::string(text) + "'");
  };
  std::vector<std::int32_t> limits;
  const char* next = text.data();
  const char* const end = next + text.size();
  for (bool more = true; more;) {
    std::int32_t limit = 0;
    const auto [stop, error] = std::from_chars(next, end, limit);
    if (error != std::errc() || limit <= (limits.empty() ? 0 : limits.back())) refuse();
    limits.push_back(limit);
    more = stop != end;
    if (more && *stop != ',') refuse();
    next = stop + (more ? 1 : 0);
  }
  if (by == AgeBy::Due) limits.insert(limits.begin(), 0);
  return {std::move(limits), by};
}

std::size_t AgeBuckets::bucketOf(std::int64_t days) const noexcept {
  return static_cast<std::size_t>(std::ranges::lower_bound(limits_, days) - limits_.begin());
}

std::int32_t AgeBuckets::first(std::size_t bucket) const {
  return bucket == 0 ? 0 : limits_[bucket - 1] + 1;
}

std::string AgeBuckets::title(std::size_t bucket) const {
  if (by_ == AgeBy::Due && bucket == 0) return "not due";
  if (bucket == limits_.size()) return "over " + std::to_string(limits_.back());
  return std::to_string(first(bucket)) + "-" + std::to_string(limits_[bucket]);
}

std::string AgeBuckets::columnName(std::size_t bucket) const {
  if (by_ == AgeBy::Due && bucket == 0) return "NotDue";
  if (bucket == limits_.size()) return "DaysOver" + std::to_string(limits_.back());
  return "Days" + std::to_string(first(bucket)) + "To" + std::to_string(limits_[bucket]);
}

}  // namespace QuorCli
