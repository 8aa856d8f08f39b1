#include "imaging/operators/noise_filter.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <thread>

#include "imaging/operators/float_plane.h"
#include "imaging/operators/noise_level.h"
#include "imaging/row_bands.h"

namespace ml::imaging {
namespace {

/// Of the squares in which a plane is smoothed. Colour noise comes in larger blots than luma noise.
constexpr int kLumaRadius = 3, kColourRadius = 7;
/// Rows around a band on which its result depends.
constexpr int kMargin = 2 * kColourRadius;
constexpr int kMinBand = 4 * kMargin;
/// Differences of so many times the noise are taken for noise.
constexpr float kLumaReach = 2.0F, kColourReach = 3.0F;
/// A standard deviation that noise of cameras does not exceed at ISO 100; from there it grows with the root. Where all
/// is texture, the measured one would be too high.
constexpr double kMostAtIso100 = 0.012;
constexpr double kLongExposure = 1.0, kMoreOfLong = 1.5;

NoiseLevel Bounded(NoiseLevel level, const ShotConditions& shot) {
  const double iso = shot.iso > 0 ? shot.iso : 200;
  double most = kMostAtIso100 * std::sqrt(iso / 100);
  if (shot.exposureSeconds >= kLongExposure) most *= kMoreOfLong;
  const auto bound = static_cast<float>(most * most);
  for (auto& step : level.variance)
    step = {std::min(step.y, bound), std::min(step.cb, 2 * bound), std::min(step.cr, 2 * bound)};
  return level;
}

/// Fits a line through the values around each place, with itself as what the line depends on: flat where these vary
/// less than `tolerance` (a variance), steep at edges.
void SmoothFlatParts(FloatPlane& plane, const FloatPlane& tolerance, int radius) {
  FloatPlane mean = plane, steep = plane;
  for (auto& value : steep.data) value *= value;
  BoxMean(mean, radius);
  BoxMean(steep, radius);
  for (std::size_t i = 0; i < plane.data.size(); ++i) {
    const float variance = std::max(0.0F, steep.data[i] - mean.data[i] * mean.data[i]);
    steep.data[i] = variance / (variance + tolerance.data[i] + 1e-12F);
    mean.data[i] *= 1 - steep.data[i];
  }
  BoxMean(mean, radius);
  BoxMean(steep, radius);
  for (std::size_t i = 0; i < plane.data.size(); ++i) plane.data[i] = steep.data[i] * plane.data[i] + mean.data[i];
}

struct Planes {
  FloatPlane y, cb, cr;
};

template <class Sample>
Planes Split(const PixelBuffer& pixels, int first, int end) {
  const FloatPlane plane(pixels.width, end - first);
  Planes planes{plane, plane, plane};
  for (int row = first; row < end; ++row) {
    const auto* in = reinterpret_cast<const Sample*>(pixels.Row(row));
    float *y = planes.y.Row(row - first), *cb = planes.cb.Row(row - first), *cr = planes.cr.Row(row - first);
    for (int x = 0; x < pixels.width; ++x, in += 3) {
      const auto c = DifferenceOf(in);
      y[x] = c.y, cb[x] = c.cb, cr[x] = c.cr;
    }
  }
  return planes;
}

/// The variance up to which each place counts as flat, of all three planes.
Planes Tolerances(const Planes& planes, const NoiseLevel& noise) {
  FloatPlane luma = planes.y;
  BoxMean(luma, kLumaRadius);
  Planes result{luma, luma, luma};
  for (std::size_t i = 0; i < luma.data.size(); ++i) {
    const auto variance = noise.At(luma.data[i]);
    result.y.data[i] = kLumaReach * kLumaReach * variance.y;
    result.cb.data[i] = kColourReach * kColourReach * variance.cb;
    result.cr.data[i] = kColourReach * kColourReach * variance.cr;
  }
  return result;
}

template <class Sample>
void FilterBand(const PixelBuffer& source, int first, int end, const NoiseLevel& noise, float blending,
                PixelBuffer& target) {
  const int from = std::max(0, first - kMargin), to = std::min(source.height, end + kMargin);
  auto planes = Split<Sample>(source, from, to);
  const auto tolerances = Tolerances(planes, noise);
  SmoothFlatParts(planes.y, tolerances.y, kLumaRadius);
  SmoothFlatParts(planes.cb, tolerances.cb, kColourRadius);
  SmoothFlatParts(planes.cr, tolerances.cr, kColourRadius);
  for (int row = first; row < end; ++row) {
    const float *y = planes.y.Row(row - from), *cb = planes.cb.Row(row - from), *cr = planes.cr.Row(row - from);
    const auto* in = reinterpret_cast<const Sample*>(source.Row(row));
    auto* out = reinterpret_cast<Sample*>(target.Row(row));
    for (int x = 0; x < source.width; ++x, in += 3, out += 3) {
      const auto c = DifferenceOf(in);
      SetPixel(out,
               {std::lerp(c.y, y[x], blending), std::lerp(c.cb, cb[x], blending), std::lerp(c.cr, cr[x], blending)});
    }
  }
}

}  // namespace

void CSmNR::Process(PixelBuffer& pixels, const ShotConditions& shot, platform::Progress& progress,
                    const std::stop_token& stop) const {
  if (!Active() || pixels.Empty()) return;
  const auto noise = Bounded(MeasureNoise(pixels), shot);
  const auto source = pixels;
  const float blending = static_cast<float>(std::min(blending_, 100)) / 100;
  std::atomic<int> done = 0;
  const auto caller = std::this_thread::get_id();
  const auto filter = [&](int first, int end) {
    pixels.bytesPerSample == 1 ? FilterBand<std::uint8_t>(source, first, end, noise, blending, pixels)
                               : FilterBand<std::uint16_t>(source, first, end, noise, blending, pixels);
    const int rows = done += end - first;
    if (std::this_thread::get_id() == caller) progress.percent(static_cast<int>(rows * 100LL / pixels.height));
  };
  ForRowBands(pixels.height, filter, stop, kMinBand);
}

}  // namespace ml::imaging
