#include "rawconvert/libraw/white_balance.h"

#include <algorithm>
#include <cmath>

namespace ml::rawconvert {
namespace {

constexpr int kCustomPoint = -1, kAsShotByte = 255, kColourTemperature = 9;

struct PresetRow {
  int code;
  std::array<int, 2> lightSources;  ///< EXIF's numbers, the better first; 0 is none
  int kelvin;                       ///< where the camera wrote neither
};
/// The makers' handbooks tell the temperatures.
constexpr PresetRow kPresets[] = {
    {0, {82, 0}, 0},   {1, {1, 0}, 5200}, {2, {10, 0}, 6000}, {3, {3, 17}, 3200},   {4, {2, 14}, 4000},
    {5, {4, 0}, 6000}, {6, {83, 90}, 0},  {8, {11, 0}, 7000}, {14, {14, 12}, 5500},
};

/// Chromaticity of a black body, 1667 K to 4000 K, and of daylight from 4000 K on; published approximations.
std::array<double, 2> BlackBody(double t) {
  const double x = -0.2661239e9 / (t * t * t) - 0.2343589e6 / (t * t) + 0.8776956e3 / t + 0.179910;
  const double y = t < 2222 ? -1.1063814 * x * x * x - 1.34811020 * x * x + 2.18555832 * x - 0.20219683
                            : -0.9549476 * x * x * x - 1.37418593 * x * x + 2.09137015 * x - 0.16748867;
  return {x, y};
}

std::array<double, 2> Daylight(double t) {
  const double x = t <= 7000 ? -4.6070e9 / (t * t * t) + 2.9678e6 / (t * t) + 0.09911e3 / t + 0.244063
                             : -2.0064e9 / (t * t * t) + 1.9018e6 / (t * t) + 0.24748e3 / t + 0.237040;
  return {x, -3 * x * x + 2.87 * x - 0.275};
}

std::array<double, 2> Chromaticity(double t) {
  const double share = std::clamp((t - 4000) / 1000, 0.0, 1.0);
  const auto low = BlackBody(std::min(t, 4000.0)), high = Daylight(std::max(t, 4000.0));
  return {low[0] + share * (high[0] - low[0]), low[1] + share * (high[1] - low[1])};
}

std::optional<WhiteBalanceCoefficients> IfKnown(const WhiteBalanceCoefficients& coefficients) {
  if (coefficients.Known()) return coefficients;
  return std::nullopt;
}

std::optional<WhiteBalanceCoefficients> Preset(const PresetRow& row, const WhiteBalanceFacts& facts) {
  for (const int source : row.lightSources) {
    const auto& preset = facts.presets[static_cast<std::size_t>(source)];
    if (source != 0 && preset.Known()) return preset;
  }
  if (row.kelvin == 0) return std::nullopt;
  return IfKnown(MultipliersOfKelvin(row.kelvin, facts));
}

}  // namespace

WhiteBalanceCoefficients MultipliersOfKelvin(int kelvin, const WhiteBalanceFacts& facts) {
  const auto [x, y] = Chromaticity(std::clamp(kelvin, 1700, 25000));
  const std::array<double, 3> xyz = {x / y, 1, (1 - x - y) / y};
  WhiteBalanceCoefficients result;
  for (std::size_t c = 0; c < static_cast<std::size_t>(facts.colours); ++c) {
    const auto& row = facts.sensorOfXyz[c];
    const double seen = row[0] * xyz[0] + row[1] * xyz[1] + row[2] * xyz[2];
    if (seen <= 0) return {};
    result.multipliers[c] = static_cast<float>(1 / seen);
  }
  if (facts.colours == 3) result.multipliers[3] = result.multipliers[1];
  return result;
}

std::optional<WhiteBalanceCoefficients> MultipliersFor(const WhiteBalanceChoice& choice,
                                                       const WhiteBalanceFacts& facts) {
  if (choice.code == kCustomPoint) return IfKnown(choice.coefficients);
  if (choice.code == kAsShot || choice.code == kAsShotByte) return IfKnown(facts.asShot);
  if (choice.code == kColourTemperature) return IfKnown(MultipliersOfKelvin(choice.kelvin, facts));
  const auto* row = std::ranges::find(kPresets, choice.code, &PresetRow::code);
  if (row == std::end(kPresets)) return IfKnown(facts.asShot);
  const auto preset = Preset(*row, facts);
  // A preset of the user's own that was never measured is what the camera took.
  return preset || choice.code == 0 ? preset : IfKnown(facts.asShot);
}

}  // namespace ml::rawconvert
