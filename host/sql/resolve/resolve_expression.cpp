// Expressions and conditions.
#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <utility>

#include "host/sql/resolve/resolver.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Kind = Expression::Kind;
using Written = Syntax::Expression::Kind;

/// Chains of AND and OR that people write by hand are not longer.
constexpr std::size_t kLongChain = 16;
/// The engine takes a second or two for them.
constexpr std::size_t kMostConditions = 10'000;

bool isConstant(const Expression& value) {
  return value.kind == Kind::Literal || value.kind == Kind::Marker;
}

}  // namespace

Expression* Resolver::value(const Syntax::Expression& expression, Scope& scope) {
  Expression* const result = any(expression, scope);
  if (result->isCondition && !rules_.conditionsAreValues) {
    text_.refuse("In the server dialect a condition cannot stand for a value; use CASE",
                 expression.word);
  }
  return result;
}

Expression* Resolver::condition(const Syntax::Expression& expression, Scope& scope) {
  Expression* const result = any(expression, scope);
  if (result->isCondition) return result;
  if (!rules_.conditionsAreValues) {
    text_.refuse("A condition is expected here, not a value", expression.word);
  }
  typing_.adapt(result, Type::Boolean);
  if (result->type == Type::Boolean) return result;
  Expression* const number = typing_.asNumber(result, "A condition");
  return typing_.compare(Operator::NotEqual, number, typing_.whole(0, expression.word),
                         expression.word);
}

std::vector<Expression*> Resolver::values(std::span<Syntax::Expression* const> list, Scope& scope) {
  std::vector<Expression*> result;
  result.reserve(list.size());
  for (const Syntax::Expression* const item : list) result.push_back(value(*item, scope));
  return result;
}

Expression* Resolver::makeCondition(Expression node, std::span<Expression* const> args) {
  node.type = Type::Boolean;
  node.isCondition = true;
  return typing_.make(node, args);
}

Expression* Resolver::any(const Syntax::Expression& expression, Scope& scope) {
  if (++level_ > kDeepest) {
    text_.refuse("The statement is nested deeper than " + std::to_string(kDeepest) +
                     " levels when its aliases are put in",
                 expression.word);
  }
  Expression* const result = dispatch(expression, scope);
  --level_;
  return result;
}

Expression* Resolver::dispatch(const Syntax::Expression& expression, Scope& scope) {
  const std::span<Syntax::Expression*> args = expression.args;
  const std::string_view word = expression.word;
  switch (expression.kind) {
    case Written::Name:
      return resolveName(expression, scope);
    case Written::Number:
      return typing_.number(word);
    case Written::Text:
      return typing_.literalText(expression.text, word);
    case Written::Date:
      return typing_.date(expression.text, word);
    case Written::Boolean:
      return typing_.truth(expression.truth, word);
    case Written::Null:
      return typing_.null(word);
    case Written::Marker:
      return typing_.make({.kind = Kind::Marker,
                           .type = markers_[expression.marker],
                           .marker = expression.marker,
                           .word = word});
    case Written::Negate:
      return typing_.negate(value(*args[0], scope), word);
    case Written::Arithmetic: {
      Expression* const left = value(*args[0], scope);
      return typing_.arithmetic(expression.op, left, value(*args[1], scope), word);
    }
    case Written::Compare: {
      Expression* const left = value(*args[0], scope);
      return typing_.compare(expression.op, left, value(*args[1], scope), word);
    }
    case Written::Logic:
      return resolveLogic(expression, scope);
    case Written::Not:
      return negation(condition(*args[0], scope), word);
    case Written::IsNull:
      return makeCondition({.kind = Kind::IsNull, .negated = expression.negated, .word = word},
                           {value(*args[0], scope)});
    case Written::Between:
      return resolveBetween(expression, scope);
    case Written::InList:
      return resolveInList(expression, scope);
    case Written::InQuery:
      return resolveInQuery(expression, scope);
    case Written::Like:
      return resolveLike(expression, scope);
    case Written::Exists:
      return makeCondition({.kind = Kind::Exists,
                            .word = word,
                            .query = resolveQuery(*expression.query, &scope, Place::Inner)},
                           {});
    case Written::Case:
      return resolveCase(expression, scope);
    case Written::Cast:
      return resolveCast(expression, scope);
    case Written::Call:
    case Written::CountRows:
      return resolveCall(expression, scope);
    case Written::Query:
      return resolveSubSelect(expression, scope);
  }
  return nullptr;
}

