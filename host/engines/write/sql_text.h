// An engine's SQL under construction.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "host/sql/tree.h"

namespace QuorHost::Write {

/// What an engine's parser takes.
struct TextRules {
  /// How deep it goes; some less than the engine's own limit, as statements begin with entries of
  /// their own.
  int mostEntries = 0;
  /// The longest name in bytes, or 0 for no limit.
  std::size_t longestName = 0;
  /// Names are written in lower case.
  bool foldsNames = false;
  /// What names of the engine's own begin with.
  std::string_view reserved;
};

/// A growing text of SQL, which knows how deep the engine's parser will be in it and what the
/// columns that it can read are called.
class SqlText {
 public:
  /// `rules` must outlive the text.
  explicit SqlText(const TextRules& rules) noexcept : rules_(rules) {}

  SqlText& add(std::string_view text) {
    text_ += text;
    return *this;
  }

  /// A name, quoted. Raises a refused statement for one that is too long for the engine.
  SqlText& name(std::string_view name);

  /// A column, by the names of its source and its own unless it goes by another one here.
  SqlText& column(const Sql::Tree::Source& source, std::uint32_t index);

  /// The name of something new. Raises a refused statement for the names that the engine keeps for
  /// itself.
  SqlText& ownName(std::string_view name);

  /// A text literal.
  SqlText& literal(std::string_view text);

  /// A floating number, such that it reads back as the same.
  SqlText& number(double value);

  [[nodiscard]] std::string take() { return std::move(text_); }

  /// A number that no call before gave.
  [[nodiscard]] int nextNumber() noexcept { return ++number_; }

  /// What columns of sources that stand within an inner select are called outside of it.
  using Columns = std::map<std::pair<const Sql::Tree::Source*, std::uint32_t>, std::string>;
  /// Lets columns go by other names from now on; returns those in use so far, to be put back.
  Columns rename(Columns columns) { return std::exchange(renamed_, std::move(columns)); }
  [[nodiscard]] const Columns& renamed() const noexcept { return renamed_; }

  /// Entries on the stack of the engine's parser, for as long as it lives. Raises a refused
  /// statement before that.
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
  const TextRules& rules_;
  std::string text_;
  Columns renamed_;
  int held_ = 0;
  int number_ = 0;
};

}  // namespace QuorHost::Write
