#pragma once

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace ml::test {

/// Of wall time, for a step that waits for something that never comes.
inline constexpr auto kStuck = std::chrono::seconds(90);

/// Ends the program with a message if the window's thread does not answer any more.
class Watchdog {
 public:
  void Alive() { ++beats_; }

 private:
  using Clock = std::chrono::steady_clock;

  void Watch(const std::stop_token& stop) {
    auto since = Clock::now();
    for (long seen = -1; !stop.stop_requested(); std::this_thread::sleep_for(std::chrono::milliseconds(100))) {
      if (const long now = beats_; now != seen) {
        seen = now;
        since = Clock::now();
      } else if (Clock::now() - since > kStuck) {
        std::fputs("monkey: the window's thread is stuck\n", stderr);
        std::abort();
      }
    }
  }
  std::atomic<long> beats_ = 0;
  std::jthread thread_{[this](const std::stop_token& stop) { Watch(stop); }};
};

}  // namespace ml::test
