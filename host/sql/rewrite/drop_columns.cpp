#include <algorithm>
#include <set>
#include <unordered_map>
#include <vector>

#include "host/sql/rewrite/passes.h"
#include "host/sql/rewrite/walker.h"

namespace QuorHost::Sql {
namespace {

using Tree::Branch;
using Tree::Expression;
using Tree::Output;
using Tree::OutputColumn;
using Tree::Query;
using Tree::SortKey;
using Tree::Source;

/// The derived tables of a query, and the expressions that read each.
class Readers final : public Walker {
 public:
  [[nodiscard]] const std::vector<Source*>& derived() const noexcept { return derived_; }
  [[nodiscard]] const std::set<Expression*>& of(const Source& source) { return readers_[&source]; }

 private:
  void visit(Source& source) override {
    if (source.query != nullptr) derived_.push_back(&source);
  }
  void visit(Expression& expression) override {
    if (expression.kind != Expression::Kind::Column) return;
    readers_[expression.source].insert(&expression);
  }

  std::vector<Source*> derived_;
  std::unordered_map<const Source*, std::set<Expression*>> readers_;
};

bool mayLoseColumns(const Query& query) {
  return isUnionAll(query) && std::ranges::all_of(query.branches, [](const Branch& branch) {
           if (branch.query != nullptr) return mayLoseColumns(*branch.query);
           return !branch.select->distinct;
         });
}

/// Whether a column of a derived table is a literal in all its selects.
bool isConstant(const Query& query, std::size_t column) {
  return std::ranges::all_of(query.branches, [&](const Branch& branch) {
    if (branch.query != nullptr) return isConstant(*branch.query, column);
    return branch.select->outputs[column].value->kind == Expression::Kind::Literal;
  });
}

/// Notes the columns that the order of `query`, or of a query in it, names.
void keepSorted(const Query& query, std::vector<bool>& kept) {
  for (const SortKey& key : query.orderBy) {
    if (key.value == nullptr) kept[key.output - 1] = true;
  }
  for (const Branch& branch : query.branches) {
    if (branch.query != nullptr) keepSorted(*branch.query, kept);
  }
}

class ColumnDropper {
 public:
  explicit ColumnDropper(Arena& arena) : arena_(arena) {}

  /// Leaves out the unread columns of one derived table. Whether there were any.
  bool drop(const Source& source, const std::set<Expression*>& readers) {
    Query& query = *source.query;
    if (!mayLoseColumns(query)) return false;
    std::vector<bool> kept(query.columns.size());
    for (const Expression* const reader : readers) kept[reader->column] = true;
    keepSorted(query, kept);
    // A select has at least one column.
    bool changed = false;
    if (std::ranges::find(kept, true) == kept.end()) {
      kept[0] = true;
      changed = !isConstant(query, 0);
      if (changed) putConstant(query);
    }
    if (std::ranges::find(kept, false) == kept.end()) return changed;
    std::vector<std::uint32_t> place(kept.size());
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < kept.size(); ++i) {
      place[i] = next;
      if (kept[i]) ++next;
    }
    keep(query, kept, place);
    for (Expression* const reader : readers) reader->column = place[reader->column];
    return true;
  }

 private:
  void keep(Query& query, const std::vector<bool>& kept, const std::vector<std::uint32_t>& place) {
    query.columns = remaining<OutputColumn>(query.columns, kept);
    for (SortKey& key : query.orderBy) {
      if (key.value == nullptr) key.output = place[key.output - 1] + 1;
    }
    for (const Branch& branch : query.branches) {
      if (branch.query != nullptr) {
        keep(*branch.query, kept, place);
      } else {
        branch.select->outputs = remaining<Output>(branch.select->outputs, kept);
      }
    }
  }

  /// Has the first column be a number.
  void putConstant(Query& query) {
    query.columns[0].type = Type::Long;
    for (const Branch& branch : query.branches) {
      if (branch.query != nullptr) {
        putConstant(*branch.query);
      } else {
        branch.select->outputs[0].value = arena_.make(
            Expression{.kind = Expression::Kind::Literal, .type = Type::Long, .integer = 1});
      }
    }
  }

  template <class Item>
  std::span<Item> remaining(std::span<const Item> items, const std::vector<bool>& kept) {
    std::vector<Item> rest;
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (kept[i]) rest.push_back(items[i]);
    }
    return arena_.list(rest);
  }

  Arena& arena_;
};

}  // namespace

void dropUnreadColumns(Query& query, Arena& arena) {
  ColumnDropper dropper(arena);
  // What a dropped column read may now be read by nobody.
  for (bool dropped = true; dropped;) {
    dropped = false;
    Readers readers;
    readers.walk(query);
    for (const Source* const source : readers.derived()) {
      if (dropper.drop(*source, readers.of(*source))) dropped = true;
    }
  }
}

}  // namespace QuorHost::Sql
