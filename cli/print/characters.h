// What characters are, by the library that knows them all: ICU, or the system itself where there is
// none (Windows).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace QuorCli {

/// The character of UTF-8 at `next`, which moves behind it; negative for a byte that belongs to
/// none.
[[nodiscard]] std::int32_t readCharacter(std::string_view text, std::size_t& next) noexcept;

/// Columns that a character takes on a terminal: 0, 1 or 2.
[[nodiscard]] std::size_t characterWidth(std::int32_t character) noexcept;

[[nodiscard]] bool isControlCharacter(std::int32_t character) noexcept;

}  // namespace QuorCli
