#include "rawconvert/nef/nef_colour.h"

#include <algorithm>
#include <cmath>

namespace ml::rawconvert {
namespace {

constexpr int kTop = 4095;

double SaturationFactor(const NefSettings& settings) {
  constexpr double kUsual = 1.3, kLess = 0.8, kMore = 1.2;
  if (settings.tone == NefTone::Linear) return 1;
  if (settings.saturation == -1) return kUsual * kLess;
  return settings.saturation == 1 ? kUsual * kMore : kUsual;
}

std::vector<std::uint16_t> GammaTable(NefTone tone) {
  std::vector<std::uint16_t> table(kTop + 1);
  for (int i = 0; i <= kTop; ++i) {
    const double normal = std::pow(static_cast<double>(i) / kTop, 1 / 2.2) * 65535 + 0.5;
    table[static_cast<std::size_t>(i)] =
        static_cast<std::uint16_t>(tone == NefTone::Linear ? i * 65535 / kTop : static_cast<int>(normal));
  }
  return table;
}

}  // namespace

NefColour::NefColour(const NefSettings& settings, const NefMultipliers& multipliers)
    : redMultiplier_(static_cast<float>(multipliers.red)),
      blueMultiplier_(static_cast<float>(multipliers.blue)),
      saturationFactor_(static_cast<float>(SaturationFactor(settings))),
      gamma_(GammaTable(settings.tone)) {}

/// With hue and lightness kept, a saturation that grows moves each channel away from the lightness in proportion; so
/// there is no need to go over hue and back.
void NefColour::Saturate(Levels& levels, std::size_t count) const {
  auto& [red, green, blue] = levels;
  constexpr float kWhole = kTop;
  for (std::size_t i = 0; i < count; ++i) {
    const float low = std::min(std::min(red[i], green[i]), blue[i]);
    const float high = std::max(std::max(red[i], green[i]), blue[i]);
    const float lightness = (low + high) * 0.5F;
    const float reach = std::min(low + high, 2 * kWhole - low - high);  // the difference at full saturation
    const float factor = std::min(saturationFactor_, reach / std::max(high - low, 1e-3F));
    const float scale = std::max(factor, 1.0F);
    red[i] = lightness + (red[i] - lightness) * scale;
    green[i] = lightness + (green[i] - lightness) * scale;
    blue[i] = lightness + (blue[i] - lightness) * scale;
  }
}

void NefColour::Apply(std::span<const std::int16_t> red, std::span<const std::int16_t> green,
                      std::span<const std::int16_t> blue, std::uint16_t* out, std::size_t step) const {
  const std::size_t count = std::min(red.size(), kMaxRun);
  constexpr float kWhole = kTop;
  Levels levels;
  for (std::size_t i = 0; i < count; ++i) {
    levels[0][i] = std::min(static_cast<float>(red[i]) * redMultiplier_, kWhole);
    levels[1][i] = std::min(static_cast<float>(green[i]), kWhole);
    levels[2][i] = std::min(static_cast<float>(blue[i]) * blueMultiplier_, kWhole);
  }
  if (saturationFactor_ != 1) Saturate(levels, count);
  std::array<std::array<std::int32_t, kMaxRun>, 3> indices;
  for (std::size_t c = 0; c < 3; ++c) {
    for (std::size_t i = 0; i < count; ++i) {
      indices[c][i] = static_cast<std::int32_t>(std::clamp(levels[c][i], 0.0F, kWhole) + 0.5F);
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t c = 0; c < 3; ++c) out[i * step + c] = gamma_[static_cast<std::size_t>(indices[c][i])];
  }
}

}  // namespace ml::rawconvert
