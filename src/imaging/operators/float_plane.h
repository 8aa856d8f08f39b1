#pragma once

#include <cstddef>
#include <vector>

namespace ml::imaging {

/// One channel as real numbers, top row first, without padding.
struct FloatPlane {
  int width = 0, height = 0;
  std::vector<float> data;

  FloatPlane() = default;
  FloatPlane(int w, int h) : width(w), height(h), data(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}
  float* Row(int y) { return data.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width); }
  const float* Row(int y) const { return data.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width); }
};

/// Each value becomes the mean of the square of 2 * `radius` + 1 around it, as far as that lies in the plane. The time
/// does not depend on the radius.
void BoxMean(FloatPlane& plane, int radius);

}  // namespace ml::imaging
