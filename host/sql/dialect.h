// What the two dialects share and where they differ: reserved words, symbols, operators, and the
// rules that no word shows. The functions, with their dialects, are in function_table.h.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/sql/types.h"

namespace QuorHost::Sql {

/// Which dialects know a word, a symbol or a function.
enum class Membership : std::uint8_t { Both, Server, Desktop };

[[nodiscard]] constexpr bool knows(Membership membership, Dialect dialect) noexcept {
  return membership == Membership::Both ||
         (membership == Membership::Server) == (dialect == Dialect::Server);
}

/// The kinds of tokens; the reserved words stand last.
enum class Lexeme : std::uint8_t {
  // clang-format off
  End, Name, Text, Number, Date, Marker,
  LeftParenthesis, RightParenthesis, Comma, Dot, Semicolon,
  Star, Slash, Backslash, Percent, Plus, Minus, Ampersand,
  Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual,
  All, And, As, Asc, Between, By, Case, Create, Delete, Desc, Distinct, Else, EndCase, Exists,
  False, From, Group, Having, In, Inner, Insert, Into, Is, Join, Left, Like, Mod, Not, Null, On, Or,
  Order, Outer, Right, Select, Set, Then, True, Union, Update, Values, When, Where,
  // clang-format on
};

/// Operators, as written by either dialect.
enum class Operator : std::uint8_t {
  // clang-format off
  None,
  Multiply, Divide, DivideWhole, Modulo, Add, Subtract, Concatenate,
  Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual,
  And, Or,
  // clang-format on
};

/// How a fraction becomes a whole number.
enum class Rounding : std::uint8_t { TowardsZero, HalfToEven };

struct DialectRules {
  Dialect dialect;
  /// "server" or "desktop", for messages.
  std::string_view name;
  /// "..." is a text and not a quoted name.
  bool doubleQuotesHoldText;
  /// Every join but the first stands in parentheses of its own.
  bool joinsNeedParentheses;
  /// A condition is a value (true or false), and a number or a boolean is a condition.
  bool conditionsAreValues;
  /// Expressions of a select list may use the aliases of the same list.
  bool aliasesAreVisible;
  /// A select list may say `alias = expression`, and `expression alias` without AS.
  bool aliasesNeedNoAs;
  /// ORDER BY may stand in a derived table without TOP.
  bool derivedTablesMayBeOrdered;
  /// A whole number divided by a whole number is cut to one.
  bool wholeNumbersDivideWhole;
  /// Texts are read as numbers or dates where they are compared with one.
  bool textsConvertInComparisons;
  /// CREATE statements are read.
  bool definesTables;
  /// True as a number.
  std::int8_t trueNumber;
  /// Rounding of a fraction that is stored in, or handed to a function as, a whole number.
  Rounding rounding;
};

[[nodiscard]] const DialectRules& rulesOf(Dialect dialect) noexcept;

/// A reserved word.
struct ReservedWord {
  std::string_view word;  // lower case
  Lexeme lexeme;
  Membership membership;
};

/// The reserved word spelled `word`, or null.
[[nodiscard]] const ReservedWord* findReservedWord(std::string_view word) noexcept;

/// An operator between two values that is no comparison.
struct ArithmeticOperator {
  Lexeme lexeme;
  Operator op;
  Membership membership;
  /// Higher binds tighter.
  std::uint8_t precedence;
};

/// The operator of `lexeme` in `dialect`, or null.
[[nodiscard]] const ArithmeticOperator* findArithmeticOperator(Lexeme lexeme,
                                                               Dialect dialect) noexcept;

/// The message for a word that only the other dialect has.
[[nodiscard]] std::string otherDialectMessage(std::string_view word, Dialect dialect);

}  // namespace QuorHost::Sql
