#include <algorithm>
#include <vector>

#include "host/sql/rewrite/branches.h"
#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Branch;
using Tree::Output;
using Tree::Query;
using Tree::Select;
using Tree::Source;

/// The union that the branch does nothing but pick from, or null.
const Query* pickedUnion(const Branch& branch) {
  const Select* const select = branch.select;
  if (!isPlain(select) || select->from == nullptr || select->from->source == nullptr) {
    return nullptr;
  }
  const Source& source = *select->from->source;
  const bool simple =
      std::ranges::all_of(select->outputs,
                          [&](const Output& output) { return isOf(*output.value, source); }) &&
      (select->where == nullptr || isOf(*select->where, source));
  return isPlainUnion(source.query) && simple ? source.query : nullptr;
}

class UnionFolder final : public Walker {
 public:
  explicit UnionFolder(Arena& arena) : arena_(arena) {}

 private:
  void visit(Query& query) override {
    if (!query.orderBy.empty() || !isUnionAll(query)) return;
    std::vector<Branch> branches;
    for (const Branch& branch : query.branches) {
      const Query* const inner = pickedUnion(branch);
      if (inner == nullptr) {
        branches.push_back(branch);
        continue;
      }
      for (const Branch& folded : inner->branches) {
        branches.push_back({.select = picked(*branch.select, *folded.select), .all = true});
      }
    }
    query.branches = arena_.list(branches);
  }

  /// What `outer` picks, said in the terms of `inner`, one branch of the union it picks from.
  Select* picked(const Select& outer, const Select& inner) {
    const Source& source = *outer.from->source;
    Select select = inner;
    std::vector<Output> outputs;
    outputs.reserve(outer.outputs.size());
    for (const Output& output : outer.outputs) {
      outputs.push_back({output.name, inTermsOf(inner, source, output.value, arena_)});
    }
    select.outputs = arena_.list(outputs);
    if (outer.where != nullptr) {
      select.where = both(inner.where, inTermsOf(inner, source, outer.where, arena_), arena_);
    }
    return arena_.make(select);
  }

  Arena& arena_;
};

}  // namespace

void foldUnions(Query& query, Arena& arena) { UnionFolder(arena).walk(query); }

}  // namespace QuorHost::Sql
