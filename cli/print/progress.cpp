#include "cli/print/progress.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace QuorCli {
namespace {

constexpr std::int64_t kBarWidth = 30;
constexpr std::string_view kEraseLine = "\r\x1b[K";

}  // namespace

ProgressBar::~ProgressBar() {
  if (!shown_.empty()) console_.err << kEraseLine << std::flush;
}

void ProgressBar::show(std::string_view what, std::int64_t done, std::int64_t total) {
  if (!console_.errIsTerminal) return;
  std::string line(kEraseLine);
  if (total > 0) {
    const std::int64_t filled = std::clamp<std::int64_t>(done, 0, total) * kBarWidth / total;
    const std::string percent =
        std::to_string(std::clamp<std::int64_t>(done, 0, total) * 100 / total);
    line += '[';
    line.append(static_cast<std::size_t>(filled), '#');
    line.append(static_cast<std::size_t>(kBarWidth - filled), '.');
    line += "] ";
    line.append(3 - std::min<std::size_t>(3, percent.size()), ' ');
    line += percent + " %  ";
  }
  line += what;
  if (line == shown_) return;
  console_.err << line << std::flush;
  shown_ = std::move(line);
}

}  // namespace QuorCli
