#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

class ViewOpener final : public Walker {
 public:
  explicit ViewOpener(const ViewReader& views) : views_(views) {}

 private:
  // The walk goes on inside what was opened, and so finds views of views.
  void visit(Tree::Source& source) override {
    if (source.relation == nullptr || source.relation->kind != Relation::Kind::View) return;
    if (!source.relation->keptOf.empty()) return;  // its rows are there
    source.query = views_(*source.relation);
    if (source.query != nullptr) source.relation = nullptr;
  }

  const ViewReader& views_;
};

}  // namespace

void openViews(Tree::Query& query, const ViewReader& views) { ViewOpener(views).walk(query); }

}  // namespace QuorHost::Sql
