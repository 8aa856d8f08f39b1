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

int DirectionOf(int from, int to, int count) {
  const bool overTheEnd = from == count - 1 && to == 0, overTheStart = from == 0 && to == count - 1;
  if (count > 2 && overTheEnd) return 1;
  if (count > 2 && overTheStart) return -1;
  return to < from ? -1 : 1;
}

std::vector<int> Neighbours(int index, int direction, int count, bool wraparound) {
  std::vector<int> result;
  for (const int step : {1, 2, 3, -1}) {
    const int place = StepIndex(index, step * direction, count, wraparound);
    if (place >= 0 && place != index && std::ranges::find(result, place) == result.end()) result.push_back(place);
  }
  return result;
}

}  // namespace ml::app
