#include "fuzz/sql_mutator.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>
#include <utility>

namespace QuorHost::Sql::Testing {
namespace {

/// Words that stand for one another. Those of a column are any two words of the text.
constexpr const char* kAlike[][6] = {
    {"INNER", "LEFT", "RIGHT"}, {"=", "<>", "<", ">", "<=", ">="},
    {"AND", "OR", "AND NOT"},   {"SUM", "COUNT", "MIN", "MAX", "AVG"},
    {"UNION", "UNION ALL"},     {"SELECT", "SELECT DISTINCT"},
    {"+", "-", "*", "/", "%"},  {"0", "1", "42", "NULL", "'a'", "1.5"}};

/// What may stand before a condition; `@` is a word of the text, `#` one of the vocabulary.
constexpr const char* kConditions[] = {"@ IS NULL AND ",
                                       "NOT @ > 0 AND ",
                                       "@ = @ OR ",
                                       "@ / @ > 1 AND ",
                                       "@ BETWEEN 1 AND 42 AND ",
                                       "@ IN (5, 7, 42) AND ",
                                       "@ <> 0 AND 7 / @ > 0 AND ",
                                       "@ IN (SELECT @ FROM #) AND ",
                                       "EXISTS (SELECT 1 AS One FROM # WHERE @ = @) AND "};

bool isWord(unsigned char c) { return std::isalnum(c) || c == '_' || c >= 0x80; }

bool isSmall(unsigned char c) { return std::islower(c); }

/// Words, quoted texts, blanks and signs, which together are the text.
std::vector<std::string> pieces(const std::string& text) {
  std::vector<std::string> all;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t end = i + 1;
    if (isWord(text[i])) {
      while (end < text.size() && (isWord(text[end]) || text[end] == '.')) ++end;
    } else if (text[i] == '\'') {
      end = std::min(text.find('\'', end), text.size() - 1) + 1;
    }
    all.push_back(text.substr(i, end - i));
    i = end;
  }
  return all;
}

template <class Row>
auto& pick(Row& row, std::minstd_rand& random) {
  return row[random() % std::size(row)];
}

class Mutation {
 public:
  Mutation(std::vector<std::string> text, const std::vector<std::string>& vocabulary,
           std::minstd_rand& random)
      : text_(std::move(text)), vocabulary_(vocabulary), random_(random) {}

  void change() {
    switch (random_() % 8) {
      case 0:
        name() = pick(vocabulary_, random_);
        break;
      case 1:
      case 2:
        name() = std::string(name());
        break;
      case 3:
        deriveTable();
        break;
      case 4:
      case 5:
        addCondition();
        break;
      default:
        exchangeAlike();
    }
  }

  [[nodiscard]] std::string text() const {
    std::string all;
    for (const std::string& piece : text_) all += piece;
    return all;
  }

 private:
  /// A name somewhere in the text, which its small letters tell from a reserved word.
  std::string& name() {
    std::string* place = &pick(text_, random_);
    for (int tries = 0; tries < 50 && !std::ranges::any_of(*place, isSmall); ++tries) {
      place = &pick(text_, random_);
    }
    return *place;
  }

  /// Changes the first such word behind a place of chance.
  void exchangeAlike() {
    const auto& alike = pick(kAlike, random_);
    const std::size_t count = std::ranges::count_if(alike, [](const char* each) { return each; });
    for (std::size_t i = random_() % text_.size(); i < text_.size(); ++i) {
      for (std::size_t j = 0; j < count; ++j) {
        if (text_[i] != alike[j]) continue;
        text_[i] = alike[random_() % count];
        return;
      }
    }
  }

  /// Reads a table through a select of its own.
  void deriveTable() {
    for (std::size_t i = random_() % text_.size(); i + 2 < text_.size(); ++i) {
      std::string& table = text_[i + 2];
      if ((text_[i] != "FROM" && text_[i] != "JOIN") || !std::ranges::any_of(table, isSmall))
        continue;
      const std::string read = "SELECT * FROM " + table;
      const char* const more[] = {"", " UNION ALL ", " UNION "};
      const std::string_view with = pick(more, random_);
      table = "(" + read + std::string(with) + (with.empty() ? "" : read) + ") AS " + table;
      return;
    }
  }

  void addCondition() {
    for (std::size_t i = random_() % text_.size(); i < text_.size(); ++i) {
      if (text_[i] != "WHERE" && text_[i] != "ON" && text_[i] != "HAVING") continue;
      std::string condition = " ";
      for (const char* c = pick(kConditions, random_); *c != '\0'; ++c) {
        condition += *c == '@'   ? name()
                     : *c == '#' ? pick(vocabulary_, random_)
                                 : std::string(1, *c);
      }
      text_[i] += condition;
      return;
    }
  }

  std::vector<std::string> text_;
  const std::vector<std::string>& vocabulary_;
  std::minstd_rand& random_;
};

}  // namespace

std::string mutated(const std::string& text, const std::vector<std::string>& vocabulary,
                    std::minstd_rand& random) {
  std::vector<std::string> all = pieces(text);
  if (all.empty()) return pick(vocabulary, random);
  Mutation mutation(std::move(all), vocabulary, random);
  mutation.change();
  return mutation.text();
}

}  // namespace QuorHost::Sql::Testing
