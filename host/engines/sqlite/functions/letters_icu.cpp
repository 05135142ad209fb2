#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include "host/engines/sqlite/functions/letters.h"

namespace QuorHost::Sqlite {
namespace {

icu::UnicodeString wideText(std::string_view text) {
  return icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

}  // namespace

std::u32string folded(std::string_view text) {
  std::u32string characters;
  characters.reserve(text.size());
  const auto length = static_cast<std::int32_t>(text.size());
  for (std::int32_t i = 0; i < length;) {
    UChar32 c = 0;
    U8_NEXT_OR_FFFD(text.data(), i, length, c);  // NOLINT: the library's macro steps in conditions
    characters += static_cast<char32_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT));
  }
  return characters;
}

std::string inLowerCase(std::string_view text) {
  std::string changed;
  return wideText(text).toLower(icu::Locale::getRoot()).toUTF8String(changed);
}

std::string inUpperCase(std::string_view text) {
  std::string changed;
  return wideText(text).toUpper(icu::Locale::getRoot()).toUTF8String(changed);
}

}  // namespace QuorHost::Sqlite
