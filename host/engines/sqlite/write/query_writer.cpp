#include "host/engines/sqlite/write/query_writer.h"

#include "host/engines/sqlite/write/expression_writer.h"
#include "platform/data_library.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using Sql::Tree::Branch;
using Sql::Tree::Expression;
using Sql::Tree::From;
using Sql::Tree::JoinKind;
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

std::string_view joinWord(const From& join) {
  switch (join.join) {
    case JoinKind::Inner:
      // To the engine the second is an inner join, too, but one whose order it keeps.
      return join.ordered ? " CROSS JOIN " : " JOIN ";
    case JoinKind::Left:
      return " LEFT JOIN ";
    case JoinKind::Cross:
      break;
  }
  return ", ";
}

}  // namespace

void QueryWriter::write(const Query& query, bool named) {
  if (query.branches.size() > 1) return writeUnion(query);
  const Branch& only = query.branches.front();
  if (only.query != nullptr) {
    sql_.add("SELECT * FROM (");
    {
      const SqlText::Held held(sql_, kInFrom);
      write(*only.query, true);
    }
    sql_.add(")");
    return writeOrder(query);
  }
  writeSelect(*only.select, named, named || only.select->distinct);
  writeOrder(query);
  writeLimit(*only.select);
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
      writeSelect(*branch.select, true, true);
      continue;
    }
    sql_.add("SELECT * FROM (");
    const SqlText::Held inner(sql_, kInFrom);
    if (branch.query != nullptr) {
      write(*branch.query, true);
    } else {
      writeSelect(*branch.select, true, true);
      writeLimit(*branch.select);
    }
    sql_.add(")");
  }
  writeOrder(query);
}

void QueryWriter::writeSelect(const Select& select, bool named, bool collated) {
  ExpressionWriter expressions(sql_);
  sql_.add(select.distinct ? "SELECT DISTINCT " : "SELECT ");
  {
    const SqlText::Held held(sql_, kInOutputs);
    const char* separator = "";
    for (const Output& output : select.outputs) {
      sql_.add(separator);
      writeOutput(output, named, collated);
      separator = ", ";
    }
  }
  if (select.from != nullptr) {
    sql_.add(" FROM ");
    writeFrom(*select.from);
  }
  if (select.where != nullptr) {
    sql_.add(" WHERE ");
    const SqlText::Held held(sql_, kInWhere);
    expressions.write(*select.where);
  }
  const char* separator = " GROUP BY ";
  for (const Expression* const key : select.groupBy) {
    sql_.add(separator);
    const SqlText::Held held(sql_, kInGroupBy);
    expressions.writeCollated(*key);
    separator = ", ";
  }
  if (select.having != nullptr) {
    sql_.add(" HAVING ");
    const SqlText::Held held(sql_, kInHaving);
    expressions.write(*select.having);
  }
}

void QueryWriter::writeLimit(const Select& select) {
  if (select.top) sql_.add(" LIMIT ").add(std::to_string(*select.top));
}

void QueryWriter::writeOutput(const Output& output, bool named, bool collated) {
  ExpressionWriter expressions(sql_);
  if (collated) {
    expressions.writeCollated(*output.value);
  } else {
    expressions.write(*output.value);
  }
  if (named) sql_.add(" AS ").name(output.name);
}

void QueryWriter::writeFrom(const From& from) {
  if (from.source != nullptr) return writeSource(*from.source);
  // Joins group to the left, so only the right side needs its parentheses.
  writeFrom(*from.left);
  sql_.add(joinWord(from));
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
  ExpressionWriter(sql_).write(*from.condition);
}

void QueryWriter::writeSource(const Source& source) {
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

void QueryWriter::writeOrder(const Query& query) {
  const char* separator = " ORDER BY ";
  for (const SortKey& key : query.orderBy) {
    sql_.add(separator);
    const SqlText::Held held(sql_, kInOrderBy);
    writeKey(key, query);
    separator = ", ";
  }
}

void QueryWriter::writeKey(const SortKey& key, const Query& query) {
  ExpressionWriter expressions(sql_);
  if (key.value != nullptr) {
    expressions.writeCollated(*key.value);
  } else {
    sql_.add(std::to_string(key.output));
    // The selects of a union carry the order of texts themselves.
    const Select* const select =
        query.branches.size() == 1 ? query.branches.front().select : nullptr;
    if (select != nullptr && needsCollation(*select->outputs[key.output - 1].value)) {
      sql_.add(" COLLATE QUOR");
    }
  }
  if (key.descending) sql_.add(" DESC");
  if (key.nullsFirst == key.descending) sql_.add(key.nullsFirst ? " NULLS FIRST" : " NULLS LAST");
}

}  // namespace QuorHost::Sqlite
