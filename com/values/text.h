// Texts: UTF-8 here, UTF-16 there.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oleauto.h>

#include <string>
#include <string_view>

namespace QuorCom {

/// UTF-16 as UTF-8; half a character becomes a replacement character.
[[nodiscard]] std::string narrow(std::wstring_view text);

/// UTF-8 as UTF-16; what is no character becomes a replacement character.
[[nodiscard]] std::wstring wide(std::string_view text);

/// The text of a `BSTR`, null being the empty one.
[[nodiscard]] std::string textOf(BSTR text);

/// A new `BSTR` for the caller. Raises 7 when memory is exhausted.
[[nodiscard]] BSTR newBstr(std::string_view text);

/// A `BSTR` that is freed at the end.
class Bstr {
 public:
  Bstr() = default;
  explicit Bstr(std::string_view text) : text_(newBstr(text)) {}
  ~Bstr() { ::SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  [[nodiscard]] BSTR get() const noexcept { return text_; }
  [[nodiscard]] BSTR* put() noexcept { return &text_; }

 private:
  BSTR text_ = nullptr;
};

}  // namespace QuorCom
