#include "host/sql/rewrite/rewrite.h"

#include <variant>

#include "host/sql/rewrite/passes.h"

namespace QuorHost::Sql {

void rewrite(Tree::Query& query, const Catalogue& catalogue, const ViewReader& views,
             Arena& arena) {
  openViews(query, views);
  foldUnions(query, arena);
  sumBranches(query, arena);
  useKeptTotals(query, catalogue, arena);
  lookUpTotals(query, arena);
  dropUnreadColumns(query, arena);
  orderJoins(query);
  startFromKeys(query, arena);
}

namespace {

/// Finds the queries in a statement that are part of no other one.
template <class Visit>
void forEachQuery(Tree::Expression& expression, const Visit& visit) {
  if (expression.query != nullptr) visit(*expression.query);
  for (Tree::Expression* const arg : expression.args) forEachQuery(*arg, visit);
}

template <class Visit>
void forEachQuery(const Tree::Statement& statement, const Visit& visit) {
  const auto within = [&](Tree::Expression* expression) {
    if (expression != nullptr) forEachQuery(*expression, visit);
  };
  if (const auto* const query = std::get_if<Tree::Query*>(&statement.body)) {
    visit(**query);
  } else if (const auto* const insert = std::get_if<Tree::Insert>(&statement.body)) {
    if (insert->query != nullptr) visit(*insert->query);
    for (Tree::Expression* const value : insert->values) within(value);
  } else if (const auto* const update = std::get_if<Tree::Update>(&statement.body)) {
    for (const Tree::Assignment& assignment : update->assignments) within(assignment.value);
    within(update->where);
  } else if (const auto* const erase = std::get_if<Tree::Delete>(&statement.body)) {
    within(erase->where);
  }
}

}  // namespace

void leaveUnread(const Tree::Statement& statement, const ViewReader& views, const Writer& writer,
                 Arena& arena) {
  forEachQuery(statement, [&](Tree::Query& query) {
    openViews(query, views, [&](const Tree::Query& view) { return writer.mayRaise(view); });
    dropUnreadColumns(query, arena);
  });
}

}  // namespace QuorHost::Sql
