#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "cli/print/characters.h"

namespace QuorCli {

std::int32_t readCharacter(std::string_view text, std::size_t& next) noexcept {
  auto at = static_cast<std::int32_t>(next);
  const auto size = static_cast<std::int32_t>(text.size());
  UChar32 character = 0;
  U8_NEXT(text.data(), at, size, character);  // NOLINT(bugprone-inc-dec-in-conditions): a macro
  next = static_cast<std::size_t>(at);
  return character;
}

std::size_t characterWidth(std::int32_t character) noexcept {
  if (character < 0) return 1;
  switch (u_charType(character)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
      return 0;
    default:
      break;
  }
  switch (u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH)) {
    case U_EA_FULLWIDTH:
    case U_EA_WIDE:
      return 2;
    default:
      return 1;
  }
}

bool isControlCharacter(std::int32_t character) noexcept {
  return character >= 0 && u_charType(character) == U_CONTROL_CHAR;
}

}  // namespace QuorCli
