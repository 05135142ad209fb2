// Numbers as statements write them.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace QuorHost::Sql {

/// The number that the whole of `text` is, or nothing when it is something else or does not fit.
template <class Number>
[[nodiscard]] std::optional<Number> readNumber(std::string_view text) noexcept {
  Number value{};
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || stop != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace QuorHost::Sql
