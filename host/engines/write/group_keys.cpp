#include "host/engines/write/group_keys.h"

#include <set>

namespace QuorHost::Write {
namespace {

using Sql::Tree::Expression;
using Sql::Tree::From;
using Sql::Tree::JoinKind;
using Sql::Tree::Query;
using Sql::Tree::Select;
using Sql::Tree::Source;

/// Whether a query has one row at most.
bool isOneRow(const Query& query) {
  if (query.branches.size() > 1 || query.branches.front().select == nullptr) return false;
  const Select& select = *query.branches.front().select;
  return select.top == 1 || (select.grouped && select.groupBy.empty());
}

/// Adds the sources that have the same row beside every row of `from`.
void addConstant(const From& from, std::set<const Source*>& sources) {
  if (from.source != nullptr) {
    if (from.source->query != nullptr && isOneRow(*from.source->query)) {
      sources.insert(from.source);
    }
    return;
  }
  addConstant(*from.left, sources);
  // Where nothing is found on the right of a left join, there are nulls in its row's place.
  if (from.join != JoinKind::Left) addConstant(*from.right, sources);
}

}  // namespace

std::vector<const Expression*> groupKeys(const Select& select, bool readsKeysOnly) {
  std::vector<const Expression*> keys;
  if (select.groupBy.empty()) return keys;
  std::set<const Source*> constant;
  if (select.from != nullptr && !readsKeysOnly) addConstant(*select.from, constant);
  for (const Expression* const key : select.groupBy) {
    if (key->kind != Expression::Kind::Column || !constant.contains(key->source)) {
      keys.push_back(key);
    }
  }
  if (keys.empty()) keys.push_back(select.groupBy.front());
  return keys;
}

}  // namespace QuorHost::Write
