#include "host/engines/rows/row_index.h"

#include <algorithm>
#include <string>
#include <utility>
#include <variant>

namespace QuorHost::Rows {

RowIndex::RowIndex(const KeptRows& rows, int column, Sql::Type type, CompareTexts compare)
    : compare_(std::move(compare)) {
  if (type == Sql::Type::Text) {
    addTexts(rows, column);
  } else {
    addNumbers(rows, column, type);
  }
}

void RowIndex::addNumbers(const KeptRows& rows, int column, Sql::Type type) {
  numbers_.reserve(rows.size());
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const std::optional<std::int64_t> key = numericKeyOf(rows.at(row, column), type);
    if (key) numbers_.try_emplace(*key, row);
  }
}

void RowIndex::addTexts(const KeptRows& rows, int column) {
  texts_.reserve(rows.size());
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const Cell cell = rows.at(row, column);
    if (cell.kind == Cell::Kind::Text) texts_.push_back({cell.text, row});
  }
  std::ranges::sort(texts_, [&](const TextEntry& a, const TextEntry& b) {
    const int order = compare_(a.text, b.text);
    return order != 0 ? order < 0 : a.row < b.row;
  });
}

std::optional<std::size_t> RowIndex::find(const FindKey& key) const {
  if (const auto* const number = std::get_if<std::int64_t>(&key)) {
    const auto found = numbers_.find(*number);
    if (found == numbers_.end()) return std::nullopt;
    return found->second;
  }
  const auto& text = std::get<std::string>(key);
  const auto found = std::ranges::lower_bound(
      texts_, 0, [](int a, int b) { return a < b; },
      [&](const TextEntry& entry) { return compare_(entry.text, text); });
  if (found == texts_.end() || compare_(found->text, text) != 0) return std::nullopt;
  return found->row;
}

}  // namespace QuorHost::Rows
