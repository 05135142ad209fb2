#include <csignal>

#include "cli/print/progress.h"

namespace QuorCli {
namespace {

volatile std::sig_atomic_t signalCame = 0;

// A signal is forgotten once it has come, so that a second one ends the program.
void noteSignal(int /*signal*/) { signalCame = 1; }

}  // namespace

struct Interruption::Before {
  void (*interrupt)(int) = nullptr;
  void (*terminate)(int) = nullptr;
};

Interruption::Interruption() : before_(std::make_unique<Before>()) {
  signalCame = 0;
  before_->interrupt = std::signal(SIGINT, noteSignal);
  before_->terminate = std::signal(SIGTERM, noteSignal);
}

Interruption::~Interruption() {
  std::signal(SIGINT, before_->interrupt);
  std::signal(SIGTERM, before_->terminate);
}

void Interruption::check() {
  if (signalCame != 0) throw Failure("interrupted; nothing was made");
}

}  // namespace QuorCli
