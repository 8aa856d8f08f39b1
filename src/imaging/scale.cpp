#include "imaging/scale.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <utility>

namespace ml::imaging {
namespace {

const std::uint8_t* Samples(const PixelBuffer& buffer, int y) {
  return reinterpret_cast<const std::uint8_t*>(buffer.Row(y));
}
std::uint8_t* Samples(PixelBuffer& buffer, int y) { return reinterpret_cast<std::uint8_t*>(buffer.Row(y)); }

void CheckReduction([[maybe_unused]] const PixelBuffer& source, [[maybe_unused]] int width,
                    [[maybe_unused]] int height) {
  assert(source.bytesPerSample == 1);
  assert(width >= 1 && width <= source.width && height >= 1 && height <= source.height);
}

/// Adds a row of samples with a weight.
void Accumulate(std::vector<float>& sums, const std::uint8_t* row, float weight) {
  const auto count = sums.size();
  float* out = sums.data();
  for (std::size_t i = 0; i < count; ++i) out[i] += weight * static_cast<float>(row[i]);
}

/// The part of [begin, begin + length) that each source place covers: first place, and the weights of it and
/// those behind it, which add up to 1.
struct Coverage {
  int first = 0;
  std::vector<float> weights;
};

std::vector<Coverage> MakeCoverage(int source, int target) {
  std::vector<Coverage> result(static_cast<std::size_t>(target));
  const double length = static_cast<double>(source) / target;
  for (int i = 0; i < target; ++i) {
    const double begin = i * length, end = std::min<double>(source, begin + length);
    auto& coverage = result[static_cast<std::size_t>(i)];
    coverage.first = std::min(static_cast<int>(begin), source - 1);
    for (int place = coverage.first; place < source && place < end; ++place) {
      const double part = std::min(end, place + 1.0) - std::max<double>(begin, place);
      coverage.weights.push_back(static_cast<float>(part / length));
    }
  }
  return result;
}

/// One row of the result out of column sums.
void ReduceRow(const std::vector<float>& sums, const std::vector<Coverage>& columns, std::uint8_t* out) {
  for (const auto& column : columns) {
    const float* in = sums.data() + static_cast<std::size_t>(column.first) * 3;
    float red = 0.5F, green = 0.5F, blue = 0.5F;  // rounds to the nearest
    for (const float weight : column.weights) {
      red += weight * in[0], green += weight * in[1], blue += weight * in[2];
      in += 3;
    }
    *out++ = static_cast<std::uint8_t>(std::min(red, 255.0F));
    *out++ = static_cast<std::uint8_t>(std::min(green, 255.0F));
    *out++ = static_cast<std::uint8_t>(std::min(blue, 255.0F));
  }
}

}  // namespace

std::vector<int> NearestSteps(int source, int target) {
  std::vector<int> steps(static_cast<std::size_t>(target));
  int place = 0;
  long long accumulator = 0;
  for (auto& step : steps) {
    step = place++;
    accumulator += source - target;
    for (; accumulator > 0; accumulator -= target) ++place;
  }
  return steps;
}

PixelBuffer ScaleAverage(const PixelBuffer& source, int width, int height) {
  CheckReduction(source, width, height);
  auto result = MakePixelBuffer(width, height, source.order);
  const auto columns = MakeCoverage(source.width, width);
  const auto rows = MakeCoverage(source.height, height);
  std::vector<float> sums(static_cast<std::size_t>(source.width) * 3);
  for (int y = 0; y < height; ++y) {
    std::ranges::fill(sums, 0.0F);
    int place = rows[static_cast<std::size_t>(y)].first;
    for (const float weight : rows[static_cast<std::size_t>(y)].weights)
      Accumulate(sums, Samples(source, place++), weight);
    ReduceRow(sums, columns, Samples(result, y));
  }
  return result;
}

namespace {

/// Copies the pixels to where they go; the size of one is known when this is compiled, which makes it fast.
template <std::size_t pixel>
void TurnPixels(const PixelBuffer& source, Turn turn, PixelBuffer& result) {
  // Where the pixel at (0, 0) goes, and how far the next one of its row and of its column lies.
  constexpr auto kPixel = static_cast<std::ptrdiff_t>(pixel);
  const auto rowBytes = static_cast<std::ptrdiff_t>(result.RowBytes());
  const std::ptrdiff_t last = rowBytes * (result.height - 1);
  std::ptrdiff_t start = 0, alongRow = kPixel, alongColumn = rowBytes;
  if (turn == Turn::cw90) start = rowBytes - kPixel, alongRow = rowBytes, alongColumn = -kPixel;
  if (turn == Turn::half) start = last + rowBytes - kPixel, alongRow = -kPixel, alongColumn = -rowBytes;
  if (turn == Turn::cw270) start = last, alongRow = -rowBytes, alongColumn = kPixel;
  for (int y = 0; y < source.height; ++y) {
    const auto* in = source.Row(y);
    std::ptrdiff_t place = start + alongColumn * y;
    for (int x = 0; x < source.width; ++x, in += pixel, place += alongRow)
      std::memcpy(result.data.data() + place, in, pixel);
  }
}

}  // namespace

PixelBuffer Turned(const PixelBuffer& source, Turn turn) {
  const bool swapped = turn == Turn::cw90 || turn == Turn::cw270;
  auto result = MakePixelBuffer(swapped ? source.height : source.width, swapped ? source.width : source.height,
                                source.order, source.bytesPerSample);
  source.bytesPerSample == 1 ? TurnPixels<3>(source, turn, result) : TurnPixels<6>(source, turn, result);
  return result;
}

PixelBuffer ToDisplayLayout(const PixelBuffer& source) {
  assert(source.bytesPerSample == 1);
  PixelBuffer result{source.width, source.height, PaddedWidth(source.width), PixelOrder::Bgr, 1, {}};
  result.data.resize(result.RowBytes() * static_cast<std::size_t>(result.height));
  for (int y = 0; y < source.height; ++y) {
    const auto* in = source.Row(y);
    auto* out = result.Row(y);
    if (source.order == PixelOrder::Bgr) {
      std::memcpy(out, in, static_cast<std::size_t>(source.width) * 3);
      continue;
    }
    for (int x = 0; x < source.width; ++x, in += 3, out += 3) out[0] = in[2], out[1] = in[1], out[2] = in[0];
  }
  return result;
}

PixelBuffer HighBytes(PixelBuffer source) {
  if (source.bytesPerSample == 1) return source;
  PixelBuffer result{source.width, source.height, source.stride, source.order, 1, {}};
  result.data.resize(source.data.size() / 2);
  for (std::size_t i = 0; i < result.data.size(); ++i) {
    std::uint16_t sample = 0;
    std::memcpy(&sample, source.data.data() + 2 * i, sizeof sample);
    result.data[i] = static_cast<std::byte>(sample >> 8);
  }
  return result;
}

}  // namespace ml::imaging
