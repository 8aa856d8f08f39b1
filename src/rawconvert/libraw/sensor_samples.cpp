#include "rawconvert/libraw/sensor_samples.h"

#include <algorithm>

namespace ml::rawconvert {
namespace {

/// Side of the square around a white point that is averaged, in pixels.
constexpr int kPatch = 16;
using FourColours = std::array<double, 4>;

/// The mean of each colour in a rectangle of the picture; of every other pair of columns, where `thin`.
FourColours Means(const SensorSamples& samples, int left, int top, int right, int bottom, bool thin) {
  FourColours sum{}, count{};
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; x += thin && (x & 1) != 0 ? 3 : 1) {
      const auto colour = samples.ColourAt(x, y);
      sum[colour] += samples.At(x, y);
      ++count[colour];
    }
  }
  for (std::size_t c = 0; c < 4; ++c) sum[c] /= std::max(1.0, count[c]);
  if (count[3] == 0) sum[3] = sum[1];
  return sum;
}

}  // namespace

double SensorSamples::At(int x, int y) const {
  const double sample = first[static_cast<std::size_t>(y) * pitch + static_cast<std::size_t>(x)];
  return std::max(0.0, sample - black[ColourAt(x, y)]);
}

std::optional<WhiteBalanceCoefficients> MakeGrey(const SensorSamples& samples, WhitePoint point) {
  const auto begin = [](int at, int size) {
    return std::clamp(std::clamp(at, 0, size - 1) - kPatch / 2, 0, std::max(0, size - kPatch));
  };
  const int left = begin(point.x, samples.width), top = begin(point.y, samples.height);
  const auto means =
      Means(samples, left, top, std::min(left + kPatch, samples.width), std::min(top + kPatch, samples.height), false);
  WhiteBalanceCoefficients result;
  for (std::size_t c = 0; c < 4; ++c) {
    if (means[c] <= 0) return std::nullopt;
    result.multipliers[c] = static_cast<float>(means[1] / means[c]);
  }
  return result;
}

SensorGrid MakeGrid(const SensorSamples& samples, int columns, int rows) {
  SensorGrid grid{columns, rows, {}};
  for (int i = 0; i < columns * rows; ++i) {
    const int column = i % columns, row = i / columns;
    const auto means = Means(samples, column * samples.width / columns, row * samples.height / rows,
                             (column + 1) * samples.width / columns, (row + 1) * samples.height / rows, true);
    grid.cells.push_back(
        {means[0] / samples.white, (means[1] + means[3]) / 2 / samples.white, means[2] / samples.white});
  }
  return grid;
}

}  // namespace ml::rawconvert
