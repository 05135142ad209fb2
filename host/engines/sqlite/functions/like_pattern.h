// The patterns of LIKE.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace QuorHost::Sqlite {

/// Which wildcards a pattern may hold: both dialects know `%` (any run of characters), `_` (any
/// character) and `[a-z]` (one of a set); the desktop dialect also `*` and `?` for the first two,
/// `#` (a digit) and `[!a-z]` (one outside the set), which the server dialect writes `[^a-z]`.
enum class Wildcards : std::uint8_t { Server, Desktop };

/// A pattern ready to be matched.
class LikePattern {
 public:
  LikePattern(std::string_view pattern, Wildcards wildcards);

  /// Whether the whole of `text`, `folded`, is of the pattern. The time is at most the product of
  /// both lengths.
  [[nodiscard]] bool matches(std::u32string_view text) const noexcept;

 private:
  struct Part {
    enum class Kind : std::uint8_t { Run, Any, Digit, Set, Character };
    Kind kind = Kind::Character;
    bool negated = false;
    char32_t character = 0;
    std::vector<std::pair<char32_t, char32_t>> ranges;

    [[nodiscard]] bool takes(char32_t c) const noexcept;
  };

  std::size_t readSet(std::u32string_view pattern, char32_t negation);

  std::vector<Part> parts_;
};

}  // namespace QuorHost::Sqlite
