// Conditions: what is tried before what.
#include <algorithm>
#include <vector>

#include "host/engines/write/expression_writer.h"
#include "host/engines/write/raising.h"

namespace QuorHost::Write {
namespace {

using Sql::Operator;
using Sql::Tree::Expression;
using Kind = Expression::Kind;
using Terms = ExpressionWriter::Terms;

/// Longer chains of AND and OR are written in halves, each in parentheses: a flat one is as deep as
/// it is long for the engine, which allows a thousand.
constexpr std::size_t kLongestChain = 16;

bool raises(const Expression* condition) { return raisingOf(*condition) != Raising::Never; }

/// Whether a term is to be tried after the ones before it.
bool needsTurns(Terms conditions) { return std::ranges::any_of(conditions.subspan(1), raises); }

Asked opposite(Asked asked) {
  if (asked == Asked::Value) return asked;
  return asked == Asked::Truth ? Asked::Falsehood : Asked::Truth;
}

}  // namespace

void ExpressionWriter::writeCondition(const Expression& condition, Asked asked, Level level) {
  const bool passesOn = condition.kind == Kind::Logic || condition.kind == Kind::Not;
  if (!passesOn || asked == Asked::Value) return write(condition, level);
  const bool inside = levelOf(condition, form_) < level;
  const SqlText::Held held(sql_, inside ? kInParentheses : 0);
  if (inside) sql_.add("(");
  if (condition.kind == Kind::Not) {
    writeNot(condition, asked);
  } else {
    writeLogic(condition, asked);
  }
  if (inside) sql_.add(")");
}

void ExpressionWriter::writeNot(const Expression& negation, Asked asked) {
  const SqlText::Held held(sql_, kInSign);
  sql_.add("NOT ");
  writeCondition(*negation.args[0], opposite(asked), Level::Not);
}

void ExpressionWriter::writeLogic(const Expression& logic, Asked asked) {
  if (!needsTurns(logic.args)) return writeChain(logic.args, logic.op, asked);
  if (asked == Asked::Value) return writeValueInTurn(logic);
  writeInTurn(logic.args, logic.op, asked);
}

void ExpressionWriter::writeChain(Terms conditions, Operator op, Asked asked) {
  const std::string_view word = op == Operator::And ? " AND " : " OR ";
  const Level level = op == Operator::And ? Level::And : Level::Or;
  if (conditions.size() > kLongestChain) {
    const SqlText::Held held(sql_, kInParentheses + kInRightOperand);
    const std::size_t half = conditions.size() / 2;
    sql_.add("(");
    writeChain(conditions.first(half), op, asked);
    sql_.add(")").add(word).add("(");
    writeChain(conditions.subspan(half), op, asked);
    sql_.add(")");
    return;
  }
  writeCondition(*conditions.front(), asked, next(level));
  const SqlText::Held held(sql_, kInRightOperand);
  for (const Expression* const condition : conditions.subspan(1)) {
    sql_.add(word);
    writeCondition(*condition, asked, next(level));
  }
}

/// CASE tries one condition after the other. What decides ends it; the last one is the result.
/// Where truth is asked for, NULL does as well as false, and the other way round.
void ExpressionWriter::writeInTurn(Terms conditions, Operator op, Asked asked) {
  sql_.add("CASE");
  for (const Expression* const condition : conditions.first(conditions.size() - 1)) {
    sql_.add(" WHEN ");
    writeTest(*condition, op, asked);
    sql_.add(" THEN ").add(op == Operator::And ? form_.words().no : form_.words().yes);
  }
  sql_.add(" ELSE ");
  const SqlText::Held held(sql_, kInElse);
  writeCondition(*conditions.back(), asked);
  sql_.add(" END");
}

/// Whether the condition decides the chain that it is one of.
void ExpressionWriter::writeTest(const Expression& condition, Operator op, Asked asked) {
  const bool whenTrue = op == Operator::Or;
  const bool orNull = whenTrue == (asked == Asked::Falsehood);
  const SqlText::Held held(sql_, kInWhen + kInParentheses);
  sql_.add(whenTrue || orNull ? "(" : "NOT (");
  writeCondition(condition, asked);
  sql_.add(!orNull ? ")" : whenTrue ? ") IS NOT FALSE" : ") IS NOT TRUE");
}

/// Where true, false and NULL are three: the chain is asked for its truth, then for its falsehood.
void ExpressionWriter::writeValueInTurn(const Expression& logic) {
  sql_.add("CASE WHEN ");
  const SqlText::Held held(sql_, kInWhen + kInSign);
  writeInTurn(logic.args, logic.op, Asked::Truth);
  sql_.add(" THEN ").add(form_.words().yes).add(" WHEN NOT ");
  writeInTurn(logic.args, logic.op, Asked::Falsehood);
  sql_.add(" THEN ").add(form_.words().no).add(" END");
}

void ExpressionWriter::writeInTurn(Terms terms) {
  if (terms.size() == 1) return writeCondition(*terms.front(), Asked::Truth);
  writeInTurn(terms, Operator::And, Asked::Truth);
}

void ExpressionWriter::writeFilter(Terms guards, Terms terms) {
  if (terms.size() == 1 && (guards.empty() || !raises(terms.front()))) {
    return writeCondition(*terms.front(), Asked::Truth);
  }
  if (std::ranges::none_of(terms, raises)) return writeChain(terms, Operator::And, Asked::Truth);
  std::vector<const Expression*> plain;
  std::vector<const Expression*> constant;  // those that read no column
  std::vector<const Expression*> inTurn(guards.begin(), guards.end());
  std::size_t tried = 0;  // of `inTurn`, up to the last that can raise
  std::size_t risky = 0;
  const SqlText::Held held(sql_, kInRightOperand);
  for (const Expression* const term : terms) {
    const Raising raising = raisingOf(*term);
    inTurn.push_back(term);
    if (raising == Raising::ByRow) {
      tried = inTurn.size();
      ++risky;
    } else if (raising == Raising::Once && !constant.empty()) {
      // The engine computes it before it has a row, so only what has none can guard it.
      writeBehind(constant, *term);
      sql_.add(" AND ");
    } else {
      plain.push_back(term);
    }
    if (!readsColumn(*term)) constant.push_back(term);
  }
  if (!plain.empty()) writeChain(plain, Operator::And, Asked::Truth);
  if (!plain.empty() && risky > 0) sql_.add(" AND ");
  if (risky == 1) {
    writeBehind(Terms(inTurn).first(tried - 1), *inTurn[tried - 1]);
  } else if (risky > 1) {
    writeLookUps(Terms(inTurn).first(tried));
    writeInTurn(Terms(inTurn).first(tried));
  }
}

/// The conditions among `terms` that may find rows by an index, each on its own behind those before
/// it: in a chain that is tried term by term, the engine finds none.
void ExpressionWriter::writeLookUps(Terms terms) {
  const auto finds = [](const Expression& term) {
    if (term.kind != Kind::Compare || term.op != Operator::Equal) return false;
    const Expression& a = *term.args[0];
    const Expression& b = *term.args[1];
    return (a.kind == Kind::Column && !raises(&a) && raises(&b)) ||
           (b.kind == Kind::Column && !raises(&b) && raises(&a));
  };
  for (std::size_t i = 0; i < terms.size(); ++i) {
    if (!finds(*terms[i])) continue;
    writeBehind(terms.first(i), *terms[i]);
    sql_.add(" AND ");
  }
}

/// The condition, tried only where all of `guards` are true. Of a comparison only the operand that
/// can raise goes behind them, so that the other one may be found by an index.
void ExpressionWriter::writeBehind(Terms guards, const Expression& condition) {
  if (guards.empty()) return writeCondition(condition, Asked::Truth, next(Level::And));
  const bool compares = condition.kind == Kind::Compare;
  if (!compares || raises(condition.args[0]) == raises(condition.args[1])) {
    std::vector<const Expression*> terms(guards.begin(), guards.end());
    terms.push_back(&condition);
    return writeInTurn(terms);
  }
  const auto operand = [&](const Expression& value, bool collated) {
    if (raises(&value)) {
      sql_.add("CASE WHEN ");
      const SqlText::Held held(sql_, kInElse);
      writeInTurn(guards);
      sql_.add(" THEN ");
      write(value);
      sql_.add(" END");
    } else {
      write(value, Level::Sum);
    }
    if (collated && form_.needsCollation(value)) sql_.add(form_.collation());
  };
  operand(*condition.args[0], true);
  sql_.add(symbol(condition.op));
  const SqlText::Held held(sql_, kInRightOperand);
  operand(*condition.args[1], false);
}

}  // namespace QuorHost::Write
