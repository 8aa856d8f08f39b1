#include "cli/interrupt.h"

#include <ctime>

namespace ml::cli {

Interrupt::Interrupt() {
  sigemptyset(&signals_);
  sigaddset(&signals_, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  waiter_ = std::jthread([this] {
    int signal = 0;
    sigwait(&signals_, &signal);
    source_.request_stop();
    // A second Ctrl+C ends the program the hard way.
    pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
  });
}

Interrupt::~Interrupt() {
  // Wakes the waiter if nobody pressed anything; the signal is blocked everywhere else.
  if (!source_.stop_requested()) pthread_kill(waiter_.native_handle(), SIGINT);
  waiter_.join();
}

}  // namespace ml::cli
