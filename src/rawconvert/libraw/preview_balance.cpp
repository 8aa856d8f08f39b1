#include "rawconvert/libraw/preview_balance.h"

#include <algorithm>

#include "rawconvert/look/look_inverse.h"

namespace ml::rawconvert {
namespace {

/// Cells darker or brighter than this in any colour tell nothing: noise, flare, and what has lost its colour.
constexpr double kSensorDark = 0.03, kSensorBright = 0.8;
/// A preview pixel this bright is blown; a cell may have this share of them.
constexpr double kBlown = 0.97, kMostBlown = 0.01;
constexpr std::size_t kFewest = 24;

bool Within(const std::array<double, 3>& colour, double low, double high) {
  return std::ranges::all_of(colour, [&](double value) { return value > low && value < high; });
}

double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

/// What the preview says the sensor saw in a cell, white balanced; nothing where much of it is blown.
std::optional<std::array<double, 3>> CellOf(const imaging::PixelBuffer& preview, const SensorGrid& grid, int index,
                                            const LookInverse& inverse) {
  const int column = index % grid.columns, row = index / grid.columns;
  const int left = column * preview.width / grid.columns, right = (column + 1) * preview.width / grid.columns;
  const int top = row * preview.height / grid.rows, bottom = (row + 1) * preview.height / grid.rows;
  std::array<double, 3> sum{};
  int blown = 0;
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) {
      const auto* pixel = preview.Row(y) + static_cast<std::ptrdiff_t>(x) * 3;
      std::array<double, 3> shown{};
      for (std::size_t c = 0; c < 3; ++c) shown[c] = std::to_integer<int>(pixel[c]) / 255.0;
      if (std::ranges::max(shown) > kBlown) ++blown;
      const auto sensor = inverse.SensorOf(shown);
      for (std::size_t c = 0; c < 3; ++c) sum[c] += sensor[c];
    }
  }
  const int count = (right - left) * (bottom - top);
  if (blown > kMostBlown * count) return std::nullopt;
  for (auto& value : sum) value /= count;
  return sum;
}

}  // namespace

std::optional<WhiteBalanceCoefficients> BalanceOfPreview(const SensorGrid& grid, const imaging::PixelBuffer& preview,
                                                         const SensorMatrix& toSrgb) {
  const LookInverse inverse(toSrgb);
  if (!inverse.Usable() || preview.width < grid.columns || preview.height < grid.rows) return std::nullopt;
  std::array<std::vector<double>, 2> ratios;  // of red and blue to green
  for (int i = 0; i < grid.columns * grid.rows; ++i) {
    const auto& sensor = grid.cells[static_cast<std::size_t>(i)];
    if (!Within(sensor, kSensorDark, kSensorBright)) continue;
    const auto balanced = CellOf(preview, grid, i, inverse);
    if (!balanced || !Within(*balanced, 0, 2)) continue;
    const double green = (*balanced)[1] / sensor[1];
    ratios[0].push_back((*balanced)[0] / sensor[0] / green);
    ratios[1].push_back((*balanced)[2] / sensor[2] / green);
  }
  if (ratios[0].size() < kFewest) return std::nullopt;
  return WhiteBalanceCoefficients{
      {static_cast<float>(Median(ratios[0])), 1.0F, static_cast<float>(Median(ratios[1])), 1.0F}};
}

}  // namespace ml::rawconvert
