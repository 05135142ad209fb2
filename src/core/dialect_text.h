// The two texts of a piece of SQL that the engines write differently.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/data_library.h"

namespace QuorAccQueries {

/// Which of the two goes out is decided by a test of the engine type. Statements do not all test
/// alike, and each keeps its own test: it shows with an engine that is neither of the two.
struct DialectText {
  std::string_view desktop;
  std::string_view server;

  /// The desktop text for engine type 1, the server text for any other. Most statements test so.
  [[nodiscard]] constexpr std::string_view of(std::int16_t engineType) const noexcept {
    return engineType == QuorDataLib::kDesktopEngine ? desktop : server;
  }

  /// The desktop text for engine type 1, the server text for 0, and no text for any other.
  [[nodiscard]] constexpr std::string_view ofKnown(std::int16_t engineType) const noexcept {
    if (engineType == QuorDataLib::kDesktopEngine) return desktop;
    return engineType == QuorDataLib::kServerEngine ? server : std::string_view();
  }

  /// The server text for engine type 0, the desktop text for any other.
  [[nodiscard]] constexpr std::string_view unlessServer(std::int16_t engineType) const noexcept {
    return engineType == QuorDataLib::kServerEngine ? server : desktop;
  }
};

}  // namespace QuorAccQueries