/// NOT of a condition; those that have a negated form of their own take it.
Expression* Resolver::negation(Expression* operand, std::string_view word) {
  switch (operand->kind) {
    case Kind::IsNull:
    case Kind::Between:
    case Kind::InList:
    case Kind::InQuery:
    case Kind::Like:
      operand->negated = !operand->negated;
      return operand;
    default:
      return makeCondition({.kind = Kind::Not, .word = word}, {operand});
  }
}

Expression* Resolver::resolveLogic(const Syntax::Expression& logic, Scope& scope) {
  std::vector<Expression*> conditions;
  for (const Syntax::Expression* const operand : logic.args) {
    conditions.push_back(condition(*operand, scope));
  }
  if (conditions.size() > kLongChain) {
    foldIntoLists(conditions, logic.op);
    if (conditions.size() == 1) return conditions.front();
    if (conditions.size() > kMostConditions) {
      text_.refuse("AND and OR join at most " + std::to_string(kMostConditions) +
                       " conditions; say them as `column IN (...)`",
                   logic.word);
    }
  }
  return makeCondition({.kind = Kind::Logic, .op = logic.op, .word = logic.word}, conditions);
}

/// Makes `a = 1 OR a = 2` a list, `a IN (1, 2)`, and so with AND and `<>`: what is a list to people
/// is then one to the engine, whose time for a chain grows with the square of its length.
void Resolver::foldIntoLists(std::vector<Expression*>& conditions, Operator op) {
  const Operator compared = op == Operator::Or ? Operator::Equal : Operator::NotEqual;
  std::map<std::pair<const Tree::Source*, std::uint32_t>, std::vector<Expression*>> lists;
  std::vector<Expression*> rest;
  for (Expression* const condition : conditions) {
    const bool compares = condition->kind == Kind::Compare && condition->op == compared;
    if (!compares || condition->args[0]->kind != Kind::Column || !isConstant(*condition->args[1])) {
      rest.push_back(condition);
      continue;
    }
    Expression* const column = condition->args[0];
    std::vector<Expression*>& list = lists[{column->source, column->column}];
    if (list.empty()) {
      list.push_back(column);
      rest.push_back(condition);  // for now, where the list will stand
    }
    list.push_back(condition->args[1]);
  }
  for (Expression*& condition : rest) {
    if (condition->kind != Kind::Compare || condition->args[0]->kind != Kind::Column) continue;
    const auto list = lists.find({condition->args[0]->source, condition->args[0]->column});
    if (list == lists.end() || list->second.size() <= 2) continue;
    if (condition->op != compared || condition->args[1] != list->second[1]) continue;
    condition = makeCondition(
        {.kind = Kind::InList, .negated = op == Operator::And, .word = condition->word},
        list->second);
  }
  conditions = std::move(rest);
}

Expression* Resolver::resolveBetween(const Syntax::Expression& between, Scope& scope) {
  std::vector<Expression*> operands = values(between.args, scope);
  for (Expression*& operand : operands) {
    if (operand->type == Type::Boolean) operand = typing_.asNumber(operand, "BETWEEN");
  }
  typing_.matchForComparison(operands, between.word);
  return makeCondition({.kind = Kind::Between, .negated = between.negated, .word = between.word},
                       operands);
}

Expression* Resolver::resolveInList(const Syntax::Expression& in, Scope& scope) {
  std::vector<Expression*> operands = values(in.args, scope);
  typing_.matchForComparison(operands, in.word);
  return makeCondition({.kind = Kind::InList, .negated = in.negated, .word = in.word}, operands);
}

