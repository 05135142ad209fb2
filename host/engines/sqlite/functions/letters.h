// Upper and lower case, by the library that knows languages: ICU, or the system itself where there
// is none (Windows).
#pragma once

#include <string>
#include <string_view>

namespace QuorHost::Sqlite {

/// `text` (UTF-8) as code points without regard to case.
[[nodiscard]] std::u32string folded(std::string_view text);

/// `text` in lower or in upper case.
[[nodiscard]] std::string inLowerCase(std::string_view text);
[[nodiscard]] std::string inUpperCase(std::string_view text);

}  // namespace QuorHost::Sqlite
