// Account numbers as texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/values/value.h"

namespace QuorAccQueries {

/// Values of `Company::CieAccountTypeChart`: the fixed chart, whose types are numbers that all
/// know, and the French one, whose numbers have six digits. Any other is the user's own.
inline constexpr std::int32_t kFixedChart = 1;
inline constexpr std::int32_t kFrenchChart = 2;

/// The number with zeros before it up to `digits` digits.
std::string digitsOf(std::int64_t number, int digits);

/// The first `count` characters of a UTF-8 text.
std::string firstCharacters(const std::string& text, std::size_t count);

/// Account types in a text, separated by commas, semicolons or blanks. Raises 13 for what is no
/// number.
std::vector<std::int32_t> accountTypesIn(std::string_view list);

/// The account number of a prefix and a counter from 0: the prefix and three digits; in the French
/// chart six digits that begin with the prefix, or a prefix that is no number and five digits.
std::string accountNumber(const std::string& prefix, std::int32_t counter, bool frenchChart);

/// Whether an account number begins with a prefix, without regard to the case of plain letters; no
/// number begins with an empty one.
bool beginsWith(std::string_view number, std::string_view prefix);

/// Whether a text is a whole number without a sign that fits 32 bits.
bool isWholeNumber(std::string_view text);

}  // namespace QuorAccQueries
