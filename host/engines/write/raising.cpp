#include "host/engines/write/raising.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace QuorHost::Write {
namespace {

using Sql::DateUnit;
using Sql::Function;
using Sql::Operator;
using Sql::Type;
using Sql::Tree::Branch;
using Sql::Tree::Expression;
using Sql::Tree::From;
using Sql::Tree::Query;
using Sql::Tree::Source;
using Kind = Expression::Kind;
using Sources = std::set<const Source*>;

bool isNonZero(const Expression& value) {
  return value.kind == Kind::Literal && (value.integer != 0 || value.number != 0);
}

/// A length, a number of decimals or a start that is in range.
bool isCount(const Expression& value) { return value.kind == Kind::Literal && value.integer >= 0; }

bool arithmeticRaises(const Expression& operation) {
  switch (operation.op) {
    case Operator::Divide:
    case Operator::DivideWhole:
    case Operator::Modulo:
      return !isNonZero(*operation.args[1]);
    case Operator::Multiply:
      return operation.args[0]->type == Type::Currency && operation.args[1]->type == Type::Currency;
    default:
      return false;
  }
}

bool conversionRaises(const Expression& conversion) {
  const Type from = conversion.args[0]->type;
  switch (conversion.type) {
    case Type::Integer:
      return from != Type::Boolean;
    case Type::Long:
      return from != Type::Boolean && from != Type::Integer;
    case Type::Currency:
      return from == Type::Double || from == Type::Text || from == Type::Date;
    case Type::Double:
    case Type::Date:
      return from == Type::Text;
    default:
      return false;
  }
}

bool callRaises(const Expression& call) {
  switch (call.function) {
    case Function::Left:
    case Function::Right:
      return !isCount(*call.args[1]);
    case Function::Middle:
      return !isCount(*call.args[1]) || !isNonZero(*call.args[1]) || !isCount(*call.args.back());
    case Function::Substring:
      return !isCount(*call.args[2]);
    case Function::AddToDate:
    case Function::AddDays:
    case Function::DateOf:
      return true;
    case Function::DateDifference:
      return call.unit >= DateUnit::Hour;
    default:
      return false;
  }
}

/// Whether the outermost operation itself can.
bool raisesItself(const Expression& expression) {
  switch (expression.kind) {
    case Kind::Arithmetic:
      return arithmeticRaises(expression);
    case Kind::Convert:
      return conversionRaises(expression);
    case Kind::Call:
      return callRaises(expression);
    default:
      return false;
  }
}

void addSources(const Query& query, Sources& sources);

void addSources(const From& from, Sources& sources) {
  if (from.source == nullptr) {
    addSources(*from.left, sources);
    addSources(*from.right, sources);
    return;
  }
  sources.insert(from.source);
  if (from.source->query != nullptr) addSources(*from.source->query, sources);
}

void addSubSelects(const Expression& expression, Sources& sources) {
  for (const Expression* const arg : expression.args) addSubSelects(*arg, sources);
  if (expression.query != nullptr) addSources(*expression.query, sources);
}

/// Adds every source of `query`, those of its derived tables and sub-selects among them.
void addSources(const Query& query, Sources& sources) {
  for (const Branch& branch : query.branches) {
    if (branch.query != nullptr) {
      addSources(*branch.query, sources);
    } else if (branch.select->from != nullptr) {
      addSources(*branch.select->from, sources);
    }
  }
  Sql::Tree::forEachRoot(query, [&](const Expression& root) { addSubSelects(root, sources); });
}

class Search {
 public:
  Raising of(const Expression& expression) {
    Raising result = Raising::Never;
    const auto add = [&](Raising further) { result = std::max(result, further); };
    if (raisesItself(expression)) add(placed(expression));
    if (expression.kind == Kind::Column) add(ofColumn(expression));
    for (const Expression* const arg : expression.args) {
      if (result == Raising::ByRow) return result;
      add(of(*arg));
    }
    if (expression.query != nullptr && ofQuery(*expression.query)) add(placed(expression));
    return result;
  }

 private:
  static Raising placed(const Expression& expression) {
    return readsColumn(expression) ? Raising::ByRow : Raising::Once;
  }

  bool ofQuery(const Query& query) {
    bool found = false;
    Sql::Tree::forEachRoot(query, [&](const Expression& root) {
      if (!found) found = of(root) != Raising::Never;
    });
    return found;
  }

  /// The engine may compute the column of a derived table where it is read.
  Raising ofColumn(const Expression& column) {
    if (column.source->query == nullptr) return Raising::Never;
    const auto [entry, isNew] =
        columns_.try_emplace({column.source->query, column.column}, Raising::Never);
    if (isNew && outputRaises(*column.source->query, column.column)) {
      columns_[{column.source->query, column.column}] = Raising::ByRow;
      return Raising::ByRow;
    }
    return entry->second;
  }

  bool outputRaises(const Query& query, std::uint32_t column) {
    return std::ranges::any_of(query.branches, [&](const Branch& branch) {
      return branch.query != nullptr ? outputRaises(*branch.query, column)
                                     : of(*branch.select->outputs[column].value) != Raising::Never;
    });
  }

  std::map<std::pair<const Query*, std::uint32_t>, Raising> columns_;
};

}  // namespace

Raising raisingOf(const Expression& expression) { return Search().of(expression); }

bool columnRaises(const Query& query) {
  const auto inFrom = [](const From& from, const auto& again) -> bool {
    if (from.source != nullptr) {
      return from.source->query != nullptr && columnRaises(*from.source->query);
    }
    return again(*from.left, again) || again(*from.right, again);
  };
  return std::ranges::any_of(query.branches, [&](const Branch& branch) {
    if (branch.query != nullptr) return columnRaises(*branch.query);
    const auto raises = [](const Sql::Tree::Output& output) {
      return raisingOf(*output.value) != Raising::Never;
    };
    return std::ranges::any_of(branch.select->outputs, raises) ||
           (branch.select->from != nullptr && inFrom(*branch.select->from, inFrom));
  });
}

bool readsColumn(const Expression& expression) {
  Sources own;
  addSubSelects(expression, own);
  bool found = false;
  forEachColumn(expression, [&](const Expression& column) {
    if (!own.contains(column.source)) found = true;
  });
  return found;
}

}  // namespace QuorHost::Write
