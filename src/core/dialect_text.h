// The two texts of a piece of SQL that the engines write differently.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/data_library.h"

namespace QuorAccQueries {

struct DialectText {
  std::string_view desktop;
  std::string_view server;

  /// The desktop text for engine type 1, the server text for any other.
  [[nodiscard]] constexpr std::string_view of(std::int16_t engineType) const noexcept {
    return engineType == QuorDataLib::kDesktopEngine ? desktop : server;
  }
};

}  // namespace QuorAccQueries
