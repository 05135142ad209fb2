// Texts as drivers take and give them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/odbc/driver/api.h"

namespace QuorHost::Odbc {

/// A text in UTF-16, with a zero behind it that `size` does not count.
class WideText {
 public:
  /// `text` is UTF-8; a byte that is no character becomes a replacement character.
  explicit WideText(std::string_view text);

  /// The functions of ODBC take what they only read as if they would write to it.
  [[nodiscard]] SQLWCHAR* data() noexcept { return units_.data(); }
  /// Units of two bytes.
  [[nodiscard]] std::size_t size() const noexcept { return units_.size() - 1; }

 private:
  std::vector<SQLWCHAR> units_;
};

/// Adds `units` to `text` as UTF-8; half a character becomes a replacement character.
void appendNarrow(const SQLWCHAR* units, std::size_t count, std::string& text);

/// `units` as UTF-8.
[[nodiscard]] std::string narrow(const SQLWCHAR* units, std::size_t count);

}  // namespace QuorHost::Odbc
