// Texts of users' data in messages.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace QuorDataLib {

/// `text` as a message may show it: on one line, control characters as blanks, and cut after `most`
/// bytes at a character's end, with "..." in the place of the rest.
[[nodiscard]] std::string shownText(std::string_view text, std::size_t most = 60);

}  // namespace QuorDataLib
