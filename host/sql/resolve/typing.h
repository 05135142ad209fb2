// The types of expressions: which go together, what comes out, and where conversions stand.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/sql/arena.h"
#include "host/sql/dialect.h"
#include "host/sql/statement_text.h"
#include "host/sql/tree.h"

namespace QuorHost::Sql {

/// Whether values of `type` are numbers; a boolean is one, too.
[[nodiscard]] constexpr bool isNumber(Type type) noexcept {
  return type >= Type::Boolean && type <= Type::Currency;
}

/// Makes the nodes of the resolved tree, typed, and brings operands to the types that they meet in.
/// Raises refused statements that name the types which do not go together.
class Typing {
 public:
  /// `markers` are the types of the statement's markers, which become known here.
  Typing(const StatementText& text, const DialectRules& rules, Arena& arena,
         std::vector<Type>& markers)
      : text_(text), rules_(rules), arena_(arena), markers_(markers) {}

  /// A node with its arguments. Raises a refused statement when there are too many nodes.
  Tree::Expression* make(Tree::Expression node, std::span<Tree::Expression* const> args);
  Tree::Expression* make(const Tree::Expression& node,
                         std::initializer_list<Tree::Expression*> args = {}) {
    return make(node, std::span(args.begin(), args.size()));
  }

  // Literals.
  Tree::Expression* null(std::string_view word);
  Tree::Expression* truth(bool value, std::string_view word);
  Tree::Expression* whole(std::int64_t value, std::string_view word);
  Tree::Expression* literalText(std::string_view text, std::string_view word);
  /// A number as written: whole, exact with up to four decimals, or floating.
  Tree::Expression* number(std::string_view word);
  /// A date as written. Raises a refused statement when `text` is none.
  Tree::Expression* date(std::string_view text, std::string_view word);

  /// `value` as one of `to`, converted where the stored forms differ. Fractions round by the
  /// dialect's rule, or by `rounding`. Raises a refused statement when there is no conversion.
  Tree::Expression* convert(Tree::Expression* value, Type to);
  Tree::Expression* convert(Tree::Expression* value, Type to, Rounding rounding);

  /// Gives `value` the type `to` when it is a marker or NULL of unknown type.
  void adapt(Tree::Expression* value, Type to);

  /// The type in which values of `types` are compared.
  [[nodiscard]] Type comparisonType(std::span<const Type> types, std::string_view word) const;

  /// `value` in the type of its comparison.
  Tree::Expression* forComparison(Tree::Expression* value, Type type);

  /// Brings values that are compared with one another to one type.
  void matchForComparison(std::span<Tree::Expression*> values, std::string_view word);

  /// Brings the branches of one value to their common type, which it returns; `what` names the
  /// place in messages ("the branches of CASE").
  Type matchBranches(std::span<Tree::Expression*> values, std::string_view what,
                     std::string_view word);

  /// The type that values of both types fit into, or nothing when they do not go together.
  [[nodiscard]] static std::optional<Type> wider(Type a, Type b) noexcept;
  /// The same for types of numbers; an unknown type is the narrowest of them.
  [[nodiscard]] static Type widerNumber(Type a, Type b) noexcept;

  // Operators.
  Tree::Expression* arithmetic(Operator op, Tree::Expression* left, Tree::Expression* right,
                               std::string_view word);
  Tree::Expression* compare(Operator op, Tree::Expression* left, Tree::Expression* right,
                            std::string_view word);
  Tree::Expression* negate(Tree::Expression* operand, std::string_view word);

  /// A number type's value as a number: a boolean becomes its number, everything else stays.
  /// Raises a refused statement for texts and dates; `what` names the place.
  Tree::Expression* asNumber(Tree::Expression* value, std::string_view what);

  /// The value's text form.
  Tree::Expression* asText(Tree::Expression* value) { return convert(value, Type::Text); }

 private:
  /// As many as the text can say, and some for what its aliases bring.
  static constexpr std::size_t kFurtherNodes = 100'000;

  Tree::Expression* convertLiteral(Tree::Expression* literal, Type to, Rounding rounding);
  std::optional<std::int64_t> literalUnits(const Tree::Expression& literal, Type to,
                                           Rounding rounding) const;
  Tree::Expression* booleanNumber(Tree::Expression* value);
  Tree::Expression* concatenate(Tree::Expression* left, Tree::Expression* right,
                                std::string_view word);
  Tree::Expression* ampersandOperand(Tree::Expression* value);
  Tree::Expression* dateArithmetic(Operator op, Tree::Expression* left, Tree::Expression* right,
                                   std::string_view word);
  Tree::Expression* divide(Tree::Expression* left, Tree::Expression* right, std::string_view word);
  Tree::Expression* modulo(Tree::Expression* left, Tree::Expression* right, std::string_view word);
  Tree::Expression* binary(Operator op, Type type, Tree::Expression* left, Tree::Expression* right,
                           std::string_view word);
  void matchWithWholeQuery(Tree::Expression*& text, Tree::Expression*& query);
  Tree::Expression* matchedLiteral(Tree::Expression* boolean, Tree::Expression* number);
  [[noreturn]] void refuseTypes(std::string_view what, Type a, Type b, std::string_view word) const;

  const StatementText& text_;
  const DialectRules& rules_;
  Arena& arena_;
  std::vector<Type>& markers_;
  std::size_t nodes_ = 0;
};

}  // namespace QuorHost::Sql
