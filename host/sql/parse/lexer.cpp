#include "host/sql/parse/lexer.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "host/sql/names.h"

namespace QuorHost::Sql {
namespace {

constexpr bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

constexpr bool isAscii(char c) noexcept { return static_cast<unsigned char>(c) < 0x80U; }

constexpr bool isLetter(char c) noexcept {
  const char lower = lowerCase(c);
  return (lower >= 'a' && lower <= 'z') || c == '_' || !isAscii(c);
}

/// Which characters a word may go on with.
constexpr std::array<bool, 256> kWordCharacters = [] {
  std::array<bool, 256> known{};
  for (std::size_t i = 0; i < known.size(); ++i) {
    const char c = static_cast<char>(i);
    known[i] = isLetter(c) || isDigit(c);
  }
  return known;
}();

constexpr bool continuesWord(char c) noexcept {
  return kWordCharacters[static_cast<unsigned char>(c)];
}

constexpr bool isBlank(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

/// Length of the UTF-8 character at the front of `text`, or 0 when it is not one.
std::size_t characterLength(std::string_view text) noexcept {
  const auto byte = [&](std::size_t i) -> unsigned {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  const auto continues = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
  const unsigned first = byte(0);
  if (first < 0x80U) return 1;
  if (first >= 0xC2U && first < 0xE0U) return continues(1) ? 2 : 0;
  if (first >= 0xE0U && first < 0xF0U) {
    // No overlong forms and no surrogates.
    const bool valid = (first != 0xE0U || byte(1) >= 0xA0U) && (first != 0xEDU || byte(1) < 0xA0U);
    return valid && continues(1) && continues(2) ? 3 : 0;
  }
  if (first >= 0xF0U && first < 0xF5U) {
    const bool valid = (first != 0xF0U || byte(1) >= 0x90U) && (first != 0xF4U || byte(1) < 0x90U);
    return valid && continues(1) && continues(2) && continues(3) ? 4 : 0;
  }
  return 0;
}

class Lexer {
 public:
  Lexer(const StatementText& text, Dialect dialect)
      : text_(text), rest_(text.all()), dialect_(dialect), rules_(rulesOf(dialect)) {}

  std::vector<Token> run() {
    checkCharacters();
    tokens_.reserve(text_.all().size() / 4 + 2);
    while (skipBlanks(), !rest_.empty()) readToken();
    if (!open_.empty()) text_.refuse("A parenthesis is not closed", tokens_[open_.back()].word);
    tokens_.push_back({.word = text_.end()});
    return std::move(tokens_);
  }

 private:
  void checkCharacters() const {
    const std::string_view all = text_.all();
    for (std::size_t i = 0; i < all.size();) {
      if (isAscii(all[i]) && all[i] != '\0') {
        ++i;
        continue;
      }
      const std::size_t length = all[i] == '\0' ? 0 : characterLength(all.substr(i));
      if (length == 0) {
        const unsigned byte = static_cast<unsigned char>(all[i]);
        Sql::refuse("The statement holds a byte that is no character of UTF-8",
                    text_.position(all.substr(i)), std::to_string(byte));
      }
      i += length;
    }
  }

  void skipBlanks() {
    while (!rest_.empty()) {
      if (isBlank(rest_.front())) {
        rest_.remove_prefix(1);
      } else if (rest_.starts_with("--")) {
        rest_.remove_prefix(std::min(rest_.find_first_of("\r\n"), rest_.size()));
      } else if (rest_.starts_with("/*")) {
        skipComment();
      } else {
        return;
      }
    }
  }

  void skipComment() {
    const std::size_t end = rest_.find("*/", 2);
    if (end == std::string_view::npos) text_.refuse("A comment is not closed", rest_);
    rest_.remove_prefix(end + 2);
  }

  void readToken() {
    const char c = rest_.front();
    if (isLetter(c)) {
      readWord();
    } else if (isDigit(c) || (c == '.' && rest_.size() > 1 && isDigit(rest_[1]))) {
      readNumber();
    } else if (c == '\'' || (c == '"' && rules_.doubleQuotesHoldText)) {
      readQuoted(Lexeme::Text, c, "A text is not closed");
    } else if (c == '"') {
      readQuoted(Lexeme::Name, c, "A quoted name is not closed");
    } else if (c == '[') {
      readQuoted(Lexeme::Name, ']', "A name in brackets is not closed");
    } else if (c == '#') {
      readDate();
    } else {
      readSymbol();
    }
  }

  void add(Lexeme lexeme, std::size_t length, bool quoted = false) {
    tokens_.push_back({.lexeme = lexeme, .quoted = quoted, .word = rest_.substr(0, length)});
    rest_.remove_prefix(length);
  }

  void readWord() {
    std::size_t length = 1;
    while (length < rest_.size() && continuesWord(rest_[length])) ++length;
    const std::string_view word = rest_.substr(0, length);
    const ReservedWord* const reserved = findReservedWord(word);
    if (reserved != nullptr) requireMember(reserved->membership, word);
    add(reserved != nullptr ? reserved->lexeme : Lexeme::Name, length);
  }

  void readNumber() {
    std::size_t length = 0;
    const auto digits = [&] {
      while (length < rest_.size() && isDigit(rest_[length])) ++length;
    };
    digits();
    if (length < rest_.size() && rest_[length] == '.') {
      ++length;
      digits();
    }
    if (length < rest_.size() && lowerCase(rest_[length]) == 'e') {
      std::size_t exponent = length + 1;
      if (exponent < rest_.size() && (rest_[exponent] == '+' || rest_[exponent] == '-')) ++exponent;
      if (exponent < rest_.size() && isDigit(rest_[exponent])) {
        length = exponent;
        digits();
      }
    }
    if (length < rest_.size() && (isLetter(rest_[length]) || rest_[length] == '.')) {
      text_.refuse("A number is followed by something else without a blank",
                   rest_.substr(0, length + characterLength(rest_.substr(length))));
    }
    add(Lexeme::Number, length);
  }

  /// Reads up to `quote`, which stands doubled inside.
  void readQuoted(Lexeme lexeme, char quote, const char* unclosed) {
    std::size_t end = 1;
    while (true) {
      end = rest_.find(quote, end);
      if (end == std::string_view::npos) text_.refuse(unclosed, rest_);
      if (end + 1 >= rest_.size() || rest_[end + 1] != quote) break;
      end += 2;
    }
    if (lexeme == Lexeme::Name && end == 1) {
      text_.refuse("A name is empty", rest_.substr(0, end + 1));
    }
    add(lexeme, end + 1, lexeme == Lexeme::Name);
  }

  void readDate() {
    requireMember(Membership::Desktop, rest_.substr(0, 1));
    const std::size_t end = rest_.find('#', 1);
    if (end == std::string_view::npos) text_.refuse("A date is not closed", rest_);
    add(Lexeme::Date, end + 1);
  }

  void readSymbol() {
    struct Symbol {
      std::string_view text;
      Lexeme lexeme;
      Membership membership = Membership::Both;
    };
    // Longer symbols stand before their beginnings.
    static constexpr std::array kSymbols{
        Symbol{"(", Lexeme::LeftParenthesis},
        Symbol{")", Lexeme::RightParenthesis},
        Symbol{",", Lexeme::Comma},
        Symbol{".", Lexeme::Dot},
        Symbol{"?", Lexeme::Marker},
        Symbol{"=", Lexeme::Equal},
        Symbol{"<>", Lexeme::NotEqual},
        Symbol{"<=", Lexeme::LessEqual},
        Symbol{">=", Lexeme::GreaterEqual},
        Symbol{"<", Lexeme::Less},
        Symbol{">", Lexeme::Greater},
        Symbol{"+", Lexeme::Plus},
        Symbol{"-", Lexeme::Minus},
        Symbol{"*", Lexeme::Star},
        Symbol{"/", Lexeme::Slash},
        Symbol{";", Lexeme::Semicolon},
        Symbol{"!=", Lexeme::NotEqual, Membership::Server},
        Symbol{"%", Lexeme::Percent, Membership::Server},
        Symbol{"\\", Lexeme::Backslash, Membership::Desktop},
        Symbol{"&", Lexeme::Ampersand, Membership::Desktop},
    };
    for (const Symbol& symbol : kSymbols) {
      if (!rest_.starts_with(symbol.text)) continue;
      requireMember(symbol.membership, rest_.substr(0, symbol.text.size()));
      matchParenthesis(symbol.lexeme);
      return add(symbol.lexeme, symbol.text.size());
    }
    const std::string_view character = rest_.substr(0, characterLength(rest_));
    text_.refuse("The character " + quoted(character) + " has no meaning here", character);
  }

  void matchParenthesis(Lexeme lexeme) {
    if (lexeme == Lexeme::LeftParenthesis) {
      open_.push_back(tokens_.size());
    } else if (lexeme == Lexeme::RightParenthesis) {
      if (open_.empty()) text_.refuse("A parenthesis was never opened", rest_.substr(0, 1));
      tokens_[open_.back()].partner = static_cast<std::uint32_t>(tokens_.size());
      open_.pop_back();
    }
  }

  void requireMember(Membership membership, std::string_view word) const {
    if (!knows(membership, dialect_)) text_.refuse(otherDialectMessage(word, dialect_), word);
  }

  const StatementText& text_;
  std::string_view rest_;
  const Dialect dialect_;
  const DialectRules& rules_;
  std::vector<Token> tokens_;
  std::vector<std::size_t> open_;
};

}  // namespace

std::vector<Token> tokenize(const StatementText& text, Dialect dialect) {
  return Lexer(text, dialect).run();
}

}  // namespace QuorHost::Sql
