#include "host/sql/tree.h"

#include <algorithm>

#include "host/sql/names.h"

namespace QuorHost::Sql::Tree {

std::size_t Source::size() const noexcept {
  return relation != nullptr ? relation->columns.size() : query->columns.size();
}

std::string_view Source::columnName(std::size_t column) const noexcept {
  return relation != nullptr ? std::string_view(relation->columns[column].name)
                             : query->columns[column].name;
}

Type Source::columnType(std::size_t column) const noexcept {
  return relation != nullptr ? relation->columns[column].type : query->columns[column].type;
}

std::optional<std::uint32_t> Source::find(std::string_view column) const noexcept {
  const std::size_t count = size();
  for (std::size_t i = 0; i < count; ++i) {
    if (sameName(columnName(i), column)) return static_cast<std::uint32_t>(i);
  }
  return std::nullopt;
}

bool same(const Expression& a, const Expression& b) noexcept {
  // Two sub-selects are never taken for one: that would need to compare their sources, too.
  if (a.query != nullptr || b.query != nullptr) return false;
  const bool sameNode = a.kind == b.kind && a.type == b.type && a.op == b.op &&
                        a.function == b.function && a.unit == b.unit && a.rounding == b.rounding &&
                        a.wildcards == b.wildcards && a.negated == b.negated &&
                        a.distinct == b.distinct && a.isNull == b.isNull && a.column == b.column &&
                        a.marker == b.marker && a.integer == b.integer && a.number == b.number &&
                        a.text == b.text && a.source == b.source;
  return sameNode &&
         std::ranges::equal(a.args, b.args,
                            [](const Expression* x, const Expression* y) { return same(*x, *y); });
}

}  // namespace QuorHost::Sql::Tree
