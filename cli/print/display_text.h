// Text as it appears on a screen or a sheet of paper.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace QuorCli {

/// Whether the bytes are well-formed UTF-8.
[[nodiscard]] bool isUtf8(std::string_view text) noexcept;

/// Columns that a text takes on a terminal: accents joined to their letter take none, wide
/// characters of East Asian scripts two.
[[nodiscard]] std::size_t displayWidth(std::string_view text) noexcept;

/// The text with its control characters written out (`\n`, `\x1b`), so that it stays on its line
/// and cannot steer a terminal.
[[nodiscard]] std::string visible(std::string_view text);

/// The text in at most `width` columns, cut with an ellipsis where it is longer.
[[nodiscard]] std::string shortened(std::string_view text, std::size_t width);

/// Appends `text` with blanks before it (`right`) or after it up to `width` columns.
void appendPadded(std::string& out, std::string_view text, std::size_t width, bool right);

}  // namespace QuorCli
