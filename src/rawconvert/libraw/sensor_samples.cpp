#include "rawconvert/libraw/sensor_samples.h"

#include <algorithm>

namespace ml::rawconvert {
namespace {

/// Side of the square around a white point that is averaged, in pixels.
constexpr int kPatch = 16;
using FourColours = std::array<double, 4>;

/// A rectangle of the picture; right and bottom lie outside.
struct Area {
  int left, top, right, bottom;
};

enum class Columns { All, EveryOtherPair };

/// The mean of each colour in `area`.
FourColours Means(const SensorSamples& samples, const Area& area, Columns columns) {
  FourColours sum{}, count{};
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; x += columns == Columns::EveryOtherPair && (x & 1) != 0 ? 3 : 1) {
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
  const Area patch{left, top, std::min(left + kPatch, samples.width), std::min(top + kPatch, samples.height)};
  const auto means = Means(samples, patch, Columns::All);
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
    const Area cell{column * samples.width / columns, row * samples.height / rows,
                    (column + 1) * samples.width / columns, (row + 1) * samples.height / rows};
    const auto means = Means(samples, cell, Columns::EveryOtherPair);
    grid.cells.push_back(
        {means[0] / samples.white, (means[1] + means[3]) / 2 / samples.white, means[2] / samples.white});
  }
  return grid;
}

}  // namespace ml::rawconvert
