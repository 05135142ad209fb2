#include <windows.h>

#include "host/engines/sqlite/functions/letters.h"
#include "host/engines/sqlite/functions/wide_text.h"

namespace QuorHost::Sqlite {
namespace {

/// One character for one: the length does not change.
std::wstring mapped(std::wstring text, DWORD how) {
  ::LCMapStringEx(LOCALE_NAME_INVARIANT, how, text.data(), static_cast<int>(text.size()),
                  text.data(), static_cast<int>(text.size()), nullptr, nullptr, 0);
  return text;
}

}  // namespace

// NOLINTBEGIN(bugprone-suspicious-stringview-data-usage): the sizes go along
std::wstring wide(std::string_view text) {
  const auto size = static_cast<int>(text.size());
  std::wstring result;
  if (size == 0) return result;
  result.resize(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)));
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, result.data(),
                        static_cast<int>(result.size()));
  return result;
}

std::string narrow(std::wstring_view text) {
  const auto size = static_cast<int>(text.size());
  std::string result;
  if (size == 0) return result;
  result.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr)));
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(),
                        static_cast<int>(result.size()), nullptr, nullptr);
  return result;
}
// NOLINTEND(bugprone-suspicious-stringview-data-usage)

std::u32string folded(std::string_view text) {
  // Upper case first: some letters of lower case meet only there.
  const std::wstring letters = mapped(mapped(wide(text), LCMAP_UPPERCASE), LCMAP_LOWERCASE);
  std::u32string characters;
  characters.reserve(letters.size());
  for (std::size_t i = 0; i < letters.size(); ++i) {
    const char32_t unit = letters[i];
    if (IS_HIGH_SURROGATE(unit) && i + 1 < letters.size()) {
      characters +=
          static_cast<char32_t>(0x10000U + ((unit - 0xD800U) << 10U) + (letters[++i] - 0xDC00U));
    } else {
      characters += unit;
    }
  }
  return characters;
}

std::string inLowerCase(std::string_view text) {
  return narrow(mapped(wide(text), LCMAP_LOWERCASE));
}

std::string inUpperCase(std::string_view text) {
  return narrow(mapped(wide(text), LCMAP_UPPERCASE));
}

}  // namespace QuorHost::Sqlite
