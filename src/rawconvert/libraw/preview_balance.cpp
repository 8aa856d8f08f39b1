#include "rawconvert/libraw/preview_balance.h"

#include <algorithm>

#include "imaging/scale.h"
#include "rawconvert/look/look_inverse.h"

namespace ml::rawconvert {
namespace {

/// Cells darker or brighter than this in any colour tell nothing: noise, flare, and what has lost its colour.
constexpr double kDark = 0.06, kBright = 0.9, kSensorDark = 0.002, kSensorBright = 0.8;
constexpr std::size_t kFewest = 24;

bool Within(const std::array<double, 3>& colour, double low, double high) {
  return std::ranges::all_of(colour, [&](double value) { return value > low && value < high; });
}

double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

}  // namespace

std::optional<WhiteBalanceCoefficients> BalanceOfPreview(const SensorGrid& grid, const imaging::PixelBuffer& preview,
                                                         const SensorMatrix& toSrgb) {
  const LookInverse inverse(toSrgb);
  if (!inverse.Usable() || preview.width < grid.columns || preview.height < grid.rows) return std::nullopt;
  const auto small = imaging::ScaleAverage(preview, grid.columns, grid.rows);
  std::array<std::vector<double>, 2> ratios;  // of red and blue to green
  for (std::size_t i = 0; i < grid.cells.size(); ++i) {
    const auto& sensor = grid.cells[i];
    std::array<double, 3> shown{};
    for (std::size_t c = 0; c < 3; ++c) shown[c] = std::to_integer<int>(small.data[i * 3 + c]) / 255.0;
    if (!Within(shown, kDark, kBright) || !Within(sensor, kSensorDark, kSensorBright)) continue;
    const auto balanced = inverse.SensorOf(shown);
    if (!Within(balanced, 0, 2)) continue;
    const double green = balanced[1] / sensor[1];
    ratios[0].push_back(balanced[0] / sensor[0] / green);
    ratios[1].push_back(balanced[2] / sensor[2] / green);
  }
  if (ratios[0].size() < kFewest) return std::nullopt;
  return WhiteBalanceCoefficients{
      {static_cast<float>(Median(ratios[0])), 1.0F, static_cast<float>(Median(ratios[1])), 1.0F}};
}

}  // namespace ml::rawconvert
