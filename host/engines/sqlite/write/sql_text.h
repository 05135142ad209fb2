// SQLite's SQL under construction.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace QuorHost::Sqlite {

/// A growing text of SQL, which knows how deep the engine's parser will be in it.
class SqlText {
 public:
  SqlText& add(std::string_view text) {
    text_ += text;
    return *this;
  }

  /// A name, quoted.
  SqlText& name(std::string_view name);

  /// The name of something new. Raises a refused statement for the names that the engine keeps for
  /// itself.
  SqlText& ownName(std::string_view name);

  /// A text literal.
  SqlText& literal(std::string_view text);

  /// A floating number, such that it reads back as the same.
  SqlText& number(double value);

  [[nodiscard]] std::string take() { return std::move(text_); }

  /// Entries on the stack of the engine's parser, for as long as it lives. The engine gives up at a
  /// hundred. Raises a refused statement before that.
  class Held {
   public:
    Held(SqlText& text, int entries);
    ~Held() { text_.held_ -= entries_; }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

   private:
    SqlText& text_;
    int entries_;
  };

 private:
  std::string text_;
  int held_ = 0;
};

}  // namespace QuorHost::Sqlite
