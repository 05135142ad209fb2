#include <set>

#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Wanted = std::function<bool(const Tree::Query&)>;

class ViewOpener final : public Walker {
 public:
  ViewOpener(const ViewReader& views, const Wanted& wanted) : views_(views), wanted_(wanted) {}

 private:
  // The walk goes on inside what was opened, and so finds views of views.
  void visit(Tree::Source& source) override {
    if (source.relation == nullptr || source.relation->kind != Relation::Kind::View) return;
    if (!source.relation->keptOf.empty()) return;  // its rows are there
    if (unwanted_.contains(source.relation)) return;
    Tree::Query* const query = views_(*source.relation);
    if (query == nullptr) return;
    if (wanted_) {
      walk(*query);
      if (!wanted_(*query)) {
        unwanted_.insert(source.relation);
        return;
      }
    }
    source.query = query;
    source.relation = nullptr;
  }

  const ViewReader& views_;
  const Wanted& wanted_;
  std::set<const Relation*> unwanted_;
};

}  // namespace

void openViews(Tree::Query& query, const ViewReader& views, const Wanted& wanted) {
  ViewOpener(views, wanted).walk(query);
}

}  // namespace QuorHost::Sql
