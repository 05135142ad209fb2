#include "cli/print/progress.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace QuorCli {
namespace {

constexpr std::int64_t kBarWidth = 30;
constexpr std::string_view kEraseLine = "\r\x1b[K";

volatile std::sig_atomic_t signalCame = 0;

void noteSignal(int /*signal*/) { signalCame = 1; }

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

Interruption::Interruption() {
  signalCame = 0;
  struct sigaction note{};
  note.sa_handler = noteSignal;
  ::sigemptyset(&note.sa_mask);
  ::sigaction(SIGINT, &note, &interrupt_);
  ::sigaction(SIGTERM, &note, &terminate_);
}

Interruption::~Interruption() {
  ::sigaction(SIGINT, &interrupt_, nullptr);
  ::sigaction(SIGTERM, &terminate_, nullptr);
}

void Interruption::check() {
  if (signalCame != 0) throw Failure("interrupted; nothing was made");
}

}  // namespace QuorCli
