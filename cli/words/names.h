// Names as people type them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace QuorCli {

/// Whether two names are the same but for the case of their letters (A to Z).
[[nodiscard]] bool sameName(std::string_view a, std::string_view b) noexcept;

/// " Did you mean A, B or C?", naming those of `names` that differ from `name` by a letter or two
/// or leave a part of it out; nothing when there are none.
[[nodiscard]] std::string suggestion(std::string_view name,
                                     const std::vector<std::string_view>& names);

/// The same, or else " The nearest names are A, B and C.", however far they are.
[[nodiscard]] std::string nearestNames(std::string_view name,
                                       const std::vector<std::string_view>& names);

}  // namespace QuorCli
