// Names of tables, columns and functions, which are matched without regard to case.
#pragma once

#include <string>
#include <string_view>

namespace QuorHost::Sql {

/// The lower-case form of a letter of the basic alphabet; any other character as it is.
[[nodiscard]] constexpr char lowerCase(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether two names of one length are one.
[[nodiscard]] bool sameLetters(std::string_view a, std::string_view b) noexcept;

/// Whether two names are one.
[[nodiscard]] inline bool sameName(std::string_view a, std::string_view b) noexcept {
  return a.size() == b.size() && sameLetters(a, b);
}

/// The form of a name that is equal for all its spellings.
[[nodiscard]] std::string lowerName(std::string_view name);

}  // namespace QuorHost::Sql
