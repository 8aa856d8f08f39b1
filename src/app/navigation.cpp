#include "app/navigation.h"

#include <algorithm>

namespace ml::app {

int StepIndex(int index, int step, int count, bool wraparound) {
  if (count <= 0) return -1;
  const int target = index + step;
  if (!wraparound) return std::clamp(target, 0, count - 1);
  return ((target % count) + count) % count;
}

int WheelStep(int notches, bool shift) { return -notches * (shift ? 20 : 1); }

}  // namespace ml::app
