// What can be told of a statement that is passed through, without reading it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace QuorHost::Odbc {

/// What a statement is by its first word.
enum class TextKind : std::uint8_t { Query, Change, Other };

struct TextLook {
  TextKind kind = TextKind::Other;
  /// Question marks outside of quotes and comments.
  std::size_t markers = 0;
  /// Something follows a semicolon.
  bool several = false;
};

/// Looks at a statement in any dialect of SQL.
[[nodiscard]] TextLook lookAt(std::string_view statement) noexcept;

}  // namespace QuorHost::Odbc
