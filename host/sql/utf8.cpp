#include "host/sql/utf8.h"

#include <algorithm>

namespace QuorHost::Sql {
namespace {

/// Length of the well-formed character that begins with `lead`, and the bounds of its second byte;
/// length 0 for a byte that begins none.
struct Form {
  int length;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
};

/// A character of ASCII that is no zero.
constexpr bool isPlain(char c) noexcept { return static_cast<signed char>(c) > 0; }

Form formOf(unsigned char lead) noexcept {
  if (lead >= 0xC2 && lead <= 0xDF) return {2};
  if (lead == 0xE0) return {3, 0xA0, 0xBF};
  if (lead == 0xED) return {3, 0x80, 0x9F};
  if (lead >= 0xE1 && lead <= 0xEF) return {3};
  if (lead == 0xF0) return {4, 0x90, 0xBF};
  if (lead >= 0xF1 && lead <= 0xF3) return {4};
  if (lead == 0xF4) return {4, 0x80, 0x8F};
  return {0};
}

}  // namespace

std::size_t findIllFormed(std::string_view text) noexcept {
  for (std::size_t i = 0; i < text.size();) {
    if (isPlain(text[i])) {
      ++i;
      continue;
    }
    const Form form = formOf(static_cast<unsigned char>(text[i]));
    if (form.length == 0 || text.size() - i < static_cast<std::size_t>(form.length)) return i;
    for (int k = 1; k < form.length; ++k) {
      const auto byte = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
      const bool second = k == 1;
      if (byte < (second ? form.low : 0x80) || byte > (second ? form.high : 0xBF)) return i;
    }
    i += static_cast<std::size_t>(form.length);
  }
  return std::string_view::npos;
}

std::size_t countCharacters(std::string_view text) noexcept {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

}  // namespace QuorHost::Sql
