#include "rawconvert/nef/resize_mitchell.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "imaging/row_bands.h"

namespace ml::rawconvert {
namespace {

constexpr int kTaps = 4;

/// The samples that one of the result is made from, and how much each counts; together 1. Outside of the picture those
/// of its edge stand.
struct Weights {
  std::array<std::size_t, kTaps> from{};
  std::array<float, kTaps> weight{};
};

/// The cubic filter with B = C = 1/3.
double Mitchell(double x) {
  x = std::abs(x);
  if (x < 1) return (7 * x * x * x - 12 * x * x + 16.0 / 3) / 6;
  if (x < 2) return (-7.0 / 3 * x * x * x + 12 * x * x - 20 * x + 32.0 / 3) / 6;
  return 0;
}

std::vector<Weights> WeightsOf(int from, int to) {
  std::vector<Weights> all(static_cast<std::size_t>(to));
  for (int i = 0; i < to; ++i) {
    const double centre = (i + 0.5) * from / to - 0.5;
    const int first = static_cast<int>(std::floor(centre)) - 1;
    for (int tap = 0; tap < kTaps; ++tap) {
      auto& weights = all[static_cast<std::size_t>(i)];
      weights.from[static_cast<std::size_t>(tap)] = static_cast<std::size_t>(std::clamp(first + tap, 0, from - 1));
      weights.weight[static_cast<std::size_t>(tap)] = static_cast<float>(Mitchell(centre - first - tap));
    }
  }
  return all;
}

const std::uint16_t* Samples(const imaging::PixelBuffer& picture, std::size_t y) {
  return reinterpret_cast<const std::uint16_t*>(picture.Row(static_cast<int>(y)));  // they have two bytes
}

}  // namespace

imaging::PixelBuffer ResizeMitchell(const imaging::PixelBuffer& picture, int width, int height,
                                    const std::stop_token& stop) {
  const auto columns = WeightsOf(picture.width, width), rows = WeightsOf(picture.height, height);
  auto result = imaging::MakePixelBuffer(width, height, picture.order, 2);
  const auto resizeRow = [&](int y, std::vector<float>& upright) {
    const auto& [from, weight] = rows[static_cast<std::size_t>(y)];
    const std::array<const std::uint16_t*, kTaps> in = {Samples(picture, from[0]), Samples(picture, from[1]),
                                                        Samples(picture, from[2]), Samples(picture, from[3])};
    for (std::size_t i = 0; i < upright.size(); ++i) {
      upright[i] = static_cast<float>(in[0][i]) * weight[0] + static_cast<float>(in[1][i]) * weight[1] +
                   static_cast<float>(in[2][i]) * weight[2] + static_cast<float>(in[3][i]) * weight[3];
    }
    auto* out = reinterpret_cast<std::uint16_t*>(result.Row(y));
    for (const auto& column : columns) {
      for (std::size_t c = 0; c < 3; ++c) {
        float sum = 0.5F;
        for (std::size_t tap = 0; tap < kTaps; ++tap) sum += upright[column.from[tap] * 3 + c] * column.weight[tap];
        *out++ = static_cast<std::uint16_t>(std::clamp(sum, 0.0F, 65535.0F));
      }
    }
  };
  imaging::ForRowBands(
      height,
      [&](int first, int end) {
        std::vector<float> upright(static_cast<std::size_t>(picture.width) * 3);
        for (int y = first; y < end; ++y) resizeRow(y, upright);
      },
      stop);
  return result;
}

}  // namespace ml::rawconvert
