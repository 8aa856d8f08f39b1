#include "imaging/operators/auto_levels.h"

#include <algorithm>
#include <functional>
#include <mutex>

#include "imaging/row_bands.h"
#include "platform/numbers.h"

namespace ml::imaging {
namespace {

/// In thousandths, so that grey keeps its value.
constexpr std::uint32_t kRed = 299, kGreen = 587, kBlue = 114, kWhole = 1000;

template <class Sample>
void Count(const PixelBuffer& pixels, int first, int end, LumaHistogram& histogram) {
  constexpr std::uint32_t kStep = sizeof(Sample) == 1 ? kWhole : kWhole * 256;
  for (int y = first; y < end; ++y) {
    const auto* in = reinterpret_cast<const Sample*>(pixels.Row(y));
    for (int x = 0; x < pixels.width; ++x, in += 3)
      ++histogram[(kRed * in[0] + kGreen * in[1] + kBlue * in[2]) / kStep];
  }
}

/// Of the scale on which levels are told: a byte is the high one of two.
constexpr double Dark(int level) { return level * 256.0; }
constexpr double Light(int level) { return level * 256.0 + 255; }

}  // namespace

LumaHistogram HistogramLuma(const PixelBuffer& pixels) {
  LumaHistogram sum{};
  std::mutex mutex;
  ForRowBands(pixels.height, [&](int first, int end) {
    LumaHistogram part{};
    pixels.bytesPerSample == 1 ? Count<std::uint8_t>(pixels, first, end, part)
                               : Count<std::uint16_t>(pixels, first, end, part);
    const std::scoped_lock lock(mutex);
    std::ranges::transform(sum, part, sum.begin(), std::plus());
  });
  return sum;
}

LevelPoints AutoLevelsPoints(const LumaHistogram& histogram, std::int64_t pixelCount, const ClippedPercent& clipped,
                             BlackScan scan) {
  const auto limit = [&](double percent) {
    return static_cast<std::int64_t>(percent * 0.01 * static_cast<double>(pixelCount));
  };
  LevelPoints points;
  const auto darkLimit = limit(clipped.black) + (scan == BlackScan::AtMost ? 1 : 0);
  std::int64_t sum = 0;
  for (int i = 0; i < 128 && sum < darkLimit; ++i) {
    sum += histogram[static_cast<std::size_t>(i)];
    if (sum < darkLimit) points.low = i;
  }
  const auto lightLimit = limit(clipped.white);
  sum = 0;
  for (int i = 255; i > points.low && sum < lightLimit; --i) {
    sum += histogram[static_cast<std::size_t>(i)];
    if (sum < lightLimit) points.high = i;
  }
  return points;
}

std::string AutoLevelsText(const LevelPoints& points) {
  return platform::FixedNumber(Dark(points.low), 1) + ",1.0," + platform::FixedNumber(Light(points.high), 1);
}

std::string ManualLevelsText(const LevelPoints& points, double mid) {
  return platform::FixedNumber(Dark(points.low), 1) + "," + platform::FixedNumber(mid, 3) + "," +
         platform::FixedNumber(Light(points.high), 1);
}

}  // namespace ml::imaging
