#include "host/engines/odbc/driver/wide_text.h"

#include "host/sql/utf8.h"

namespace QuorHost::Odbc {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstOfPairs = 0x10000;
constexpr char32_t kHighHalf = 0xD800;
constexpr char32_t kLowHalf = 0xDC00;
constexpr char32_t kBehindHalves = 0xE000;
constexpr unsigned kHalfBits = 10;
constexpr char32_t kHalfMask = 0x3FF;

/// The first character of `text`, which is taken off it.
char32_t takeCharacter(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  const std::string_view bytes = text.substr(0, length);
  if (bytes.front() != '\0' && Sql::findIllFormed(bytes) != std::string_view::npos) {
    text.remove_prefix(1);
    return kReplacement;
  }
  text.remove_prefix(length);
  if (length == 1) return lead;
  char32_t code = lead & (0x7FU >> length);
  for (const char byte : bytes.substr(1))
    code = (code << 6U) | (static_cast<unsigned>(byte) & 0x3FU);
  return code;
}

void appendCharacter(char32_t code, std::string& text) {
  const auto add = [&](char32_t byte) { text += static_cast<char>(byte); };
  const auto addRest = [&](unsigned shift) { add(0x80U | ((code >> shift) & 0x3FU)); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0U | (code >> 6U));
    addRest(0);
  } else if (code < kFirstOfPairs) {
    add(0xE0U | (code >> 12U));
    addRest(6);
    addRest(0);
  } else {
    add(0xF0U | (code >> 18U));
    addRest(12);
    addRest(6);
    addRest(0);
  }
}

bool isHigh(char32_t unit) { return unit >= kHighHalf && unit < kLowHalf; }
bool isLow(char32_t unit) { return unit >= kLowHalf && unit < kBehindHalves; }

}  // namespace

WideText::WideText(std::string_view text) {
  units_.reserve(text.size() + 1);
  while (!text.empty()) {
    const char32_t code = takeCharacter(text);
    if (code < kFirstOfPairs) {
      units_.push_back(static_cast<SQLWCHAR>(code));
    } else {
      const char32_t rest = code - kFirstOfPairs;
      units_.push_back(static_cast<SQLWCHAR>(kHighHalf | (rest >> kHalfBits)));
      units_.push_back(static_cast<SQLWCHAR>(kLowHalf | (rest & kHalfMask)));
    }
  }
  units_.push_back(0);
}

void appendNarrow(const SQLWCHAR* units, std::size_t count, std::string& text) {
  for (std::size_t i = 0; i < count; ++i) {
    const char32_t unit = units[i];
    if (isHigh(unit) && i + 1 < count && isLow(units[i + 1])) {
      const char32_t low = units[++i];
      appendCharacter(kFirstOfPairs + ((unit & kHalfMask) << kHalfBits) + (low & kHalfMask), text);
    } else {
      appendCharacter(isHigh(unit) || isLow(unit) ? kReplacement : unit, text);
    }
  }
}

std::string narrow(const SQLWCHAR* units, std::size_t count) {
  std::string text;
  text.reserve(count);
  appendNarrow(units, count, text);
  return text;
}

}  // namespace QuorHost::Odbc
