#include "imaging/operators/sharpen_luma.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "imaging/operators/colour_difference.h"
#include "imaging/operators/float_plane.h"
#include "imaging/row_bands.h"

namespace ml::imaging {
namespace {

constexpr int kMargin = 2;
constexpr float kGain = 2.0F;
/// Detail below this is mostly noise: it is raised in proportion to its strength.
constexpr float kFaint = 0.008F;
/// How far a pixel may pass the range of its neighbours, as a part of that range.
constexpr float kOvershoot = 0.15F;

template <class Sample>
FloatPlane LumaOf(const PixelBuffer& pixels, int first, int end) {
  FloatPlane luma(pixels.width, end - first);
  for (int y = first; y < end; ++y) {
    const auto* in = reinterpret_cast<const Sample*>(pixels.Row(y));
    float* out = luma.Row(y - first);
    for (int x = 0; x < pixels.width; ++x, in += 3) out[x] = DifferenceOf(in).y;
  }
  return luma;
}

/// Five by five around each pixel of a row, weights 1 4 6 4 1: a bell of one pixel's width.
class Neighbours {
 public:
  explicit Neighbours(int width) : columns_(Size(width)), lowest_(Size(width)), highest_(Size(width)) {}

  void GoTo(const FloatPlane& luma, int y) {
    for (int i = -2; i <= 2; ++i) rows_[i + 2] = luma.Row(std::clamp(y + i, 0, luma.height - 1));
    for (std::size_t x = 0; x < columns_.size(); ++x) {
      columns_[x] = (rows_[0][x] + rows_[4][x] + 4 * (rows_[1][x] + rows_[3][x]) + 6 * rows_[2][x]) / 16;
      lowest_[x] = std::min({rows_[1][x], rows_[2][x], rows_[3][x]});
      highest_[x] = std::max({rows_[1][x], rows_[2][x], rows_[3][x]});
    }
  }

  float Sharpened(int x, float strength) const {
    const auto at = [this](int place) {
      return columns_[static_cast<std::size_t>(std::clamp(place, 0, static_cast<int>(columns_.size()) - 1))];
    };
    const auto center = static_cast<std::size_t>(x);
    const auto left = center == 0 ? center : center - 1, right = std::min(center + 1, columns_.size() - 1);
    const float value = rows_[2][x];
    const float blurred = (at(x - 2) + at(x + 2) + 4 * (at(x - 1) + at(x + 1)) + 6 * at(x)) / 16;
    const float detail = value - blurred;
    const float raised = detail * strength * std::min(1.0F, std::abs(detail) / kFaint);
    const float low = std::min({lowest_[left], lowest_[center], lowest_[right]});
    const float high = std::max({highest_[left], highest_[center], highest_[right]});
    const float room = kOvershoot * (high - low);
    return std::clamp(value + raised, low - room, high + room);
  }

 private:
  static std::size_t Size(int width) { return static_cast<std::size_t>(width); }

  const float* rows_[5] = {};
  std::vector<float> columns_, lowest_, highest_;
};

template <class Sample>
void SharpenBand(const PixelBuffer& source, int first, int end, float strength, PixelBuffer& target) {
  const int from = std::max(0, first - kMargin), to = std::min(source.height, end + kMargin);
  const auto luma = LumaOf<Sample>(source, from, to);
  Neighbours neighbours(source.width);
  for (int y = first; y < end; ++y) {
    neighbours.GoTo(luma, y - from);
    auto* out = reinterpret_cast<Sample*>(target.Row(y));
    for (int x = 0; x < source.width; ++x, out += 3) {
      auto colour = DifferenceOf(out);
      colour.y = neighbours.Sharpened(x, strength);
      SetPixel(out, colour);
    }
  }
}

}  // namespace

void ApplyHqSharpen(PixelBuffer& pixels, int amount, const std::stop_token& stop) {
  if (pixels.Empty() || amount <= 0) return;
  const auto source = pixels;
  const float strength = kGain * static_cast<float>(std::min(amount, 100)) / 100;
  const auto sharpen = [&](int first, int end) {
    pixels.bytesPerSample == 1 ? SharpenBand<std::uint8_t>(source, first, end, strength, pixels)
                               : SharpenBand<std::uint16_t>(source, first, end, strength, pixels);
  };
  ForRowBands(pixels.height, sharpen, stop, 64);
}

}  // namespace ml::imaging
