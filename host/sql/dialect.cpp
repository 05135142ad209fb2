#include "host/sql/dialect.h"

#include <algorithm>

#include "host/sql/names.h"
#include "host/sql/statement_text.h"

namespace QuorHost::Sql {
namespace {

constexpr DialectRules kServer{
    .dialect = Dialect::Server,
    .name = "server",
    .doubleQuotesHoldText = false,
    .joinsNeedParentheses = false,
    .conditionsAreValues = false,
    .aliasesAreVisible = false,
    .aliasesNeedNoAs = true,
    .derivedTablesMayBeOrdered = false,
    .wholeNumbersDivideWhole = true,
    .textsConvertInComparisons = true,
    .definesTables = true,
    .trueNumber = 1,
    .rounding = Rounding::TowardsZero,
};

constexpr DialectRules kDesktop{
    .dialect = Dialect::Desktop,
    .name = "desktop",
    .doubleQuotesHoldText = true,
    .joinsNeedParentheses = true,
    .conditionsAreValues = true,
    .aliasesAreVisible = true,
    .aliasesNeedNoAs = false,
    .derivedTablesMayBeOrdered = true,
    .wholeNumbersDivideWhole = false,
    .textsConvertInComparisons = false,
    .definesTables = false,
    .trueNumber = -1,
    .rounding = Rounding::HalfToEven,
};

// In alphabetical order.
constexpr std::array kReservedWords{
    ReservedWord{"all", Lexeme::All, Membership::Both},
    ReservedWord{"and", Lexeme::And, Membership::Both},
    ReservedWord{"as", Lexeme::As, Membership::Both},
    ReservedWord{"asc", Lexeme::Asc, Membership::Both},
    ReservedWord{"between", Lexeme::Between, Membership::Both},
    ReservedWord{"by", Lexeme::By, Membership::Both},
    ReservedWord{"case", Lexeme::Case, Membership::Server},
    ReservedWord{"create", Lexeme::Create, Membership::Server},
    ReservedWord{"delete", Lexeme::Delete, Membership::Both},
    ReservedWord{"desc", Lexeme::Desc, Membership::Both},
    ReservedWord{"distinct", Lexeme::Distinct, Membership::Both},
    ReservedWord{"else", Lexeme::Else, Membership::Server},
    ReservedWord{"end", Lexeme::EndCase, Membership::Server},
    ReservedWord{"exists", Lexeme::Exists, Membership::Both},
    ReservedWord{"false", Lexeme::False, Membership::Desktop},
    ReservedWord{"from", Lexeme::From, Membership::Both},
    ReservedWord{"group", Lexeme::Group, Membership::Both},
    ReservedWord{"having", Lexeme::Having, Membership::Both},
    ReservedWord{"in", Lexeme::In, Membership::Both},
    ReservedWord{"inner", Lexeme::Inner, Membership::Both},
    ReservedWord{"insert", Lexeme::Insert, Membership::Both},
    ReservedWord{"into", Lexeme::Into, Membership::Both},
    ReservedWord{"is", Lexeme::Is, Membership::Both},
    ReservedWord{"join", Lexeme::Join, Membership::Both},
    ReservedWord{"left", Lexeme::Left, Membership::Both},
    ReservedWord{"like", Lexeme::Like, Membership::Both},
    ReservedWord{"mod", Lexeme::Mod, Membership::Desktop},
    ReservedWord{"not", Lexeme::Not, Membership::Both},
    ReservedWord{"null", Lexeme::Null, Membership::Both},
    ReservedWord{"on", Lexeme::On, Membership::Both},
    ReservedWord{"or", Lexeme::Or, Membership::Both},
    ReservedWord{"order", Lexeme::Order, Membership::Both},
    ReservedWord{"outer", Lexeme::Outer, Membership::Both},
    ReservedWord{"right", Lexeme::Right, Membership::Both},
    ReservedWord{"select", Lexeme::Select, Membership::Both},
    ReservedWord{"set", Lexeme::Set, Membership::Both},
    ReservedWord{"then", Lexeme::Then, Membership::Server},
    ReservedWord{"true", Lexeme::True, Membership::Desktop},
    ReservedWord{"union", Lexeme::Union, Membership::Both},
    ReservedWord{"update", Lexeme::Update, Membership::Both},
    ReservedWord{"values", Lexeme::Values, Membership::Both},
    ReservedWord{"when", Lexeme::When, Membership::Server},
    ReservedWord{"where", Lexeme::Where, Membership::Both},
};
static_assert(std::ranges::is_sorted(kReservedWords, {}, &ReservedWord::word));

// Index of the first reserved word that does not sort before each letter.
constexpr std::array<std::uint8_t, 27> kFirstWords = [] {
  std::array<std::uint8_t, 27> first{};
  for (std::uint8_t letter = 0; letter < 27; ++letter) {
    while (first[letter] < kReservedWords.size() &&
           kReservedWords[first[letter]].word.front() < 'a' + letter) {
      ++first[letter];
    }
  }
  return first;
}();

constexpr std::array kArithmeticOperators{
    ArithmeticOperator{Lexeme::Star, Operator::Multiply, Membership::Both, 5},
    ArithmeticOperator{Lexeme::Slash, Operator::Divide, Membership::Both, 5},
    ArithmeticOperator{Lexeme::Percent, Operator::Modulo, Membership::Server, 5},
    ArithmeticOperator{Lexeme::Backslash, Operator::DivideWhole, Membership::Desktop, 4},
    ArithmeticOperator{Lexeme::Mod, Operator::Modulo, Membership::Desktop, 3},
    ArithmeticOperator{Lexeme::Plus, Operator::Add, Membership::Both, 2},
    ArithmeticOperator{Lexeme::Minus, Operator::Subtract, Membership::Both, 2},
    ArithmeticOperator{Lexeme::Ampersand, Operator::Concatenate, Membership::Desktop, 1},
};

}  // namespace

const DialectRules& rulesOf(Dialect dialect) noexcept {
  return dialect == Dialect::Desktop ? kDesktop : kServer;
}

const ReservedWord* findReservedWord(std::string_view word) noexcept {
  const int letter = lowerCase(word.front()) - 'a';
  if (letter < 0 || letter >= 26) return nullptr;
  for (std::size_t i = kFirstWords[static_cast<std::size_t>(letter)];
       i < kFirstWords[static_cast<std::size_t>(letter) + 1]; ++i) {
    if (sameName(kReservedWords[i].word, word)) return &kReservedWords[i];
  }
  return nullptr;
}

const ArithmeticOperator* findArithmeticOperator(Lexeme lexeme, Dialect dialect) noexcept {
  for (const ArithmeticOperator& candidate : kArithmeticOperators) {
    if (candidate.lexeme == lexeme && knows(candidate.membership, dialect)) return &candidate;
  }
  return nullptr;
}

std::string otherDialectMessage(std::string_view word, Dialect dialect) {
  const Dialect other = dialect == Dialect::Server ? Dialect::Desktop : Dialect::Server;
  return quoted(word) + " belongs to the " + std::string(rulesOf(other).name) +
         " dialect, and this statement is read in the " + std::string(rulesOf(dialect).name) +
         " dialect";
}

}  // namespace QuorHost::Sql
