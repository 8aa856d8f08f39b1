#include "imaging/operators/float_plane.h"

#include <algorithm>

namespace ml::imaging {
namespace {

/// Sums are held with more digits than the values: they run along a whole row or column.
void MeanOfRow(const float* in, float* out, int width, int radius) {
  double sum = 0;
  for (int x = 0; x < std::min(radius, width); ++x) sum += in[x];
  for (int x = 0; x < width; ++x) {
    if (x + radius < width) sum += in[x + radius];
    if (x > radius) sum -= in[x - radius - 1];
    out[x] = static_cast<float>(sum / (std::min(x + radius, width - 1) - std::max(x - radius, 0) + 1));
  }
}

}  // namespace

void BoxMean(FloatPlane& plane, int radius) {
  const auto width = static_cast<std::size_t>(plane.width);
  FloatPlane rows(plane.width, plane.height);
  for (int y = 0; y < plane.height; ++y) MeanOfRow(plane.Row(y), rows.Row(y), plane.width, radius);

  std::vector<double> sums(width);
  const auto add = [&](int y, double sign) {
    const float* row = rows.Row(y);
    for (std::size_t x = 0; x < width; ++x) sums[x] += sign * static_cast<double>(row[x]);
  };
  for (int y = 0; y < std::min(radius, plane.height); ++y) add(y, 1);
  for (int y = 0; y < plane.height; ++y) {
    if (y + radius < plane.height) add(y + radius, 1);
    if (y > radius) add(y - radius - 1, -1);
    const double count = std::min(y + radius, plane.height - 1) - std::max(y - radius, 0) + 1;
    float* out = plane.Row(y);
    for (std::size_t x = 0; x < width; ++x) out[x] = static_cast<float>(sums[x] / count);
  }
}

}  // namespace ml::imaging