Expression* Resolver::resolveInQuery(const Syntax::Expression& in, Scope& scope) {
  Expression* const tested = value(*in.args[0], scope);
  Tree::Query* const query = resolveQuery(*in.query, &scope, Place::Inner);
  requireOneColumn(*query, in.word);
  const std::array types{tested->type, query->columns[0].type};
  const Type type = typing_.comparisonType(types, in.word);
  convertColumn(*query, 0, type);
  return makeCondition(
      {.kind = Kind::InQuery, .negated = in.negated, .word = in.word, .query = query},
      {typing_.forComparison(tested, type)});
}

Expression* Resolver::resolveLike(const Syntax::Expression& like, Scope& scope) {
  Expression* const text = typing_.asText(value(*like.args[0], scope));
  Expression* const pattern = typing_.asText(value(*like.args[1], scope));
  return makeCondition(
      {.kind = Kind::Like, .wildcards = dialect_, .negated = like.negated, .word = like.word},
      {text, pattern});
}

Expression* Resolver::resolveCase(const Syntax::Expression& choice, Scope& scope) {
  constexpr std::size_t kFirstWhen = 2;
  const Syntax::Expression* const operand = choice.args[0];
  const Syntax::Expression* const otherwise = choice.args[1];
  std::vector<Expression*> args;
  for (std::size_t i = kFirstWhen; i < choice.args.size(); i += 2) {
    const Syntax::Expression& when = *choice.args[i];
    if (operand == nullptr) {
      args.push_back(condition(when, scope));
    } else {
      // CASE x WHEN y means CASE WHEN x = y; each comparison has its own type.
      Expression* const tested = value(*operand, scope);
      args.push_back(typing_.compare(Operator::Equal, tested, value(when, scope), when.word));
    }
    args.push_back(value(*choice.args[i + 1], scope));
  }
  if (otherwise != nullptr) args.push_back(value(*otherwise, scope));
  return makeCase(std::move(args), "the branches of CASE", choice.word);
}

Expression* Resolver::makeCase(std::vector<Expression*> args, std::string_view what,
                               std::string_view word) {
  std::vector<Expression*> branches;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (i % 2 == 1 || i + 1 == args.size()) branches.push_back(args[i]);
  }
  const Type type = typing_.matchBranches(branches, what, word);
  for (std::size_t i = 0; i < branches.size(); ++i) {
    args[std::min(2 * i + 1, args.size() - 1)] = branches[i];
  }
  return typing_.make({.kind = Kind::Case, .type = type, .word = word}, args);
}

Expression* Resolver::resolveCast(const Syntax::Expression& cast, Scope& scope) {
  constexpr std::uint8_t kStoredDecimals = 4;
  const Syntax::TypeName& type = cast.type;
  Expression* const operand = value(*cast.args[0], scope);
  Expression* const converted = typing_.convert(operand, type.type, Rounding::TowardsZero);
  if (type.type == Type::Text && type.size > 0) {
    return typing_.make(
        {.kind = Kind::Call, .type = Type::Text, .function = Function::Left, .word = cast.word},
        {converted, typing_.whole(type.size, cast.word)});
  }
  if (type.type == Type::Currency && type.decimals < kStoredDecimals) {
    return typing_.make({.kind = Kind::Call,
                         .type = Type::Currency,
                         .function = Function::RoundHalfAway,
                         .word = cast.word},
                        {converted, typing_.whole(type.decimals, cast.word)});
  }
  return converted;
}

Expression* Resolver::resolveSubSelect(const Syntax::Expression& select, const Scope& scope) {
  Tree::Query* const query = resolveQuery(*select.query, &scope, Place::Inner);
  requireOneColumn(*query, select.word);
  return typing_.make(
      {.kind = Kind::Query, .type = query->columns[0].type, .word = select.word, .query = query});
}

}  // namespace QuorHost::Sql
