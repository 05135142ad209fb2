// Lists in statements.
#pragma once

#include <string>
#include <string_view>

namespace QuorHost::Write {

/// What `piece` makes of each of `items`, with `separator` between them.
template <class Items, class Piece>
[[nodiscard]] std::string joined(const Items& items, std::string_view separator,
                                 const Piece& piece) {
  std::string text;
  for (const auto& item : items) {
    if (!text.empty()) text += separator;
    text += piece(item);
  }
  return text;
}

}  // namespace QuorHost::Write
