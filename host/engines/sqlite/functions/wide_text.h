// Texts as the operating system Windows takes them.
#pragma once

#include <string>
#include <string_view>

namespace QuorHost::Sqlite {

/// UTF-8 as UTF-16; what is no character becomes a replacement character.
[[nodiscard]] std::wstring wide(std::string_view text);

/// UTF-16 as UTF-8.
[[nodiscard]] std::string narrow(std::wstring_view text);

}  // namespace QuorHost::Sqlite
