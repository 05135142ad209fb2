#include "cli/print/amount_text.h"

#include <algorithm>
#include <string_view>

namespace QuorCli {
namespace {

/// Puts commas between the thousands of a run of digits.
std::string withCommas(std::string_view digits) {
  std::string text;
  for (std::size_t index = 0; index < digits.size(); ++index) {
    if (index > 0 && (digits.size() - index) % 3 == 0) text += ',';
    text += digits[index];
  }
  return text;
}

/// The same for a number that may have decimals behind a point.
std::string withCommasBeforePoint(std::string_view digits) {
  const std::size_t point = std::min(digits.find('.'), digits.size());
  return withCommas(digits.substr(0, point)) + std::string(digits.substr(point));
}

}  // namespace

std::string grouped(std::int64_t number) {
  const std::string text = std::to_string(number);
  return number < 0 ? "-" + withCommas(std::string_view(text).substr(1)) : withCommas(text);
}

std::string amountText(QuorDataLib::Currency amount) {
  constexpr std::int64_t kUnitsPerCent = QuorDataLib::Currency::kUnitsPerOne / 100;
  const bool credit = amount.units() < 0;
  const std::string text = amount.toText(amount.units() % kUnitsPerCent == 0 ? 2 : 4);
  const std::string_view digits = std::string_view(text).substr(credit ? 1 : 0);
  const std::string number = withCommasBeforePoint(digits);
  return credit ? "(" + number + ")" : number + " ";
}

std::string quantityText(QuorDataLib::Currency quantity, int decimals) {
  const std::string text = quantity.toText(decimals);
  const bool negative = text.starts_with('-');
  const std::string number = withCommasBeforePoint(std::string_view(text).substr(negative ? 1 : 0));
  return negative ? "-" + number : number;
}

}  // namespace QuorCli
