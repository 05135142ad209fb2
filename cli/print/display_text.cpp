#include "cli/print/display_text.h"

#include <algorithm>
#include <cstdint>

#include "cli/print/characters.h"

namespace QuorCli {
namespace {

bool isPlainAscii(char c) { return c >= ' ' && c < '\x7f'; }

/// Calls `visit` with each character of the text and its bytes; a byte that belongs to none is
/// given as a negative number.
template <class Visit>
void forEachCharacter(std::string_view text, Visit visit) {
  for (std::size_t next = 0; next < text.size();) {
    const std::size_t start = next;
    const std::int32_t character = readCharacter(text, next);
    visit(character, text.substr(start, next - start));
  }
}

}  // namespace

bool isUtf8(std::string_view text) noexcept {
  bool wellFormed = true;
  forEachCharacter(text, [&](std::int32_t character, std::string_view) {
    if (character < 0) wellFormed = false;
  });
  return wellFormed;
}

std::size_t displayWidth(std::string_view text) noexcept {
  if (std::ranges::all_of(text, isPlainAscii)) return text.size();
  std::size_t width = 0;
  forEachCharacter(
      text, [&](std::int32_t character, std::string_view) { width += characterWidth(character); });
  return width;
}

std::string visible(std::string_view text) {
  if (std::ranges::all_of(text, isPlainAscii)) return std::string(text);
  std::string out;
  forEachCharacter(text, [&](std::int32_t character, std::string_view bytes) {
    if (character == '\n') {
      out += "\\n";
    } else if (character == '\r') {
      out += "\\r";
    } else if (character == '\t') {
      out += "\\t";
    } else if (isControlCharacter(character)) {
      constexpr std::string_view kHex = "0123456789abcdef";
      out += "\\x";
      out += kHex[static_cast<std::size_t>(character) >> 4U];
      out += kHex[static_cast<std::size_t>(character) & 15U];
    } else if (character < 0) {
      out += "\xEF\xBF\xBD";  // the replacement character
    } else {
      out += bytes;
    }
  });
  return out;
}

std::string shortened(std::string_view text, std::size_t width) {
  if (displayWidth(text) <= width) return std::string(text);
  if (width == 0) return {};
  std::string out;
  std::size_t used = 1;  // the ellipsis
  bool full = false;
  forEachCharacter(text, [&](std::int32_t character, std::string_view bytes) {
    used += characterWidth(character);
    full = full || used > width;
    if (!full) out += bytes;
  });
  out.erase(out.find_last_not_of(' ') + 1);
  return out + "\xE2\x80\xA6";
}

void appendPadded(std::string& out, std::string_view text, std::size_t width, bool right) {
  const std::size_t used = displayWidth(text);
  const std::size_t blanks = width > used ? width - used : 0;
  if (right) out.append(blanks, ' ');
  out += text;
  if (!right) out.append(blanks, ' ');
}

}  // namespace QuorCli
