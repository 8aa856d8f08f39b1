#pragma once

#include <atomic>
#include <csignal>
#include <stop_token>
#include <thread>

namespace ml::cli {

/// Turns Ctrl+C into a stop request while it lives; a second one ends the program at once. Make it before any
/// other thread, so that all inherit the blocked signal.
class Interrupt {
 public:
  Interrupt();
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;
  std::stop_token Token() const { return source_.get_token(); }

 private:
  void Wait();

  sigset_t signals_{};
  std::atomic<bool> over_ = false;  ///< the next signal only wakes the waiter
  std::stop_source source_;
  std::jthread waiter_;
};

}  // namespace ml::cli
