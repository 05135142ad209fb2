#include <csignal>

#include "cli/print/progress.h"

namespace QuorCli {
namespace {

volatile std::sig_atomic_t signalCame = 0;

void noteSignal(int /*signal*/) { signalCame = 1; }

}  // namespace

struct Interruption::Before {
  struct sigaction interrupt{};
  struct sigaction terminate{};
};

Interruption::Interruption() : before_(std::make_unique<Before>()) {
  signalCame = 0;
  struct sigaction note{};
  note.sa_handler = noteSignal;
  ::sigemptyset(&note.sa_mask);
  ::sigaction(SIGINT, &note, &before_->interrupt);
  ::sigaction(SIGTERM, &note, &before_->terminate);
}

Interruption::~Interruption() {
  ::sigaction(SIGINT, &before_->interrupt, nullptr);
  ::sigaction(SIGTERM, &before_->terminate, nullptr);
}

void Interruption::check() {
  if (signalCame != 0) throw Failure("interrupted; nothing was made");
}

}  // namespace QuorCli
