#include "cli/report/share.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "platform/values/wide_integer.h"

namespace QuorCli {

using QuorDataLib::Currency;
using QuorDataLib::WideInteger;

std::vector<int> sharesOf(const std::vector<Currency>& parts) {
  WideInteger sum = 0;
  for (const Currency part : parts) sum += std::max<std::int64_t>(part.units(), 0);
  if (sum == 0) return {};
  std::vector<int> shares;
  for (const Currency part : parts) {
    const WideInteger units = std::max<std::int64_t>(part.units(), 0);
    shares.push_back(static_cast<int>((units * 100 + sum / 2) / sum));
  }
  return shares;
}

std::string shareBar(int percent, std::size_t width) {
  constexpr std::size_t kNumber = 5;
  constexpr std::size_t kLeastBar = 3;
  constexpr int kParts = 8;  // a cell is drawn in eighths
  if (width < kNumber + kLeastBar) return std::to_string(percent) + "%";
  const int cells = static_cast<int>(width - kNumber);
  constexpr std::array<std::string_view, kParts> kPartial{"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
  const int eighths = percent * cells * kParts / 100;
  const int full = eighths / kParts;
  const int rest = eighths % kParts;
  std::string bar;
  for (int cell = 0; cell < full; ++cell) bar += "█";
  bar += kPartial[static_cast<std::size_t>(rest)];
  bar.append(static_cast<std::size_t>(cells - full - (rest > 0 ? 1 : 0)), ' ');
  const std::string number = std::to_string(percent);
  bar.append(4 - number.size(), ' ');
  return bar + number + "%";
}

}  // namespace QuorCli
