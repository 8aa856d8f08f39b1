#pragma once

#include <ctime>

namespace ml::platform {

/// The present time; tests bring their own.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Seconds since 1970.
  virtual std::time_t now() const = 0;
};

class SystemClock final : public Clock {
 public:
  std::time_t now() const override { return std::time(nullptr); }
};

}  // namespace ml::platform
