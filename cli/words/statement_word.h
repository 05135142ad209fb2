// What kind of statement a SQL text is, by the word that it begins with.
#pragma once

#include <string>
#include <string_view>

namespace QuorCli {

/// The first word of a statement, as written, behind blanks, comments and opening parentheses;
/// empty when the text begins with something else.
[[nodiscard]] std::string firstWord(std::string_view statement);

/// Whether the name stands in a statement, in any case and anywhere.
[[nodiscard]] bool mentions(std::string_view statement, std::string_view name);

/// Whether statements that begin with `word` change rows: INSERT, UPDATE and DELETE.
[[nodiscard]] bool changesRows(std::string_view word) noexcept;

}  // namespace QuorCli
