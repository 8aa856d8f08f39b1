#pragma once

#include <chrono>
#include <ctime>

namespace ml::platform {

/// Time for dates and for estimates; tests bring their own.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Seconds since 1970.
  virtual std::time_t now() const = 0;
  /// Never runs backwards; only differences mean anything.
  virtual std::chrono::milliseconds ticks() const = 0;
};

class SystemClock final : public Clock {
 public:
  std::time_t now() const override { return std::time(nullptr); }
  std::chrono::milliseconds ticks() const override {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
  }
};

}  // namespace ml::platform
