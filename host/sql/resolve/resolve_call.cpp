// Calls of functions and aggregates.
#include <algorithm>
#include <array>

#include "host/sql/resolve/resolver.h"

namespace QuorHost::Sql {
namespace {

using Tree::Expression;
using Kind = Expression::Kind;
using Written = Syntax::Expression::Kind;

bool isWholeType(Type type) { return type == Type::Integer || type == Type::Long; }

bool isRoundingToWhole(Function function) {
  return function == Function::Floor || function == Function::Ceiling ||
         function == Function::Truncate;
}

}  // namespace

Expression* Resolver::resolveCall(const Syntax::Expression& call, Scope& scope) {
  if (call.kind == Written::CountRows || call.function->isAggregate()) {
    return resolveAggregate(call, scope);
  }
  switch (call.function->function) {
    case Function::Choose:
      return resolveChoose(call, scope);
    case Function::Switch:
      return resolveSwitch(call, scope);
    case Function::TestNull:
      return makeCondition({.kind = Kind::IsNull, .word = call.word},
                           {value(*call.args[0], scope)});
    case Function::ReplaceNull:
      return resolveReplaceNull(call, scope);
    case Function::NullToZero:
      return resolveNullToZero(call, scope);
    case Function::NullIf:
      return resolveNullIf(call, scope);
    case Function::IsNumeric:
      return resolveIsNumeric(call, scope);
    case Function::Find:
    case Function::FindFrom:
      return resolveFind(call, scope);
    case Function::ConvertTo:
      return typing_.convert(value(*call.args[0], scope), call.function->result,
                             Rounding::HalfToEven);
    default:
      return resolvePlainCall(call, scope);
  }
}

Expression* Resolver::resolvePlainCall(const Syntax::Expression& call, Scope& scope) {
  const FunctionRule& rule = *call.function;
  Expression node{
      .kind = Kind::Call, .type = rule.result, .function = rule.function, .word = call.word};
  std::vector<Expression*> args;
  for (std::size_t i = 0; i < call.args.size(); ++i) {
    const char letter = rule.arguments[std::min(i, rule.arguments.size() - 1)];
    if (letter == 'U') {
      node.unit = dateUnit(*call.args[i]);
    } else {
      args.push_back(argument(call, i, letter, scope));
    }
  }
  if (rule.arguments == "V") {
    node.type = typing_.matchBranches(args, call.word, call.word);
  } else if (rule.result == Type::Unknown) {
    node.type = args.front()->type;
    if (isWholeType(node.type) && isRoundingToWhole(rule.function)) return args.front();
  }
  const bool rounds =
      rule.function == Function::RoundHalfEven || rule.function == Function::RoundHalfAway;
  if (rounds && args.size() == 1) args.push_back(typing_.whole(0, call.word));
  return typing_.make(node, args);
}

/// An argument as its letter in the table of functions wants it.
Expression* Resolver::argument(const Syntax::Expression& call, std::size_t index, char letter,
                               Scope& scope) {
  Expression* const given = value(*call.args[index], scope);
  switch (letter) {
    case 'T':
      return typing_.asText(given);
    case 'N':
      typing_.adapt(given, Type::Double);
      return typing_.asNumber(given, call.word);
    case 'W':
      return typing_.convert(typing_.asNumber(given, call.word), Type::Long);
    case 'D':
      return typing_.convert(given, Type::Date);
    default:
      return given;
  }
}

DateUnit Resolver::dateUnit(const Syntax::Expression& unit) const {
  // The desktop dialect writes the unit as a text, the server dialect as a bare word.
  const Written kind = dialect_ == Dialect::Desktop ? Written::Text : Written::Name;
  const DateUnit* const found =
      unit.kind == kind && unit.qualifier.empty() ? findDateUnit(unit.text, dialect_) : nullptr;
  if (found == nullptr) {
    text_.refuse(dialect_ == Dialect::Desktop ? "A unit of dates is expected, such as 'm' or 'd'"
                                              : "A unit of dates is expected, such as month or day",
                 unit.word);
  }
  return *found;
}

Expression* Resolver::resolveAggregate(const Syntax::Expression& call, Scope& scope) {
  if (scope.noAggregates != nullptr) {
    text_.refuse("An aggregate cannot stand in " + std::string(scope.noAggregates), call.word);
  }
  if (scope.insideAggregate) {
    text_.refuse("An aggregate cannot stand inside another one", call.word);
  }
  scope.aggregates = true;
  Expression node{.kind = Kind::Aggregate,
                  .type = Type::Long,
                  .function = Function::Count,
                  .distinct = call.distinct,
                  .word = call.word};
  if (call.kind == Written::CountRows) return typing_.make(node);

  node.function = call.function->function;
  scope.insideAggregate = true;
  Expression* operand = value(*call.args[0], scope);
  scope.insideAggregate = false;
  requireOwnColumns(*operand, scope);
  if (node.function == Function::Count) return typing_.make(node, {operand});

  const bool isRange = node.function == Function::Minimum || node.function == Function::Maximum;
  if (!isRange || operand->type == Type::Boolean) {
    typing_.adapt(operand, Type::Double);
    operand = typing_.asNumber(operand, call.word);
  }
  node.type = operand->type;
  if (!isRange && node.type == Type::Integer) node.type = Type::Long;
  if (node.function == Function::Average) {
    node.rounding = rules_.rounding;
    if (isWholeType(node.type) && !rules_.wholeNumbersDivideWhole) {
      node.type = Type::Double;
      operand = typing_.convert(operand, Type::Double);
    }
  }
  return typing_.make(node, {operand});
}

/// An aggregate over columns of an outer select alone would belong to that select.
void Resolver::requireOwnColumns(const Expression& aggregate, const Scope& scope) const {
  bool own = false;
  bool outer = false;
  const auto look = [&](const auto& self, const Expression& value) -> void {
    if (value.kind == Kind::Column) {
      const bool found = std::ranges::find(scope.sources, value.source) != scope.sources.end();
      (found ? own : outer) = true;
    }
    for (const Expression* const arg : value.args) self(self, *arg);
  };
  look(look, aggregate);
  if (outer && !own) {
    text_.refuse("An aggregate needs a column of its own select", aggregate.word);
  }
}

Expression* Resolver::resolveChoose(const Syntax::Expression& call, Scope& scope) {
  Expression* const when = condition(*call.args[0], scope);
  Expression* const then = value(*call.args[1], scope);
  return makeCase({when, then, value(*call.args[2], scope)}, call.word, call.word);
}

Expression* Resolver::resolveSwitch(const Syntax::Expression& call, Scope& scope) {
  if (call.args.size() % 2 != 0) {
    text_.refuse("Wrong number of arguments: " + quoted(call.word) +
                     " takes pairs of a condition and a value",
                 call.word);
  }
  std::vector<Expression*> args;
  for (std::size_t i = 0; i < call.args.size(); i += 2) {
    args.push_back(condition(*call.args[i], scope));
    args.push_back(value(*call.args[i + 1], scope));
  }
  return makeCase(std::move(args), call.word, call.word);
}

/// ISNULL(a, b): b takes the type of a.
Expression* Resolver::resolveReplaceNull(const Syntax::Expression& call, Scope& scope) {
  Expression* const first = value(*call.args[0], scope);
  Expression* second = value(*call.args[1], scope);
  typing_.adapt(first, second->type);
  second = typing_.convert(second, first->type);
  return typing_.make(
      {.kind = Kind::Call, .type = first->type, .function = Function::Coalesce, .word = call.word},
      {first, second});
}

/// Nz(a[, b]): without b, zero or no text.
Expression* Resolver::resolveNullToZero(const Syntax::Expression& call, Scope& scope) {
  std::vector<Expression*> args = values(call.args, scope);
  if (args.size() == 1) {
    const bool zero = isNumber(args.front()->type);
    args.push_back(zero ? typing_.whole(0, call.word) : typing_.literalText("", call.word));
  }
  const Type type = typing_.matchBranches(args, call.word, call.word);
  return typing_.make(
      {.kind = Kind::Call, .type = type, .function = Function::Coalesce, .word = call.word}, args);
}

/// NULLIF(a, b): NULL where a = b, otherwise a.
Expression* Resolver::resolveNullIf(const Syntax::Expression& call, Scope& scope) {
  Expression* const tested = value(*call.args[0], scope);
  Expression* const equal =
      typing_.compare(Operator::Equal, tested, value(*call.args[1], scope), call.word);
  return makeCase({equal, typing_.null(call.word), value(*call.args[0], scope)}, "NULLIF",
                  call.word);
}

Expression* Resolver::resolveIsNumeric(const Syntax::Expression& call, Scope& scope) {
  Expression* const tested = value(*call.args[0], scope);
  typing_.adapt(tested, Type::Text);
  const Type type = call.function->result;
  if (tested->type == Type::Text) {
    return typing_.make(
        {.kind = Kind::Call, .type = type, .function = Function::IsNumeric, .word = call.word},
        {tested});
  }
  // What is no text is a number unless it is NULL or a date.
  Expression* const given =
      makeCondition({.kind = Kind::IsNull, .negated = true, .word = call.word}, {tested});
  Expression* const yes = typing_.whole(isNumber(tested->type) ? 1 : 0, call.word);
  Expression* const no = typing_.whole(0, call.word);
  return makeCase({given, typing_.convert(yes, type), typing_.convert(no, type)}, "ISNUMERIC",
                  call.word);
}

/// CHARINDEX(found, text[, start]) and InStr([start, ]text, found).
Expression* Resolver::resolveFind(const Syntax::Expression& call, Scope& scope) {
  const bool fromFirst = call.function->function == Function::FindFrom;
  const std::size_t texts = fromFirst ? call.args.size() - 2 : 0;
  const std::size_t start = fromFirst ? 0 : 2;
  Expression* const first = argument(call, texts, 'T', scope);
  Expression* const second = argument(call, texts + 1, 'T', scope);
  Expression* const from =
      call.args.size() == 3 ? argument(call, start, 'W', scope) : typing_.whole(1, call.word);
  return typing_.make({.kind = Kind::Call,
                       .type = Type::Long,
                       .function = call.function->function,
                       .word = call.word},
                      {fromFirst ? first : second, fromFirst ? second : first, from});
}

}  // namespace QuorHost::Sql
