#include "rawconvert/batch/time_estimate.h"

#include <cstdio>

#include "platform/dates.h"

namespace ml::rawconvert {

std::string TimeEstimate::Text(std::time_t now, int done) const {
  if (done <= 0) return {};
  const double average = static_cast<double>(now - start) / done;
  const auto remaining = static_cast<std::time_t>((count - done) * average);
  const auto ready = platform::LocalTime(now + remaining);
  char text[160];
  std::snprintf(text, sizeof text,
                "Estimated time remaining: %02lld:%02lld:%02lld\nReady at approximately %02d:%02d\n"
                "Average conversion time: %0.0f secs",
                static_cast<long long>(remaining / 3600), static_cast<long long>(remaining / 60 % 60),
                static_cast<long long>(remaining % 60), ready.tm_hour, ready.tm_min, average);
  return text;
}

}  // namespace ml::rawconvert
