#include "host/engines/write/query_writer.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "host/engines/write/expression_writer.h"
#include "host/engines/write/filter.h"
#include "host/engines/write/group_keys.h"
#include "host/engines/write/raising.h"
#include "platform/data_library.h"
#include "platform/error.h"

namespace QuorHost::Write {
namespace {

using Sql::Tree::Branch;
using Sql::Tree::Expression;
using Sql::Tree::From;
using Sql::Tree::Output;
using Sql::Tree::Query;
using Sql::Tree::Select;
using Sql::Tree::SortKey;
using Sql::Tree::Source;

constexpr std::size_t kMostBranches = 500;

// Entries on the parser's stack when it reads a part of a select.
constexpr int kInOutputs = 4;
constexpr int kInFrom = 6;
constexpr int kInJoinCondition = 9;
constexpr int kInWhere = 5;
constexpr int kInGroupBy = 8;
constexpr int kInHaving = 7;
constexpr int kInOrderBy = 11;
constexpr int kInUnion = 3;
constexpr int kInShared = 7;

bool hasAggregate(const Expression& expression) {
  return expression.kind == Expression::Kind::Aggregate ||
         std::ranges::any_of(expression.args,
                             [](const Expression* arg) { return hasAggregate(*arg); });
}

/// A total over all rows that the engine would not take for one: it looks at the columns alone.
bool isUnseenTotal(const Select& select) {
  return select.grouped && select.groupBy.empty() &&
         std::ranges::none_of(select.outputs,
                              [](const Output& output) { return hasAggregate(*output.value); });
}

}  // namespace

void QueryWriter::write(const Query& query, bool named, bool first) {
  writeShared(query);
  const auto limit = [&] {
    if (first) sql_.add(" LIMIT 1");
  };
  if (query.branches.size() > 1) {
    writeUnion(query);
    return limit();
  }
  const Branch& only = query.branches.front();
  if (only.query != nullptr) {
    sql_.add("SELECT * FROM (");
    {
      const SqlText::Held held(sql_, kInFrom);
      write(*only.query, true);
    }
    sql_.add(")").add(form_.words().unnamed);
    writeOrder(query.orderBy, nullptr);
    return limit();
  }
  writeSelect(*only.select, query.orderBy, named, named || only.select->distinct);
  writeLimit(*only.select, first);
}

void QueryWriter::writeShared(const Query& query) {
  std::string_view separator = "WITH ";
  for (const Source* const table : query.shared) {
    sql_.add(separator).name(table->name).add(" AS MATERIALIZED (");
    const SqlText::Held held(sql_, kInShared);
    write(*table->query, true);
    sql_.add(")");
    separator = ", ";
  }
  if (!query.shared.empty()) sql_.add(" ");
}

void QueryWriter::writeUnion(const Query& query) {
  if (query.branches.size() > kMostBranches) {
    throw QuorDataLib::Error(QuorDataLib::kStatementRefused, "QuorDataLib",
                             "A union has at most " + std::to_string(kMostBranches) + " selects");
  }
  const SqlText::Held held(sql_, kInUnion);
  bool first = true;
  for (const Branch& branch : query.branches) {
    if (!first) sql_.add(branch.all ? " UNION ALL " : " UNION ");
    first = false;
    // The engine has no parentheses around the selects of a union, and LIMIT only for the whole.
    const bool wrapped = branch.query != nullptr || branch.select->top.has_value();
    if (!wrapped) {
      writeSelect(*branch.select, {}, true, true);
      continue;
    }
    sql_.add("SELECT * FROM (");
    const SqlText::Held inner(sql_, kInFrom);
    if (branch.query != nullptr) {
      write(*branch.query, true);
    } else {
      writeSelect(*branch.select, {}, true, true);
      writeLimit(*branch.select);
    }
    sql_.add(")").add(form_.words().unnamed);
  }
  // The selects of a union carry the order of texts themselves.
  writeOrder(query.orderBy, nullptr);
}

void QueryWriter::writeSelect(const Select& select, Keys keys, bool named, bool collated) {
  if (const std::optional<Apart> apart = takenApart(select, keys)) {
    return writeApart(select, *apart, keys, named, collated);
  }
  writeOutputs(select, named, collated);
  if (select.from != nullptr) {
    sql_.add(" FROM ");
    writeFrom(*select.from);
  }
  writeWhere(select.from, termsOf(select.where));
  writeGroups(select);
  writeOrder(keys, &select);
}

/// The select outside is written as any other, but for the names by which it reads the columns of
/// the select inside.
void QueryWriter::writeApart(const Select& select, const Apart& apart, Keys keys, bool named,
                             bool collated) {
  const std::string inner = "\":" + std::to_string(sql_.nextNumber()) + "\"";
  SqlText::Columns around = sql_.renamed();
  SqlText::Columns columns = around;
  for (std::size_t i = 0; i < apart.columns.size(); ++i) {
    const Expression& column = *apart.columns[i];
    columns[{column.source, column.column}] = inner + ".\"" + std::to_string(i + 1) + "\"";
  }
  sql_.rename(columns);
  writeOutputs(select, named, collated);
  sql_.rename(around);
  sql_.add(" FROM (");
  writeInside(*select.from, apart);
  sql_.add(") AS ").add(inner).add(" WHERE ");
  sql_.rename(std::move(columns));
  {
    const SqlText::Held held(sql_, kInWhere);
    ExpressionWriter(sql_, form_).writeInTurn(apart.outside);
  }
  writeGroups(select);
  writeOrder(keys, &select);
  sql_.rename(std::move(around));
}

void QueryWriter::writeInside(const From& from, const Apart& apart) {
  const SqlText::Held held(sql_, kInFrom);
  sql_.add("SELECT ");
  // Outside, every column may be that of a select around both.
  if (apart.columns.empty()) sql_.add("1");
  std::string_view separator;
  for (std::size_t i = 0; i < apart.columns.size(); ++i) {
    sql_.add(separator);
    ExpressionWriter(sql_, form_).write(*apart.columns[i]);
    sql_.add(" AS ").name(std::to_string(i + 1));
    separator = ", ";
  }
  sql_.add(" FROM ");
  writeFrom(from);
  writeWhere(&from, apart.inside);
  sql_.add(form_.words().wall);
}

void QueryWriter::writeOutputs(const Select& select, bool named, bool collated) {
  sql_.add(select.distinct ? "SELECT DISTINCT " : "SELECT ");
  const SqlText::Held held(sql_, kInOutputs);
  bool unseen = isUnseenTotal(select);
  const char* separator = "";
  for (const Output& output : select.outputs) {
    sql_.add(separator);
    writeOutput(output, named, collated, std::exchange(unseen, false));
    separator = ", ";
  }
}

void QueryWriter::writeWhere(const From* from, const Conditions& terms) {
  if (terms.empty()) return;
  sql_.add(" WHERE ");
  const SqlText::Held held(sql_, kInWhere);
  ExpressionWriter(sql_, form_)
      .writeFilter(from != nullptr ? guardsOf(terms, {from}) : Conditions(), terms);
}

void QueryWriter::writeGroups(const Select& select) {
  ExpressionWriter expressions(sql_, form_);
  const char* separator = " GROUP BY ";
  for (const Expression* const key : groupKeys(select, form_.words().readsKeysOnly)) {
    sql_.add(separator);
    const SqlText::Held held(sql_, kInGroupBy);
    if (key->kind == Expression::Kind::Literal && !form_.words().constantKey.empty()) {
      sql_.add(form_.words().constantKey);
    } else {
      expressions.writeCollated(*key);
    }
    separator = ", ";
  }
  if (select.having == nullptr) return;
  sql_.add(" HAVING ");
  const SqlText::Held held(sql_, kInHaving);
  // The engine may try what reads keys of the groups alone before it has joined the rows.
  const bool waits = raisingOf(*select.having) == Raising::ByRow;
  const SqlText::Held inCase(sql_, waits ? kInElse : 0);
  if (waits) sql_.add("CASE WHEN count(*) < 0 THEN ").add(form_.words().no).add(" ELSE ");
  expressions.writeCondition(*select.having, Asked::Truth);
  if (waits) sql_.add(" END");
}

void QueryWriter::writeLimit(const Select& select, bool first) {
  std::optional<std::int64_t> rows = select.top;
  if (first) rows = std::min<std::int64_t>(rows.value_or(1), 1);
  if (rows) sql_.add(" LIMIT ").add(std::to_string(*rows));
}

void QueryWriter::writeOutput(const Output& output, bool named, bool collated, bool ofTotal) {
  ExpressionWriter expressions(sql_, form_);
  if (ofTotal) {
    sql_.add("CASE WHEN count(*) < 0 THEN NULL ELSE ");
    const SqlText::Held held(sql_, kInElse);
    expressions.write(*output.value);
    sql_.add(" END");
    if (collated && form_.needsCollation(*output.value)) sql_.add(form_.collation());
  } else if (collated) {
    expressions.writeCollated(*output.value);
  } else {
    expressions.write(*output.value);
  }
  if (named && !output.name.empty()) sql_.add(" AS ").name(output.name);
}

void QueryWriter::writeFrom(const From& from) {
  if (from.source != nullptr) return writeSource(*from.source);
  // Joins group to the left, so only the right side needs its parentheses.
  writeFrom(*from.left);
  sql_.add(form_.joinWord(from));
  if (from.right->source != nullptr) {
    writeSource(*from.right->source);
  } else {
    const SqlText::Held held(sql_, kInFrom);
    sql_.add("(");
    writeFrom(*from.right);
    sql_.add(")");
  }
  if (from.condition == nullptr) return;
  sql_.add(" ON ");
  const SqlText::Held held(sql_, kInJoinCondition);
  const Conditions terms = termsOf(from.condition);
  ExpressionWriter(sql_, form_).writeFilter(guardsOf(terms, {from.left, from.right}), terms);
}

void QueryWriter::writeSource(const Source& source) {
  if (source.shared != nullptr) {
    sql_.name(source.shared->name).add(" AS ").name(source.name);
    return;
  }
  if (source.query != nullptr) {
    const SqlText::Held held(sql_, kInFrom);
    sql_.add("(");
    write(*source.query, true);
    sql_.add(") AS ").name(source.name);
    return;
  }
  sql_.name(source.relation->name);
  if (source.name != source.relation->name) sql_.add(" AS ").name(source.name);
}

void QueryWriter::writeOrder(Keys keys, const Select* select) {
  const char* separator = " ORDER BY ";
  for (const SortKey& key : keys) {
    sql_.add(separator);
    const SqlText::Held held(sql_, kInOrderBy);
    writeKey(key, select);
    separator = ", ";
  }
}

void QueryWriter::writeKey(const SortKey& key, const Select* select) {
  const Words& words = form_.words();
  const Expression* const value =
      key.value != nullptr || select == nullptr ? key.value : select->outputs[key.output - 1].value;
  const bool constant = value != nullptr && value->kind == Expression::Kind::Literal;
  if (constant && !words.constantKey.empty()) {
    sql_.add(words.constantKey);
  } else if (key.value != nullptr) {
    ExpressionWriter(sql_, form_).writeCollated(*key.value);
  } else {
    sql_.add(std::to_string(key.output));
    if (value != nullptr && form_.needsCollation(*value)) sql_.add(form_.collation());
  }
  if (key.descending) sql_.add(" DESC");
  if (words.ordersNullsItsWay || key.nullsFirst == key.descending) {
    sql_.add(key.nullsFirst ? " NULLS FIRST" : " NULLS LAST");
  }
}

}  // namespace QuorHost::Write
