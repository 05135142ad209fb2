#include "ledger/account_numbers.h"

#include <algorithm>
#include <cctype>

namespace QuorAccQueries {

using QuorDataLib::Value;

namespace {

constexpr std::string_view kSeparators = ",; \t\r\n";

/// `BuildFranceAccountNumber`: the rule of the French chart.
std::string frenchAccountNumber(const std::string& prefix, std::int32_t counter) {
  constexpr std::size_t kDigits = 6;
  if (!Value(prefix).isNumeric()) return prefix + digitsOf(counter, 5);
  std::string padded = prefix;
  if (padded.size() < kDigits) padded.resize(kDigits, '0');
  return digitsOf(std::int64_t{Value(padded).toLong()} + counter, kDigits);
}

}  // namespace

std::string digitsOf(std::int64_t number, int digits) {
  const std::string text = std::to_string(number < 0 ? -number : number);
  const auto missing = std::max<std::int64_t>(0, digits - static_cast<std::int64_t>(text.size()));
  return (number < 0 ? "-" : "") + std::string(static_cast<std::size_t>(missing), '0') + text;
}

std::string firstCharacters(const std::string& text, std::size_t count) {
  std::size_t end = 0;
  // A byte that goes on with a character begins with the bits 10.
  const auto goesOn = [&] { return (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U; };
  for (std::size_t characters = 0; end < text.size(); ++end) {
    if (!goesOn() && characters++ == count) break;
  }
  return text.substr(0, end);
}

std::vector<std::int32_t> accountTypesIn(std::string_view list) {
  std::vector<std::int32_t> types;
  while (true) {
    list.remove_prefix(std::min(list.find_first_not_of(kSeparators), list.size()));
    if (list.empty()) return types;
    const std::string_view type = list.substr(0, list.find_first_of(kSeparators));
    types.push_back(Value(type).toLong());
    list.remove_prefix(type.size());
  }
}

std::string accountNumber(const std::string& prefix, std::int32_t counter, bool frenchChart) {
  return frenchChart ? frenchAccountNumber(prefix, counter) : prefix + digitsOf(counter, 3);
}

bool beginsWith(std::string_view number, std::string_view prefix) {
  const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
  return !prefix.empty() && number.size() >= prefix.size() &&
         std::ranges::equal(number.substr(0, prefix.size()), prefix, {}, lower, lower);
}

bool isWholeNumber(std::string_view text) {
  constexpr std::string_view kLargest = "2147483647";
  const bool digits =
      !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  if (!digits) return false;
  text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
  return text.size() < kLargest.size() || (text.size() == kLargest.size() && text <= kLargest);
}

}  // namespace QuorAccQueries
