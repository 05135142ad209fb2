#include <windows.h>

#include <array>

#include "cli/print/characters.h"

namespace QuorCli {
namespace {

/// What the system knows about a character; nothing about those beyond the first plane.
WORD kindOf(std::int32_t character, DWORD question) noexcept {
  if (character < 0 || character > 0xFFFF) return 0;
  const auto unit = static_cast<wchar_t>(character);
  WORD kind = 0;
  ::GetStringTypeW(question, &unit, 1, &kind);
  return kind;
}

}  // namespace

std::int32_t readCharacter(std::string_view text, std::size_t& next) noexcept {
  // The system converts what is well-formed only; a character has at most four bytes.
  for (std::size_t size = 1; size <= 4 && next + size <= text.size(); ++size) {
    std::array<wchar_t, 2> units{};
    const int count = ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data() + next,
                                            static_cast<int>(size), units.data(), 2);
    if (count == 0) continue;
    next += size;
    if (count == 1) return units[0];
    return 0x10000 + ((units[0] - 0xD800) << 10) + (units[1] - 0xDC00);
  }
  ++next;
  return -1;
}

std::size_t characterWidth(std::int32_t character) noexcept {
  const WORD kind = kindOf(character, CT_CTYPE3);
  if ((kind & C3_NONSPACING) != 0 && (kind & C3_ALPHA) == 0) return 0;
  constexpr WORD kWide = C3_FULLWIDTH | C3_KATAKANA | C3_HIRAGANA | C3_IDEOGRAPH;
  return (kind & kWide) != 0 && (kind & C3_HALFWIDTH) == 0 ? 2 : 1;
}

bool isControlCharacter(std::int32_t character) noexcept {
  return (kindOf(character, CT_CTYPE1) & C1_CNTRL) != 0;
}

}  // namespace QuorCli
