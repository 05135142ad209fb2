#include "com/values/text.h"

#include <algorithm>
#include <new>

namespace QuorCom {
namespace {

int sizeOf(std::string_view text) { return static_cast<int>(text.size()); }
int sizeOf(std::wstring_view text) { return static_cast<int>(text.size()); }

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80U; });
}

}  // namespace

// NOLINTBEGIN(bugprone-suspicious-stringview-data-usage): the sizes go along
std::string narrow(std::wstring_view text) {
  std::string result;
  if (text.empty()) return result;
  result.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), sizeOf(text), nullptr, 0, nullptr, nullptr)));
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), sizeOf(text), result.data(), sizeOf(result),
                        nullptr, nullptr);
  return result;
}

std::wstring wide(std::string_view text) {
  std::wstring result;
  if (text.empty()) return result;
  result.resize(static_cast<std::size_t>(
      ::MultiByteToWideChar(CP_UTF8, 0, text.data(), sizeOf(text), nullptr, 0)));
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), sizeOf(text), result.data(), sizeOf(result));
  return result;
}

std::string textOf(BSTR text) { return narrow({text, ::SysStringLen(text)}); }

BSTR newBstr(std::string_view text) {
  const bool ascii = isAscii(text);
  const int size = ascii || text.empty()
                       ? sizeOf(text)
                       : ::MultiByteToWideChar(CP_UTF8, 0, text.data(), sizeOf(text), nullptr, 0);
  BSTR result = ::SysAllocStringLen(nullptr, static_cast<UINT>(size));
  if (result == nullptr) throw std::bad_alloc();
  if (ascii) {
    std::ranges::copy(text, result);
  } else {
    ::MultiByteToWideChar(CP_UTF8, 0, text.data(), sizeOf(text), result, size);
  }
  return result;
}
// NOLINTEND(bugprone-suspicious-stringview-data-usage)

}  // namespace QuorCom
