#include "host/sql/rewrite/rewrite.h"

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

}  // namespace QuorHost::Sql
