// What texts of a company are made of.
#pragma once

#include <cstddef>
#include <string_view>

namespace QuorHost::Sql {

/// The place of the first byte that is not well-formed UTF-8, or `npos`. A zero counts as
/// ill-formed: no text of a company holds one.
[[nodiscard]] std::size_t findIllFormed(std::string_view text) noexcept;

/// Number of characters of a well-formed text.
[[nodiscard]] std::size_t countCharacters(std::string_view text) noexcept;

}  // namespace QuorHost::Sql
