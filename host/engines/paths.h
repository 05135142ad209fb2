#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace QuorHost {

/// The path that `text` writes. Texts are UTF-8 everywhere, also on a system whose own encoding is
/// another; where names are plain bytes, they go through unchanged.
[[nodiscard]] inline std::filesystem::path pathOf(std::string_view text) {
  return {std::u8string(text.begin(), text.end())};
}

/// The text that writes a path; see `pathOf`.
[[nodiscard]] inline std::string textOf(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace QuorHost
