// The text of a statement, and the places in it.
#pragma once

#include <string>
#include <string_view>

#include "host/sql/types.h"

namespace QuorHost::Sql {

/// A statement's text. Tokens and tree nodes name their place by a slice of it, so that line and
/// column are counted only for an error.
class StatementText {
 public:
  explicit StatementText(std::string_view text) noexcept : text_(text) {}

  [[nodiscard]] std::string_view all() const noexcept { return text_; }
  [[nodiscard]] std::string_view end() const noexcept { return text_.substr(text_.size()); }

  /// Where `word`, a slice of the text, begins.
  [[nodiscard]] Position position(std::string_view word) const noexcept;

  /// Raises a refused statement because of `word`, a slice of the text.
  [[noreturn]] void refuse(const std::string& what, std::string_view word) const;

 private:
  std::string_view text_;
};

/// `name` in quotes, for messages.
[[nodiscard]] std::string quoted(std::string_view name);

}  // namespace QuorHost::Sql
