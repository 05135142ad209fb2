// The blanks that people leave around numbers.
#pragma once

#include <string_view>

namespace QuorDataLib {

/// `text` without the blanks and tabs at its ends.
[[nodiscard]] inline std::string_view withoutBlanks(std::string_view text) noexcept {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace QuorDataLib
