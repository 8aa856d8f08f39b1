#include "imaging/operators/noise_level.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ml::imaging {
namespace {

/// Edge of the squares, and from one to the next.
constexpr int kSide = 7, kPitch = 8;
constexpr int kEnough = 40;  ///< squares of a step that say something
/// The tenth part of squares of 49 pixels, whose noise is alike from pixel to pixel after interpolation, has at most
/// this share of the noise's variance.
constexpr std::size_t kPart = 10;
constexpr float kShareOfTenth = 0.6F;

using Channels = std::array<float, 3>;
constexpr int kSteps = NoiseLevel::kSteps;
using Squares = std::array<std::array<std::vector<float>, 3>, kSteps>;

template <class Sample>
void AddSquare(const PixelBuffer& pixels, int left, int top, Squares& squares) {
  Channels sum{}, squared{};
  const auto add = [&](std::size_t i, float value) { sum[i] += value, squared[i] += value * value; };
  for (int y = top; y < top + kSide; ++y) {
    const auto* in = reinterpret_cast<const Sample*>(pixels.Row(y)) + 3 * left;
    for (int x = 0; x < kSide; ++x, in += 3) {
      const auto c = DifferenceOf(in);
      add(0, c.y), add(1, c.cb), add(2, c.cr);
    }
  }
  constexpr float kCount = kSide * kSide;
  const float luma = sum[0] / kCount;
  if (luma > 0.97F) return;  // clipped, so without noise
  auto& step = squares[static_cast<std::size_t>(std::clamp(static_cast<int>(luma * kSteps), 0, kSteps - 1))];
  for (std::size_t i = 0; i < 3; ++i)
    step[i].push_back(std::max(0.0F, squared[i] / kCount - sum[i] * sum[i] / (kCount * kCount)));
}

float Quietest(std::vector<float>& variances) {
  const auto place = variances.begin() + static_cast<std::ptrdiff_t>(variances.size() / kPart);
  std::nth_element(variances.begin(), place, variances.end());
  return *place / kShareOfTenth;
}

}  // namespace

NoiseLevel MeasureNoise(const PixelBuffer& pixels) {
  Squares squares;
  for (int y = 0; y + kSide <= pixels.height; y += kPitch) {
    for (int x = 0; x + kSide <= pixels.width; x += kPitch) {
      pixels.bytesPerSample == 1 ? AddSquare<std::uint8_t>(pixels, x, y, squares)
                                 : AddSquare<std::uint16_t>(pixels, x, y, squares);
    }
  }
  NoiseLevel level;
  std::vector<int> known;
  for (int i = 0; i < kSteps; ++i) {
    auto& step = squares[static_cast<std::size_t>(i)];
    if (step[0].size() < kEnough) continue;
    known.push_back(i);
    level.variance[static_cast<std::size_t>(i)] = {Quietest(step[0]), Quietest(step[1]), Quietest(step[2])};
  }
  for (int i = 0; i < kSteps && !known.empty(); ++i) {
    const int nearest = *std::ranges::min_element(known, {}, [i](int k) { return std::abs(k - i); });
    level.variance[static_cast<std::size_t>(i)] = level.variance[static_cast<std::size_t>(nearest)];
  }
  return level;
}

ColourDifference NoiseLevel::At(float luma) const {
  const float place = std::clamp(luma * kSteps - 0.5F, 0.0F, static_cast<float>(kSteps - 1));
  const auto below = static_cast<std::size_t>(place);
  const auto& a = variance[below];
  const auto& b = variance[std::min(below + 1, variance.size() - 1)];
  const float t = place - static_cast<float>(below);
  return {std::lerp(a.y, b.y, t), std::lerp(a.cb, b.cb, t), std::lerp(a.cr, b.cr, t)};
}

}  // namespace ml::imaging
