#include "cli/report/layout.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "cli/print/display_text.h"

namespace QuorCli {
namespace {

constexpr std::size_t kWideGap = 2;
constexpr std::size_t kNarrowGap = 1;
/// Names are cut down to this.
constexpr std::size_t kLeastName = 12;

bool isAmount(CellKind kind) { return kind == CellKind::Money || kind == CellKind::MoneyPart; }

}  // namespace

Layout::Layout(std::vector<Column> columns, std::size_t indent, std::size_t width, bool mayFold)
    : columns_(std::move(columns)),
      indent_(indent),
      width_(width),
      mayFold_(mayFold),
      needs_(columns_.size()) {
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    // The place behind a debit's last digit is that of the parenthesis that closes a credit.
    if (isAmount(columns_[index].kind)) columns_[index].title += ' ';
    const std::size_t title = displayWidth(columns_[index].title);
    needs_[index] = {title, title, 0};
  }
}

void Layout::grow(std::size_t column, std::size_t width) {
  Need& need = needs_[column];
  need.natural = std::max(need.natural, width);
  const bool mayBeCut = columns_[column].kind == CellKind::Name;
  need.least = std::max(need.least, mayBeCut ? std::min(width, kLeastName) : width);
}

void Layout::growDecimals(std::size_t column, int decimals) {
  Need& need = needs_[column];
  need.decimals = std::max(need.decimals, decimals);
}

bool Layout::standsRight(std::size_t column) const {
  const CellKind kind = columns_[column].kind;
  return kind == CellKind::Number || kind == CellKind::Key || isFigure(kind);
}

std::size_t Layout::leastWidth(std::size_t first, std::size_t end) const {
  std::size_t width = indent_ + (end - first - 1) * gap_;
  for (std::size_t index = first; index < end; ++index) width += needs_[index].least;
  return width;
}

void Layout::settle() {
  lines_.clear();
  if (columns_.empty()) return;
  const auto add = [](std::size_t sum, const Need& need) { return sum + need.natural; };
  const std::size_t natural = std::accumulate(needs_.begin(), needs_.end(), indent_, add) +
                              (columns_.size() - 1) * kWideGap;
  gap_ = natural <= width_ ? kWideGap : kNarrowGap;
  if (!mayFold_ || leastWidth(0, columns_.size()) <= width_) {
    place(0, columns_.size());
    return;
  }
  // As many columns on each line as fit, parts of one sum together where they can be.
  gap_ = kWideGap;
  for (std::size_t first = 0; first < columns_.size();) {
    std::size_t end = first + 1;
    while (end < columns_.size() && leastWidth(first, end + 1) <= width_) ++end;
    const auto isPart = [&](std::size_t index) {
      return index < columns_.size() && columns_[index].kind == CellKind::MoneyPart;
    };
    std::size_t part = end;
    while (part > first && isPart(part - 1) && isPart(end)) --part;
    if (part > first) end = part;
    place(first, end);
    first = end;
  }
}

void Layout::place(std::size_t first, std::size_t end) {
  std::vector<std::size_t> widths;
  for (std::size_t index = first; index < end; ++index) widths.push_back(needs_[index].natural);
  std::size_t total =
      std::accumulate(widths.begin(), widths.end(), indent_) + (end - first - 1) * gap_;
  // The widest name gives way, again and again.
  while (total > width_) {
    std::size_t widest = widths.size();
    for (std::size_t at = 0; at < widths.size(); ++at) {
      const bool gives = widths[at] > needs_[first + at].least;
      if (gives && (widest == widths.size() || widths[at] > widths[widest])) widest = at;
    }
    if (widest == widths.size()) break;
    --widths[widest];
    --total;
  }
  std::size_t start = indent_;
  if (first > 0 && total < width_ && !lines_.empty()) {
    // Folded columns end where the line above them does.
    const Place& last = lines_.front().back();
    const std::size_t edge = last.start + last.width;
    if (total < edge) start += edge - total;
  }
  std::vector<Place>& line = lines_.emplace_back();
  for (std::size_t at = 0; at < widths.size(); ++at) {
    line.push_back({first + at, start, widths[at]});
    start += widths[at] + gap_;
  }
}

}  // namespace QuorCli
