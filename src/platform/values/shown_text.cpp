#include "platform/values/shown_text.h"

namespace QuorDataLib {

std::string shownText(std::string_view text, std::size_t most) {
  constexpr unsigned char kFirstPrinted = 0x20;
  constexpr unsigned char kDelete = 0x7F;
  std::string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool startsCharacter = (byte & 0xC0U) != 0x80U;
    if (shown.size() >= most && startsCharacter) return shown + "...";
    // The control characters beyond ASCII are 0xC2 0x80 to 0xC2 0x9F.
    const bool control = byte < kFirstPrinted || byte == kDelete;
    const bool control2 =
        byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    if (control2) ++i;
    shown += control || control2 ? ' ' : text[i];
    // What is no character must not be carried on without an end.
    if (shown.size() >= most + 4) return shown + "...";
  }
  return shown;
}

}  // namespace QuorDataLib
