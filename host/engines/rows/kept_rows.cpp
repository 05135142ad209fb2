#include "host/engines/rows/kept_rows.h"

#include <algorithm>
#include <bit>

namespace QuorHost::Rows {

KeptRows::Packed KeptRows::pack(const Cell& cell) {
  switch (cell.kind) {
    case Cell::Kind::Real:
      return {cell.kind, 0, std::bit_cast<std::int64_t>(cell.real)};
    case Cell::Kind::Text: {
      const auto place = static_cast<std::int64_t>(texts_.size());
      texts_ += cell.text;
      return {cell.kind, static_cast<std::uint32_t>(cell.text.size()), place};
    }
    default:
      return {cell.kind, 0, cell.integer};
  }
}

void KeptRows::replace(std::size_t row, const KeptRows& other) {
  std::vector<Packed> packed;
  packed.reserve(columns_);
  for (std::size_t column = 0; column < columns_; ++column) {
    packed.push_back(pack(other.at(0, static_cast<int>(column))));
  }
  std::ranges::copy(packed, cells_.begin() + static_cast<std::ptrdiff_t>(row * columns_));
}

Cell KeptRows::at(std::size_t row, int column) const noexcept {
  const Packed& packed = cells_[row * columns_ + static_cast<std::size_t>(column)];
  Cell cell{packed.kind, 0, 0, {}};
  switch (packed.kind) {
    case Cell::Kind::Real:
      cell.real = std::bit_cast<double>(packed.bits);
      break;
    case Cell::Kind::Text:
      cell.text = {texts_.data() + packed.bits, packed.length};
      break;
    default:
      cell.integer = packed.bits;
      break;
  }
  return cell;
}

void KeptRows::clear() noexcept {
  rows_ = 0;
  cells_.clear();
  texts_.clear();
}

}  // namespace QuorHost::Rows
