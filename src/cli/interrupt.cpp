#include "cli/interrupt.h"

#include <cstdlib>

#include "cli/run_state.h"

namespace ml::cli {

Interrupt::Interrupt() {
  sigemptyset(&signals_);
  sigaddset(&signals_, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  waiter_ = std::jthread([this] { Wait(); });
}

void Interrupt::Wait() {
  for (int signal = 0; sigwait(&signals_, &signal) == 0 && !over_;) {
    if (source_.stop_requested()) std::_Exit(static_cast<int>(ExitCode::Cancelled));
    source_.request_stop();
  }
}

Interrupt::~Interrupt() {
  over_ = true;
  pthread_kill(waiter_.native_handle(), SIGINT);
  waiter_.join();
}

}  // namespace ml::cli
