#include "imaging/operators/combine_renders.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "imaging/magick/magick_image.h"
#include "imaging/row_bands.h"
#include "platform/numbers.h"

namespace ml::imaging {
namespace {

using Samples = const std::uint16_t*;
using Histogram = std::vector<std::uint32_t>;
using Curve = std::vector<std::uint16_t>;

constexpr int kLevels = 65536;
constexpr double kWhole = 65535;

Samples SamplesOf(const PixelBuffer& pixels, int y) { return reinterpret_cast<Samples>(pixels.Row(y)); }
std::uint16_t* SamplesOf(PixelBuffer& pixels, int y) { return reinterpret_cast<std::uint16_t*>(pixels.Row(y)); }

/// Of each pixel's largest channel.
Histogram CountLargest(const PixelBuffer& pixels, const std::stop_token& stop) {
  Histogram sum(kLevels);
  std::mutex mutex;
  const auto count = [&](int first, int end) {
    Histogram part(kLevels);
    for (int y = first; y < end; ++y) {
      const auto* in = SamplesOf(pixels, y);
      for (int x = 0; x < pixels.width; ++x, in += 3) ++part[std::max({in[0], in[1], in[2]})];
    }
    const std::scoped_lock lock(mutex);
    std::ranges::transform(sum, part, sum.begin(), std::plus());
  };
  ForRowBands(pixels.height, count, stop, 256);
  return sum;
}

/// The level that only one pixel in ten thousand exceeds.
int WhitePoint(const PixelBuffer& linear, const std::stop_token& stop) {
  const auto histogram = CountLargest(linear, stop);
  const auto limit = static_cast<std::int64_t>(static_cast<double>(linear.width) * linear.height * 0.0001);
  int white = kLevels - 1;
  std::int64_t sum = 0;
  for (int level = kLevels - 1; level >= 0; --level) {
    sum += histogram[static_cast<std::size_t>(level)];
    if (sum > limit) break;
    white = level;
  }
  return white < 65000 ? white + 5 : white;
}

/// Levels and gamma as the imaging library computes them, for each sample there can be.
Curve DisplayTone(double white, double gamma) {
  auto ramp = MakePixelBuffer(kLevels, 1, PixelOrder::Rgb, 2);
  for (int i = 0; i < kLevels; ++i) std::fill_n(SamplesOf(ramp, 0) + 3 * i, 3, static_cast<std::uint16_t>(i));
  auto image = MagickImage::FromPixels(ramp);
  image.Level("0.0,1.0," + platform::FixedNumber(white, 1));
  const auto text = platform::FixedNumber(gamma, 1);
  image.Gamma(text + "," + text + "," + text + ",0.0");
  const auto toned = image.ToPixels(2);
  Curve curve(kLevels);
  for (int i = 0; i < kLevels; ++i) curve[static_cast<std::size_t>(i)] = SamplesOf(toned, 0)[3 * i];
  return curve;
}

/// Luma 0..1 and the two colour differences.
struct Luma {
  double y, cb, cr;
};

double LumaOf(Samples p) { return (0.299 * p[0] + 0.587 * p[1] + 0.114 * p[2]) / kWhole; }

Luma ToLuma(Samples p) {
  return {LumaOf(p), (-0.168736 * p[0] - 0.331264 * p[1] + 0.5 * p[2]) / kWhole,
          (0.5 * p[0] - 0.418688 * p[1] - 0.081312 * p[2]) / kWhole};
}

void FromLuma(const Luma& c, std::uint16_t* p) {
  const auto cut = [](double value) { return static_cast<std::uint16_t>(std::clamp(value * kWhole, 0.0, kWhole)); };
  p[0] = cut(c.y + 1.402 * c.cr);
  p[1] = cut(c.y - 0.344136 * c.cb - 0.714136 * c.cr);
  p[2] = cut(c.y + 1.772 * c.cb);
}

constexpr double kFadeStart = 0.65, kFadeEnd = 0.95;

/// Brings the pixel's luma down to that of `toned`, gradually from where the fade starts.
void Dim(std::uint16_t* normal, Samples toned) {
  const double bright = LumaOf(normal);
  if (bright < kFadeStart) return;
  const double other = LumaOf(toned);
  if (bright <= other) return;
  const double t = bright > kFadeEnd ? 1 : (bright - kFadeStart) / (kFadeEnd - kFadeStart);
  const double k = (t * other + (1 - t) * bright) / bright;
  const auto c = ToLuma(normal);
  FromLuma({c.y * k, c.cb * k, c.cr * k}, normal);
}

constexpr double kBlendStart = 0.9;

/// For cameras whose normal render keeps its colours up to the highlights: those of `toned` are mixed in.
void Blend(std::uint16_t* normal, Samples toned) {
  const auto a = ToLuma(normal), b = ToLuma(toned);
  if (a.y < kBlendStart || a.y <= b.y) return;
  const double t = (a.y - kBlendStart) / (1 - kBlendStart);
  const auto mix = [t](double from, double to) { return t * to + (1 - t) * from; };
  FromLuma({std::min(1.0, mix(a.y, b.y)), mix(a.cb, b.cb), mix(a.cr, b.cr)}, normal);
}

struct Method {
  double gamma;
  void (*merge)(std::uint16_t* normal, Samples toned);
};
constexpr Method kDim{2.4, Dim}, kBlend{3.1, Blend};
constexpr double kBlendWhite = 56320;

}  // namespace

void CombineRenders(PixelBuffer& normal, PixelBuffer& linear, std::string_view model, const std::stop_token& stop) {
  assert(normal.width == linear.width && normal.height == linear.height);
  assert(normal.bytesPerSample == 2 && linear.bytesPerSample == 2);
  const auto found = model.find("EOS-1D");
  const bool blends = found != std::string_view::npos && found > 0;
  const auto& method = blends ? kBlend : kDim;
  const auto curve = DisplayTone(blends ? kBlendWhite : WhitePoint(linear, stop), method.gamma);
  const auto merge = [&](int first, int end) {
    for (int y = first; y < end; ++y) {
      auto* out = SamplesOf(normal, y);
      auto* other = SamplesOf(linear, y);
      for (int x = 0; x < normal.width; ++x, out += 3, other += 3) {
        for (int i = 0; i < 3; ++i) other[i] = curve[other[i]];
        method.merge(out, other);
      }
    }
  };
  ForRowBands(normal.height, merge, stop);
}

}  // namespace ml::imaging
